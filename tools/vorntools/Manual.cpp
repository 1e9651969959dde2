#include "tools/vorntools/Manual.h"

#include <algorithm>
#include <functional>
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

/** Examples of all commands, each with what it is for. */
std::string manualExamples(const Command& command) {
    std::string text;
    for (const Command::Example& example : command.examples())
        text += ".TP\n.B vorntools " + roff(example.arguments) + "\n" + roff(example.text) + "\n";
    for (const Command& below : command.commands()) text += manualExamples(below);
    return text;
}

std::string manual(const Command& program) {
    const std::string& name = program.name();
    std::string text = ".TH VORNTOOLS 1 \"" VORNTOOLS_DATE "\" \"vorntools " VORNTOOLS_VERSION "\"\n.SH NAME\n" + name +
                       " \\- " + roff(program.description()) + "\n.SH SYNOPSIS\n.B " + name +
                       "\n.I command\n[options]\n.SH COMMANDS\n";
    for (const Command& command : program.commands()) {
        text += ".SS " + roff(command.name()) + "\n" + roff(command.description()) + "\n" + manualOptions(command);
        for (const Command& topic : command.commands())
            text += ".TP\n.B " + roff(command.name() + " ... " + topic.name()) + "\n" + roff(topic.description()) +
                    "\n.RS\n" + manualOptions(topic) + ".RE\n";
    }
    return text + ".SH OPTIONS\n" + manualOptions(program) + ".SH EXAMPLES\n" + manualExamples(program) +
           ".SH EXIT STATUS\n.TP\n.B 0\nnothing to report\n.TP\n.B 1\nfindings: something is new, modified, missing, "
           "damaged or unresolved\n.TP\n.B 2\nthe command line or its input cannot be used, or the output cannot be "
           "written\n.SH FILES\n.TP\n.I DOCUMENT.dat\nwhat the PDM client recorded of a document when it was loaded; it "
           "stands beside the document\n.SH ENVIRONMENT\n.TP\n.B NO_COLOR\nno colours unless "
           "\\-\\-color always is given\n";
}

/** Calls a function with every command of which the program consists, and the names down to it: "/run/modes". */
void forEach(const Command& command, const std::string& path,
             const std::function<void(const Command&, const std::string&)>& call) {
    call(command, path);
    for (const Command& below : command.commands()) forEach(below, path + "/" + below.name(), call);
}

/** Whether an option or operand takes the name of a file or folder. */
bool takesFile(const Option& option) {
    for (const char* const argument : {"FILE", "FOLDER", "SESSION"})
        if (option.argument.find(argument) != std::string::npos) return true;
    return false;
}

bool hasFileOperand(const Command& command) {
    for (const Option& option : command.options())
        if (option.isOperand() && takesFile(option)) return true;
    return false;
}

std::string namesOf(const Command& command) {
    std::vector<std::string> names;
    for (const Command& below : command.commands()) names.push_back(below.name());
    return joined(names, " ");
}

/** What may follow: commands below and the only values of operands, without options. */
std::string wordsOf(const Command& command) {
    std::vector<std::string> words;
    if (!command.commands().empty()) words.push_back(namesOf(command));
    for (const Option& option : command.options())
        if (option.isOperand() && !option.choices.empty()) words.push_back(joined(option.choices, " "));
    return joined(words, " ");
}

std::string spellingsOf(const Command& command, const Command& program) {
    std::vector<std::string> words;
    for (const Option& option : optionsOf(command))
        for (const std::string& spelling : option.spellings()) words.push_back(spelling);
    if (&command != &program)
        for (const Option& option : program.options())
            if (!option.isHidden) words.push_back(option.spellings().back());
    return joined(words, " ");
}

/** Every command with the words and options that may follow it, and every option with the values that it takes. */
std::string bashCompletion(const Command& program) {
    std::string paths, words, values;
    forEach(program, "", [&](const Command& command, const std::string& path) {
        if (!path.empty()) paths += (paths.empty() ? "" : "|") + path;
        words += "        \"" + path + "\") words=\"" + wordsOf(command) + "\" options=\"" +
                 spellingsOf(command, program) + "\" files=" + (hasFileOperand(command) ? "yes" : "") + " ;;\n";
        for (const Option& option : optionsOf(command)) {
            if (option.argument.empty() || option.isOperand()) continue;
            const std::string begin = &command == &program ? "*\" " : "\"" + path + " ";
            for (const std::string& spelling : option.spellings())
                values += "        " + (&command == &program ? "*\" " + spelling + "\"" : begin + spelling + "\"") +
                          ") options= words=\"" + joined(option.choices, " ") +
                          "\" files=" + (takesFile(option) ? "yes" : "") + " ;;\n";
        }
    });
    return "_vorntools() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n"
           "    local word path= words= options= files=\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        case $path/$word in\n        " +
           paths +
           ") path+=/$word ;;\n        esac\n    done\n"
           "    case $path in\n" +
           words + "    esac\n    case \"$path $previous\" in\n" + values +
           "    esac\n"
           "    [[ $current != -* ]] || words=$options\n"
           "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\"\n"
           "        [[ -z $files ]] || compgen -f -- \"$current\")\n"
           "}\ncomplete -o filenames -F _vorntools vorntools\n";
}

std::string zshQuoted(std::string text) {
    for (const char* special : {"'", "[", "]", ":"})
        for (std::size_t at = text.find(special); at != std::string::npos; at = text.find(special, at + 2))
            text.replace(at, 1, *special == '\'' ? std::string("\xE2\x80\x99") : std::string("\\") + special);
    return text;
}

/** What completes a value: the values themselves where they are known, else files where files are meant. */
std::string zshValues(const Option& option) {
    if (!option.choices.empty()) return "(" + joined(option.choices, " ") + ")";
    return takesFile(option) ? "_files" : " ";
}

std::string zshOption(const Option& option) {
    std::string text;
    for (const std::string& spelling : option.spellings()) {
        text += " \\\n        '" + spelling + "[" + zshQuoted(option.help) + "]";
        text += option.argument.empty() ? "'" : ":" + zshQuoted(option.argument) + ":" + zshValues(option) + "'";
    }
    return text;
}

/** Options, then operands, then the commands below as the last operand. */
std::string zshArguments(const Command& command, const Command& program) {
    std::string text = "_arguments";
    for (const Option& option : optionsOf(command))
        if (!option.isOperand()) text += zshOption(option);
    if (&command != &program)
        for (const Option& option : program.options())
            if (!option.isHidden && option.names.find("version") == std::string::npos) text += zshOption(option);
    int place = 1;
    for (const Option& option : command.options())
        if (option.isOperand())
            text += " \\\n        '" + (option.takesMany() ? "*" : std::to_string(place++)) + ":" + option.names + ":" +
                    zshValues(option) + "'";
    if (command.commands().empty()) return text;
    text += " \\\n        '" + std::to_string(place) + ":command:((";
    for (const Command& below : command.commands())
        text += " " + below.name() + "\\:\"" + zshQuoted(below.description()) + "\"";
    return text + " ))'";
}

/** The words down to the innermost command are taken away, so that what follows is told as of a program of its own. */
std::string zshCompletion(const Command& program) {
    std::string paths, cases;
    forEach(program, "", [&](const Command& command, const std::string& path) {
        if (!path.empty()) paths += (paths.empty() ? "" : "|") + path;
        cases += "    \"" + path + "\") " + zshArguments(command, program) + " ;;\n";
    });
    return "#compdef vorntools\nlocal reached= at last=1\n"
           "for (( at = 2; at < CURRENT; ++at )); do\n    case $reached/$words[at] in\n    " +
           paths +
           ") reached+=/$words[at]; last=$at ;;\n    esac\ndone\n"
           "words=(\"${(@)words[last,-1]}\")\n(( CURRENT -= last - 1 ))\ncase $reached in\n" +
           cases + "esac\n";
}

std::string fishQuoted(const std::string& text) {
    std::string result = "'";
    for (const char letter : text) {
        if (letter == '\'' || letter == '\\') result += '\\';
        result += letter;
    }
    return result + "'";
}

std::string fishOption(const std::string& begin, const Option& option) {
    std::string text = begin;
    for (const std::string& spelling : option.spellings())
        text += spelling.compare(0, 2, "--") == 0 ? " -l " + spelling.substr(2) : " -s " + spelling.substr(1);
    if (!option.choices.empty())
        text += " -x -a " + fishQuoted(joined(option.choices, " "));
    else if (!option.argument.empty())
        text += takesFile(option) ? " -r -F" : " -x";
    return text + " -d " + fishQuoted(option.help) + "\n";
}

/** When a command is the innermost one that was named. */
std::string fishCondition(const Command& command, const std::string& path, const Command& program) {
    if (&command == &program) return "__fish_use_subcommand";
    std::string condition;
    for (std::size_t begin = 1; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        condition +=
            (condition.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + path.substr(begin, end - begin));
        begin = end + 1;
    }
    if (command.commands().empty()) return condition;
    return condition + "; and not __fish_seen_subcommand_from " + namesOf(command);
}

std::string fishCompletion(const Command& program) {
    std::string text = "complete -c vorntools -f\n";
    forEach(program, "", [&](const Command& command, const std::string& path) {
        const std::string begin = "complete -c vorntools -n " + fishQuoted(fishCondition(command, path, program));
        for (const Command& below : command.commands())
            text += begin + " -a " + below.name() + " -d " + fishQuoted(below.description()) + "\n";
        for (const Option& option : optionsOf(command))
            if (!option.isOperand()) text += fishOption(begin, option);
        for (const Option& option : command.options()) {
            if (!option.isOperand()) continue;
            if (!option.choices.empty()) text += begin + " -a " + fishQuoted(joined(option.choices, " ")) + "\n";
            if (option.choices.empty() && takesFile(option)) text += begin + " -F\n";
        }
    });
    for (const Option& option : program.options())
        if (!option.isHidden) text += fishOption("complete -c vorntools -n 'not __fish_use_subcommand'", option);
    return text;
}

} // namespace

std::string generateText(const Command& program, const std::string& kind) {
    if (kind == "man") return manual(program);
    if (kind == "bash") return bashCompletion(program);
    return kind == "zsh" ? zshCompletion(program) : fishCompletion(program);
}
