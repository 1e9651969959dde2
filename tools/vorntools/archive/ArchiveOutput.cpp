#include "tools/vorntools/archive/ArchiveOutput.h"

#include "tools/vorntools/Text.h"

#include <set>
#include <string_view>

std::string ShownCandidate::agreement() const {
    if (agreeing == 0) return {};
    return "agrees in " + std::to_string(agreeing) + (agreeing == 1 ? " folder" : " folders");
}

std::string ShownCandidates::rest() const {
    return count > nearest.size() ? "and " + std::to_string(count - nearest.size()) + " more" : std::string();
}

std::string ShownCandidates::text() const {
    std::string text;
    for (const ShownCandidate& candidate : nearest) {
        text += (text.empty() ? "perhaps " : ", ") + candidate.name;
        if (candidate.agreeing > 0) text += " (" + candidate.agreement() + ")";
    }
    return rest().empty() ? text : text + ", " + rest();
}

void ShownCandidates::addTo(Json& object) const {
    Json array = Json::array();
    for (const ShownCandidate& candidate : nearest)
        array.push_back(Json::object({{"document", candidate.name},
                                      {"agreeing_folders", candidate.agreeing},
                                      {"distance", candidate.distance}}));
    object.add("candidates", array);
    object.add("candidate_count", count);
}

std::string ShownTarget::ruleText() const {
    return ruleName(target.rule) + (chosenAmong > 0 ? ", one of " + std::to_string(chosenAmong) : std::string());
}

std::string ShownTarget::kindsText() const {
    // The types that every child of a product and all that a drawing shows have anyway.
    std::set<std::string> known = {"MMLAssy_Context", "MMLDrawing"};
    std::string text;
    for (const TargetElement& element : target.elements)
        if (known.insert(element.kind).second) text += (text.empty() ? "" : ", ") + element.kind;
    return text.empty() ? target.elements.front().kind : text;
}

std::string ShownTarget::elementsText() const {
    std::string text;
    for (const TargetElement& element : target.elements)
        if (!element.reference.empty()) text += (text.empty() ? "" : ", ") + element.reference;
    return text;
}

void ShownTarget::addTo(Json& object) const {
    std::set<std::string_view> known;
    std::vector<std::string> kinds;
    Json elements = Json::array();
    for (const TargetElement& element : target.elements) {
        if (known.insert(element.kind).second) kinds.push_back(element.kind);
        if (!element.reference.empty())
            elements.push_back(Json::object(
                {{"kind", element.kind}, {"reference", element.reference}, {"tag_found", element.tagFound}}));
    }
    object.add("stored", target.stored);
    object.add("rule", textOrNull(ruleName(target.rule)));
    object.add("uses", target.uses);
    object.add("chosen_among", chosenAmong);
    object.add("kinds", kinds);
    object.add("elements", elements);
    if (target.isMissing()) candidates.addTo(object);
}

ShownCandidates shown(const Candidates& candidates, const std::function<std::string(Index)>& nameOf) {
    ShownCandidates result;
    result.count = candidates.count;
    for (const Candidate& candidate : candidates.nearest)
        result.nearest.push_back({nameOf(candidate.file), candidate.agreeing, candidate.distance});
    return result;
}

ShownCandidates shown(const Archive& archive, const Candidates& candidates) {
    return shown(candidates, [&](Index document) { return archive.nameOf(document); });
}

ShownTarget shown(const Archive& archive, const ArchiveLink& link) {
    ShownTarget result;
    const auto text = [&](Index number) { return std::string(archive.text(number)); };
    result.target.stored = text(link.stored);
    result.target.rule = link.rule;
    result.target.uses = link.uses;
    for (const LinkElement& element : archive.elementsOf(link))
        result.target.elements.push_back(
            {text(element.kind), text(element.reference), element.tagFound, element.isOther});
    if (link.target == kNoIndex) {
        result.name = result.target.stored;
        result.candidates = shown(archive, archive.candidatesOf(link));
        return result;
    }
    result.target.found = text(archive.document(link.target).fullName);
    result.name = archive.nameOf(link.target);
    const std::size_t count = link.rule == LinkRule::ByName ? archive.countOfName(link.target) : 0;
    result.chosenAmong = count > 1 ? count : 0;
    return result;
}

std::vector<std::string> kindsOf(const Archive& archive, const ArchiveLink& link) {
    std::set<Index> known;
    std::vector<std::string> kinds;
    for (const LinkElement& element : archive.elementsOf(link))
        if (known.insert(element.kind).second) kinds.emplace_back(archive.text(element.kind));
    return kinds;
}

std::string conditionToTell(const Archive& archive, Index document) {
    const ArchiveDocument& row = archive.document(document);
    if (row.isUnreadable) return "cannot be read";
    return row.isDamaged ? std::string(archive.text(row.condition)) : std::string();
}

std::string dotQuoted(const std::string& text) {
    std::string result = "\"";
    for (const char letter : printable(text)) {
        if (letter == '"' || letter == '\\') result += '\\';
        result += letter;
    }
    return result + "\"";
}
