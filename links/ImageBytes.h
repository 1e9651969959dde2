#ifndef LINKS_IMAGE_BYTES_H
#define LINKS_IMAGE_BYTES_H

#include "foundation/SearchKernel.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vorntools {

// Reading a document image. No position read from a document is believed: every function takes any position and
// answers notFound, false or 0 for what lies outside. Positions are sums of 32-bit values, so that std::size_t never
// wraps.

static_assert(sizeof(std::size_t) >= 8, "positions must not wrap");

/** First place of a marker that lies whole within from..to, `to` excluded. */
inline std::size_t findMarker(std::string_view i_image, std::string_view i_marker, std::size_t i_from,
                              std::size_t i_to = notFound) {
    return i_to == 0 ? notFound
                     : vorntools::search(i_image, i_marker, i_from, i_to == notFound ? notFound : i_to - 1, 1);
}

/** Whether so many bytes stand at a position. */
inline bool holds(std::string_view i_image, std::size_t i_at, std::size_t i_count) {
    return i_at <= i_image.size() && i_count <= i_image.size() - i_at;
}

inline bool standsAt(std::string_view i_image, std::size_t i_at, std::string_view i_bytes) {
    return holds(i_image, i_at, i_bytes.size()) && i_image.compare(i_at, i_bytes.size(), i_bytes) == 0;
}

/** The byte at a position, 0 outside. */
inline unsigned char byteAt(std::string_view i_image, std::size_t i_at) {
    return i_at < i_image.size() ? static_cast<unsigned char>(i_image[i_at]) : static_cast<unsigned char>(0);
}

/** A signed integer of four bytes; bytes outside the image are 0. */
inline std::int32_t int32At(std::string_view i_image, std::size_t i_at, bool i_little_endian) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | byteAt(i_image, i_at + (i_little_endian ? 3 - i : i));
    return static_cast<std::int32_t>(value);
}

/** Byte order of the four-byte integer at a position: the reading that gives the smaller positive number. */
inline bool isLittleEndianAt(std::string_view i_image, std::size_t i_at) {
    const std::int32_t little = int32At(i_image, i_at, true);
    const std::int32_t big = int32At(i_image, i_at, false);
    return big < 0 || (little >= 1 && little < big);
}

// Stream text: each byte of a text is the third of three bytes. A position means the text byte itself.
constexpr std::size_t textStride = 3;

/** Whether a text stands at a position, with the bytes that belong to its last one. */
inline bool textStandsAt(std::string_view i_image, std::size_t i_at, std::string_view i_text) {
    if (!holds(i_image, i_at, textStride * i_text.size())) return false;
    for (std::size_t i = 0; i < i_text.size(); ++i)
        if (i_image[i_at + textStride * i] != i_text[i]) return false;
    return true;
}

/** The text of so many bytes at a position; empty when it does not lie whole within the image. */
inline std::string textAt(std::string_view i_image, std::size_t i_at, std::size_t i_count) {
    if (!holds(i_image, i_at, textStride * i_count)) return {};
    std::string text(i_count, '\0');
    for (std::size_t i = 0; i < i_count; ++i) text[i] = i_image[i_at + textStride * i];
    return text;
}

} // namespace vorntools

#endif
