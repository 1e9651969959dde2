#ifndef CATISpecObject_H
#define CATISpecObject_H

#include "CATBaseUnknown.h"
#include "CATIContainer.h"
#include "CATIDomain.h"
#include "CATISpecDeclarations.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

class CATISpecAttribute;

extern ExportedByCatia IID IID_CATISpecObject;

/** A specification object. What has no feature behind it has no name, type or container and takes no attribute: the
 * answers of every class that does not say otherwise (Proposed: that there are such). */
class ExportedByCatia CATISpecObject : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Whether the object needs no update, as a whole or within a domain. */
    virtual CATBoolean IsUpToDate(CATIDomain_var iDomain = NULL_var) const = 0;
    /** The name that users see. */
    virtual CATUnicodeString GetDisplayName() const;
    /** Such as "ParameterSet". */
    virtual CATUnicodeString GetType() const;
    /** The container that the object is stored in; null is possible. */
    virtual CATIContainer_var GetFeatContainer() const;
    /** Adds an attribute. @param iListKind kind of a list's elements, for tk_list. @return the attribute, released by
     * the caller; null when there is one of that name */
    virtual CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                            CATAttrInOut iInOut = sp_NEUTRAL);

protected:
    ~CATISpecObject() override = default;
};

CATDeclareHandler(CATISpecObject, CATBaseUnknown);

#endif
