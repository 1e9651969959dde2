#ifndef FOUNDATION_TEXTS_H
#define FOUNDATION_TEXTS_H

#include "CATUnicodeString.h"

namespace vorntools {

// Texts are compared as the platform's own: their 8-bit form loses the characters that its code page lacks.

/** Whether a text begins with another one that is not empty, letter case included. */
inline bool beginsWith(const CATUnicodeString& i_text, const CATUnicodeString& i_beginning) {
    return !i_beginning.IsNull() && i_text.SubString(0, i_beginning.GetLengthInChar()) == i_beginning;
}

/** Whether a text ends with another one that is not empty, letter case included. */
inline bool endsWith(const CATUnicodeString& i_text, const CATUnicodeString& i_end) {
    const int length = i_end.GetLengthInChar();
    const int begin = i_text.GetLengthInChar() - length;
    return length > 0 && begin >= 0 && i_text.SubString(begin, length) == i_end;
}

/** What stands behind the first characters of a text. */
inline CATUnicodeString behind(const CATUnicodeString& i_text, int i_count) {
    return i_text.SubString(i_count, i_text.GetLengthInChar() - i_count);
}

} // namespace vorntools

#endif
