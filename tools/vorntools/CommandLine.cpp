#include "tools/vorntools/CommandLine.h"

#include "tools/vorntools/ArgumentOrder.h"
#include "tools/vorntools/Output.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

Option& Option::required() {
    isRequired = true;
    return *this;
}

Option& Option::hidden() {
    isHidden = true;
    return *this;
}

Option& Option::oneOf(std::vector<std::string> values) {
    choices = std::move(values);
    return *this;
}

Option& Option::between(int first, int last) {
    least = first;
    most = last;
    return *this;
}

Option& Option::needs(const std::string& option) {
    needed = option;
    return *this;
}

Option& Option::excludes(const std::string& option) {
    excluded = option;
    return *this;
}

std::vector<std::string> Option::spellings() const {
    std::vector<std::string> result;
    for (std::size_t begin = 0; !isOperand() && begin <= names.size();) {
        const std::size_t end = std::min(names.find(',', begin), names.size());
        result.push_back(names.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

Command::Command(std::string name, std::string description, std::function<int()> run)
    : m_name(std::move(name)), m_description(std::move(description)), m_run(std::move(run)) {}

Option& Command::flag(const std::string& names, const std::string& help, bool& target) {
    m_options.push_back({names, "", help, &target});
    return m_options.back();
}

Option& Command::value(const std::string& names, const std::string& argument, const std::string& help,
                       Option::Target target) {
    m_options.push_back({names, argument, help, target});
    return m_options.back();
}

Command& Command::command(const std::string& name, const std::string& description, std::function<int()> run) {
    return m_commands.emplace_back(name, description, std::move(run));
}

Command& Command::example(const std::string& arguments, const std::string& text) {
    m_examples.push_back({arguments, text});
    return *this;
}

namespace {

void addOption(CLI::App& app, const Option& option) {
    CLI::Option* added = nullptr;
    if (auto* const* const flag = std::get_if<bool*>(&option.target))
        added = app.add_flag(option.names, **flag, option.help);
    else if (auto* const* const number = std::get_if<int*>(&option.target))
        added = app.add_option(option.names, **number, option.help);
    else if (auto* const* const text = std::get_if<std::string*>(&option.target))
        added = app.add_option(option.names, **text, option.help);
    else
        added = app.add_option(option.names, *std::get<std::vector<std::string>*>(option.target), option.help);

    // Of an option that may be given several times each takes one value: what follows is something else.
    if (option.takesMany() && !option.isOperand()) added->allow_extra_args(false);
    if (!option.argument.empty()) added->type_name(option.argument);
    if (!option.choices.empty()) added->check(CLI::IsMember(option.choices));
    if (option.least != option.most) added->check(CLI::Range(option.least, option.most));
    if (option.isHidden) added->group("");
    added->required(option.isRequired);
}

std::string examplesText(const Command& command) {
    std::string text = "Examples:";
    for (const Command::Example& example : command.examples())
        text += "\n  vorntools " + example.arguments + "\n      " + example.text;
    return text;
}

/** Adds what a command consists of, and below it the names of all commands, but only the content of those that the
 * words can lead to: nobody asks for the others', and making them was a third of the start. */
void addCommand(CLI::App& app, const Command& command, const std::vector<std::string>& words) {
    for (const Option& option : command.options()) addOption(app, option);
    // Only now every option that another one names is there.
    for (const Option& option : command.options()) {
        if (!option.needed.empty()) app.get_option(option.names)->needs(app.get_option(option.needed));
        if (!option.excluded.empty()) app.get_option(option.names)->excludes(app.get_option(option.excluded));
    }
    for (const Command& below : command.commands()) {
        CLI::App* const added = app.add_subcommand(below.name(), below.description());
        if (std::find(words.begin(), words.end(), below.name()) != words.end()) addCommand(*added, below, words);
    }
    app.require_subcommand(command.hasRun() ? 0 : 1, 1);
    if (!command.examples().empty()) app.footer(examplesText(command));
}

/** What the arguments lead to. */
struct Innermost {
    const Command* command;
    const CLI::App* app;
    std::string path; ///< names of the commands down to it, the program's left out

    Innermost below(const Command& next) const {
        return {&next, app->get_subcommand(next.name()), (path.empty() ? "" : path + " ") + next.name()};
    }
};

Innermost innermost(Innermost at) {
    for (const Command& below : at.command->commands())
        if (at.app->get_subcommand(below.name())->parsed()) return innermost(at.below(below));
    return at;
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string suggestion(const std::string& word, const std::vector<std::string>& known) {
    const std::string nearest = nearestOf(word, known);
    return nearest.empty() ? "" : "; did you mean " + quoted(nearest) + "?";
}

/** What is wrong with an argument that no command expects. */
std::string unknownText(const std::string& argument, const Command& program, const Innermost& at) {
    const std::string begin = at.path.empty() ? "there is" : quoted(at.path) + " has";
    if (argument.size() > 1 && argument.front() == '-') {
        std::vector<std::string> known = {"--help"};
        for (const Command* const command : {at.command, &program})
            for (const Option& option : command->options())
                if (!option.isHidden)
                    for (const std::string& spelling : option.spellings()) known.push_back(spelling);
        return begin + " no option " + quoted(argument) + suggestion(argument, known);
    }
    if (at.command->commands().empty()) return quoted(at.path) + " takes no further argument " + quoted(argument);
    std::vector<std::string> known;
    for (const Command& below : at.command->commands()) known.push_back(below.name());
    if (at.path.empty()) known.emplace_back("help");
    return begin + " no command " + quoted(argument) + suggestion(argument, known);
}

/** Says the help of the command that the names lead to. */
int showHelp(Innermost at, const std::vector<std::string>& names) {
    const Command& program = *at.command;
    for (const std::string& name : names) {
        const Command* const next = commandBelow(*at.command, name);
        if (!next) {
            complain(unknownText(name, program, at));
            return ExitUnusable;
        }
        at = at.below(*next);
    }
    // The names in front of the last one, as the usage line has them.
    const std::size_t last = at.path.rfind(' ');
    const std::string before = last == std::string::npos ? "" : " " + at.path.substr(0, last);
    print(at.app->help(at.path.empty() ? "" : program.name() + before));
    return ExitFine;
}

int refuse(const CLI::ParseError& error, const CLI::App& app, const Command& program) {
    const Innermost at = innermost({&program, &app, ""});
    const std::vector<std::string> unknown = app.remaining(true);
    std::string text = unknown.empty() ? error.what() : unknownText(unknown.front(), program, at);
    while (!text.empty() && (text.back() == '\n' || text.back() == '.')) text.pop_back();
    complain(text);
    complain("see " + program.name() + " help" + (at.path.empty() ? "" : " " + at.path));
    return ExitUnusable;
}

} // namespace

int runCommandLine(const Command& program, const std::vector<std::string>& arguments,
                   const std::function<void()>& prepare) {
    CLI::App app(program.description(), program.name());
    addCommand(app, program, arguments);
    if (arguments.empty()) {
        print(app.help());
        return ExitUnusable;
    }
    if (arguments.front() == "help") return showHelp({&program, &app, ""}, {arguments.begin() + 1, arguments.end()});
    const std::vector<std::string> ordered = orderedArguments(program, arguments);
    try {
        app.parse(std::vector<std::string>(ordered.rbegin(), ordered.rend()));
    } catch (const CLI::CallForHelp& call) {
        return app.exit(call);
    } catch (const CLI::ParseError& error) {
        return refuse(error, app, program);
    }
    prepare();
    return innermost({&program, &app, ""}).command->run();
}
