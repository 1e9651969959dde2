#ifndef CATBaseDispatch_H
#define CATBaseDispatch_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATBaseDispatch;

/** Root of the automation objects. */
class ExportedByCatia CATBaseDispatch : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATBaseDispatch() override = default;
};

#endif
