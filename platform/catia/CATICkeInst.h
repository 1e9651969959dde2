#ifndef CATICkeInst_H
#define CATICkeInst_H

#include "CATBaseUnknown.h"
#include "CATCke.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeInst;

/** A parameter's value. */
class ExportedByCatia CATICkeInst : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual int AsInteger() const = 0;
    /** In the MKS unit for a dimension. */
    virtual double AsReal() const = 0;
    virtual CATCke::Boolean AsBoolean() const = 0;
    virtual CATUnicodeString AsString() const = 0;

protected:
    ~CATICkeInst() override = default;
};

CATDeclareHandler(CATICkeInst, CATBaseUnknown);

#endif
