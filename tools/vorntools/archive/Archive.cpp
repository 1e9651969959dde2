#include "tools/vorntools/archive/Archive.h"

#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <unordered_set>

namespace {

/** Candidates are looked for among so many files of one name. */
constexpr std::size_t kMostLookedAt = 64;

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

std::size_t sharedParts(const PathParts& a, const PathParts& b) {
    const std::size_t most = std::min(a.size(), b.size());
    return static_cast<std::size_t>(
        std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(most), b.begin()).first - a.begin());
}

/** Folders to go up from one folder and down to the other. */
std::size_t distanceBetween(const PathParts& from, const PathParts& to) {
    return from.size() + to.size() - 2 * sharedParts(from, to);
}

/** Folders that two paths have in common at their ends, letter case aside. */
std::size_t agreeingFolders(const PathParts& stored, const PathParts& folder) {
    std::size_t count = 0;
    while (count < stored.size() && count < folder.size() &&
           folded(stored[stored.size() - 1 - count]) == folded(folder[folder.size() - 1 - count]))
        ++count;
    return count;
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

void Archive::addLinks(Index number, const DocumentLinks& links, const std::vector<RecordedName>& recorded) {
    ArchiveDocument& document = m_documents[number];
    document.hasLinks = links.read;
    document.isUnreadable = !links.read;
    document.isDamaged = links.condition.isFinding;
    document.condition = m_texts.add(links.condition.text);
    document.version = links.version;
    document.release = links.release;
    document.servicePack = links.servicePack;
    document.links.first = endOf(m_links);
    addTargets(number, links);
    closeRange(document.links, m_links);
    addReferences(document, links);

    std::unordered_set<std::string> live;
    for (const ArchiveLink& link : linksOf(number)) live.insert(folded(lastName(text(link.stored))));
    document.ghosts.first = endOf(m_ghosts);
    for (const std::string& ghost : links.ghosts)
        m_ghosts.push_back({m_texts.add(ghost), live.count(folded(lastName(ghost))) > 0});
    closeRange(document.ghosts, m_ghosts);
    document.recorded.first = endOf(m_recorded);
    for (const RecordedName& name : recorded)
        m_recorded.push_back({name.kind, m_texts.add(name.name), live.count(folded(lastName(name.name))) > 0});
    closeRange(document.recorded, m_recorded);
}

void Archive::addTargets(Index number, const DocumentLinks& links) {
    struct Element {
        Index link;
        LinkElement element;
    };
    std::vector<Element> elements;
    std::unordered_map<std::string, Index> rows; // by file, or by the stored name of what is missing
    const std::string document(text(m_documents[number].fullName));
    const auto add = [&](const NamedDocument& target, bool countsUses, LinkElement element) {
        const std::string key = target.exists ? target.name : '\0' + target.stored;
        const auto row = rows.emplace(key, endOf(m_links));
        if (row.second) {
            const std::string found = target.exists ? target.name : std::string();
            m_links.emplace_back();
            m_links.back().from = number;
            m_links.back().stored = m_texts.add(target.stored);
            m_links.back().rule = ruleOf(target.stored, found, links.savedPath, document);
            m_found.resize(m_links.size());
            m_found.back() = m_texts.add(found);
        }
        if (row.second || countsUses) m_links[row.first->second].uses += target.uses;
        elements.push_back({row.first->second, element});
    };
    for (const NamedDocument& target : links.partFiles) add(target, true, {m_texts.add("part file")});
    for (const NamedDocument& target : links.contextProducts) add(target, true, {m_texts.add("context product")});
    for (const NamedDocument& target : links.contextParts) add(target, true, {m_texts.add("context part")});
    for (const OtherNamed& other : links.others) add(other.document, true, {m_texts.add(other.kind), 0, false, true});
    for (const TypedLink& link : links.links)
        if (!link.document.name.empty())
            add(link.document, false, {m_texts.add(link.type), m_texts.add(link.reference), link.tagFound});
    // Elements of one row become neighbours, in their order.
    std::stable_sort(elements.begin(), elements.end(),
                     [](const Element& a, const Element& b) { return a.link < b.link; });
    for (const Element& element : elements) {
        RowRange& range = m_links[element.link].elements;
        if (range.count == 0) range.first = endOf(m_elements);
        const auto own = rowsOf(m_elements, range);
        // Records of one kind that mean one file tell nothing that the first of them does not.
        if (!own.empty() && own[own.size() - 1] == element.element) continue;
        m_elements.push_back(element.element);
        ++range.count;
    }
}

void Archive::addReferences(ArchiveDocument& document, const DocumentLinks& links) {
    document.references.first = endOf(m_references);
    bool anyTyped = false;
    for (const TypedLink& link : links.links) {
        if (!link.document.name.empty()) continue;
        m_references.push_back({m_texts.add(link.type), m_texts.add(link.reference), link.tagFound});
        anyTyped = anyTyped || link.type == kReferenceType;
    }
    for (const std::string& reference : links.externalReferences)
        if (!anyTyped) m_references.push_back({m_texts.add(kReferenceType), m_texts.add(reference)});
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
    groupNames(otherFiles, naming);
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
        if (added.second) m_missing.push_back({link.stored, {}, kNoIndex});
        link.missing = added.first->second;
    }
}

void Archive::groupNames(const std::vector<std::string>& otherFiles, const Naming& naming) {
    std::unordered_map<std::string, Index> wanted;
    for (const MissingTarget& target : m_missing) wanted.emplace(folded(lastName(text(target.stored))), kNoIndex);
    std::vector<std::pair<std::string, Index>> files;
    for (Index i = 0; i < m_documents.size(); ++i)
        if (m_documents[i].role == ArchiveDocument::Walked && m_documents[i].exists)
            files.emplace_back(folded(lastName(text(m_documents[i].fullName))), i);
    for (const std::string& file : otherFiles) {
        std::string name = folded(lastName(file));
        if (wanted.count(name) == 0) continue;
        const Index known = find(file);
        files.emplace_back(std::move(name), known == kNoIndex ? addNamed(file, naming) : known);
    }
    std::sort(files.begin(), files.end(), [this](const auto& a, const auto& b) {
        if (a.first != b.first) return a.first < b.first;
        return text(m_documents[a.second].fullName) < text(m_documents[b.second].fullName);
    });
    m_groupOf.assign(m_documents.size(), kNoIndex);
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (i == 0 || files[i].first != files[i - 1].first) {
            m_groups.push_back({static_cast<Index>(i), 0});
            const auto target = wanted.find(files[i].first);
            if (target != wanted.end()) target->second = endOf(m_groups) - 1;
        }
        ++m_groups.back().count;
        m_sameName.push_back(files[i].second);
        m_groupOf[files[i].second] = endOf(m_groups) - 1;
    }
    for (MissingTarget& target : m_missing) target.group = wanted[folded(lastName(text(target.stored)))];
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
    if (link.missing == kNoIndex || m_missing[link.missing].group == kNoIndex) return {};
    const std::string_view document = text(m_documents[link.from].fullName);
    const Rows<Index> files = rowsOf(m_sameName, m_groups[m_missing[link.missing].group]);
    const Index* const next =
        std::lower_bound(files.begin(), files.end(), document,
                         [this](Index file, std::string_view name) { return text(m_documents[file].fullName) < name; });
    const std::size_t at = static_cast<std::size_t>(next - files.begin());
    const std::size_t first = at > kMostLookedAt / 2 ? at - kMostLookedAt / 2 : 0;
    const PathParts here = partsOfFolder(document), stored = partsOfFolder(text(link.stored));
    Candidates result;
    result.count = files.size();
    for (std::size_t i = first; i < std::min(files.size(), first + kMostLookedAt); ++i) {
        const PathParts folder = partsOfFolder(text(m_documents[files[i]].fullName));
        result.nearest.push_back({files[i], static_cast<unsigned int>(agreeingFolders(stored, folder)),
                                  static_cast<unsigned int>(distanceBetween(here, folder))});
    }
    std::stable_sort(result.nearest.begin(), result.nearest.end(), [](const Candidate& a, const Candidate& b) {
        return a.distance != b.distance ? a.distance < b.distance : a.agreeing > b.agreeing;
    });
    result.nearest.resize(std::min(result.nearest.size(), kMostCandidates));
    return result;
}

Candidates Archive::candidatesOf(const MissingTarget& missing) const {
    return candidatesOf(m_links[linksTo(missing)[0]]);
}

std::size_t Archive::countOfName(Index document) const {
    return m_groupOf[document] == kNoIndex ? 0 : m_groups[m_groupOf[document]].count;
}

std::vector<Rows<Index>> Archive::sameNames() const {
    std::vector<Rows<Index>> groups;
    for (const RowRange& group : m_groups) {
        const Rows<Index> files = rowsOf(m_sameName, group);
        const bool isWalked = std::all_of(files.begin(), files.end(), [this](Index file) {
            return m_documents[file].role == ArchiveDocument::Walked;
        });
        if (files.size() > 1 && isWalked) groups.push_back(files);
    }
    return groups;
}
