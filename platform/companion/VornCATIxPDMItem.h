#ifndef VornCATIxPDMItem_H
#define VornCATIxPDMItem_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_VornCATIxPDMItem;

/** What the platform's own PDM connection knows of a product. */
class ExportedByCatia VornCATIxPDMItem : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** @param iName a standard name such as "CN_REVISION" */
    virtual HRESULT SetProperty(const CATUnicodeString& iName, const CATUnicodeString& iValue) = 0;

protected:
    ~VornCATIxPDMItem() override = default;
};

CATDeclareHandler(VornCATIxPDMItem, CATBaseUnknown);

#endif
