#ifndef CATIAScene_H
#define CATIAScene_H

#include "CATIABase.h"
#include "CATVariant.h"
#include "CatSceneType.h"

class CATIAProduct;
class CATIASceneProduct;

extern ExportedByCatia IID IID_CATIAScene;

/** A named view of an assembly in which products may stand elsewhere or be hidden. */
class ExportedByCatia CATIAScene : public CATIABase {
    CATDeclareInterface;

public:
    virtual HRESULT __stdcall get_Type(CatSceneType& oType) = 0;
    /** Whether the scene knows a product. */
    virtual HRESULT __stdcall ExistsInScene(CATIAProduct* iProduct, CAT_VARIANT_BOOL& oExists) = 0;
    /** What the scene knows of a product. A product that it did not know is taken in by asking. */
    virtual HRESULT __stdcall GetSceneProductData(CATIAProduct* iProduct, CATIASceneProduct*& oData) = 0;

protected:
    ~CATIAScene() override = default;
};

CATDeclareHandler(CATIAScene, CATBaseUnknown);

#endif
