AddPrereqComponent("System",Public);
AddPrereqComponent("VornTools",Public);
