#ifndef FOUNDATION_TEXT_KEYS_H
#define FOUNDATION_TEXT_KEYS_H

// Sets and maps of texts: equal are texts that the platform calls equal, letter case included.

#include "CATUnicodeString.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vorntools {

/** By all characters: in the 8-bit form all texts of one length may look the same. */
struct TextHash {
    std::size_t operator()(const CATUnicodeString& i_text) const {
        constexpr std::size_t bytes_of_character = 4;
        std::vector<char> bytes(bytes_of_character * static_cast<std::size_t>(i_text.GetLengthInChar()) + 1);
        std::size_t length = bytes.size();
        i_text.ConvertToUTF8(bytes.data(), &length);
        return std::hash<std::string_view>()(std::string_view(bytes.data(), length));
    }
};

using TextSet = std::unordered_set<CATUnicodeString, TextHash>;
template <class Value>
using TextMap = std::unordered_map<CATUnicodeString, Value, TextHash>;

} // namespace vorntools

#endif
