#include "tools/vorntools/archive/Paths.h"
#include "tools/vorntools/catalogue/CatalogueFile.h"
#include "tools/vorntools/catalogue/Schema.h"

#include <filesystem>
#include <optional>
#include <unordered_map>

namespace catalogue {

namespace {

std::optional<std::string> textOrNone(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

const char* kindOfRecorded(RecordedName::Kind kind) {
    switch (kind) {
    case RecordedName::Unresolved: return "unresolved";
    case RecordedName::DesignTableFile: return "design table file";
    case RecordedName::Linked: break;
    }
    return "linked";
}

/** A link as the document lists it, in the words of Archive's elements. */
struct ListedLink {
    const char* list;
    const NamedDocument* document; ///< null: it names none
    std::string kind;
    std::string reference;
    bool tagFound = false;
};

std::vector<ListedLink> listedLinks(const DocumentLinks& links) {
    std::vector<ListedLink> all;
    for (const NamedDocument& document : links.partFiles) all.push_back({"part_files", &document, "part file", {}});
    for (const NamedDocument& document : links.contextProducts)
        all.push_back({"context_products", &document, "context product", {}});
    for (const NamedDocument& document : links.contextParts)
        all.push_back({"context_parts", &document, "context part", {}});
    for (const OtherNamed& other : links.others) all.push_back({"other_documents", &other.document, other.kind, {}});
    for (const TypedLink& link : links.links)
        all.push_back(
            {"links", link.document.name.empty() ? nullptr : &link.document, link.type, link.reference, link.tagFound});
    for (const std::string& reference : links.externalReferences)
        all.push_back({"external_references", nullptr, "", reference});
    return all;
}

std::string keyOf(const std::string& found, const std::string& stored) { return found.empty() ? '\0' + stored : found; }

} // namespace

std::size_t lengthOfFolder(std::string_view fullName) {
    return fullName.rfind(static_cast<char>(std::filesystem::path::preferred_separator)) + 1;
}

SplitName splitName(const std::string& fullName) {
    const std::size_t end = lengthOfFolder(fullName);
    return {fullName.substr(0, end), fullName.substr(end)};
}

Writer::Writer(Database& database)
    : m_findFolder(database, "SELECT id FROM folders WHERE name = ?"),
      m_addFolder(database, "INSERT INTO folders(name, place) VALUES(?, -1) RETURNING id"),
      m_setPlace(database, "UPDATE folders SET place = ? WHERE id = ? AND place <> ?"),
      m_addFile(database, "INSERT INTO files(folder, name, folded, role) VALUES(?, ?, ?, ?) RETURNING id"),
      m_setRole(database, "UPDATE files SET role = ? WHERE id = ?"),
      m_removeFile(database, "DELETE FROM files WHERE id = ?"),
      m_removeLinks(database, "DELETE FROM links WHERE document = ?"),
      m_removeElements(database, "DELETE FROM elements WHERE document = ?"),
      m_removeGhosts(database, "DELETE FROM ghosts WHERE document = ?"),
      m_removeRecorded(database, "DELETE FROM recorded WHERE document = ?"),
      m_removeStreams(database, "DELETE FROM streams WHERE document = ?"),
      m_removePreview(database, "DELETE FROM previews WHERE document = ?"),
      m_removeDocument(database, "DELETE FROM documents WHERE id = ?"),
      m_addDocument(database,
                    "INSERT INTO documents VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,NULL)"),
      m_addLink(database, "INSERT INTO links VALUES(?,?,?,?,?,?,?,?)"),
      m_addElement(database, "INSERT INTO elements VALUES(?,?,?,?,?,?,?,?)"),
      m_addGhost(database, "INSERT INTO ghosts VALUES(?,?,?)"),
      m_addRecorded(database, "INSERT INTO recorded VALUES(?,?,?,?)"),
      m_addStream(database, "INSERT INTO streams VALUES(?,?,?,?,?,?,?,?,?,?)"),
      m_addPreview(database, "INSERT INTO previews VALUES(?,?)") {}

std::int64_t Writer::folderId(const std::string& folder) {
    if (m_lastFolderId != 0 && folder == m_lastFolder) return m_lastFolderId;
    m_lastFolder = folder;
    m_lastFolderId = m_findFolder.with(folder).next() ? m_findFolder.number(0) : 0;
    if (m_lastFolderId == 0) {
        m_addFolder.with(folder).next();
        m_lastFolderId = m_addFolder.number(0);
        m_addFolder.finish();
    }
    m_findFolder.finish();
    return m_lastFolderId;
}

FileId Writer::addFile(const std::string& fullName, const char* role) {
    const SplitName split = splitName(fullName);
    m_addFile.with(folderId(split.folder), split.name, folded(lastName(fullName)), role).next();
    const FileId file = m_addFile.number(0);
    m_addFile.finish();
    return file;
}

void Writer::setPlace(const std::string& folder, std::int64_t place) { m_setPlace.run(place, folderId(folder), place); }

void Writer::removeDocument(FileId file) {
    for (Statement* const statement : {&m_removeLinks, &m_removeElements, &m_removeGhosts, &m_removeRecorded,
                                       &m_removeStreams, &m_removePreview, &m_removeDocument})
        statement->run(file);
}

void Writer::write(FileId file, const CatalogueEntry& entry, const std::vector<Target>& targets,
                   const std::vector<TargetFile>& files, const Stamp& stamp, const Stamp& dat) {
    removeDocument(file);
    writeDocument(file, entry, stamp, dat);
    if (entry.facts.links) writeLinks(file, entry, targets, files);
    writeStreams(file, entry.streams);
    if (!entry.preview.empty()) m_addPreview.run(file, Statement::Blob{entry.preview});
}

void Writer::writeDocument(FileId file, const CatalogueEntry& entry, const Stamp& stamp, const Stamp& dat) {
    const DocumentFacts& facts = entry.facts;
    const DocumentStatus status = facts.status.value_or(DocumentStatus());
    const DocumentIdentity identity = facts.identity.value_or(DocumentIdentity());
    const DocumentLinks none, &links = facts.links ? *facts.links : none;
    const auto ifAsked = [&](int value) { return facts.links ? std::optional<int>(value) : std::nullopt; };
    const std::optional<int> tellsLinks =
        facts.recorded ? std::optional<int>(facts.recorded->tellsLinks ? 1 : 0) : std::nullopt;
    m_addDocument.run(file, facts.found.exists, facts.found.hasDat, stamp.size, stamp.modified, stamp.identity,
                      dat.size, dat.modified, dat.identity, ifAsked(links.read ? 1 : 0),
                      textOrNone(links.condition.text), ifAsked(links.condition.isFinding ? 1 : 0),
                      ifAsked(links.version), ifAsked(links.release), ifAsked(links.servicePack),
                      textOrNone(links.savedPath), textOrNone(identity.uuid), textOrNone(identity.save),
                      textOrNone(identity.saved), status.status, status.reason, status.dat, status.layout,
                      status.itemRevision, status.dataset, status.namedReference, status.loadType, status.linked,
                      status.unresolved, status.designTable, tellsLinks);
}

void Writer::writeLinks(FileId file, const CatalogueEntry& entry, const std::vector<Target>& targets,
                        const std::vector<TargetFile>& files) {
    const DocumentLinks& links = *entry.facts.links;
    std::unordered_map<std::string, int> positions;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const Target& target = targets[i];
        const int position = static_cast<int>(i) + 1;
        positions.emplace(keyOf(target.found, target.stored), position);
        m_addLink.run(file, position, Statement::Ordinal{files[i].id}, target.stored, folded(lastName(target.stored)),
                      textOrNone(files[i].isUnderOtherName ? target.found : ""), textOrNone(ruleName(target.rule)),
                      target.uses);
    }
    int position = 0;
    for (const ListedLink& link : listedLinks(links)) {
        Statement::Ordinal target{0};
        if (link.document)
            target = {positions.at(keyOf(link.document->exists ? link.document->name : "", link.document->stored))};
        m_addElement.run(file, ++position, target, link.list, link.kind, link.reference, link.tagFound,
                         link.document ? link.document->uses : 0);
    }
    position = 0;
    for (const std::string& ghost : links.ghosts) m_addGhost.run(file, ++position, ghost);
    position = 0;
    if (entry.facts.recorded)
        for (const RecordedName& name : entry.facts.recorded->names)
            m_addRecorded.run(file, ++position, kindOfRecorded(name.kind), name.name);
}

void Writer::writeStreams(FileId file, const std::vector<ContentsEntry>& streams) {
    int position = 0;
    for (const ContentsEntry& entry : streams) {
        m_addStream.run(file, ++position, Statement::Ordinal{entry.parent}, entry.isStream ? "stream" : "storage",
                        entry.name, entry.size, entry.pieces, textOrNone(entry.dates[0]), textOrNone(entry.dates[1]),
                        textOrNone(entry.dates[2]));
    }
}

} // namespace catalogue
