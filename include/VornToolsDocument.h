#ifndef VornToolsDocument_H
#define VornToolsDocument_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATDocument;

/**
 * Look-up of documents that are loaded in the session.
 *
 * @par Example
 * @snippet links.cpp VornToolsDocument
 */
class ExportedByVornTools VornToolsDocument {
public:
    /** "VornToolsDocument::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * Finds a loaded document by its name, with the platform's own look-up; VornToolsCommon::getDocumentInSession
     * searches by bare names as well.
     * @param name full file name; where the platform names documents by logical directory, a plain path is put into
     * that form first
     * @param document null when there is none; no reference is added
     * @return S_OK when found; E_FAIL, reported, for an empty name; else the platform's code, or E_FAIL where that
     * tells no failure
     */
    static HRESULT getDocumentInSession(const CATUnicodeString& name, CATDocument*& document);
};

#endif
