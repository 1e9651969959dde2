#ifndef FOUNDATION_UTF8_H
#define FOUNDATION_UTF8_H

#include "CATUnicodeString.h"

#include <string>

namespace vorntools {

/** All characters of a text, of which its 8-bit form lacks those outside the code page. */
inline std::string utf8Of(const CATUnicodeString& i_text) {
    // Room for four bytes a character, and for a text that is none.
    const int room = 4 * i_text.GetLengthInChar() + i_text.GetLengthInByte();
    std::string bytes(static_cast<std::size_t>(room) + 1, '\0');
    std::size_t count = bytes.size();
    i_text.ConvertToUTF8(bytes.data(), &count);
    bytes.resize(count);
    return bytes;
}

} // namespace vorntools

#endif
