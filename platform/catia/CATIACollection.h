#ifndef CATIACollection_H
#define CATIACollection_H

#include "CATBaseDispatch.h"
#include "CATSysDataType.h"

extern ExportedByCatia IID IID_CATIACollection;

/** Objects of one kind. */
class ExportedByCatia CATIACollection : public CATBaseDispatch {
    CATDeclareInterface;

public:
    virtual HRESULT __stdcall get_Count(CATLONG& oNbItems) = 0;
    /** @param oEnumIter a new walk over the objects, which answers IID_IEnumVARIANT. */
    virtual HRESULT __stdcall get__NewEnum(IUnknown*& oEnumIter) = 0;

protected:
    ~CATIACollection() override = default;
};

CATDeclareHandler(CATIACollection, CATBaseUnknown);

#endif
