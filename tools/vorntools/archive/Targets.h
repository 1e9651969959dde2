#ifndef TOOLS_VORNTOOLS_ARCHIVE_TARGETS_H
#define TOOLS_VORNTOOLS_ARCHIVE_TARGETS_H

#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/archive/LinkRule.h"

#include <string>
#include <vector>

/** A kind of link to a target, and the element that it means. */
struct TargetElement {
    std::string kind;      ///< "part file", "context product", "context part", a type of the library ("MML"), or the
                           ///< type of another document as stored ("CATUnloadable")
    std::string reference; ///< may be empty
    bool tagFound = false;
    bool isOther = false; ///< of a document that is neither part, product nor drawing
};

/** One document pointed to, with all kinds of links that lead there. */
struct Target {
    std::string stored; ///< its name as stored; the first one when several names mean one file
    std::string found;  ///< full name of the file; empty: missing
    LinkRule rule = LinkRule::NotFound;
    int uses = 0; ///< pointers of the document that go through the record or records
    std::vector<TargetElement> elements;

    bool isMissing() const { return found.empty(); }
};

/** Each target once, in the order in which the document names them. @param document its full name */
std::vector<Target> targetsOf(const DocumentLinks& links, const std::string& document);

#endif
