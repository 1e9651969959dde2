#ifndef TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_READER_H
#define TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_READER_H

#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/System.h"
#include "tools/vorntools/archive/Archive.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

/**
 * Fills an archive from folders: walk() them, read documents, finish().
 *
 *     Archive archive;
 *     ArchiveReader reader(archive, journal);
 *     bool usable = reader.walk(names);
 *     reader.readAll();
 *     reader.finish();
 */
class ArchiveReader {
public:
    struct What {
        bool links = true;
        bool status = false;   ///< ask for state and DAT fields
        bool recorded = false; ///< read which documents the DAT files name
        std::string linkType;  ///< as readDocumentLinks takes it
        int jobs = 0;          ///< of readAll, as processesFor takes it
        /** If given, receives the picture of each document that has one, in the order of the documents. */
        std::function<void(Index document, std::string jpeg)> takePicture = {};
    };
    /** @param journal what the library tells of each document goes there */
    ArchiveReader(Archive& archive, JournalFile& journal, What what)
        : m_archive(archive), m_journal(journal), m_what(std::move(what)) {}

    /** Looks for documents and files. @param excluded as DocumentSearch::exclude takes it
     * @return as DocumentSearch::search */
    bool walk(const std::vector<std::string>& names, const std::vector<std::string>& excluded = {}) {
        m_names = names;
        m_search.exclude(excluded);
        return m_search.search(names);
    }
    /** Reads every document that was walked, and adds them in their order. */
    void readAll();
    /** Reads documents and whatever they need; the other ones that were walked stay unread.
     * @param depth levels below the documents; 0: all */
    void readNeeded(const std::vector<std::string>& fullNames, unsigned int depth = 0);
    /** Also adds the walked documents that were not read. */
    void finish();

    const DocumentSearch& search() const { return m_search; }

private:
    DocumentFacts factsOf(const FoundDocument& found);
    /** @param isGiven read whatever it is called */
    void read(DocumentFacts& facts, bool isGiven);

    Archive& m_archive;
    JournalFile& m_journal;
    const What m_what;
    std::vector<std::string> m_names;
    DocumentSearch m_search{true};
    LinkMemory m_memory;
    host::NeighbourStates m_states;
};

#endif
