#ifndef TOOLS_VORNTOOLS_COMMANDS_H
#define TOOLS_VORNTOOLS_COMMANDS_H

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

/** Exit codes of the program. */
enum ExitCode { ExitFine = 0, ExitFindings = 1, ExitUnusable = 2 };

/** What many commands share. Names are UTF-8. */
struct CommonOptions {
    std::vector<std::string> names; ///< files and folders
    bool json = false;
    std::string session; ///< session file, empty for none
    std::string journal; ///< file that receives the journal, empty for none

    /** Adds "--json", "--session" and "--journal". */
    void addTo(CLI::App& command);
    /** Adds "--json" and "--journal". */
    void addOutputTo(CLI::App& command);
    /** Adds "--session" and "--journal". */
    void addSessionTo(CLI::App& command);
    /** Loads the session, if one is given. @return false, said on standard error, when it cannot be loaded */
    bool loadSession() const;

private:
    void addJournalTo(CLI::App& command);
};

/** The program's commands with what each does. */
class Program {
public:
    Program();
    /** Adds a command. @param run its exit code; called when the command was given */
    CLI::App& add(const std::string& name, const std::string& description, std::function<int()> run);
    /** Runs the command that the arguments name; the exit code. */
    int run(std::vector<std::string> arguments);

private:
    struct Command {
        CLI::App* app;
        std::function<int()> run;
    };
    CLI::App m_app;
    std::vector<Command> m_commands;
    std::string m_generated; ///< kind of the text about the program itself that is asked for
};

void addStatusCommand(Program& program);
void addDatCommand(Program& program);
void addLinksCommand(Program& program);
void addReportCommand(Program& program);
void addExchangeCommand(Program& program);
void addRunCommand(Program& program);
void addImportOptionsCommand(Program& program);

#endif
