#include "tools/vorntools/archive/Archive.h"

#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <unordered_set>

namespace {

/** Where the rows begin that follow. */
template <class Row>
Index endOf(const std::vector<Row>& table) {
    return static_cast<Index>(table.size());
}

/** Closes a range of rows at the end of its table. */
template <class Row>
void closeRange(RowRange& range, const std::vector<Row>& table) {
    range.count = endOf(table) - range.first;
}

constexpr const char* kReferenceType = "MMLAssy_Ref";

} // namespace

Index Archive::add(const DocumentFacts& facts) {
    const Index key = m_texts.add(fileKey(facts.found.fullName));
    const auto added = m_byName.emplace(key, endOf(m_documents));
    const Index number = added.first->second;
    if (added.second) m_documents.emplace_back();
    ArchiveDocument& document = m_documents[number];
    if (added.second) {
        document.role = facts.role;
        document.name = m_texts.add(facts.found.name);
        document.fullName = m_texts.add(facts.found.fullName);
        document.exists = facts.found.exists;
        document.hasDat = facts.found.hasDat;
        document.size = facts.size;
        document.modified = facts.modified;
    }
    if (facts.identity && !document.hasIdentity) {
        document.hasIdentity = true;
        document.uuid = m_texts.add(facts.identity->uuid);
        document.save = m_texts.add(facts.identity->save);
        document.saved = m_texts.add(facts.identity->saved);
        document.checksum = m_texts.add(facts.checksum);
    }
    if (facts.status && !document.hasStatus) addStatus(document, *facts.status);
    if (facts.links && !document.hasLinks) addLinks(number, *facts.links, facts.recorded);
    return number;
}

void Archive::addStatus(ArchiveDocument& document, const DocumentStatus& status) {
    document.hasStatus = true;
    document.isFinding = status.isFinding();
    document.designTable = status.designTable;
    document.linked = status.linked;
    document.unresolved = status.unresolved;
    document.status = m_texts.add(status.status);
    document.reason = m_texts.add(status.reason);
    document.dat = m_texts.add(status.dat);
    document.layout = m_texts.add(status.layout);
    document.itemRevision = m_texts.add(status.itemRevision);
    document.dataset = m_texts.add(status.dataset);
    document.namedReference = m_texts.add(status.namedReference);
    document.loadType = m_texts.add(status.loadType);
}

void Archive::addLinks(Index number, const DocumentLinks& links, const std::optional<RecordedLinks>& recorded) {
    ArchiveDocument& document = m_documents[number];
    document.hasLinks = links.read;
    document.isUnreadable = !links.read;
    document.isDamaged = links.condition.isFinding;
    document.condition = m_texts.add(links.condition.text);
    document.version = links.version;
    document.release = links.release;
    document.servicePack = links.servicePack;
    if (!document.hasIdentity) document.save = m_texts.add(links.save);
    const std::vector<Target> targets = targetsOf(links, std::string(text(document.fullName)));
    document.links.first = endOf(m_links);
    for (const Target& target : targets) addTarget(number, target);
    closeRange(document.links, m_links);
    addReferences(document, links);
    addGhosts(number, links);
    if (recorded) addRecorded(document, *recorded, targets);
}

void Archive::addGhosts(Index number, const DocumentLinks& links) {
    RowRange& ghosts = m_documents[number].ghosts;
    std::unordered_set<std::string> live;
    if (!links.ghosts.empty())
        for (const ArchiveLink& link : linksOf(number)) live.insert(folded(lastName(text(link.stored))));
    ghosts.first = endOf(m_ghosts);
    for (const std::string& ghost : links.ghosts)
        m_ghosts.push_back({m_texts.add(ghost), live.count(folded(lastName(ghost))) > 0});
    closeRange(ghosts, m_ghosts);
}

void Archive::addRecorded(ArchiveDocument& document, const RecordedLinks& recorded,
                          const std::vector<Target>& targets) {
    document.recorded.first = endOf(m_recorded);
    for (const RecordedName& name : recorded.names) m_recorded.push_back({name.kind, m_texts.add(name.name)});
    closeRange(document.recorded, m_recorded);
    document.differences.first = endOf(m_differences);
    for (const LinkDifference& difference : differencesBetween(recorded, targets))
        m_differences.push_back({difference.kind, m_texts.add(difference.name)});
    closeRange(document.differences, m_differences);
}

void Archive::addTarget(Index number, const Target& target) {
    ArchiveLink link;
    link.from = number;
    link.stored = m_texts.add(target.stored);
    link.rule = target.rule;
    link.uses = target.uses;
    link.elements.first = endOf(m_elements);
    for (const TargetElement& element : target.elements)
        m_elements.push_back(
            {m_texts.add(element.kind), m_texts.add(element.reference), element.tagFound, element.isOther});
    closeRange(link.elements, m_elements);
    m_links.push_back(link);
    m_found.push_back(m_texts.add(target.found));
}

void Archive::addReferences(ArchiveDocument& document, const DocumentLinks& links) {
    document.references.first = endOf(m_references);
    bool anyTyped = false;
    for (const TypedLink& link : links.links) {
        if (!link.document.name.empty()) continue;
        m_references.push_back({m_texts.add(link.type), m_texts.add(link.reference), link.tagFound, false});
        anyTyped = anyTyped || link.type == kReferenceType;
    }
    for (const std::string& reference : links.externalReferences)
        if (!anyTyped) m_references.push_back({m_texts.add(kReferenceType), m_texts.add(reference), false, false});
    closeRange(document.references, m_references);
}

bool Archive::has(const std::string& fullName) const { return find(fullName) != kNoIndex; }

Index Archive::find(const std::string& fullName) const {
    const Index key = m_texts.find(fileKey(fullName));
    const auto known = key == kNoIndex ? m_byName.end() : m_byName.find(key);
    return known == m_byName.end() ? kNoIndex : known->second;
}

Index Archive::addNamed(const std::string& fullName, const Naming& naming) {
    const Index number = endOf(m_documents);
    m_byName.emplace(m_texts.add(fileKey(fullName)), number);
    ArchiveDocument document;
    document.role = ArchiveDocument::Named;
    document.name = m_texts.add(naming(fullName));
    document.fullName = m_texts.add(fullName);
    m_documents.push_back(document);
    return number;
}

void Archive::finish(const std::vector<std::string>& otherFiles, const Naming& naming) {
    findTargets(naming);
    findMissing();
    indexNames(otherFiles, naming);
    turnRound();
}

void Archive::findTargets(const Naming& naming) {
    std::unordered_map<Index, Index> known; // texts may be other names of a file
    for (std::size_t i = 0; i < m_links.size(); ++i) {
        if (m_found[i] == 0) continue;
        const auto added = known.emplace(m_found[i], kNoIndex);
        Index& target = added.first->second;
        const std::string name(text(m_found[i]));
        if (added.second) target = find(name);
        const std::string fullName = target == kNoIndex ? fullNameOf(name) : std::string();
        if (target == kNoIndex) target = find(fullName);
        if (target == kNoIndex) target = addNamed(fullName, naming);
        m_links[i].target = target;
    }
    m_found = {};
}

void Archive::findMissing() {
    // A relative name means another file in each folder.
    std::unordered_map<std::uint64_t, Index> known;
    for (ArchiveLink& link : m_links) {
        if (link.target != kNoIndex) continue;
        const std::string_view document = text(m_documents[link.from].fullName);
        const Index folder = isRelativePath(text(link.stored)) ? m_texts.add(folderOfPath(document)) : 0;
        const auto added = known.emplace(std::uint64_t{folder} << 32U | link.stored, endOf(m_missing));
        if (added.second) m_missing.push_back({link.stored, {}});
        link.missing = added.first->second;
    }
}

void Archive::indexNames(const std::vector<std::string>& otherFiles, const Naming& naming) {
    const auto add = [this](Index document) { m_names.add(text(m_documents[document].fullName), document); };
    for (Index i = 0; i < m_documents.size(); ++i)
        if (m_documents[i].role == ArchiveDocument::Walked && m_documents[i].exists) add(i);
    std::unordered_set<std::string> wanted;
    for (const MissingTarget& target : m_missing) wanted.insert(folded(lastName(text(target.stored))));
    for (const std::string& file : otherFiles) {
        if (wanted.count(folded(lastName(file))) == 0) continue;
        const Index known = find(file);
        add(known == kNoIndex ? addNamed(file, naming) : known);
    }
    m_names.sort();
}

void Archive::turnRound() {
    m_usersOf.assign(m_documents.size(), {});
    for (const ArchiveLink& link : m_links)
        ++(link.target != kNoIndex ? m_usersOf[link.target] : m_missing[link.missing].links).count;
    Index users = 0, missing = 0;
    const auto place = [](RowRange& range, Index& next) {
        range.first = next;
        next += range.count;
        range.count = 0;
    };
    for (RowRange& range : m_usersOf) place(range, users);
    for (MissingTarget& target : m_missing) place(target.links, missing);
    m_users.resize(users);
    m_missingLinks.resize(missing);
    for (Index i = 0; i < m_links.size(); ++i) {
        const bool found = m_links[i].target != kNoIndex;
        RowRange& range = found ? m_usersOf[m_links[i].target] : m_missing[m_links[i].missing].links;
        (found ? m_users : m_missingLinks)[range.first + range.count++] = i;
    }
}

Candidates Archive::candidatesOf(const ArchiveLink& link) const {
    return m_names.candidates(text(link.stored), text(m_documents[link.from].fullName));
}

Candidates Archive::candidatesOf(const MissingTarget& missing) const {
    return candidatesOf(m_links[linksTo(missing)[0]]);
}

std::vector<Rows<Index>> Archive::sameNames() const {
    std::vector<Rows<Index>> groups;
    for (const Rows<Index> files : m_names.groups()) {
        const bool areWalked = std::all_of(files.begin(), files.end(), [this](Index file) {
            return m_documents[file].role == ArchiveDocument::Walked;
        });
        if (files.size() > 1 && areWalked) groups.push_back(files);
    }
    return groups;
}
