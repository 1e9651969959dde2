#ifndef CATICkeType_H
#define CATICkeType_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeType;

/** Type of a parameter. That of a dimension answers CATICkeMagnitude, too. */
class ExportedByCatia CATICkeType : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** "String", "Integer", "Boolean", "Real" or the name of a magnitude such as "Length".
     * Proposed: the spellings. */
    virtual CATUnicodeString Name() const = 0;

protected:
    ~CATICkeType() override = default;
};

CATDeclareHandler(CATICkeType, CATBaseUnknown);

#endif
