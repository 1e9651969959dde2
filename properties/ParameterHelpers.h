#ifndef PROPERTIES_PARAMETER_HELPERS_H
#define PROPERTIES_PARAMETER_HELPERS_H

#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/Texts.h"

#include "CATICkeMagnitude.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATICkeRelationFactory.h"
#include "CATIParmPublisher.h"
#include "CATIRedrawEvent.h"
#include "CATISpecAttrAccess.h"
#include "CATISpecObject.h"
#include "VornLocaleEnv.h"

#include <cmath>

namespace vorntools {

constexpr const char* kValueSeparator = "@=@";
constexpr const char* kListOfValues = "ListOfValues";

/** Whether a text holds several values. */
inline bool holdsSeveralValues(const CATUnicodeString& i_value) {
    return i_value.SearchSubString(kValueSeparator) >= 0;
}

/** What a text means as a truth value: nothing is true. */
inline bool truthOf(const CATUnicodeString& i_value) {
    CATUnicodeString value(i_value);
    value.ToUpper();
    return value == "1" || value == "TRUE" || value.IsNull();
}

/** A real number with a decimal point as the session writes it. */
inline CATUnicodeString inSessionNotation(const CATUnicodeString& i_value, const CATUnicodeString& i_separator) {
    CATUnicodeString value(i_value);
    if (!i_separator.IsNull() && i_separator != ".") value.ReplaceAll(".", i_separator);
    return value;
}

/** Reads a real number. Infinity and what is no number at all count as unreadable, whatever the runtime library thinks:
 * no parameter is to hold them. */
inline bool readReal(const CATUnicodeString& i_text, double& o_number) {
    return i_text.ConvertToNum(&o_number, "%le") && std::isfinite(o_number);
}

/** The key of an attribute; empty when the object has none of that name. */
inline InterfacePtr<CATISpecAttrKey> keyOf(CATISpecAttrAccess* ipi_access, const char* i_name) {
    return InterfacePtr<CATISpecAttrKey>::adopt(ipi_access->GetAttrKey(i_name));
}

/** Identifier of a parameter's type; empty when the parameter does not tell. */
inline CATUnicodeString typeNameOf(CATICkeParm* ipi_parameter) {
    const CATICkeType_var sp_type = ipi_parameter->Type();
    return sp_type == nullptr ? CATUnicodeString() : sp_type->Name();
}

/** A parameter's name without its path. */
inline CATUnicodeString lastSegment(const CATUnicodeString& i_name) {
    return behind(i_name, i_name.SearchSubString("\\", 0, CATUnicodeString::CATSearchModeBackward) + 1);
}

/** What VornToolsCADDOCProperties::setAttributeOnCATISpecObject does, with a result: a list that is not written is
 * lost.
 */
HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key,
                           const CATListValCATUnicodeString& i_values);
HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key, const CATRawColldouble& i_values);
HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key, const CATRawCollint& i_values);

/** The parameters below a publisher. */
inline void listParameters(CATIParmPublisher* ipi_publisher, CATListValCATISpecObject_var& o_members) {
    o_members.RemoveAll();
    ipi_publisher->GetDirectChildren(CATICkeParm::ClassName(), o_members);
}

} // namespace vorntools

#endif
