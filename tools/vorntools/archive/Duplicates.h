#ifndef TOOLS_VORNTOOLS_ARCHIVE_DUPLICATES_H
#define TOOLS_VORNTOOLS_ARCHIVE_DUPLICATES_H

#include "tools/vorntools/archive/Archive.h"
#include "tools/vorntools/archive/DocumentIdentity.h"

#include <string>
#include <vector>

/** One of several documents of one name. */
struct Duplicate {
    Index document = 0;
    DocumentIdentity identity;
    unsigned int content = 0; ///< the same number within the group: the same bytes; from 1
    bool isUnread = false;    ///< it had to be read and could not: its content counts as one that no other has
    unsigned int origin = 0;  ///< the same number within the group: the same document once; from 1
};

/** Documents of one name, letter case aside. */
struct DuplicateGroup {
    enum Relation {
        SameBytes,  ///< all of them
        SavedApart, ///< all are one document by their identity, and not all have the same bytes
        Strangers,  ///< no two of them have anything to do with each other
        Mixed
    };
    std::string name; ///< of the first of them
    Relation relation = Mixed;
    std::vector<Duplicate> documents; ///< by full name
};

/** "same bytes", "saved apart", "strangers", "mixed". */
const char* relationName(DuplicateGroup::Relation relation);

/** Compares walked documents that share their name. Reads whole files where the sizes agree, and the last saves and
 * checksums as far as the archive knows them. */
std::vector<DuplicateGroup> findDuplicates(const Archive& archive);

#endif
