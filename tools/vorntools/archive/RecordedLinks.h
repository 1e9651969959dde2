#ifndef TOOLS_VORNTOOLS_ARCHIVE_RECORDED_LINKS_H
#define TOOLS_VORNTOOLS_ARCHIVE_RECORDED_LINKS_H

#include "tools/vorntools/archive/Targets.h"

#include <cstdint>
#include <string>
#include <vector>

/** A document that a DAT file names. */
struct RecordedName {
    enum Kind : std::uint8_t {
        Linked,
        Unresolved, ///< the PDM could not resolve the link; the name may lack its suffix
        DesignTableFile
    };
    Kind kind = Linked;
    std::string name; ///< without the word that tells the kind of link
};

/** What the DAT file of a document tells of other documents. */
struct RecordedLinks {
    bool tellsLinks = false; ///< it has a list of linked documents, be it empty
    std::vector<RecordedName> names;
};

/** @param document its full name; without a DAT file that can be read nothing is recorded */
RecordedLinks readRecordedLinks(const std::string& document);

/** A document by which DAT file and document differ. */
struct LinkDifference {
    enum Kind {
        OnlyRecorded,   ///< the document does not point to it
        OnlyInDocument, ///< it is a part, product or drawing that the DAT file does not list
        FoundMeanwhile  ///< recorded as unresolved, and the file is there
    };
    Kind kind = OnlyRecorded;
    std::string name; ///< as recorded, or as the document stores it
};

/** "only recorded", "only in the document", "found meanwhile". */
const char* differenceName(LinkDifference::Kind kind);

/** Compares by last names, letter case aside: DAT files know no folders. */
std::vector<LinkDifference> differencesBetween(const RecordedLinks& recorded, const std::vector<Target>& targets);

#endif
