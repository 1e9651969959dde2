#ifndef CATIDocRoots_H
#define CATIDocRoots_H

#include "CATBaseUnknown.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIDocRoots;

/** The roots of a document. */
class ExportedByCatia CATIDocRoots : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The roots, the main one first; the caller deletes the list. Null when there are none. */
    virtual CATListValCATBaseUnknown_var* GiveDocRoots() = 0;

protected:
    ~CATIDocRoots() override = default;
};

CATDeclareHandler(CATIDocRoots, CATBaseUnknown);

#endif
