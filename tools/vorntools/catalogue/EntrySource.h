#ifndef TOOLS_VORNTOOLS_CATALOGUE_ENTRY_SOURCE_H
#define TOOLS_VORNTOOLS_CATALOGUE_ENTRY_SOURCE_H

#include "tools/vorntools/System.h"
#include "tools/vorntools/catalogue/CatalogueEntry.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace catalogue {

/** Reads documents in their order, in this process or in several that take turns. */
class EntrySource {
public:
    /** @param documents that stay where they are. @param jobs processes that read; 1: this one */
    EntrySource(std::vector<const FoundDocument*> documents, int jobs, JournalFile& journal);

    /** The next one. @throws std::runtime_error when the process that was to read it has ended */
    CatalogueEntry next();

private:
    static CatalogueEntry read(EntryReader& reader, const FoundDocument& document, JournalFile& journal);
    CatalogueEntry receive(std::size_t helper);

    const std::vector<const FoundDocument*> m_documents;
    const std::size_t m_jobs;
    JournalFile& m_journal;
    std::size_t m_next = 0;
    EntryReader m_reader;
    std::unique_ptr<host::Helpers> m_helpers;
};

/** Computes the SHA-256 of files in the same way. */
class ChecksumSource {
public:
    ChecksumSource(std::vector<std::string> files, int jobs);

    /** Of the next one; empty when it cannot be read. @throws as EntrySource::next */
    std::string next();

private:
    const std::vector<std::string> m_files;
    const std::size_t m_jobs;
    std::size_t m_next = 0;
    std::unique_ptr<host::Helpers> m_helpers;
};

} // namespace catalogue

#endif
