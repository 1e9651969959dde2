#ifndef TOOLS_VORNTOOLS_ARCHIVE_DUPLICATES_H
#define TOOLS_VORNTOOLS_ARCHIVE_DUPLICATES_H

#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/archive/Archive.h"
#include "tools/vorntools/archive/DocumentIdentity.h"

#include <string>
#include <vector>

/** One of several documents of one name. */
struct Duplicate {
    Index document = 0;
    DocumentIdentity identity;
    unsigned int content = 0; ///< the same number within the group: the same bytes or, as evidence, save; from 1
    bool isUnread = false;    ///< it had to be read and could not: its content counts as one that no other has
    unsigned int origin = 0;  ///< the same number within the group: the same document once; from 1
};

/** Documents of one name, letter case aside. */
struct DuplicateGroup {
    enum Relation {
        SameBytes,  ///< all of them
        SameSave,   ///< all of them have one size and come from one save; nobody has compared all bytes
        SavedApart, ///< all are one document by their identity, and not all have the same bytes
        Strangers,  ///< no two of them have anything to do with each other
        Mixed
    };
    std::string name; ///< of the first of them
    Relation relation = Mixed;
    std::vector<Duplicate> documents; ///< by full name
};

/** "same bytes", "same save", "saved apart", "strangers", "mixed". */
const char* relationName(DuplicateGroup::Relation relation);

/** What shows that documents of one size are the same. */
enum class Evidence {
    Bytes, ///< all of them, or their checksums
    Save   ///< that they come from one save; of documents that tell none, or where checksums are known, as Bytes
};

/**
 * Compares walked documents that share their name. Documents of different sizes or saves are never read.
 * @param jobs as processesFor takes it
 * @param journal what the library tells meanwhile goes there
 */
std::vector<DuplicateGroup> findDuplicates(const Archive& archive, Evidence evidence, int jobs, JournalFile& journal);

#endif
