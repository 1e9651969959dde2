#ifndef FOUNDATION_TEXTS_H
#define FOUNDATION_TEXTS_H

#include "CATUnicodeString.h"

namespace vorntools {

/** Whether a text begins with another one, letter case included. */
inline bool beginsWith(const CATUnicodeString& i_text, const CATUnicodeString& i_beginning) {
    return i_text.SearchSubString(i_beginning) == 0;
}

/** What stands behind the first characters of a text. */
inline CATUnicodeString behind(const CATUnicodeString& i_text, int i_count) {
    return i_text.SubString(i_count, i_text.GetLengthInChar() - i_count);
}

} // namespace vorntools

#endif
