#ifndef CATInit_H
#define CATInit_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia const IID IID_CATInit;

/** What every document answers; only documents do. */
class ExportedByCatia CATInit : public CATBaseUnknown {
    CATDeclareInterface;

public:
protected:
    ~CATInit() override = default;
};

CATDeclareHandler(CATInit, CATBaseUnknown);

#endif
