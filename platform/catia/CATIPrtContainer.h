#ifndef CATIPrtContainer_H
#define CATIPrtContainer_H

#include "CATBaseUnknown.h"
#include "CATISpecObject.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIPrtContainer;

/** The root container of a part document. */
class ExportedByCatia CATIPrtContainer : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The part, the feature above all others; null is possible. */
    virtual CATISpecObject_var GetPart() = 0;

protected:
    ~CATIPrtContainer() override = default;
};

CATDeclareHandler(CATIPrtContainer, CATBaseUnknown);

#endif
