#ifndef CATISPPContainer_H
#define CATISPPContainer_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISPPContainer;

/** A container of process planning. */
class ExportedByCatia CATISPPContainer : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATISPPContainer() override = default;
};

CATDeclareHandler(CATISPPContainer, CATBaseUnknown);

#endif
