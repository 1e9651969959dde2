#ifndef TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_OUTPUT_H
#define TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_OUTPUT_H

// How the commands that ask an archive write what it answers.

#include "tools/vorntools/Json.h"
#include "tools/vorntools/archive/Archive.h"

#include <string>

/** "perhaps a/Bolt.CATPart (agrees in 1 folder), b/Bolt.CATPart"; empty without candidates. */
std::string describe(const Archive& archive, const Candidates& candidates);
/** "found by name, one of 3 of this name" for a link whose target was chosen among several; else empty. */
std::string choiceOf(const Archive& archive, const ArchiveLink& link);
/** How many walked files of one name a link chose among; 0: it did not choose. */
std::size_t chosenAmong(const Archive& archive, const ArchiveLink& link);
/** "cut off", "damaged", ...; empty for a document of which nothing has to be said. */
std::string conditionToTell(const Archive& archive, Index document);

Json jsonOf(const Archive& archive, const Candidates& candidates);
/** Adds "stored", "rule", "uses", "chosen_among", "kinds", "elements", and "candidates" of a missing target. */
void addLinkTo(Json& object, const Archive& archive, const ArchiveLink& link);

/** A text between quotation marks for Graphviz. */
std::string dotQuoted(const std::string& text);

#endif
