#include "tools/vorntools/catalogue/Schema.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace catalogue {

const char* const kSchema = R"(CREATE TABLE about(key TEXT PRIMARY KEY, value) WITHOUT ROWID;
CREATE TABLE looked_at(position INTEGER PRIMARY KEY, folder TEXT NOT NULL);
CREATE TABLE folders(
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    place INTEGER NOT NULL);
CREATE TABLE files(
    id INTEGER PRIMARY KEY,
    folder INTEGER NOT NULL REFERENCES folders(id),
    name TEXT NOT NULL,
    folded TEXT NOT NULL,
    role TEXT NOT NULL CHECK(role IN ('document', 'other', 'elsewhere')),
    UNIQUE(folder, name));
CREATE INDEX files_by_folded ON files(folded);
CREATE TABLE documents(
    id INTEGER PRIMARY KEY REFERENCES files(id),
    is_there INTEGER NOT NULL,
    has_dat INTEGER NOT NULL,
    size INTEGER NOT NULL,
    modified INTEGER NOT NULL,
    file_identity INTEGER NOT NULL,
    dat_size INTEGER NOT NULL,
    dat_modified INTEGER NOT NULL,
    dat_identity INTEGER NOT NULL,
    is_read INTEGER,
    condition TEXT,
    is_damaged INTEGER,
    version INTEGER,
    release INTEGER,
    service_pack INTEGER,
    saved_path TEXT,
    identity TEXT,
    save TEXT,
    saved TEXT,
    status TEXT NOT NULL,
    reason TEXT NOT NULL,
    dat TEXT NOT NULL,
    layout TEXT NOT NULL,
    item_revision TEXT NOT NULL,
    dataset TEXT NOT NULL,
    named_reference TEXT NOT NULL,
    load_type TEXT NOT NULL,
    linked INTEGER NOT NULL,
    unresolved INTEGER NOT NULL,
    design_table INTEGER NOT NULL,
    tells_links INTEGER,
    sha256 TEXT);
CREATE INDEX documents_unreadable ON documents(is_read) WHERE is_read = 0;
CREATE TABLE links(
    document INTEGER NOT NULL REFERENCES documents(id),
    position INTEGER NOT NULL,
    target INTEGER REFERENCES files(id),
    stored TEXT NOT NULL,
    folded TEXT NOT NULL,
    found_as TEXT,
    rule TEXT,
    uses INTEGER NOT NULL,
    PRIMARY KEY(document, position)) WITHOUT ROWID;
CREATE INDEX links_by_target ON links(target);
CREATE INDEX links_by_folded ON links(folded);
CREATE TABLE elements(
    document INTEGER NOT NULL REFERENCES documents(id),
    position INTEGER NOT NULL,
    link INTEGER,
    list TEXT NOT NULL,
    kind TEXT NOT NULL,
    reference TEXT NOT NULL,
    tag_found INTEGER NOT NULL,
    uses INTEGER NOT NULL,
    PRIMARY KEY(document, position)) WITHOUT ROWID;
CREATE TABLE ghosts(
    document INTEGER NOT NULL REFERENCES documents(id),
    position INTEGER NOT NULL,
    name TEXT NOT NULL,
    PRIMARY KEY(document, position)) WITHOUT ROWID;
CREATE TABLE recorded(
    document INTEGER NOT NULL REFERENCES documents(id),
    position INTEGER NOT NULL,
    kind TEXT NOT NULL CHECK(kind IN ('linked', 'unresolved', 'design table file')),
    name TEXT NOT NULL,
    PRIMARY KEY(document, position)) WITHOUT ROWID;
CREATE TABLE streams(
    document INTEGER NOT NULL REFERENCES documents(id),
    position INTEGER NOT NULL,
    parent INTEGER,
    kind TEXT NOT NULL CHECK(kind IN ('storage', 'stream')),
    name TEXT NOT NULL,
    size INTEGER NOT NULL,
    pieces INTEGER NOT NULL,
    date1 TEXT,
    date2 TEXT,
    date3 TEXT,
    PRIMARY KEY(document, position)) WITHOUT ROWID;
CREATE TABLE previews(
    document INTEGER PRIMARY KEY REFERENCES documents(id),
    jpeg BLOB NOT NULL);
CREATE VIEW document_names AS
    SELECT files.id AS document, folders.name || files.name AS name
    FROM files JOIN folders ON folders.id = files.folder;
)";

namespace {

/** The statements of the schema as SQLite keeps them. */
std::set<std::string> ownStatements() {
    constexpr std::string_view kEnd = ";\n";
    std::set<std::string> statements;
    std::string_view rest = kSchema;
    for (std::size_t end = 0; (end = rest.find(kEnd)) != std::string_view::npos; rest.remove_prefix(end + kEnd.size()))
        statements.emplace(rest.substr(0, end));
    return statements;
}

} // namespace

void checkIsCatalogue(Database& database) {
    if (database.number("PRAGMA application_id") != kApplication)
        throw DatabaseError(database.name() + " is no catalogue");
    const std::int64_t version = database.number("PRAGMA user_version");
    if (version != kVersion)
        throw DatabaseError(database.name() + " is a catalogue of version " + std::to_string(version) +
                            "; this program reads version " + std::to_string(kVersion));
    // What SQLite makes by itself is left out: indices without a statement, statistics.
    std::set<std::string> statements;
    Statement row(database, "SELECT sql FROM sqlite_schema "
                            "WHERE sql IS NOT NULL AND NOT (type = 'table' AND name LIKE 'sqlite_stat%')");
    while (row.next()) statements.insert(row.text(0));
    if (statements != ownStatements()) throw DatabaseError(database.name() + " holds other tables than a catalogue");
}

} // namespace catalogue
