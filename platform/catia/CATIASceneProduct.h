#ifndef CATIASceneProduct_H
#define CATIASceneProduct_H

#include "CATIABase.h"
#include "CATVariant.h"

class CATIAPosition;

extern ExportedByCatia IID IID_CATIASceneProduct;

/** A product as a scene shows it. */
class ExportedByCatia CATIASceneProduct : public CATIABase {
    CATDeclareInterface;

public:
    virtual HRESULT __stdcall get_Hidden(CAT_VARIANT_BOOL& oHidden) = 0;
    virtual HRESULT __stdcall get_Position(CATIAPosition*& oPosition) = 0;

protected:
    ~CATIASceneProduct() override = default;
};

CATDeclareHandler(CATIASceneProduct, CATBaseUnknown);

#endif
