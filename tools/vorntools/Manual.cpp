#include "tools/vorntools/Manual.h"

#include <vector>

namespace {

/** What a person may give, the help that every command has first; hidden options are left out. */
std::vector<Option> optionsOf(const Command& command) {
    std::vector<Option> options = {{"-h,--help", "", "Print this help message and exit", {}}};
    for (const Option& option : command.options())
        if (!option.isHidden) options.push_back(option);
    return options;
}

std::string joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
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

/** "--journal FILE", "folder ..." */
std::string usageOf(const Option& option) {
    if (option.isOperand()) return option.names + (option.takesMany() ? " ..." : "");
    return joined(option.spellings(), ", ") + (option.argument.empty() ? "" : " " + option.argument);
}

std::string manualOptions(const Command& command) {
    std::string text;
    for (const Option& option : optionsOf(command))
        text += ".TP\n.B " + roff(usageOf(option)) + "\n" + roff(option.help) + "\n";
    return text;
}

std::string manual(const Command& program) {
    const std::string& name = program.name();
    std::string text = ".TH VORNTOOLS 1\n.SH NAME\n" + name + " \\- " + roff(program.description()) +
                       "\n.SH SYNOPSIS\n.B " + name + "\n.I command\n[options]\n.SH COMMANDS\n";
    for (const Command& command : program.commands()) {
        text += ".SS " + roff(command.name()) + "\n" + roff(command.description()) + "\n" + manualOptions(command);
        for (const Command& topic : command.commands())
            text += ".TP\n.B " + roff(command.name() + " ... " + topic.name()) + "\n" + roff(topic.description()) +
                    "\n.RS\n" + manualOptions(topic) + ".RE\n";
    }
    return text + ".SH OPTIONS\n" + manualOptions(program) +
           ".SH EXIT STATUS\n.TP\n.B 0\nnothing to report\n.TP\n.B 1\nfindings: something is new, modified, missing or "
           "unresolved\n.TP\n.B 2\nthe command line or its input cannot be used\n";
}

/** The words that may follow: names of commands below, options, and the only values that an option or operand takes. */
std::string wordsOf(const Command& command) {
    std::vector<std::string> words;
    for (const Command& below : command.commands()) words.push_back(below.name());
    for (const Option& option : optionsOf(command)) {
        for (const std::string& spelling : option.spellings()) words.push_back(spelling);
        words.insert(words.end(), option.choices.begin(), option.choices.end());
    }
    return joined(words, " ");
}

/** A case for every command and topic; the last word that names one decides. */
std::string bashCases(const Command& command) {
    std::string text;
    for (const Command& below : command.commands())
        text += "        " + below.name() + ") words=\"" + wordsOf(below) + "\" ;;\n" + bashCases(below);
    return text;
}

std::string bashCompletion(const Command& program) {
    return "_vorntools() {\n    local words word current=${COMP_WORDS[COMP_CWORD]}\n    words=\"" + wordsOf(program) +
           "\"\n    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n        case $word in\n" + bashCases(program) +
           "        esac\n    done\n    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\"; compgen -f "
           "-- \"$current\")\n}\ncomplete -o filenames -F _vorntools vorntools\n";
}

std::string zshQuoted(std::string text) {
    for (const char* special : {"'", "[", "]", ":"})
        for (std::size_t at = text.find(special); at != std::string::npos; at = text.find(special, at + 2))
            text.replace(at, 1, *special == '\'' ? std::string("\xE2\x80\x99") : std::string("\\") + special);
    return text;
}

/** What completes a value: the values themselves where they are known, else the names of files. */
std::string zshValues(const Option& option) {
    return option.choices.empty() ? "_files" : "(" + joined(option.choices, " ") + ")";
}

std::string zshOptions(const Command& command) {
    std::string text;
    for (const Option& option : optionsOf(command))
        for (const std::string& spelling : option.spellings()) {
            text += " '" + spelling + "[" + zshQuoted(option.help) + "]";
            text += option.argument.empty() ? "'" : ":" + zshQuoted(option.argument) + ":" + zshValues(option) + "'";
        }
    return text;
}

std::string zshCompletion(const Command& program) {
    std::string text = "#compdef vorntools\nlocal -a commands=(";
    for (const Command& command : program.commands())
        text += "\n    '" + command.name() + ":" + zshQuoted(command.description()) + "'";
    text += ")\nif (( CURRENT == 2 )); then\n    _describe command commands\n    _arguments" + zshOptions(program) +
            "\n    return\nfi\ncase $words[2] in\n";
    for (const Command& command : program.commands())
        text += command.name() + ") _arguments" + zshOptions(command) + " '*:file:_files' ;;\n";
    return text + "esac\n";
}

} // namespace

std::string generateText(const Command& program, const std::string& kind) {
    if (kind == "man") return manual(program);
    return kind == "bash" ? bashCompletion(program) : zshCompletion(program);
}
