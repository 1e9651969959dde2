#ifndef CATISpecObject_H
#define CATISpecObject_H

#include "CATBaseUnknown.h"
#include "CATIDomain.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia const IID IID_CATISpecObject;

/** A specification object. */
class ExportedByCatia CATISpecObject : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Whether the object needs no update, as a whole or within a domain. */
    virtual CATBoolean IsUpToDate(CATIDomain_var iDomain = NULL_var) const = 0;

protected:
    ~CATISpecObject() override = default;
};

CATDeclareHandler(CATISpecObject, CATBaseUnknown);

#endif
