#ifndef LINKS_IMAGE_BYTES_H
#define LINKS_IMAGE_BYTES_H

#include "foundation/ByteNumbers.h"
#include "foundation/SearchKernel.h"

#include <string>
#include <string_view>

namespace vorntools {

// Reading a document image. No position read from a document is believed: every function takes any position and
// answers notFound, false or nothing for what lies outside.

/** First place of a marker that lies whole within from..to, `to` excluded. */
inline std::size_t findMarker(std::string_view i_image, const SearchPattern& i_marker, std::size_t i_from,
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
