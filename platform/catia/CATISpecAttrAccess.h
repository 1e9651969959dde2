#ifndef CATISpecAttrAccess_H
#define CATISpecAttrAccess_H

#include "CATBaseUnknown.h"
#include "CATISpecAttrKey.h"
#include "CATISpecObject.h"
#include "CATListOfCATUnicodeString.h"
#include "CATListOfDouble.h"
#include "CATListOfInt.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISpecAttrAccess;

/** Values of the attributes of a specification object. Positions in lists count from 1; 0 stands for a value that is no
 * list. */
class ExportedByCatia CATISpecAttrAccess : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The key of an attribute, released by the caller; null when there is none of that name. */
    virtual CATISpecAttrKey* GetAttrKey(const char* iName) const = 0;
    /** Whether the attribute has a value; a list has one as soon as it has an element. */
    virtual CATBoolean TestAttributeValue(const CATISpecAttrKey* iKey) const = 0;
    virtual int GetListSize(const CATISpecAttrKey* iKey) const = 0;
    /** The object, released by the caller; null when there is none. */
    virtual CATISpecObject* GetSpecObject(const CATISpecAttrKey* iKey, int iPosition = 0) const = 0;
    /** Whole lists, deleted by the caller; null when the attribute is no list of that kind. */
    virtual CATListValCATUnicodeString* GetListString(const CATISpecAttrKey* iKey) const = 0;
    virtual CATRawCollint* GetListInteger(const CATISpecAttrKey* iKey) const = 0;
    virtual CATRawColldouble* GetListDouble(const CATISpecAttrKey* iKey) const = 0;
    /** Replaces an object; at position 0 of a list it is put behind the last one. */
    virtual HRESULT SetSpecObject(const CATISpecAttrKey* iKey, const CATISpecObject_var& iObject,
                                  int iPosition = 0) = 0;
    /** Replace whole lists. @return E_FAIL, and nothing changes, when the attribute is no list of that kind */
    virtual HRESULT SetListString(const CATISpecAttrKey* iKey, const CATListValCATUnicodeString& iValues) = 0;
    virtual HRESULT SetListInteger(const CATISpecAttrKey* iKey, const CATRawCollint& iValues) = 0;
    virtual HRESULT SetListDouble(const CATISpecAttrKey* iKey, const CATRawColldouble& iValues) = 0;

protected:
    ~CATISpecAttrAccess() override = default;
};

CATDeclareHandler(CATISpecAttrAccess, CATBaseUnknown);

#endif
