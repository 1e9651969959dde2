#ifndef VornToolsDocument_H
#define VornToolsDocument_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATDocument;

/** Look-up of documents that are loaded in the session. */
class ExportedByVornTools VornToolsDocument {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** Finds a loaded document by its name; where the platform names documents by logical directory, a plain path is
     * put into that form first. @param document null when none; no reference is added
     * @return S_OK when found, else the platform's code */
    static HRESULT getDocumentInSession(const CATUnicodeString& name, CATDocument*& document);
};

#endif
