#ifndef FOUNDATION_BYTE_NUMBERS_H
#define FOUNDATION_BYTE_NUMBERS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace vorntools {

// Numbers in the bytes of files that others wrote. No position read from such a file is believed: every function takes
// any position, and bytes outside count as 0. Positions are sums and products of 32-bit values.

static_assert(sizeof(std::size_t) >= 8, "positions must not wrap");

/** The byte at a position, 0 outside. */
inline unsigned char byteAt(std::string_view i_bytes, std::size_t i_at) {
    return i_at < i_bytes.size() ? static_cast<unsigned char>(i_bytes[i_at]) : static_cast<unsigned char>(0);
}

/** A number of one to four bytes, each a step behind the one before; one of four bytes is signed. */
inline std::int32_t numberAt(std::string_view i_bytes, std::size_t i_at, std::size_t i_count, bool i_little_endian,
                             std::size_t i_step = 1) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < i_count; ++i) {
        const std::size_t place = i_little_endian ? i_count - 1 - i : i;
        value = value << 8 | byteAt(i_bytes, i_at + place * i_step);
    }
    return static_cast<std::int32_t>(value);
}

inline std::int32_t int32At(std::string_view i_bytes, std::size_t i_at, bool i_little_endian) {
    return numberAt(i_bytes, i_at, sizeof(std::int32_t), i_little_endian);
}

/** Byte order of the four-byte integer at a position: the reading that gives the smaller positive number. */
inline bool isLittleEndianAt(std::string_view i_bytes, std::size_t i_at) {
    const std::int32_t little = int32At(i_bytes, i_at, true);
    const std::int32_t big = int32At(i_bytes, i_at, false);
    return big < 0 || (little >= 1 && little < big);
}

/** The number at the beginning of a text, as atoi reads it; 0 when there is none. A number that no int holds gives the
 * nearest one. */
inline int leadingNumber(std::string_view i_text) {
    std::size_t at = 0;
    while (at < i_text.size() && (i_text[at] == ' ' || (i_text[at] >= '\t' && i_text[at] <= '\r'))) ++at;
    const bool negative = at < i_text.size() && i_text[at] == '-';
    if (negative || (at < i_text.size() && i_text[at] == '+')) ++at;
    const std::int64_t limit = std::int64_t{(std::numeric_limits<int>::max)()} + (negative ? 1 : 0);
    std::int64_t value = 0;
    for (; at < i_text.size() && i_text[at] >= '0' && i_text[at] <= '9' && value < limit; ++at)
        value = (std::min)(limit, 10 * value + (i_text[at] - '0'));
    return static_cast<int>(negative ? -value : value);
}

} // namespace vorntools

#endif
