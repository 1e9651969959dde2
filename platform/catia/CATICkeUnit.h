#ifndef CATICkeUnit_H
#define CATICkeUnit_H

#include "CATBaseUnknown.h"
#include "CATCke.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeUnit;

/** A unit of a magnitude. */
class ExportedByCatia CATICkeUnit : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** A number of this unit in the MKS unit. */
    virtual double Convert(const double iInThisUnit) const = 0;
    /** A number of the MKS unit in this unit. */
    virtual double Value(const double iMKS) const = 0;
    /** A number of the MKS unit as text in this unit, with its symbol. @param iNbDecimals 0: as the session shows them
     */
    virtual CATUnicodeString Show(const double iMKS, const int iNbDecimals = 0) const = 0;
    virtual CATUnicodeString Symbol() const = 0;

protected:
    ~CATICkeUnit() override = default;
};

CATDeclareHandler(CATICkeUnit, CATBaseUnknown);

#endif
