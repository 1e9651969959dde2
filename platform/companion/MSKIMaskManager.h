#ifndef MSKIMaskManager_H
#define MSKIMaskManager_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

class CATISpecObject;

extern ExportedByCatia IID IID_MSKIMaskManager;

/** Shows masks (marks of a status) on the nodes of the tree; an interface of the session. */
class ExportedByCatia MSKIMaskManager : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** @param iMask from 1 to 10; takes the place of the mask that the object has. */
    virtual HRESULT setMask(CATISpecObject* iObject, int iMask) = 0;
    /** @param oMask 0 for an object without a mask. */
    virtual HRESULT getMask(CATISpecObject* iObject, int& oMask) = 0;
    /** S_OK also for an object without a mask. */
    virtual HRESULT removeAllMasks(CATISpecObject* iObject) = 0;

protected:
    ~MSKIMaskManager() override = default;
};

CATDeclareHandler(MSKIMaskManager, CATBaseUnknown);

#endif
