#ifndef CATILinkableObject_H
#define CATILinkableObject_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATILinkableObject;

class CATDocument;

/** An object that lives in a document and can be linked to. */
class ExportedByCatia CATILinkableObject : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The document that holds the object; no reference is added. Null when there is none. */
    virtual CATDocument* GetDocument() = 0;

protected:
    ~CATILinkableObject() override = default;
};

CATDeclareHandler(CATILinkableObject, CATBaseUnknown);

#endif
