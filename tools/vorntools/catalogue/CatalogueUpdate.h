#ifndef TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_UPDATE_H
#define TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_UPDATE_H

#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace catalogue {

/** What a run has changed. */
struct Changes {
    std::size_t documents = 0, read = 0, removed = 0, unreadable = 0;
};

struct UpdateOptions {
    std::string file;                  ///< the catalogue, made when there is none
    std::vector<std::string> lookedAt; ///< full names of the folders
    bool isComplete = true;            ///< all of them could be read: what is not found any more is gone
    int jobs = 0;                      ///< as processesFor takes it
};

/**
 * Makes a catalogue tell what was found: reads the documents that are new or not what they were, and those that point
 * to a name of which a file has come or gone. All of it happens in one transaction; a catalogue that is new is put into
 * its place when it is whole.
 * @throws DatabaseError when it cannot be written; then it is what it was
 */
Changes update(const UpdateOptions& options, const DocumentSearch& search, JournalFile& journal);

} // namespace catalogue

#endif
