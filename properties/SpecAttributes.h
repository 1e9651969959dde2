#ifndef PROPERTIES_SPEC_ATTRIBUTES_H
#define PROPERTIES_SPEC_ATTRIBUTES_H

#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"

#include "CATISpecAttrAccess.h"
#include "CATListOfCATUnicodeString.h"
#include "CATListOfDouble.h"
#include "CATListOfInt.h"

namespace vorntools {

/** The attribute in which a parameter keeps several values. */
constexpr const char* kListOfValues = "ListOfValues";

/** The key of an attribute; empty when the object has none of that name. */
inline InterfacePtr<CATISpecAttrKey> keyOf(CATISpecAttrAccess* ipi_access, const char* i_name) {
    return InterfacePtr<CATISpecAttrKey>::adopt(ipi_access->GetAttrKey(i_name));
}

/** What VornToolsCADDOCProperties::setAttributeOnCATISpecObject does, with a result: a list that is not written is
 * lost. */
HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key,
                           const CATListValCATUnicodeString& i_values);
HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key, const CATRawColldouble& i_values);
HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key, const CATRawCollint& i_values);

} // namespace vorntools

#endif
