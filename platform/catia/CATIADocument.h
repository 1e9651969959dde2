#ifndef CATIADocument_H
#define CATIADocument_H

#include "CATIABase.h"
#include "CATVariant.h"

extern ExportedByCatia IID IID_CATIADocument;

/** A document as automation shows it. */
class ExportedByCatia CATIADocument : public CATIABase {
    CATDeclareInterface;

public:
    /** @param oSaved true when there is nothing to save. */
    virtual HRESULT __stdcall get_Saved(CAT_VARIANT_BOOL& oSaved) = 0;

protected:
    ~CATIADocument() override = default;
};

CATDeclareHandler(CATIADocument, CATBaseUnknown);

#endif
