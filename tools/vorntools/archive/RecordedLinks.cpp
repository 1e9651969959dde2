#include "tools/vorntools/archive/RecordedLinks.h"

#include "tools/vorntools/DatLines.h"
#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace {

constexpr const char* kLinksTag = "<LinkedDocs>";
constexpr const char* kTableFilesTag = "<DT_Files>";

/** An entry of the linked documents: a name, with one of three words and a separator in front unless the link is an
 * ordinary one. */
RecordedName recordedName(const std::string& entry) {
    static constexpr std::string_view kWords[] = {"UNRESOLVED", "MMLAssy", "MML"};
    for (const std::string_view word : kWords) {
        if (entry.compare(0, word.size(), word) != 0 || entry.size() <= word.size()) continue;
        const unsigned char separator = static_cast<unsigned char>(entry[word.size()]);
        if (std::isalnum(separator) != 0 || separator == '_' || separator == '.') continue;
        return {word == kWords[0] ? RecordedName::Unresolved : RecordedName::Linked, entry.substr(word.size() + 1)};
    }
    return {RecordedName::Linked, entry};
}

std::string keyOf(std::string_view name) { return folded(lastName(name)); }

std::string withoutSuffix(const std::string& name) { return name.substr(0, std::min(name.rfind('.'), name.size())); }

/** Whether it is for the PDM client to record a target among the linked documents. */
bool isDocument(const Target& target) {
    return std::any_of(target.elements.begin(), target.elements.end(),
                       [](const TargetElement& element) { return !element.isOther; });
}

} // namespace

RecordedLinks readRecordedLinks(const std::string& document) {
    RecordedLinks recorded;
    const DatLines lines(document);
    if (!lines.read()) return recorded;
    recorded.tellsLinks = lines.has(kLinksTag);
    for (const std::string& entry : lines.block(kLinksTag)) recorded.names.push_back(recordedName(entry));
    for (const std::string& file : lines.block(kTableFilesTag))
        recorded.names.push_back({RecordedName::DesignTableFile, file});
    return recorded;
}

const char* differenceName(LinkDifference::Kind kind) {
    switch (kind) {
    case LinkDifference::OnlyInDocument: return "only in the document";
    case LinkDifference::FoundMeanwhile: return "found meanwhile";
    case LinkDifference::OnlyRecorded: break;
    }
    return "only recorded";
}

std::vector<LinkDifference> differencesBetween(const RecordedLinks& recorded, const std::vector<Target>& targets) {
    std::unordered_map<std::string, bool> stored; // whether the file is there
    for (const Target& target : targets) {
        stored[keyOf(target.stored)] |= !target.isMissing();
        stored[withoutSuffix(keyOf(target.stored))] |= !target.isMissing();
    }
    std::vector<LinkDifference> differences;
    std::unordered_set<std::string> listed;
    for (const RecordedName& name : recorded.names) {
        const auto known = stored.find(keyOf(name.name));
        listed.insert(keyOf(name.name));
        if (known == stored.end())
            differences.push_back({LinkDifference::OnlyRecorded, name.name});
        else if (name.kind == RecordedName::Unresolved && known->second)
            differences.push_back({LinkDifference::FoundMeanwhile, name.name});
    }
    if (!recorded.tellsLinks) return differences;
    for (const Target& target : targets)
        if (isDocument(target) && listed.count(keyOf(target.stored)) == 0 &&
            listed.count(withoutSuffix(keyOf(target.stored))) == 0)
            differences.push_back({LinkDifference::OnlyInDocument, target.stored});
    return differences;
}
