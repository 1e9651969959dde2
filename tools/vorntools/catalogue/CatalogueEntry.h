#ifndef TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_ENTRY_H
#define TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_ENTRY_H

#include "tools/vorntools/DocumentContents.h"
#include "tools/vorntools/DocumentStatus.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/archive/Archive.h"

#include <string>
#include <vector>

/** All that a catalogue has of one document. */
struct CatalogueEntry {
    DocumentFacts facts; ///< found by its full name
    std::vector<ContentsEntry> streams;
    std::string preview; ///< a JPEG; empty for none
    std::string journal; ///< what the library told of it, when that is wanted
};

/** Reads one document after the other. */
class EntryReader {
public:
    /** @param fullName of a document that was found; @param exists, hasDat as FoundDocument has them */
    CatalogueEntry read(const std::string& fullName, bool exists, bool hasDat);

private:
    LinkMemory m_memory;
};

#endif
