#ifndef CATIAPosition_H
#define CATIAPosition_H

#include "CATIABase.h"
#include "CATSafeArray.h"

extern ExportedByCatia IID IID_CATIAPosition;

/** Place of a product relative to its father. Proposed: the base, in the place of a further automation class. */
class ExportedByCatia CATIAPosition : public CATIABase {
    CATDeclareInterface;

public:
    /** @param oComponents array of 12 numbers that the caller provides: the three axes, then the origin. */
    virtual HRESULT __stdcall GetComponents(CATSafeArrayVariant& oComponents) = 0;

protected:
    ~CATIAPosition() override = default;
};

CATDeclareHandler(CATIAPosition, CATBaseUnknown);

#endif
