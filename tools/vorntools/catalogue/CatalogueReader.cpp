#include "tools/vorntools/archive/Paths.h"
#include "tools/vorntools/catalogue/CatalogueFile.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace catalogue {

namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

/** Seconds, downwards before 1970 as well. */
std::int64_t secondsOf(std::int64_t nanoseconds) {
    const std::int64_t seconds = nanoseconds / kNanosecondsPerSecond;
    return nanoseconds % kNanosecondsPerSecond < 0 ? seconds - 1 : seconds;
}

RecordedName::Kind recordedKindOf(const std::string& text) {
    if (text == "unresolved") return RecordedName::Unresolved;
    return text == "linked" ? RecordedName::Linked : RecordedName::DesignTableFile;
}

} // namespace

Reader::Reader(Database& database)
    : m_database(database), m_find(database, "SELECT files.id FROM folders JOIN files ON files.folder = folders.id "
                                             "WHERE folders.name = ? AND files.name = ?"),
      m_name(database, "SELECT name FROM document_names WHERE document = ?"),
      m_isDocument(database, "SELECT 1 FROM files WHERE id = ? AND role = 'document'"),
      m_document(
          database,
          "SELECT name, is_there, has_dat, size, modified, is_read, condition, is_damaged, version, release, "
          "service_pack, saved_path, identity, save, saved, status, reason, dat, layout, item_revision, dataset, "
          "named_reference, load_type, linked, unresolved, design_table, tells_links "
          "FROM documents JOIN document_names ON document = id WHERE id = ?"),
      m_links(database, "SELECT stored, coalesce(found_as, folders.name || files.name), uses FROM links "
                        "LEFT JOIN files ON files.id = target LEFT JOIN folders ON folders.id = files.folder "
                        "WHERE document = ? ORDER BY position"),
      m_elements(database, "SELECT link, list, kind, reference, tag_found, uses FROM elements "
                           "WHERE document = ? ORDER BY position"),
      m_ghosts(database, "SELECT name FROM ghosts WHERE document = ? ORDER BY position"),
      m_recorded(database, "SELECT kind, name FROM recorded WHERE document = ? ORDER BY position"),
      m_users(database, "SELECT DISTINCT document FROM links WHERE target = ?"),
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
    Statement statement(m_database, "SELECT id FROM documents");
    return inOrder(numbers(statement));
}

std::vector<FileId> Reader::inOrder(const std::vector<FileId>& documents) {
    // A DAT file without its document stands where the DAT file does.
    Statement statement(m_database, "SELECT folders.place, files.name, is_there FROM documents "
                                    "JOIN files ON files.id = documents.id JOIN folders ON folders.id = files.folder "
                                    "WHERE documents.id = ?");
    std::vector<std::tuple<std::int64_t, std::string, FileId>> rows;
    for (const FileId document : documents) {
        if (!statement.with(document).next()) continue;
        rows.emplace_back(statement.number(0), statement.text(1) + (statement.flag(2) ? "" : ".dat"), document);
    }
    std::sort(rows.begin(), rows.end());
    std::vector<FileId> result;
    for (const auto& row : rows) result.push_back(std::get<2>(row));
    return result;
}

FileId Reader::find(const std::string& fullName) {
    const SplitName split = splitName(fullName);
    const FileId file = m_find.with(split.folder, split.name).next() ? m_find.number(0) : 0;
    m_find.finish();
    return file;
}

std::string Reader::nameOf(FileId file) {
    std::string name = m_name.with(file).next() ? m_name.text(0) : std::string();
    m_name.finish();
    return name;
}

bool Reader::isDocument(FileId file) {
    const bool isOne = m_isDocument.with(file).next();
    m_isDocument.finish();
    return isOne;
}

DocumentFacts Reader::facts(FileId document, bool withLinks) {
    DocumentFacts facts;
    Statement& row = m_document;
    if (!row.with(document).next()) throw DatabaseError(m_database.name() + " is damaged");
    const std::string name = row.text(0);
    facts.found = {name, name, row.flag(1), row.flag(2)};
    facts.size = static_cast<std::uint64_t>(row.number(3));
    facts.modified = secondsOf(row.number(4));
    const bool isRead = row.number(5) != 0, wasAsked = !row.isNull(5) && withLinks;
    if (wasAsked) {
        DocumentLinks& links = facts.links.emplace();
        links.read = isRead;
        links.condition = {row.text(6), row.flag(7)};
        links.version = row.integer(8);
        links.release = row.integer(9);
        links.servicePack = row.integer(10);
        links.savedPath = row.text(11);
    }
    facts.identity = DocumentIdentity{row.text(12), row.text(13), row.text(14)};
    DocumentStatus& status = facts.status.emplace();
    status.document = name;
    std::string* const texts[] = {&status.status,         &status.reason,       &status.dat,
                                  &status.layout,         &status.itemRevision, &status.dataset,
                                  &status.namedReference, &status.loadType};
    int column = 15;
    for (std::string* const text : texts) *text = row.text(column++);
    status.linked = row.integer(23);
    status.unresolved = row.integer(24);
    status.designTable = row.flag(25);
    const bool hasRecorded = !row.isNull(26) && wasAsked;
    if (hasRecorded) facts.recorded.emplace().tellsLinks = row.flag(26);
    row.finish();
    if (wasAsked) readLinks(document, facts);
    if (hasRecorded)
        for (m_recorded.with(document); m_recorded.next();)
            facts.recorded->names.push_back({recordedKindOf(m_recorded.text(0)), m_recorded.text(1)});
    return facts;
}

void Reader::readLinks(FileId document, DocumentFacts& facts) {
    DocumentLinks& links = *facts.links;
    std::vector<NamedDocument> targets;
    for (m_links.with(document); m_links.next();) {
        const bool isFound = !m_links.isNull(1);
        const std::string stored = m_links.text(0);
        targets.push_back({isFound ? m_links.text(1) : stored, isFound, stored, m_links.integer(2)});
    }
    for (m_elements.with(document); m_elements.next();) {
        const std::size_t target = static_cast<std::size_t>(m_elements.number(0));
        if (target > targets.size()) throw DatabaseError(m_database.name() + " is damaged");
        NamedDocument named = target == 0 ? NamedDocument() : targets[target - 1];
        named.uses = m_elements.integer(5);
        const std::string list = m_elements.text(1);
        if (list == "part_files")
            links.partFiles.push_back(std::move(named));
        else if (list == "context_products")
            links.contextProducts.push_back(std::move(named));
        else if (list == "context_parts")
            links.contextParts.push_back(std::move(named));
        else if (list == "other_documents")
            links.others.push_back({m_elements.text(2), named, named.uses});
        else if (list == "links")
            links.links.push_back({m_elements.text(2), std::move(named), m_elements.text(3), m_elements.flag(4)});
        else
            links.externalReferences.push_back(m_elements.text(3));
    }
    for (m_ghosts.with(document); m_ghosts.next();) links.ghosts.push_back(m_ghosts.text(0));
}

std::vector<FileId> Reader::usersOf(FileId file) { return numbers(m_users.with(file)); }

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
