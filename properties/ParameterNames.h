#ifndef PROPERTIES_PARAMETER_NAMES_H
#define PROPERTIES_PARAMETER_NAMES_H

#include "foundation/Texts.h"

#include "CATICkeParm.h"
#include "CATIParmPublisher.h"

namespace vorntools {

constexpr const char* kPathSeparator = "\\";

/** A parameter's name without its path. */
inline CATUnicodeString lastSegment(const CATUnicodeString& i_name) {
    return behind(i_name, i_name.SearchSubString(kPathSeparator, 0, CATUnicodeString::CATSearchModeBackward) + 1);
}

/** The name that a parameter goes by in a set: that of its user, else its path below the set. Empty when the parameter
 * does not tell. */
inline CATUnicodeString nameInSet(CATICkeParm* ipi_parameter, const CATIParmPublisher_var& i_set) {
    const CATUnicodeString name = ipi_parameter->IsNamed() ? ipi_parameter->Name() : CATUnicodeString();
    return name.IsNull() ? ipi_parameter->RelativeName(i_set) : name;
}

/** Whether a name is a path: in a set, that of a parameter of a nested object. */
inline bool hasPath(const CATUnicodeString& i_name) { return i_name.SearchSubString(kPathSeparator) >= 0; }

} // namespace vorntools

#endif
