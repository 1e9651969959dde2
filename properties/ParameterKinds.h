#ifndef PROPERTIES_PARAMETER_KINDS_H
#define PROPERTIES_PARAMETER_KINDS_H

#include "CATICkeParm.h"
#include "CATICkeType.h"
#include "CATUnicodeString.h"

namespace vorntools {

/** What a parameter holds. A dimension is a real number with a unit, such as a length. */
enum class ParameterKind { Unknown, Text, Integer, Truth, Real, Dimension };

/** The kind behind the identifier of a type; every name that is not one of the plain types is that of a magnitude. */
inline ParameterKind parameterKindOf(const CATUnicodeString& i_type_name) {
    if (i_type_name.IsNull()) return ParameterKind::Unknown;
    if (i_type_name == "String") return ParameterKind::Text;
    if (i_type_name == "Integer") return ParameterKind::Integer;
    if (i_type_name == "Boolean") return ParameterKind::Truth;
    return i_type_name == "Real" ? ParameterKind::Real : ParameterKind::Dimension;
}

/** Identifier of a type; empty when it does not tell. */
inline CATUnicodeString typeNameOf(const CATICkeType_var& i_type) {
    return i_type == nullptr ? CATUnicodeString() : i_type->Name();
}

/** Unknown when the parameter does not tell. */
inline ParameterKind parameterKindOf(CATICkeParm* ipi_parameter) {
    return parameterKindOf(typeNameOf(ipi_parameter->Type()));
}

} // namespace vorntools

#endif
