#ifndef CATICkeParmFactory_H
#define CATICkeParmFactory_H

#include "CATBaseUnknown.h"
#include "CATCke.h"
#include "CATICkeParm.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATICkeParmFactory;

/** Makes parameters; asked of a container. The name given is that at creation. A parameter stands nowhere until it is
 * appended to a publisher. Null on failure. */
class ExportedByCatia CATICkeParmFactory : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual CATICkeParm_var CreateString(const CATUnicodeString& iName, const CATUnicodeString& iValue) = 0;
    virtual CATICkeParm_var CreateInteger(const CATUnicodeString& iName, const int iValue) = 0;
    virtual CATICkeParm_var CreateReal(const CATUnicodeString& iName, const double iValue) = 0;
    virtual CATICkeParm_var CreateBoolean(const CATUnicodeString& iName, const CATCke::Boolean iValue) = 0;

protected:
    ~CATICkeParmFactory() override = default;
};

CATDeclareHandler(CATICkeParmFactory, CATBaseUnknown);

#endif
