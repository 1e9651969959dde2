#include "tools/vorntools/archive/Targets.h"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace {

/** Collects links by the file, or else the name, that they lead to. What it is given has to stay. */
class TargetList {
public:
    TargetList(const std::string& savedPath, const std::string& document)
        : m_savedPath(savedPath), m_document(document) {}

    /** @param isRecord tells uses that no other link to the target has told */
    void add(const NamedDocument& document, bool isRecord, TargetElement element) {
        const auto added = document.exists ? m_found.emplace(document.name, m_targets.size())
                                           : m_missing.emplace(document.stored, m_targets.size());
        if (added.second) {
            Target target;
            target.stored = document.stored;
            if (document.exists) target.found = document.name;
            target.rule = ruleOf(target.stored, target.found, m_savedPath, m_document);
            m_targets.push_back(std::move(target));
        }
        Target& target = m_targets[added.first->second];
        if (added.second || isRecord) target.uses += document.uses;
        // Records of one kind that mean one file tell nothing that the first of them does not.
        const bool isRepeat = !target.elements.empty() && element.reference.empty() &&
                              target.elements.back().kind == element.kind && target.elements.back().reference.empty();
        if (!isRepeat) target.elements.push_back(std::move(element));
    }
    std::vector<Target> take() { return std::move(m_targets); }

private:
    const std::string &m_savedPath, &m_document;
    std::vector<Target> m_targets;
    std::unordered_map<std::string_view, std::size_t> m_found, m_missing; ///< rows
};

} // namespace

std::vector<Target> targetsOf(const DocumentLinks& links, const std::string& document) {
    TargetList list(links.savedPath, document);
    for (const NamedDocument& target : links.partFiles) list.add(target, true, {"part file", {}});
    for (const NamedDocument& target : links.contextProducts) list.add(target, true, {"context product", {}});
    for (const NamedDocument& target : links.contextParts) list.add(target, true, {"context part", {}});
    for (const OtherNamed& other : links.others) list.add(other.document, true, {other.kind, {}, false, true});
    for (const TypedLink& link : links.links)
        if (!link.document.name.empty())
            list.add(link.document, false, {link.type, link.reference, link.tagFound, false});
    return list.take();
}
