#include "tools/vorntools/catalogue/CatalogueUpdate.h"

#include "tools/vorntools/Output.h"
#include "tools/vorntools/OutputFile.h"
#include "tools/vorntools/System.h"
#include "tools/vorntools/Turns.h"
#include "tools/vorntools/archive/FileContent.h"
#include "tools/vorntools/archive/Paths.h"
#include "tools/vorntools/catalogue/CatalogueFile.h"
#include "tools/vorntools/catalogue/EntryPacket.h"
#include "tools/vorntools/catalogue/KnownFiles.h"
#include "tools/vorntools/catalogue/Schema.h"

#include <filesystem>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace catalogue {

namespace {

/** Bytes. The rows that answer a question lie far apart: with SQLite's usual 4 KiB it takes three times the reads. */
constexpr int kPageSize = 16384;

Stamp stampOf(const host::FileState& state) {
    return {static_cast<std::int64_t>(state.size), state.modified * kNanosecondsPerSecond + state.nanoseconds,
            static_cast<std::int64_t>(state.identity)};
}

/** A document that was found. */
struct Found {
    const FoundDocument* document;
    KnownFile* file;
    Stamp stamp, dat;
    bool isWanted; ///< it has to be read
};

class Update {
public:
    Update(Database& database, const UpdateOptions& options, const DocumentSearch& search, JournalFile& journal)
        : m_database(database), m_options(options), m_search(search), m_journal(journal), m_writer(database) {}

    Changes run() {
        m_known.load(m_database);
        for (const FoundDocument& document : m_search.found()) meet(document);
        for (const std::string& file : m_search.others()) meetOther(file);
        if (m_options.isComplete) findGone();
        findElsewhere();
        wantThoseThatName();
        readWanted();
        addChecksums();
        removeUnnamed();
        setPlaces();
        tellAbout();
        return m_changes;
    }

private:
    void meet(const FoundDocument& document);
    void meetOther(const std::string& fullName);
    KnownFile& add(const std::string& fullName, Role role);
    void findGone();
    void findElsewhere();
    void wantThoseThatName();
    void readWanted();
    void write(const Found& found, const CatalogueEntry& entry);
    TargetFile fileOf(const std::string& found);
    void addChecksums();
    void removeUnnamed();
    void setPlaces();
    void tellAbout();
    /** Those who name such a file may find another one now. */
    void hasComeOrGone(const std::string& fullName) { m_names.insert(folded(lastName(fullName))); }

    Database& m_database;
    const UpdateOptions& m_options;
    const DocumentSearch& m_search;
    JournalFile& m_journal;
    Writer m_writer;
    KnownFiles m_known;
    host::NeighbourStates m_states;
    std::vector<Found> m_found;
    std::unordered_set<std::string> m_names; ///< of files that have come or gone
    bool m_hasChanged = false;
    Changes m_changes;
};

KnownFile& Update::add(const std::string& fullName, Role role) {
    KnownFile& file = m_known.add(fullName);
    file.id = m_writer.addFile(fullName, roleName(role));
    file.role = role;
    m_hasChanged = true;
    return file;
}

void Update::meet(const FoundDocument& document) {
    KnownFile* const known = m_known.find(document.fullName);
    KnownFile& file = known ? *known : add(document.fullName, Role::Document);
    const Stamp stamp = document.exists ? stampOf(m_states.stateOf(document.fullName)) : Stamp();
    const Stamp dat = document.hasDat ? stampOf(m_states.stateOf(document.fullName + ".dat")) : Stamp();
    // Whether a document can be read changes neither its size nor its time.
    const bool isWanted = !known || file.role != Role::Document || file.isThere != document.exists ||
                          file.hasDat != document.hasDat || !(file.stamp == stamp) || !(file.dat == dat) ||
                          file.isUnreadable;
    if (known ? file.isThere != document.exists : document.exists) hasComeOrGone(document.fullName);
    if (file.role != Role::Document) m_writer.setRole(file.id, roleName(Role::Document));
    file.role = Role::Document;
    file.isMet = true;
    m_found.push_back({&document, &file, stamp, dat, isWanted});
}

void Update::meetOther(const std::string& fullName) {
    KnownFile* const known = m_known.find(fullName);
    if (!known) hasComeOrGone(fullName);
    KnownFile& file = known ? *known : add(fullName, Role::Other);
    file.isMet = true;
    if (file.role == Role::Other) return;
    if (file.role == Role::Document) m_writer.removeDocument(file.id); // its DAT file has gone
    if (!file.isThere) hasComeOrGone(fullName);
    m_writer.setRole(file.id, roleName(Role::Other));
    file.role = Role::Other;
    m_hasChanged = true;
}

/** What is not found any more may still be there, outside the folders: then it stays as long as somebody names it. */
void Update::findGone() {
    m_known.forEachUnmet([this](const std::string& name, KnownFile& file) {
        if (file.role == Role::Elsewhere) return;
        if (file.isThere) hasComeOrGone(name);
        if (file.role == Role::Document) {
            m_writer.removeDocument(file.id);
            ++m_changes.removed;
        }
        m_writer.setRole(file.id, roleName(Role::Elsewhere));
        file.role = Role::Elsewhere;
        m_hasChanged = true;
    });
}

/** Files outside the folders are looked at one by one: they are few. */
void Update::findElsewhere() {
    m_known.forEachUnmet([this](const std::string& name, const KnownFile& file) {
        if (file.role == Role::Elsewhere && !host::stateOf(name).isThere) hasComeOrGone(name);
    });
}

void Update::wantThoseThatName() {
    if (m_names.empty()) return;
    std::unordered_map<FileId, Found*> documents;
    for (Found& found : m_found) documents.emplace(found.file->id, &found);
    Statement naming(m_database, "SELECT DISTINCT document FROM links WHERE folded = ?");
    for (const std::string& name : m_names)
        for (naming.with(name); naming.next();) {
            const auto found = documents.find(naming.number(0));
            if (found != documents.end()) found->second->isWanted = true;
        }
}

void Update::readWanted() {
    std::vector<const FoundDocument*> wanted;
    std::vector<const Found*> rows;
    for (const Found& found : m_found) {
        if (!found.isWanted) continue;
        rows.push_back(&found);
        wanted.push_back(found.document);
    }
    m_journal.take(); // what came before is told once
    EntryReader reader;
    Turns<CatalogueEntry> entries(wanted.size(), processesFor(m_options.jobs, wanted.size()), [&](std::size_t i) {
        CatalogueEntry entry = reader.read(wanted[i]->fullName, wanted[i]->exists, wanted[i]->hasDat);
        entry.journal = m_journal.takeLines();
        return entry;
    });
    Progress progress(rows.size(), "documents");
    for (const Found* const row : rows) {
        const CatalogueEntry entry = entries.next();
        m_journal.add(entry.journal);
        write(*row, entry);
        progress.step();
    }
    m_changes.documents = m_found.size();
    m_changes.read = rows.size();
    m_hasChanged = m_hasChanged || !rows.empty();
}

void Update::write(const Found& found, const CatalogueEntry& entry) {
    std::vector<Target> targets;
    std::vector<TargetFile> files;
    if (entry.facts.links) targets = targetsOf(*entry.facts.links, found.document->fullName);
    files.reserve(targets.size());
    for (const Target& target : targets) files.push_back(target.isMissing() ? TargetFile() : fileOf(target.found));
    m_writer.write(found.file->id, entry, targets, files, found.stamp, found.dat);
    m_changes.unreadable += entry.facts.links && !entry.facts.links->read ? 1 : 0;
}

TargetFile Update::fileOf(const std::string& found) {
    const KnownFile* known = m_known.find(found);
    if (known) return {known->id, false};
    const std::string fullName = fullNameOf(found);
    known = m_known.find(fullName);
    return {known ? known->id : add(fullName, Role::Elsewhere).id, fullName != found};
}

/** Of documents that may hold the same bytes as another of their name. */
void Update::addChecksums() {
    if (!m_hasChanged) return;
    std::vector<FileId> documents;
    std::vector<std::string> files;
    {
        Statement row(m_database, "SELECT id, name FROM (SELECT documents.id, folders.name || files.name AS name, "
                                  "sha256, count(*) OVER (PARTITION BY folded, size, save) AS alike "
                                  "FROM documents JOIN files USING (id) JOIN folders ON folders.id = files.folder "
                                  "WHERE is_there) WHERE alike > 1 AND sha256 IS NULL");
        for (; row.next(); documents.push_back(row.number(0))) files.push_back(row.text(1));
    }
    Statement add(m_database, "UPDATE documents SET sha256 = ? WHERE id = ?");
    Turns<std::string> checksums(files.size(), processesFor(m_options.jobs, files.size()),
                                 [&](std::size_t i) { return sha256Of(files[i]); });
    Progress progress(documents.size(), "documents of equal names");
    for (const FileId document : documents) {
        const std::string checksum = checksums.next();
        if (!checksum.empty()) add.run(checksum, document);
        progress.step();
    }
}

void Update::removeUnnamed() {
    if (!m_hasChanged) return;
    m_database.execute("DELETE FROM files WHERE role = 'elsewhere' AND id NOT IN "
                       "(SELECT target FROM links WHERE target IS NOT NULL);"
                       "DELETE FROM folders WHERE id NOT IN (SELECT folder FROM files)");
}

void Update::setPlaces() {
    if (!m_hasChanged) return;
    std::string last;
    std::int64_t place = 0;
    std::unordered_set<std::string> placed;
    for (const Found& found : m_found) {
        std::string folder = splitName(found.document->fullName).folder;
        if (folder == last) continue;
        if (placed.insert(folder).second) m_writer.setPlace(folder, place++);
        last = std::move(folder);
    }
}

void Update::tellAbout() {
    Statement about(m_database, "INSERT INTO about VALUES(?, ?) ON CONFLICT DO UPDATE SET value = excluded.value");
    about.run("complete", m_options.isComplete);
    m_database.execute("INSERT INTO about VALUES('finished', strftime('%Y-%m-%dT%H:%M:%SZ')) "
                       "ON CONFLICT DO UPDATE SET value = excluded.value;"
                       "DELETE FROM looked_at");
    Statement lookedAt(m_database, "INSERT INTO looked_at(folder) VALUES(?)");
    for (const std::string& folder : m_options.lookedAt) lookedAt.run(folder);
}

Changes updateIn(Database& database, const UpdateOptions& options, const DocumentSearch& search, JournalFile& journal) {
    Transaction transaction(database);
    checkIsCatalogue(database);
    const Changes changes = Update(database, options, search, journal).run();
    transaction.commit();
    return changes;
}

/** Nobody sees a new catalogue before it is whole, and half of it is worth nothing: SQLite needs no journal. */
Changes create(const UpdateOptions& options, const DocumentSearch& search, JournalFile& journal) {
    OutputFile file(std::filesystem::u8path(options.file));
    if (!file.stream()) throw DatabaseError(options.file + " cannot be written");
    Changes changes;
    {
        Database database(file.part().u8string(), options.file);
        database.execute("PRAGMA page_size = " + std::to_string(kPageSize) +
                         "; PRAGMA journal_mode = OFF; PRAGMA application_id = " + std::to_string(kApplication) +
                         "; PRAGMA user_version = " + std::to_string(kVersion));
        database.execute(kSchema);
        changes = updateIn(database, options, search, journal);
    }
    if (!file.commit()) throw DatabaseError(options.file + " cannot be written");
    return changes;
}

} // namespace

Changes update(const UpdateOptions& options, const DocumentSearch& search, JournalFile& journal) {
    if (!isThere(std::filesystem::u8path(options.file))) return create(options, search, journal);
    Database database(fullNameOf(options.file), options.file);
    return updateIn(database, options, search, journal);
}

} // namespace catalogue
