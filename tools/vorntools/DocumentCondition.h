#ifndef TOOLS_VORNTOOLS_DOCUMENT_CONDITION_H
#define TOOLS_VORNTOOLS_DOCUMENT_CONDITION_H

#include "tools/vorntools/Json.h"

#include "VornToolsDocumentFile.h"

#include <string>

/** Whether a document's file is what it should be, in words: "intact", "cut off", "damaged", "not a CATIA document" or
 * "empty". */
struct DocumentCondition {
    std::string text; ///< empty for a file whose suffix promises no CATIA V5 document
    bool isFinding = false;

    bool isTold() const { return isFinding || text == "empty"; }
    Json json() const { return textOrNull(text); }
};

/** Of an open file. The empty file that the PDM hands out for a part is no finding.
 * @param document its full name */
DocumentCondition conditionOf(VornToolsDocumentFile& file, const std::string& document);
/** Of one that has been read and whose suffix promises a CATIA V5 document. @param size in bytes */
DocumentCondition conditionOf(VornToolsDocumentFile::EnumDocumentCondition condition, unsigned long long size,
                              const std::string& document);

#endif
