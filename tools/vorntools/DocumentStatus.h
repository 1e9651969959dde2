#ifndef TOOLS_VORNTOOLS_DOCUMENT_STATUS_H
#define TOOLS_VORNTOOLS_DOCUMENT_STATUS_H

#include "tools/vorntools/Files.h"

#include <string>

/** What the library makes of one document and its DAT file. */
struct DocumentStatus {
    std::string document, dat, layout, itemRevision, dataset, namedReference, loadType, status, reason;
    int linked = 0;
    int unresolved = 0;
    bool designTable = false;

    /** Whether somebody has to look at the document. */
    bool isFinding() const { return status != "not modified" || unresolved > 0; }
};

/** Asks the library about a document. The journal must be empty: it tells the reason. */
DocumentStatus examine(const FoundDocument& found);

#endif
