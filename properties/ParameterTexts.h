#ifndef PROPERTIES_PARAMETER_TEXTS_H
#define PROPERTIES_PARAMETER_TEXTS_H

// How values are written as texts.

#include "CATUnicodeString.h"

namespace vorntools {

constexpr const char* kValueSeparator = "@=@";

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

/** Reads the number that a text begins with. Infinity and what is no number at all count as unreadable, whatever the
 * runtime library thinks: no parameter is to hold them. */
bool readReal(const CATUnicodeString& i_text, double& o_number);
bool readInteger(const CATUnicodeString& i_text, int& o_number);

/** How a text says a dimension: as a number alone, or as one with a unit behind it. */
enum class NumberText { None, Number, WithUnit };

/** None is also what half a number would be: one with a point or comma behind it. @param i_separator the session's, in
 * the place of which a point may stand */
NumberText numberTextOf(const CATUnicodeString& i_text, const CATUnicodeString& i_separator);

} // namespace vorntools

#endif
