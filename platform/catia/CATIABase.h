#ifndef CATIABase_H
#define CATIABase_H

#include "CATBSTR.h"
#include "CATBaseDispatch.h"

extern ExportedByCatia IID IID_CATIABase;

/** What every automation object answers. Texts that come out are freed by the caller with CATFreeString. */
class ExportedByCatia CATIABase : public CATBaseDispatch {
    CATDeclareInterface;

public:
    /** @param oName the object's name, or null on failure. */
    virtual HRESULT __stdcall get_Name(CATBSTR& oName) = 0;
    /** @param oObject the object that this one keeps under a name. @return E_FAIL when there is none: the answer of
     * every class that does not say otherwise (Proposed: that there is one) */
    virtual HRESULT __stdcall GetItem(const CATBSTR& iName, CATBaseDispatch*& oObject);

protected:
    ~CATIABase() override = default;
};

CATDeclareHandler(CATIABase, CATBaseUnknown);

#endif
