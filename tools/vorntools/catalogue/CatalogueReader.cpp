#include "tools/vorntools/archive/Paths.h"
#include "tools/vorntools/catalogue/CatalogueFile.h"

#include <algorithm>
#include <utility>

namespace catalogue {

namespace {

/** Seconds, downwards before 1970 as well. */
std::int64_t secondsOf(std::int64_t nanoseconds) {
    const std::int64_t seconds = nanoseconds / kNanosecondsPerSecond;
    return nanoseconds % kNanosecondsPerSecond < 0 ? seconds - 1 : seconds;
}

RecordedName::Kind recordedKindOf(const std::string& text) {
    if (text == "unresolved") return RecordedName::Unresolved;
    return text == "linked" ? RecordedName::Linked : RecordedName::DesignTableFile;
}

/** Of a document, in the form of addElement. @param rest of the statement */
std::string selectElements(const char* rest) {
    return std::string("SELECT link, list, kind, reference, tag_found, uses FROM elements WHERE document = ?") + rest;
}

/** The row of a document. @param more columns, behind those of takeFound and takeLinks and the place of the folder */
std::string selectDocument(const std::string& more) {
    return "SELECT folders.name || files.name, is_there, has_dat, size, modified, is_read, condition, is_damaged, "
           "version, release, service_pack, saved_path, folders.place" +
           more +
           " FROM documents JOIN files USING (id) JOIN folders ON folders.id = files.folder WHERE documents.id = ?";
}

NamedDocument targetOf(const Statement& link) {
    const bool isFound = !link.isNull(1);
    std::string stored = link.text(0), name = isFound ? link.text(1) : stored;
    return {std::move(name), isFound, std::move(stored), link.integer(2)};
}

/** @param target an empty one for an element that names no document */
void addElement(const Statement& element, NamedDocument target, DocumentLinks& links) {
    target.uses = element.integer(5);
    const std::string list = element.text(1);
    if (list == "part_files")
        links.partFiles.push_back(std::move(target));
    else if (list == "context_products")
        links.contextProducts.push_back(std::move(target));
    else if (list == "context_parts")
        links.contextParts.push_back(std::move(target));
    else if (list == "other_documents") {
        const std::int32_t uses = target.uses;
        links.others.push_back({element.text(2), std::move(target), uses});
    } else if (list == "links")
        links.links.push_back({element.text(2), std::move(target), element.text(3), element.flag(4)});
    else
        links.externalReferences.push_back(element.text(3));
}

/** A DAT file without its document stands where the DAT file does. */
std::string fileOfPlace(const std::string& name, bool isThere) { return isThere ? name : name + ".dat"; }

void takeFound(const Statement& row, DocumentFacts& facts) {
    const std::string name = row.text(0);
    facts.found = {name, name, row.flag(1), row.flag(2)};
}

/** What the row tells of the links; nothing of what is no CATIA document. */
void takeLinks(const Statement& row, DocumentFacts& facts) {
    if (row.isNull(5)) return;
    DocumentLinks& links = facts.links.emplace();
    links.read = row.flag(5);
    links.condition = {row.text(6), row.flag(7)};
    links.version = row.integer(8);
    links.release = row.integer(9);
    links.servicePack = row.integer(10);
    links.savedPath = row.text(11);
}

void takeStatus(const Statement& row, DocumentFacts& facts) {
    DocumentStatus& status = facts.status.emplace();
    status.document = facts.found.name;
    std::string* const texts[] = {&status.status,         &status.reason,       &status.dat,
                                  &status.layout,         &status.itemRevision, &status.dataset,
                                  &status.namedReference, &status.loadType};
    int column = 16;
    for (std::string* const text : texts) *text = row.text(column++);
    status.linked = row.integer(24);
    status.unresolved = row.integer(25);
    status.designTable = row.flag(26);
}

} // namespace

Reader::Reader(Database& database)
    : m_database(database), m_find(database, "SELECT files.id FROM folders JOIN files ON files.folder = folders.id "
                                             "WHERE folders.name = ? AND files.name = ?"),
      m_name(database, "SELECT name FROM document_names WHERE document = ?"),
      m_isDocument(database, "SELECT 1 FROM files WHERE id = ? AND role = 'document'"),
      m_document(database, selectDocument(", identity, save, saved, status, reason, dat, layout, item_revision, "
                                          "dataset, named_reference, load_type, linked, unresolved, design_table, "
                                          "tells_links, sha256")
                               .c_str()),
      m_condition(database, selectDocument("").c_str()),
      m_links(database, "SELECT stored, coalesce(found_as, folders.name || files.name), uses FROM links "
                        "LEFT JOIN files ON files.id = target LEFT JOIN folders ON folders.id = files.folder "
                        "WHERE document = ? ORDER BY position"),
      m_link(database, "SELECT stored, found_as, uses, target FROM links WHERE document = ? AND position = ?"),
      m_elements(database, selectElements(" ORDER BY position").c_str()),
      m_elementsOfLink(database, selectElements(" AND link = ? ORDER BY position").c_str()),
      m_ghosts(database, "SELECT name FROM ghosts WHERE document = ? ORDER BY position"),
      m_recorded(database, "SELECT kind, name FROM recorded WHERE document = ? ORDER BY position"),
      m_pointers(database, "SELECT document, position FROM links WHERE target = ? LIMIT ?"),
      m_targets(database, "SELECT target FROM links WHERE document = ? AND target IS NOT NULL ORDER BY position"),
      m_ofName(database, "SELECT id FROM files WHERE folded = ? AND role <> 'elsewhere'"),
      m_preview(database, "SELECT jpeg FROM previews WHERE document = ?") {}

std::vector<FileId> Reader::numbers(Statement& statement) {
    std::vector<FileId> result;
    while (statement.next()) result.push_back(statement.number(0));
    statement.finish();
    return result;
}

std::vector<std::string> Reader::texts(Statement& statement) {
    std::vector<std::string> result;
    while (statement.next()) result.push_back(statement.text(0));
    statement.finish();
    return result;
}

std::vector<FileId> Reader::documents() {
    Statement statement(m_database, "SELECT documents.id, folders.place, files.name, is_there FROM documents "
                                    "JOIN files USING (id) JOIN folders ON folders.id = files.folder");
    std::vector<std::pair<Place, FileId>> rows;
    while (statement.next())
        rows.emplace_back(Place{statement.number(1), fileOfPlace(statement.text(2), statement.flag(3))},
                          statement.number(0));
    std::sort(rows.begin(), rows.end());
    std::vector<FileId> result;
    result.reserve(rows.size());
    for (const auto& row : rows) result.push_back(row.second);
    return result;
}

FileId Reader::find(const std::string& fullName) {
    const SplitName split = splitName(fullName);
    const FileId file = m_find.with(split.folder, split.name).next() ? m_find.number(0) : 0;
    m_find.finish();
    return file;
}

const std::string& Reader::nameOf(FileId file) {
    const auto known = m_names.find(file);
    if (known != m_names.end()) return known->second;
    std::string name = m_name.with(file).next() ? m_name.text(0) : std::string();
    m_name.finish();
    return m_names.emplace(file, std::move(name)).first->second;
}

bool Reader::isDocument(FileId file) {
    const bool isOne = m_isDocument.with(file).next();
    m_isDocument.finish();
    return isOne;
}

Statement& Reader::rowOf(Statement& statement, FileId document) {
    if (!statement.with(document).next()) throw DatabaseError(m_database.name() + " is damaged");
    return statement;
}

DocumentFacts Reader::facts(FileId document, bool withLinks) {
    DocumentFacts facts;
    Statement& row = rowOf(m_document, document);
    takeFound(row, facts);
    facts.size = static_cast<std::uint64_t>(row.number(3));
    facts.modified = secondsOf(row.number(4));
    if (withLinks) takeLinks(row, facts);
    facts.identity = DocumentIdentity{row.text(13), row.text(14), row.text(15)};
    facts.checksum = row.text(28);
    takeStatus(row, facts);
    if (!row.isNull(27) && facts.links) facts.recorded.emplace().tellsLinks = row.flag(27);
    row.finish();
    if (!facts.links) return facts;
    readLinks(document, *facts.links);
    for (m_ghosts.with(document); m_ghosts.next();) facts.links->ghosts.push_back(m_ghosts.text(0));
    if (facts.recorded)
        for (m_recorded.with(document); m_recorded.next();)
            facts.recorded->names.push_back({recordedKindOf(m_recorded.text(0)), m_recorded.text(1)});
    return facts;
}

DocumentFacts Reader::nameFacts(FileId document) {
    DocumentFacts facts;
    Statement& row = rowOf(m_condition, document);
    takeFound(row, facts);
    row.finish();
    return facts;
}

DocumentFacts Reader::linkFacts(FileId document) {
    Place place;
    DocumentFacts facts = conditionFacts(document, place);
    if (facts.links) readLinks(document, *facts.links);
    return facts;
}

DocumentFacts Reader::conditionFacts(FileId document, Place& place) {
    DocumentFacts facts;
    Statement& row = rowOf(m_condition, document);
    takeFound(row, facts);
    takeLinks(row, facts);
    place = {row.number(12), fileOfPlace(splitName(facts.found.name).name, facts.found.exists)};
    row.finish();
    m_names.emplace(document, facts.found.fullName);
    return facts;
}

void Reader::addLinks(FileId document, const std::vector<std::int64_t>& positions, DocumentLinks& links) {
    for (const std::int64_t position : positions) readLink(document, position, links);
}

void Reader::readLinks(FileId document, DocumentLinks& links) {
    std::vector<NamedDocument> targets;
    for (m_links.with(document); m_links.next();) targets.push_back(targetOf(m_links));
    for (m_elements.with(document); m_elements.next();) {
        const std::size_t target = static_cast<std::size_t>(m_elements.number(0));
        if (target > targets.size()) throw DatabaseError(m_database.name() + " is damaged");
        addElement(m_elements, target == 0 ? NamedDocument() : targets[target - 1], links);
    }
}

void Reader::readLink(FileId document, std::int64_t position, DocumentLinks& links) {
    if (!m_link.with(document, position).next()) return;
    NamedDocument target;
    target.stored = target.name = m_link.text(0);
    target.exists = !m_link.isNull(3);
    target.uses = m_link.integer(2);
    if (!m_link.isNull(1))
        target.name = m_link.text(1);
    else if (target.exists)
        target.name = nameOf(m_link.number(3));
    m_link.finish();
    for (m_elementsOfLink.with(document, position); m_elementsOfLink.next();)
        addElement(m_elementsOfLink, target, links);
}

std::vector<Pointer> Reader::pointersTo(FileId file, std::int64_t most) {
    std::vector<Pointer> pointers;
    for (m_pointers.with(file, most); m_pointers.next();)
        pointers.push_back({m_pointers.number(0), m_pointers.number(1)});
    m_pointers.finish();
    return pointers;
}

std::vector<FileId> Reader::targetsOf(FileId document) { return numbers(m_targets.with(document)); }

std::vector<FileId> Reader::filesOfName(const std::string& path) {
    return numbers(m_ofName.with(folded(lastName(path))));
}

std::vector<FileId> Reader::unreadable() {
    Statement statement(m_database, "SELECT id FROM documents WHERE is_read = 0");
    return numbers(statement);
}

std::vector<std::string> Reader::otherFiles() {
    Statement statement(m_database, "SELECT folders.name || files.name FROM files JOIN folders "
                                    "ON folders.id = files.folder WHERE role = 'other' "
                                    "ORDER BY folders.place, files.name");
    return texts(statement);
}

std::vector<std::string> Reader::walkedFiles() {
    Statement statement(m_database, "SELECT folders.name || files.name FROM files "
                                    "JOIN folders ON folders.id = files.folder "
                                    "LEFT JOIN documents ON documents.id = files.id "
                                    "WHERE role <> 'elsewhere' AND coalesce(is_there, 1)");
    return texts(statement);
}

std::string Reader::preview(FileId document) {
    std::string bytes = m_preview.with(document).next() ? m_preview.bytes(0) : std::string();
    m_preview.finish();
    return bytes;
}

bool Reader::isComplete() { return m_database.number("SELECT value FROM about WHERE key = 'complete'") != 0; }

} // namespace catalogue
