#ifndef CATISpecAttrKey_H
#define CATISpecAttrKey_H

#include "CATBaseUnknown.h"
#include "CATISpecDeclarations.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATISpecAttrKey;

/** Name and kind of an attribute of one object: what the values are asked with. */
class ExportedByCatia CATISpecAttrKey : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual CATUnicodeString GetName() const = 0;
    virtual CATAttrKind GetType() const = 0;
    /** Kind of a list's elements; tk_list when the attribute is no list. */
    virtual CATAttrKind GetListType() const = 0;

protected:
    ~CATISpecAttrKey() override = default;
};

CATDeclareHandler(CATISpecAttrKey, CATBaseUnknown);

#endif
