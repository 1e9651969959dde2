#ifndef CATIMechanicalFeature_H
#define CATIMechanicalFeature_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIMechanicalFeature;

/** A feature of a part; the library only asks whether an object is one. */
class ExportedByCatia CATIMechanicalFeature : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATIMechanicalFeature() override = default;
};

CATDeclareHandler(CATIMechanicalFeature, CATBaseUnknown);

#endif
