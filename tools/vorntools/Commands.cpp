#include "tools/vorntools/Commands.h"

#include "tools/vorntools/Output.h"
#include "tools/vorntools/System.h"

#include "embedded/SessionFile.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

constexpr int kMostJobs = 64;

/** Texts that each end with a NUL; what stands behind the last one counts as well. */
std::vector<std::string> splitAtNul(const std::string& text) {
    std::vector<std::string> result;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\0', begin), text.size());
        if (end > begin) result.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

} // namespace

void CommonOptions::addNamesTo(Command& command, const std::string& operand, const std::string& help) {
    std::string argument = operand;
    for (char& letter : argument) letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    command.value(operand, argument, help, &names);
    command.value("--exclude", "GLOB",
                  "Leave out files and folders of this name, or path when it has a slash; *, ? and [...] as in a shell",
                  &excluded);
    command.flag("-0,--null", "Read more names from standard input, each ended by a NUL", namesFromInput);
}

bool CommonOptions::completeNames() {
    if (namesFromInput)
        for (std::string& name : splitAtNul(host::readInput())) names.push_back(std::move(name));
    const bool given = !names.empty() || namesFromInput;
    if (given && !catalogues.empty()) complain("name files and folders, or catalogues, not both");
    if (!given && catalogues.empty()) complain("name files or folders");
    return given == catalogues.empty();
}

Option& CommonOptions::addCatalogueTo(Command& command) {
    return command.value("--catalogue", "FILE", "Ask this catalogue instead of folders; several are asked as one",
                         &catalogues);
}

bool CommonOptions::search(DocumentSearch& documents) const {
    documents.exclude(excluded);
    return documents.search(names);
}

void CommonOptions::addTo(Command& command) {
    addOutputTo(command);
    command.value("--session", "FILE", "Session file: environment and documents in session", &session);
}

void CommonOptions::addOutputTo(Command& command) {
    command.flag("--json", "One JSON object a line instead of a table", json);
    command.value("--journal", "FILE", "File that receives the journal", &journal);
}

void CommonOptions::addSessionTo(Command& command) {
    command.value("--journal", "FILE", "File that receives the journal", &journal);
    command.value("--session", "FILE", "Session file: environment and documents in session", &session);
}

void CommonOptions::addJobsTo(Command& command) {
    command
        .value("--jobs", "N", "Processes that read documents, by default one a processor; more help with slow servers",
               &jobs)
        .between(1, kMostJobs);
}

bool CommonOptions::loadSession() const {
    if (session.empty()) return true;
    const embedded::SessionFileResult result = embedded::loadSession(session);
    if (!result.ok) complain(result.error);
    return result.ok;
}
