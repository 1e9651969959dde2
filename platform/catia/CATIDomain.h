#ifndef CATIDomain_H
#define CATIDomain_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIDomain;

/** A set of specification objects; the integration only ever passes the null handle. Proposed: the header and that
 * nothing is in it. */
class ExportedByCatia CATIDomain : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATIDomain() override = default;
};

CATDeclareHandler(CATIDomain, CATBaseUnknown);

#endif
