#ifndef CATIAlias_H
#define CATIAlias_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATIAlias;

/** The name that users see. */
class ExportedByCatia CATIAlias : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual CATUnicodeString GetAlias() = 0;
    virtual void SetAlias(const CATUnicodeString& iAlias) = 0;

protected:
    ~CATIAlias() override = default;
};

CATDeclareHandler(CATIAlias, CATBaseUnknown);

#endif
