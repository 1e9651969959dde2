#ifndef TOOLS_VORNTOOLS_ARCHIVE_ORPHANS_H
#define TOOLS_VORNTOOLS_ARCHIVE_ORPHANS_H

#include "tools/vorntools/archive/Archive.h"

#include <string>
#include <vector>

/** A document that no other one points to. */
struct Orphan {
    Index document = 0;
    std::string kind; ///< "part", "product", "drawing", "process", "analysis", "catalog"

    /** Whether it may well be what others are needed for: nothing points to a drawing or to the top of a structure. */
    bool isTop() const { return kind != "part"; }
};

/** The walked CATIA documents that are there and that no other read document points to: parts first, each kind in the
 * order of the archive. */
std::vector<Orphan> findOrphans(const Archive& archive);

/** As Orphan::kind has them; empty for what is no CATIA document. @param name of a file */
std::string kindOfDocument(const std::string& name);

#endif
