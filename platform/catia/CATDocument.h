#ifndef CATDocument_H
#define CATDocument_H

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

class CATDocumentDescriptor;

/** A document of the session. Nobody adds or gives back references to it; the session opens and closes it. */
class ExportedByCatia CATDocument : public CATBaseUnknown {
public:
    /** Name with directory and suffix; for a document that was never saved just its name. */
    virtual CATUnicodeString StorageName() const = 0;
    /** Identifier of the document, released by the caller. */
    virtual HRESULT GetDocId(class CATIDocId** oDocId) = 0;
    /** Whether the document has a file of its own. Proposed: whole; asked in one place only. */
    virtual CATBoolean IsSaved() const = 0;
    /** The descriptor; no reference is added, null is possible. Proposed: whole; asked in one place only. */
    virtual CATDocumentDescriptor* GetDocumentDescriptor() const = 0;

protected:
    ~CATDocument() override = default;
};

#endif
