#ifndef CATICkeMagnitude_H
#define CATICkeMagnitude_H

#include "CATBaseUnknown.h"
#include "CATCke.h"
#include "CATICkeUnit.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeMagnitude;

/** A kind of dimension: a length, an angle, ... Null units are possible. */
class ExportedByCatia CATICkeMagnitude : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The unit that users see. */
    virtual CATICkeUnit_var CurrentUnit() const = 0;
    /** The unit of the metre-kilogram-second system. */
    virtual CATICkeUnit_var MKSUnit() const = 0;
    /** Reads a number with one of the magnitude's units, with the current one when it has none. False for another text.
     */
    virtual CATCke::Boolean DecodeReal(const CATUnicodeString& iText, double& oMKS) const = 0;

protected:
    ~CATICkeMagnitude() override = default;
};

CATDeclareHandler(CATICkeMagnitude, CATBaseUnknown);

#endif
