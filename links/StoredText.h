#ifndef LINKS_STORED_TEXT_H
#define LINKS_STORED_TEXT_H

#include "CATUnicodeString.h"

#include <algorithm>
#include <string>

namespace vorntools {

/** A text that a document stores in UTF-8, in the platform's 8-bit form. Bytes that are not UTF-8 stay as they are: a
 * name that cannot be read is still a link. */
inline std::string decoded(const std::string& i_stored) {
    const auto is_plain = [](char i_byte) { return static_cast<unsigned char>(i_byte) - 1U < 0x7FU; };
    if (std::all_of(i_stored.begin(), i_stored.end(), is_plain)) return i_stored;
    CATUnicodeString text;
    if (text.BuildFromUTF8(i_stored.data(), i_stored.size()) < 0 || text.IsNull()) return i_stored;
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

} // namespace vorntools

#endif
