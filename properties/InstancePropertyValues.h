#ifndef PROPERTIES_INSTANCE_PROPERTY_VALUES_H
#define PROPERTIES_INSTANCE_PROPERTY_VALUES_H

#include "CATICkeParm.h"
#include "VornToolsInstanceProperty.h"

namespace vorntools {

constexpr const char* kEveryDigit = "%.16G";
constexpr const char* kFewDigits = "%g";

/** Type and value of a property. @param i_real_format how real numbers are written. @return E_FAIL when it does not
 * tell its type or its value */
HRESULT readProperty(CATICkeParm* ipi_parameter, const char* i_real_format,
                     VornToolsInstanceProperty::EnumPropertyType& o_type, CATUnicodeString& o_text);

} // namespace vorntools

#endif
