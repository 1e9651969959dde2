#ifndef CATIDocId_H
#define CATIDocId_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATIDocId;

/** Identity of a document. */
class ExportedByCatia CATIDocId : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Type of the document: its suffix, such as CATPart. */
    virtual HRESULT GetType(CATUnicodeString& oType) = 0;

protected:
    ~CATIDocId() override = default;
};

CATDeclareHandler(CATIDocId, CATBaseUnknown);

#endif
