#ifndef IEnumVARIANT_H
#define IEnumVARIANT_H

#include "CATVariant.h"
#include "IUnknown.h"

extern ExportedByCatia IID IID_IEnumVARIANT;

/** Walks over a collection. */
struct IEnumVARIANT : public IUnknown {
    /** @param oItems room for iCount values, each cleared by the caller afterwards. @param oFetched how many came.
     * @return S_OK when all came, S_FALSE when fewer did */
    virtual HRESULT __stdcall Next(ULONG iCount, CATVariant* oItems, ULONG* oFetched) = 0;
    /** S_FALSE when the end was met before. */
    virtual HRESULT __stdcall Skip(ULONG iCount) = 0;
    virtual HRESULT __stdcall Reset() = 0;
    /** @param oCopy a walk of its own that stands at the same place. */
    virtual HRESULT __stdcall Clone(IEnumVARIANT** oCopy) = 0;

protected:
    ~IEnumVARIANT() = default;
};

#endif
