#ifndef TOOLS_VORNTOOLS_COMMAND_LINE_H
#define TOOLS_VORNTOOLS_COMMAND_LINE_H

// The table of commands and options. The arguments are parsed by it; help, manual page and completions are made from
// it.

#include <functional>
#include <list>
#include <string>
#include <variant>
#include <vector>

/** Exit codes of the program. */
enum ExitCode { ExitFine = 0, ExitFindings = 1, ExitUnusable = 2 };

/** One option ("--json", "-o,--output") or operand ("folder") of a command. */
struct Option {
    /** Where the value goes: a flag, a number, a text, or texts of which any number may be given. */
    using Target = std::variant<bool*, int*, std::string*, std::vector<std::string>*>;

    std::string names;
    std::string argument; ///< what it takes, such as "FILE"; empty for a flag
    std::string help;
    Target target;
    bool isRequired = false;
    bool isHidden = false;
    std::vector<std::string> choices = {}; ///< the only values; empty: any
    int least = 0, most = 0;               ///< of a number; both 0: any
    std::string needed = {};               ///< option without which this one cannot be given
    std::string excluded = {};             ///< option with which this one cannot be given

    Option& required();
    Option& hidden();
    Option& oneOf(std::vector<std::string> values);
    Option& between(int first, int last);
    Option& needs(const std::string& option);
    Option& excludes(const std::string& option);

    bool isOperand() const { return names.front() != '-'; }
    bool takesMany() const { return std::holds_alternative<std::vector<std::string>*>(target); }
    /** Every spelling with its hyphens; an operand has none. */
    std::vector<std::string> spellings() const;
};

/** A command with its options and the commands below it. Options and commands stay where they are: references hold. */
class Command {
public:
    struct Example {
        std::string arguments, text;
    };

    /** @param run its exit code; empty when one of the commands below it has to be given */
    Command(std::string name, std::string description, std::function<int()> run);

    Option& flag(const std::string& names, const std::string& help, bool& target);
    /** @param names of an option or operand; @param argument what it takes */
    Option& value(const std::string& names, const std::string& argument, const std::string& help,
                  Option::Target target);
    Command& command(const std::string& name, const std::string& description, std::function<int()> run);
    /** Adds an example to help and manual. @param arguments behind the program's name; @param text what they do */
    Command& example(const std::string& arguments, const std::string& text);

    const std::string& name() const { return m_name; }
    const std::string& description() const { return m_description; }
    const std::list<Option>& options() const { return m_options; }
    const std::list<Command>& commands() const { return m_commands; }
    const std::vector<Example>& examples() const { return m_examples; }
    bool hasRun() const { return static_cast<bool>(m_run); }
    int run() const { return m_run(); }

private:
    std::string m_name, m_description;
    std::function<int()> m_run;
    std::list<Option> m_options;
    std::list<Command> m_commands;
    std::vector<Example> m_examples;
};

/**
 * Sets the targets from the arguments and runs the innermost command that they name. An option may stand in front of
 * the command that knows it, one of the program anywhere. "help COMMAND..." is that command's "--help". Help and what
 * is wrong with the arguments are said here; for a command or option that does not exist the nearest one is named.
 * @param arguments without the program's name
 * @param prepare called when all targets are set, before the command runs
 * @return the command's exit code, ExitUnusable for wrong arguments and when there are none
 */
int runCommandLine(const Command& program, const std::vector<std::string>& arguments,
                   const std::function<void()>& prepare);

#endif
