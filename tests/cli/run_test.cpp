#include "tests/support/Program.h"

namespace {

/** The example session, as everybody may try it. */
class RunCommandTest : public ProgramTest {
protected:
    int runExample(const std::string& topic) {
        return run(std::string("run \"") + VORNTOOLS_SOURCE_DIR + "/examples/gear-pump.json\" " + topic);
    }
    /** The values of some members of each row, without the folder in front of the workspace. */
    Texts values(std::initializer_list<const char*> keys) {
        Texts result;
        for (const auto& row : rows()) {
            std::string text;
            for (const char* key : keys) text += (text.empty() ? "" : " | ") + nlohmann::json(row[key]).dump();
            const std::string folder = std::string(VORNTOOLS_SOURCE_DIR) + "/examples/workspace/";
            for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder))
                text.erase(at, folder.size());
            result.push_back(text);
        }
        return result;
    }
};

TEST_F(RunCommandTest, DocumentsWindowsAndSelection) {
    EXPECT_EQ(runExample("documents --json"), 0);
    EXPECT_EQ(
        values({"document", "type", "managed", "in_window"}),
        (Texts{R"("GearPump.CATProduct" | "CATProduct" | true | true)", R"("Shaft.CATPart" | "CATPart" | true | false)",
               R"("DriveGear.CATPart" | "CATPart" | true | false)", R"("Key.CATPart" | "CATPart" | true | false)",
               R"("GearPump.CATDrawing" | "CATDrawing" | true | true)"}));
    EXPECT_EQ(runExample("windows --json"), 0);
    EXPECT_EQ(values({"document", "active"}),
              (Texts{R"("GearPump.CATProduct" | true)", R"("GearPump.CATDrawing" | false)"}));
    EXPECT_EQ(runExample("windows --json --find DriveGear.CATPart"), 0);
    EXPECT_EQ(values({"found", "window", "document", "product"}),
              Texts{R"(true | "GearPump.CATProduct" | "DriveGear.CATPart" | "GP-100\\Drive\\DriveGear.1")"});
    EXPECT_EQ(runExample("windows --json --find Housing.CATPart"), 0) << "only seen, and loaded for the answer";
    EXPECT_EQ(values({"window", "document", "product"}),
              Texts{R"("GearPump.CATProduct" | "housing/Housing.CATPart" | "GP-100\\Housing.1")"});
    EXPECT_EQ(runExample("windows --json --find Absent.CATPart"), 1);
    EXPECT_EQ(runExample(std::string("windows --json --find \"") + VORNTOOLS_SOURCE_DIR +
                         "/examples/exchange/../workspace/DriveGear.CATPart\""),
              0)
        << "a name with a folder is the same by every way to write it";
    EXPECT_EQ(runExample("selection --json"), 0);
    EXPECT_EQ(values({"product", "document"}),
              (Texts{R"("GP-100\\Shaft.1" | "Shaft.CATPart")", R"("GP-100\\Drive" | "GearPump.CATProduct")"}));
}

TEST_F(RunCommandTest, ModesAreSwitchedSavedAndPutBack) {
    EXPECT_EQ(runExample("modes"), 0);
    EXPECT_EQ(content("out"), "PRODUCT                   MODE\n"
                              "GP-100                    design\n"
                              "GP-100\\Housing.1          visu\n"
                              "GP-100\\Shaft.1            design\n"
                              "GP-100\\Drive              design\n"
                              "GP-100\\Drive\\DriveGear.1  design\n"
                              "GP-100\\Key.1              default\n");
    EXPECT_EQ(runExample("switch --json --to visu --save " + quoted("after.json") + " 'GP-100\\Shaft.1'"), 0);
    EXPECT_EQ(values({"product", "before", "switched"}), Texts{R"("GP-100\\Shaft.1" | "design" | "visu")"});
    EXPECT_EQ(run("run " + quoted("after.json") + " restore --json 'GP-100\\Shaft.1' 'GP-100\\Key.1'"), 0);
    EXPECT_EQ(values({"before", "switched", "restored"}),
              (Texts{R"("visu" | "design" | "visu")", R"("default" | "design" | "default")"}));
    EXPECT_EQ(runExample("switch 'GP-100\\Nothing.1'"), 2);
}

TEST_F(RunCommandTest, ScenesAndMasks) {
    EXPECT_EQ(runExample("scenes --json"), 0);
    EXPECT_EQ(values({"scene", "product", "position", "hidden"}),
              (Texts{R"("Exploded" | "Housing.1!" | null | null)",
                     R"("Exploded" | "Shaft.1!" | "1 0 0 0 1 0 0 0 1 0 0 80" | false)",
                     R"("Exploded" | "Drive!" | null | null)", R"("Exploded" | "DriveGear.1!Drive!" | null | null)",
                     R"("Exploded" | "Key.1!" | "1 0 0 0 1 0 0 0 1 0 0 0" | true)"}));
    EXPECT_EQ(runExample("masks --json --product 'GP-100\\Key.1' --set 7"), 0);
    EXPECT_EQ(values({"mask"}), (Texts{"0", "0", "3", "0", "0", "7"}));
    EXPECT_EQ(runExample("masks --set 7"), 2);
}

TEST_F(RunCommandTest, PropertiesAndParametersAreReadSetAndSaved) {
    EXPECT_EQ(runExample("properties --json --product 'GP-100\\Shaft.1' --set 'Supplier=A=B:C:s' --save " +
                         quoted("after.json")),
              0);
    EXPECT_EQ(run("run " + quoted("after.json") + " properties --json"), 0);
    EXPECT_EQ(values({"product", "name", "value"}),
              (Texts{R"("GP-100\\Shaft.1" | "Material" | "Steel")", R"("GP-100\\Shaft.1" | "Supplier" | "A=B:C")"}));
    EXPECT_EQ(runExample("parameters --json --product 'GP-100\\Shaft.1' --set Length=300:d"), 0);
    EXPECT_EQ(values({"name", "value", "type", "read_only"}),
              (Texts{R"("Length" | "300mm" | "Length" | false)", R"("Hardened" | "true" | "Boolean" | true)"}));
    EXPECT_EQ(runExample("parameters --product 'GP-100\\Shaft.1' --set Width=1:d"), 2);
    EXPECT_EQ(runExample("properties --product 'GP-100\\Shaft.1' --set Material"), 2);
    EXPECT_EQ(runExample("properties --set Material=x:s"), 2);
}

TEST_F(RunCommandTest, AttributesAndInstancesAreReadSetAndSaved) {
    EXPECT_EQ(runExample("attributes --json --document DriveGear.CATPart --set Teeth=19:i --set Finish=matt:s --save " +
                         quoted("after.json")),
              0);
    EXPECT_EQ(run("run " + quoted("after.json") + " attributes --json"), 0);
    EXPECT_EQ(
        values({"document", "name", "value"}),
        (Texts{R"("DriveGear.CATPart" | "Teeth" | "19")", R"("DriveGear.CATPart" | "Width" | "18mm")",
               R"("DriveGear.CATPart" | "ItemID" | "GP-103")", R"("DriveGear.CATPart" | "Finish" | "matt")",
               R"("GearPump.CATDrawing" | "Definition" | "")", R"("GearPump.CATDrawing" | "Revision" | "")",
               R"("GearPump.CATDrawing" | "EBS_ItemRevName" | "")", R"("GearPump.CATDrawing" | "EBS_DatasetUid" | "")",
               R"("GearPump.CATDrawing" | "EBS_DatasetLastVersion" | "")"}));
    EXPECT_EQ(runExample("attributes --document DriveGear.CATPart --set Teeth=many:i"), 1);
    EXPECT_NE(content("err").find("unable to set the value to the Teeth parameter"), std::string::npos);
    EXPECT_EQ(runExample("attributes --json --document GearPump.CATDrawing --set Sheets=2:i --set Format=A1:s --save " +
                         quoted("after.json")),
              0);
    EXPECT_EQ(run("run " + quoted("after.json") + " attributes --json --document GearPump.CATDrawing --set Sheets=x:i"),
              1);
    EXPECT_EQ(rows().size(), 7U);
    EXPECT_EQ(values({"name", "value"})[0] + values({"name", "value"})[1], R"("Sheets" | "2""Format" | "A1")");
    EXPECT_EQ(runExample("attributes --document Absent.CATPart"), 2);

    EXPECT_EQ(runExample("instances --product 'GP-100\\Drive' --set Mass=1.25:d --set DescriptionInst=left:s "
                         "--set InstanceName=Drive.9:s --save " +
                         quoted("after.json")),
              0);
    EXPECT_EQ(run("run " + quoted("after.json") + " instances --json"), 0);
    EXPECT_EQ(values({"product", "name", "value"}),
              (Texts{R"("GP-100\\Drive.9" | "DescriptionInst" | "left")", R"("GP-100\\Drive.9" | "Position" | "left")",
                     R"("GP-100\\Drive.9" | "Mass" | "1.25")"}));
    EXPECT_EQ(runExample("instances --product 'GP-100\\Shaft.1' --set Mass=1.25:d"), 1) << "stored elsewhere";
    EXPECT_EQ(runExample("instances --product 'GP-100\\Drive' --set Mass=1.25:x"), 2);
}

TEST_F(RunCommandTest, DesignTablesAndWhatChangedInThem) {
    EXPECT_EQ(runExample("design-tables --json"), 0);
    EXPECT_EQ(values({"document", "table", "file", "sheet", "configuration", "checksum", "associated_files"}),
              Texts{R"("DriveGear.CATPart" | "DesignTable.1" | "DriveGear.txt" | 1 | 1 | )"
                    R"("fc6709bfdf0572f183c1a84ce5276e96" | [])"});
    EXPECT_EQ(runExample("checksums --json"), 1);
    EXPECT_EQ(values({"sheet", "configuration", "checksum", "recorded", "changed"}),
              (Texts{R"(1 | 1 | "fc6709bfdf0572f183c1a84ce5276e96" | "fc6709bfdf0572f183c1a84ce5276e96" | false)",
                     R"(1 | 2 | "abdbeb4d8dbe30df8430a8394b7218ef" | "44cd7a8f7f9f85129b9953950665064d" | true)"}));
    EXPECT_EQ(runExample("checksums --json 1:2 2:1"), 0);
    EXPECT_EQ(values({"sheet", "configuration", "checksum", "recorded", "changed"}),
              (Texts{R"(1 | 2 | "abdbeb4d8dbe30df8430a8394b7218ef" | null | null)", R"(2 | 1 | null | null | null)"}));
    for (const char* entry : {"1", "1:", "1:2x", "x:1"})
        EXPECT_EQ(runExample(std::string("checksums ") + entry), 2) << entry;
}

TEST_F(RunCommandTest, BadSessionsAndTopics) {
    EXPECT_EQ(run("run " + quoted("absent.json") + " documents"), 2);
    write("bad.json", R"({"documents": [{"nam": "x"}]})");
    EXPECT_EQ(run("run " + quoted("bad.json") + " documents"), 2);
    EXPECT_NE(content("err").find("bad.json:1: documents[0].nam"), std::string::npos);
    EXPECT_EQ(runExample("nothing"), 2);
}

TEST_F(RunCommandTest, ExchangeFilesAndImportOptions) {
    write("t/results", ":cancel\nSK\nline\n");
    EXPECT_EQ(run("exchange result --json " + quoted("t")), 1);
    EXPECT_EQ(content("out"), "{\"status\":\"cancelled\",\"hosted_client\":false,\"lines\":[\"SK\",\"line\",\"\"]}\n");
    write("t/results", ":ok\nSK\nline\n");
    EXPECT_EQ(run("exchange result --json " + quoted("t")), 0);
    EXPECT_EQ(content("out"), "{\"status\":\"ok\",\"hosted_client\":true,\"lines\":[\"SK\",\"line\",\"\"]}\n");
    write("t/highlight_v01.txt",
          "<Context>\nGP\n</Context>\n<selection>\n<partnumber>\nB-1\n</partnumber>\n<filename>\n"
          "Bolt.CATPart\n</filename>\n</selection>\n");
    EXPECT_EQ(run("exchange highlight --json " + quoted("t")), 0);
    EXPECT_EQ(content("out"),
              "{\"contexts\":[\"GP\"],\"selections\":[{\"part_number\":\"B-1\",\"file\":\"Bolt.CATPart\"}]}\n");
    EXPECT_EQ(
        run("exchange session " + quoted("t") + " --session \"" + VORNTOOLS_SOURCE_DIR + "/examples/gear-pump.json\""),
        0);
    EXPECT_EQ(content("t/CADFilesInSession.txt"), "GearPump.CATProduct\nShaft.CATPart\nDriveGear.CATPart\n"
                                                  "Key.CATPart\nGearPump.CATDrawing\n");
    EXPECT_EQ(run("exchange session " + quoted("t")), 2) << "without a session the file would be emptied";
    EXPECT_NE(content("t/CADFilesInSession.txt"), "");
    EXPECT_EQ(run("exchange result " + quoted("absent")), 2);
    EXPECT_EQ(run("import-options " + quoted("absent.txt")), 2);
    write("i.txt",
          "<menu>\nA\nB\n</menu>\n<doc>\nBolt.CATPart\n<opts>\n<main_body_only>\n1\n</main_body_only>\n</opts>\n");
    EXPECT_EQ(run("import-options --json " + quoted("i.txt")), 0);
    EXPECT_EQ(content("out"), "{\"option\":1,\"value\":\"A\"}\n{\"option\":2,\"value\":\"B\"}\n"
                              "{\"main_body\":\"Bolt.CATPart\",\"value\":\"1\"}\n");
    EXPECT_EQ(run("import-options --option 2 --json " + quoted("i.txt")), 0);
    EXPECT_EQ(content("out"), "{\"option\":2,\"value\":\"B\"}\n");
    EXPECT_EQ(run("import-options --option 3 " + quoted("i.txt")), 2);
}

} // namespace
