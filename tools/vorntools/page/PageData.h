#ifndef TOOLS_VORNTOOLS_PAGE_PAGE_DATA_H
#define TOOLS_VORNTOOLS_PAGE_PAGE_DATA_H

#include "tools/vorntools/archive/Archive.h"
#include "tools/vorntools/archive/Duplicates.h"

#include <ostream>
#include <string>
#include <vector>

/** What the page tells besides the archive itself. */
struct PageOrigin {
    std::vector<std::string> lookedAt; ///< full names
    std::string date;                  ///< "2026-01-31T12:00:00Z"
    double seconds = 0;                ///< that it took to read the archive
    std::vector<std::string> complaints;
};

/** Documents of an archive that the page lists, by their numbers there: those that were walked. Their place is their
 * number on the page. */
std::vector<Index> listedOf(const Archive& archive);

/** Writes the data of the page, a JSON object of columns as docs/report.md describes it. No "<" stands in it, so that
 * it can stand in a script element.
 * @param listed listedOf() the archive */
void writePageData(std::ostream& stream, const Archive& archive, const std::vector<Index>& listed,
                   const std::vector<DuplicateGroup>& duplicates, const PageOrigin& origin);

#endif
