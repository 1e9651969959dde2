#ifndef CATICkeRelationFactory_H
#define CATICkeRelationFactory_H

#include "CATBaseUnknown.h"
#include "CATIParmPublisher.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeRelationFactory;

/** Makes sets of parameters; asked of a container. */
class ExportedByCatia CATICkeRelationFactory : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Null on failure. */
    virtual CATIParmPublisher_var CreateParameterSet(const CATUnicodeString iName) = 0;

protected:
    ~CATICkeRelationFactory() override = default;
};

CATDeclareHandler(CATICkeRelationFactory, CATBaseUnknown);

#endif
