#ifndef FOUNDATION_TEXTS_H
#define FOUNDATION_TEXTS_H

#include "CATUnicodeString.h"

#include <cstddef>
#include <cstring>

namespace vorntools {

/** Whether a text begins with another one that is not empty, letter case included. */
inline bool beginsWith(const CATUnicodeString& i_text, const char* i_beginning) {
    const std::size_t length = std::strlen(i_beginning);
    return length > 0 && std::strncmp(i_text.ConvertToChar(), i_beginning, length) == 0;
}

inline bool beginsWith(const CATUnicodeString& i_text, const CATUnicodeString& i_beginning) {
    const int length = i_beginning.GetLengthInByte();
    return length > 0 && i_text.GetLengthInByte() >= length &&
           std::memcmp(i_text.ConvertToChar(), i_beginning.ConvertToChar(), static_cast<std::size_t>(length)) == 0;
}

/** Whether a text ends with another one that is not empty, letter case included. */
inline bool endsWith(const CATUnicodeString& i_text, const char* i_end) {
    const std::size_t length = std::strlen(i_end);
    const auto whole = static_cast<std::size_t>(i_text.GetLengthInByte());
    return length > 0 && whole >= length && std::memcmp(i_text.ConvertToChar() + (whole - length), i_end, length) == 0;
}

/** What stands behind the first characters of a text. */
inline CATUnicodeString behind(const CATUnicodeString& i_text, int i_count) {
    return i_text.SubString(i_count, i_text.GetLengthInChar() - i_count);
}

} // namespace vorntools

#endif
