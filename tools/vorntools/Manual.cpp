#include "tools/vorntools/Manual.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

/** What a person may give; the hidden options of the program itself are left out. */
std::vector<const CLI::Option*> optionsOf(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

/** Text for a manual page: a leading dot or quote would be taken for an order, a hyphen for a line break. */
std::string roff(const std::string& text) {
    std::string result;
    for (const char letter : text) {
        if (letter == '\\' || letter == '-') result += '\\';
        if (result.empty() && (letter == '.' || letter == '\'')) result += "\\&";
        result += letter;
    }
    return result;
}

std::string argumentOf(const CLI::Option& option) {
    return option.get_expected_max() == 0 ? std::string() : option.get_type_name();
}

/** "--journal FILE", "folder ..." */
std::string usageOf(const CLI::Option& option) {
    const std::string name = option.get_name();
    if (option.get_positional()) return name + (option.get_expected_max() > 1 ? " ..." : "");
    const std::string argument = argumentOf(option);
    return argument.empty() ? name : name + " " + argument;
}

std::string manualOptions(const CLI::App& app) {
    std::string text;
    for (const CLI::Option* option : optionsOf(app))
        text += ".TP\n.B " + roff(usageOf(*option)) + "\n" + roff(option->get_description()) + "\n";
    return text;
}

std::string manual(const CLI::App& app) {
    const std::string& name = app.get_name();
    std::string text = ".TH VORNTOOLS 1\n.SH NAME\n" + name + " \\- " + roff(app.get_description()) +
                       "\n.SH SYNOPSIS\n.B " + name + "\n.I command\n[options]\n.SH COMMANDS\n";
    for (const CLI::App* command : commandsOf(app)) {
        text += ".SS " + roff(command->get_name()) + "\n" + roff(command->get_description()) + "\n" +
                manualOptions(*command);
        for (const CLI::App* topic : commandsOf(*command))
            text += ".TP\n.B " + roff(command->get_name() + " ... " + topic->get_name()) + "\n" +
                    roff(topic->get_description()) + "\n" + ".RS\n" + manualOptions(*topic) + ".RE\n";
    }
    return text + ".SH OPTIONS\n" + manualOptions(app) +
           ".SH EXIT STATUS\n.TP\n.B 0\nnothing to report\n.TP\n.B 1\nfindings: something is new, modified, missing or "
           "unresolved\n.TP\n.B 2\nthe command line or its input cannot be used\n";
}

/** The words that may follow: names of options and of commands below. */
std::string wordsOf(const CLI::App& app) {
    std::string words;
    for (const CLI::App* command : commandsOf(app)) words += command->get_name() + " ";
    for (const CLI::Option* option : optionsOf(app)) {
        for (const std::string& name : option->get_lnames()) words += "--" + name + " ";
        for (const std::string& name : option->get_snames()) words += "-" + name + " ";
    }
    if (!words.empty()) words.pop_back();
    return words;
}

std::string bashCompletion(const CLI::App& app) {
    std::string text = "_vorntools() {\n    local words word current=${COMP_WORDS[COMP_CWORD]}\n    words=\"" +
                       wordsOf(app) +
                       "\"\n    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
                       "        case $word in\n";
    for (const CLI::App* command : commandsOf(app))
        text += "        " + command->get_name() + ") words=\"" + wordsOf(*command) + "\" ;;\n";
    return text +
           "        esac\n    done\n    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\"; compgen -f "
           "-- \"$current\")\n}\ncomplete -o filenames -F _vorntools vorntools\n";
}

std::string zshQuoted(std::string text) {
    for (const char* special : {"'", "[", "]", ":"})
        for (std::size_t at = text.find(special); at != std::string::npos; at = text.find(special, at + 2))
            text.replace(at, 1, *special == '\'' ? std::string("\xE2\x80\x99") : std::string("\\") + special);
    return text;
}

std::string zshOptions(const CLI::App& app) {
    std::string text;
    for (const CLI::Option* option : optionsOf(app)) {
        for (const std::string& name : option->get_lnames()) {
            text += " '--" + name + "[" + zshQuoted(option->get_description()) + "]";
            const std::string argument = argumentOf(*option);
            text += argument.empty() ? "'" : ":" + zshQuoted(argument) + ":_files'";
        }
    }
    return text;
}

std::string zshCompletion(const CLI::App& app) {
    std::string text = "#compdef vorntools\nlocal -a commands=(";
    for (const CLI::App* command : commandsOf(app))
        text += "\n    '" + command->get_name() + ":" + zshQuoted(command->get_description()) + "'";
    text += ")\nif (( CURRENT == 2 )); then\n    _describe command commands\n    _arguments" + zshOptions(app) +
            "\n    return\nfi\ncase $words[2] in\n";
    for (const CLI::App* command : commandsOf(app))
        text += command->get_name() + ") _arguments" + zshOptions(*command) + " '*:file:_files' ;;\n";
    return text + "esac\n";
}

} // namespace

std::string generateText(const CLI::App& app, const std::string& kind) {
    if (kind == "man") return manual(app);
    return kind == "bash" ? bashCompletion(app) : zshCompletion(app);
}
