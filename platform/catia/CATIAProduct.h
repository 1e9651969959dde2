#ifndef CATIAProduct_H
#define CATIAProduct_H

#include "CATIABase.h"
#include "CATVariant.h"

extern ExportedByCatia IID IID_CATIAProduct;

/** A product as automation shows it: the only way to its shape representations by path. */
class ExportedByCatia CATIAProduct : public CATIABase {
    CATDeclareInterface;

public:
    virtual HRESULT __stdcall HasAMasterShapeRepresentation(CAT_VARIANT_BOOL& oHas) = 0;
    /** @param iLoadIfNecessary FALSE: nothing is loaded. @param oRep the representation, with a reference for the
     * caller; fails when there is none */
    virtual HRESULT __stdcall GetMasterShapeRepresentation(CAT_VARIANT_BOOL iLoadIfNecessary,
                                                           CATBaseDispatch*& oRep) = 0;
    /** @param oPath path of the file that shows the product; fails when it has no master shape representation. */
    virtual HRESULT __stdcall GetMasterShapeRepresentationPathName(CATBSTR& oPath) = 0;
    /** Name of the representation shown by default. */
    virtual HRESULT __stdcall GetDefaultShapeName(CATBSTR& oName) = 0;
    /** @param iShapeName name of a representation. @param oPath path of its file; fails when there is none. */
    virtual HRESULT __stdcall GetShapePathName(const CATBSTR& iShapeName, CATBSTR& oPath) = 0;

protected:
    ~CATIAProduct() override = default;
};

CATDeclareHandler(CATIAProduct, CATBaseUnknown);

#endif
