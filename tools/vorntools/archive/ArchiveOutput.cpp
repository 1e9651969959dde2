#include "tools/vorntools/archive/ArchiveOutput.h"

#include "tools/vorntools/Text.h"

#include <set>

std::string describe(const Archive& archive, const Candidates& candidates) {
    std::string text;
    for (const Candidate& candidate : candidates.nearest) {
        text += (text.empty() ? "perhaps " : ", ") + archive.nameOf(candidate.document);
        if (candidate.agreeing > 0)
            text += " (agrees in " + std::to_string(candidate.agreeing) +
                    (candidate.agreeing == 1 ? " folder)" : " folders)");
    }
    const std::size_t more = candidates.count - candidates.nearest.size();
    return more > 0 ? text + ", and " + std::to_string(more) + " more" : text;
}

std::size_t chosenAmong(const Archive& archive, const ArchiveLink& link) {
    const std::size_t count = link.rule == LinkRule::ByName ? archive.countOfName(link.target) : 0;
    return count > 1 ? count : 0;
}

std::string choiceOf(const Archive& archive, const ArchiveLink& link) {
    const std::size_t count = chosenAmong(archive, link);
    return count > 0 ? "found by name, one of " + std::to_string(count) + " of this name" : std::string();
}

std::string conditionToTell(const Archive& archive, Index document) {
    const ArchiveDocument& row = archive.document(document);
    if (row.isUnreadable) return "cannot be read";
    return row.isDamaged ? std::string(archive.text(row.condition)) : std::string();
}

Json jsonOf(const Archive& archive, const Candidates& candidates) {
    Json array = Json::array();
    for (const Candidate& candidate : candidates.nearest)
        array.push_back(Json::object({{"document", archive.nameOf(candidate.document)},
                                      {"agreeing_folders", candidate.agreeing},
                                      {"distance", candidate.distance}}));
    return array;
}

void addLinkTo(Json& object, const Archive& archive, const ArchiveLink& link) {
    const auto text = [&](Index number) { return std::string(archive.text(number)); };
    std::set<Index> kinds;
    Json kindTexts = Json::array(), elements = Json::array();
    for (const LinkElement& element : archive.elementsOf(link)) {
        if (kinds.insert(element.kind).second) kindTexts.push_back(text(element.kind));
        if (element.reference != 0)
            elements.push_back(Json::object({{"kind", text(element.kind)},
                                             {"reference", text(element.reference)},
                                             {"tag_found", element.tagFound}}));
    }
    object.add("stored", text(link.stored));
    object.add("rule", textOrNull(nameOf(link.rule)));
    object.add("uses", link.uses);
    object.add("chosen_among", chosenAmong(archive, link));
    object.add("kinds", std::move(kindTexts));
    object.add("elements", std::move(elements));
    if (link.target != kNoIndex) return;
    const Candidates candidates = archive.candidatesOf(link);
    object.add("candidates", jsonOf(archive, candidates));
    object.add("candidate_count", candidates.count);
}

std::string dotQuoted(const std::string& text) {
    std::string result = "\"";
    for (const char letter : printable(text)) {
        if (letter == '"' || letter == '\\') result += '\\';
        result += letter;
    }
    return result + "\"";
}
