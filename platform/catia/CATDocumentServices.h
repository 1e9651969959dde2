#ifndef CATDocumentServices_H
#define CATDocumentServices_H

#include "CATDocument.h"

/** Services on documents. No document that they hand out carries a reference. */
class ExportedByCatia CATDocumentServices {
public:
    /** Finds a loaded document by its storage name. @param oOpenedDoc the document, or null.
     * @return S_OK when found, else E_FAIL. */
    static HRESULT GetDocumentInSession(const CATUnicodeString& iStorageName, CATDocument*& oOpenedDoc);
};

#endif
