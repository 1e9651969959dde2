#ifndef TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_OUTPUT_H
#define TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_OUTPUT_H

// How the commands that ask about an archive write what it answers.

#include "tools/vorntools/Json.h"
#include "tools/vorntools/archive/Archive.h"
#include "tools/vorntools/archive/Targets.h"

#include <functional>
#include <string>
#include <vector>

/** A candidate by the name that is shown. */
struct ShownCandidate {
    std::string name;
    unsigned int agreeing = 0, distance = 0;

    /** "agrees in 2 folders"; empty when it agrees in none. */
    std::string agreement() const;
};

struct ShownCandidates {
    std::vector<ShownCandidate> nearest;
    std::size_t count = 0; ///< of all

    /** "and 3 more"; empty when all are shown. */
    std::string rest() const;
    /** "perhaps a/Bolt.CATPart (agrees in 1 folder), b/Bolt.CATPart"; empty without candidates. */
    std::string text() const;
    /** Adds "candidates" and "candidate_count". */
    void addTo(Json& object) const;
};

/** A target with everything that is said of it. */
struct ShownTarget {
    Target target;
    std::string name;            ///< of the file, as the command line writes it; of what is missing as stored
    std::size_t chosenAmong = 0; ///< files of one name among which it was found by its name; 0: there was no choice
    ShownCandidates candidates;  ///< of what is missing

    /** "by name, one of 3". */
    std::string ruleText() const;
    /** Each kind once; of what the library calls by a type of its own only what tells more. */
    std::string kindsText() const;
    std::string elementsText() const;
    /** Adds "stored", "rule", "uses", "chosen_among", "kinds" and "elements", and the candidates of what is missing. */
    void addTo(Json& object) const;
};

ShownCandidates shown(const Candidates& candidates, const std::function<std::string(Index)>& nameOf);
ShownCandidates shown(const Archive& archive, const Candidates& candidates);
ShownTarget shown(const Archive& archive, const ArchiveLink& link);

/** Each kind once. */
std::vector<std::string> kindsOf(const Archive& archive, const ArchiveLink& link);

/** "cut off", "damaged", "cannot be read"; empty for a document of which nothing has to be said. */
std::string conditionToTell(const Archive& archive, Index document);

/** A text between quotation marks for Graphviz. */
std::string dotQuoted(const std::string& text);

#endif
