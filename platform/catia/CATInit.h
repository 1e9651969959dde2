#ifndef CATInit_H
#define CATInit_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATInit;

/** What every document answers; only documents do. */
class ExportedByCatia CATInit : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The document's root container as a named interface ("CATISPPProcessContainer"), to be cast to it; released by
     * the caller. Null when the container is none of that kind. */
    virtual CATBaseUnknown* GetRootContainer(const CATIdent iInterfaceID) = 0;

protected:
    ~CATInit() override = default;
};

CATDeclareHandler(CATInit, CATBaseUnknown);

#endif
