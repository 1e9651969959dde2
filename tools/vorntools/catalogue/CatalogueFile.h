#ifndef TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_FILE_H
#define TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_FILE_H

#include "tools/vorntools/catalogue/CatalogueEntry.h"
#include "tools/vorntools/catalogue/Database.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace catalogue {

/** Number of a file within one catalogue. */
using FileId = std::int64_t;

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

/** What tells that a file has not changed. */
struct Stamp {
    std::int64_t size = 0, modified = 0, identity = 0; ///< nanoseconds since 1970; as host::FileState

    bool operator==(const Stamp& other) const {
        return size == other.size && modified == other.modified && identity == other.identity;
    }
};

/** Name of a folder with its separator behind, and of the file in it. */
struct SplitName {
    std::string folder, name;
};
SplitName splitName(const std::string& fullName);
/** Letters of a name up to the file, the separator included. */
std::size_t lengthOfFolder(std::string_view fullName);

/** Where a target of a document was found. */
struct TargetFile {
    FileId id = 0;                 ///< 0: it is missing
    bool isUnderOtherName = false; ///< not by the full name of the file
};

/** Writes entries; within a transaction. */
class Writer {
public:
    explicit Writer(Database& database);

    /** Adds a file that is not there yet. @param role "document", "other", "elsewhere" */
    FileId addFile(const std::string& fullName, const char* role);
    void setRole(FileId file, const char* role) { m_setRole.run(role, file); }
    /** Of a folder in the order of the walk. */
    void setPlace(const std::string& folder, std::int64_t place);
    void removeFile(FileId file) { m_removeFile.run(file); }
    /** All of a document but its file. */
    void removeDocument(FileId file);
    /** Puts a document in the place of what was known of it.
     * @param targets of the entry, and where each was found */
    void write(FileId file, const CatalogueEntry& entry, const std::vector<Target>& targets,
               const std::vector<TargetFile>& files, const Stamp& stamp, const Stamp& dat);

private:
    void writeDocument(FileId file, const CatalogueEntry& entry, const Stamp& stamp, const Stamp& dat);
    void writeLinks(FileId file, const CatalogueEntry& entry, const std::vector<Target>& targets,
                    const std::vector<TargetFile>& files);
    void writeStreams(FileId file, const std::vector<ContentsEntry>& streams);
    std::int64_t folderId(const std::string& folder);

    Statement m_findFolder, m_addFolder, m_setPlace, m_addFile, m_setRole, m_removeFile;
    Statement m_removeLinks, m_removeElements, m_removeGhosts, m_removeRecorded, m_removeStreams, m_removePreview,
        m_removeDocument;
    Statement m_addDocument, m_addLink, m_addElement, m_addGhost, m_addRecorded, m_addStream, m_addPreview;
    std::string m_lastFolder;
    std::int64_t m_lastFolderId = 0;
};

/** A link by its document and its position in it. */
struct Pointer {
    FileId document = 0;
    std::int64_t position = 0;
};

/** Where the walk meets a document. */
struct Place {
    std::int64_t folder = 0;
    std::string file; ///< of a DAT file without its document that of the DAT file

    bool operator<(const Place& other) const {
        return folder != other.folder ? folder < other.folder : file < other.file;
    }
};

/** Reads entries. */
class Reader {
public:
    explicit Reader(Database& database);

    /** Documents in the order of the walk. */
    std::vector<FileId> documents();
    /** 0 for a name that the catalogue does not have. */
    FileId find(const std::string& fullName);
    /** Remembers what it was asked for, and the names of all conditionFacts. */
    const std::string& nameOf(FileId file);
    /** Whether the file is one of the documents. */
    bool isDocument(FileId file);
    /** All that is known of a document. @param withLinks else nothing of what it says of others */
    DocumentFacts facts(FileId document, bool withLinks = true);
    /** Its name, condition and links. */
    DocumentFacts linkFacts(FileId document);
    /** The same without links. */
    DocumentFacts conditionFacts(FileId document, Place& place);
    /** Adds the links of some positions, in their order. */
    void addLinks(FileId document, const std::vector<std::int64_t>& positions, DocumentLinks& links);
    /** Its name alone. */
    DocumentFacts nameFacts(FileId document);
    /** Where documents point to a file. @param most so many are enough; -1: all */
    std::vector<Pointer> pointersTo(FileId file, std::int64_t most = -1);
    /** What a document points to. */
    std::vector<FileId> targetsOf(FileId document);
    /** Files that were walked of a last name, letter case aside. */
    std::vector<FileId> filesOfName(const std::string& path);
    std::vector<FileId> unreadable();
    /** Full names of the walked files that are no documents, in the order of the walk. */
    std::vector<std::string> otherFiles();
    /** Of all walked files that are there, in any order. */
    std::vector<std::string> walkedFiles();
    /** Empty for none. */
    std::string preview(FileId document);
    /** Whether all folders could be read. */
    bool isComplete();

private:
    Statement& rowOf(Statement& statement, FileId document);
    void readLinks(FileId document, DocumentLinks& links);
    void readLink(FileId document, std::int64_t position, DocumentLinks& links);
    static std::vector<FileId> numbers(Statement& statement);
    static std::vector<std::string> texts(Statement& statement);

    Database& m_database;
    Statement m_find, m_name, m_isDocument, m_document, m_condition, m_links, m_link, m_elements, m_elementsOfLink,
        m_ghosts, m_recorded, m_pointers, m_targets, m_ofName, m_preview;
    std::unordered_map<FileId, std::string> m_names;
};

} // namespace catalogue

#endif
