#ifndef CATCSO_H
#define CATCSO_H

#include "CATBaseUnknown.h"

/** What the user has selected: path elements in the order of selection. */
class ExportedByCatia CATCSO : public CATBaseUnknown {
public:
    /** Goes back to before the first element. */
    virtual void InitElementList() = 0;
    /** The next element, a CATPathElement; null behind the last one. No reference is added. */
    virtual CATBaseUnknown* NextElement() = 0;
    virtual int GetSize() = 0;
    /** Selects nothing. @param iDispatchChange whether the views follow at once */
    virtual void Empty(int iDispatchChange = 1) = 0;

protected:
    ~CATCSO() override = default;
};

#endif
