#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Manual.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/System.h"

#include "embedded/SessionFile.h"

#include <cstdio>

void CommonOptions::addOutputTo(CLI::App& command) {
    command.add_flag("--json", json, "One JSON object a line instead of a table");
    addJournalTo(command);
}

void CommonOptions::addSessionTo(CLI::App& command) {
    addJournalTo(command);
    command.add_option("--session", session, "Session file: environment and documents in session")->type_name("FILE");
}

void CommonOptions::addTo(CLI::App& command) {
    command.add_flag("--json", json, "One JSON object a line instead of a table");
    addSessionTo(command);
}

void CommonOptions::addJournalTo(CLI::App& command) {
    command.add_option("--journal", journal, "File that receives the journal")->type_name("FILE");
}

bool CommonOptions::loadSession() const {
    if (session.empty()) return true;
    const embedded::SessionFileResult result = embedded::loadSession(session);
    if (!result.ok) complain(result.error);
    return result.ok;
}

Program::Program() : m_app("What the PDM knows of CATIA V5 documents", "vorntools") {
    m_app.set_version_flag("--version", VORNTOOLS_VERSION);
    m_app.require_subcommand(0, 1);
    m_app.add_option("--generate", m_generated, "Text about the program itself")
        ->check(CLI::IsMember({"man", "bash", "zsh"}))
        ->group("");
}

CLI::App& Program::add(const std::string& name, const std::string& description, std::function<int()> run) {
    CLI::App* const command = m_app.add_subcommand(name, description);
    m_commands.push_back({command, std::move(run)});
    return *command;
}

int Program::run(std::vector<std::string> arguments) {
    try {
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend() - (arguments.empty() ? 0 : 1));
        m_app.parse(reversed);
        for (const Command& command : m_commands)
            if (command.app->parsed()) return command.run();
        if (m_generated.empty()) throw CLI::RequiredError("A command");
        std::fputs(generateText(m_app, m_generated).c_str(), stdout);
        return ExitFine;
    } catch (const CLI::ParseError& error) {
        return m_app.exit(error) == 0 ? ExitFine : ExitUnusable;
    } catch (const std::exception& error) {
        complain(error.what());
        return ExitUnusable;
    }
}

int main(int count, char** values) {
    host::prepareOutput();
    Program program;
    addStatusCommand(program);
    addDatCommand(program);
    addLinksCommand(program);
    addReportCommand(program);
    addExchangeCommand(program);
    addRunCommand(program);
    addImportOptionsCommand(program);
    const int code = program.run(host::arguments(count, values));
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return code;
    complain("cannot write standard output");
    return ExitUnusable;
}
