#include "tools/vorntools/catalogue/CatalogueTree.h"

#include <algorithm>

namespace catalogue {

namespace {

bool isEmpty(const std::vector<std::vector<FileId>>& files) {
    return std::all_of(files.begin(), files.end(), [](const auto& list) { return list.empty(); });
}

/** What is at the end of a tree shows only whether it has links. */
DocumentFacts firstLinkFacts(Reader& reader, FileId document) {
    Place place;
    DocumentFacts facts = reader.conditionFacts(document, place);
    if (facts.links) reader.addLinks(document, {1}, *facts.links);
    return facts;
}

} // namespace

/** The file in each catalogue that has it. */
TreeFiller::Files TreeFiller::begin(const std::string& fullName) {
    Files level(m_readers.size());
    for (std::size_t k = 0; k < m_readers.size(); ++k) {
        const FileId file = m_readers[k]->find(fullName);
        if (file != 0 && m_met[k].insert(file).second) level[k].push_back(file);
    }
    return level;
}

/** Adds a file of one catalogue, and the same file of the others, to the level where it is met first. */
void TreeFiller::meet(std::size_t catalogue, FileId file, Files& level) {
    if (!m_met[catalogue].insert(file).second) return;
    level[catalogue].push_back(file);
    if (m_readers.size() == 1) return;
    const std::string name = m_readers[catalogue]->nameOf(file);
    for (std::size_t k = 0; k < m_readers.size(); ++k) {
        const FileId same = k == catalogue ? 0 : m_readers[k]->find(name);
        if (same != 0 && m_met[k].insert(same).second) level[k].push_back(same);
    }
}

bool TreeFiller::addUses(const std::string& fullName) {
    Files files = begin(fullName);
    if (isEmpty(files)) return false;
    for (unsigned int level = 0; !isEmpty(files); ++level) {
        Files below(m_readers.size());
        for (std::size_t k = 0; k < m_readers.size(); ++k)
            for (const FileId file : files[k]) {
                Reader& reader = *m_readers[k];
                if (!reader.isDocument(file)) continue;
                m_archive.add(isLast(level) ? firstLinkFacts(reader, file) : reader.linkFacts(file));
                if (isLast(level)) continue;
                for (const FileId target : reader.targetsOf(file)) meet(k, target, below);
            }
        files = std::move(below);
    }
    addPlainFile(fullName);
    return true;
}

bool TreeFiller::addUsers(const std::string& fullName) {
    Files files = begin(fullName);
    if (isEmpty(files)) return false;
    std::vector<WantedLinks> wanted(m_readers.size());
    for (unsigned int level = 0; !isEmpty(files); ++level) {
        Files above(m_readers.size());
        for (std::size_t k = 0; k < m_readers.size(); ++k)
            for (const FileId file : files[k])
                for (const Pointer& link : m_readers[k]->pointersTo(file, isLast(level) ? 1 : -1)) {
                    wanted[k][link.document].push_back(link.position);
                    if (!isLast(level)) meet(k, link.document, above);
                }
        files = std::move(above);
    }
    for (std::size_t k = 0; k < m_readers.size(); ++k) addWanted(k, wanted[k]);
    addPlainFile(fullName);
    return true;
}

/** In the order of the walk; also what was met as a file, and what cannot be read, since it may be one of them. */
void TreeFiller::addWanted(std::size_t catalogue, WantedLinks& wanted) {
    Reader& reader = *m_readers[catalogue];
    for (const FileId file : m_met[catalogue])
        if (wanted.count(file) == 0 && reader.isDocument(file)) wanted[file];
    for (const FileId document : reader.unreadable()) wanted[document];
    std::vector<FileId> documents; // as they lie in the file, which is read once from its beginning to its end
    documents.reserve(wanted.size());
    for (const auto& [document, positions] : wanted) documents.push_back(document);
    std::sort(documents.begin(), documents.end());
    std::vector<std::pair<Place, DocumentFacts>> rows(documents.size());
    std::vector<std::size_t> order(documents.size());
    for (std::size_t i = 0; i < documents.size(); ++i) {
        rows[i].second = reader.conditionFacts(documents[i], rows[i].first);
        order[i] = i;
    }
    for (std::size_t i = 0; i < documents.size(); ++i) { // when the names of most targets are known
        std::vector<std::int64_t>& positions = wanted[documents[i]];
        std::sort(positions.begin(), positions.end());
        if (rows[i].second.links) reader.addLinks(documents[i], positions, *rows[i].second.links);
    }
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return rows[a].first < rows[b].first; });
    for (const std::size_t i : order) m_archive.add(rows[i].second);
}

/** The file itself, when it is none of the documents. */
void TreeFiller::addPlainFile(const std::string& fullName) {
    if (m_archive.has(fullName)) return;
    DocumentFacts facts;
    facts.found = {fullName, fullName, true, false};
    m_archive.add(facts);
}

} // namespace catalogue
