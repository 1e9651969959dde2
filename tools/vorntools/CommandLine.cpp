#include "tools/vorntools/CommandLine.h"

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

    if (!option.argument.empty()) added->type_name(option.argument);
    if (!option.choices.empty()) added->check(CLI::IsMember(option.choices));
    if (option.least != option.most) added->check(CLI::Range(option.least, option.most));
    if (option.isHidden) added->group("");
    added->required(option.isRequired);
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
}

const Command& innermost(const CLI::App& app, const Command& command) {
    for (const Command& below : command.commands()) {
        const CLI::App* const parsed = app.get_subcommand(below.name());
        if (parsed->parsed()) return innermost(*parsed, below);
    }
    return command;
}

} // namespace

int runCommandLine(const Command& program, const std::vector<std::string>& arguments) {
    CLI::App app(program.description(), program.name());
    addCommand(app, program, arguments);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? ExitFine : ExitUnusable;
    }
    return innermost(app, program).run();
}
