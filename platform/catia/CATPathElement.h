#ifndef CATPathElement_H
#define CATPathElement_H

#include "CATBaseUnknown.h"

/** The way from the document's root down to a selected object. */
class ExportedByCatia CATPathElement : public CATBaseUnknown {
public:
    /** Objects on the way, both ends included; 0 for an empty path. */
    virtual int GetSize() const = 0;
    /** Object at a position from 0; null outside. No reference is added. */
    virtual CATBaseUnknown* operator[](int iPosition) const = 0;
    /** The deepest object that answers an interface. @param oPointer that interface, released by the caller (Proposed:
     * that).
     * @return S_OK, or E_FAIL when there is none */
    virtual HRESULT Search(const IID& iIID, void** oPointer) = 0;

protected:
    ~CATPathElement() override = default;
};

#endif
