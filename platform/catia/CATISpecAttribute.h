#ifndef CATISpecAttribute_H
#define CATISpecAttribute_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISpecAttribute;

/** An attribute of a specification object, as adding one hands it out. */
class ExportedByCatia CATISpecAttribute : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATISpecAttribute() override = default;
};

CATDeclareHandler(CATISpecAttribute, CATBaseUnknown);

#endif
