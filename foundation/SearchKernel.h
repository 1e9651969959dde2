#ifndef FOUNDATION_SEARCH_KERNEL_H
#define FOUNDATION_SEARCH_KERNEL_H

#include <cstddef>
#include <string_view>

namespace vorntools {

/** Answer of a search that finds nothing. */
constexpr std::size_t notFound = static_cast<std::size_t>(-1);

/**
 * First of the positions from, from + stride, from + 2 * stride, ... at which byte k of the pattern stands k * stride
 * bytes further on, for every k. The whole span of pattern.size() * stride bytes, the gap behind the last pattern byte
 * included, must lie within from..last.
 *
 * Two bytes of the pattern that are rare in document files are looked for in 64 positions at a time; only where both
 * stand is the pattern compared. The work is that of reading the range once, plus one comparison, which ends at the
 * first difference, for each place where both bytes stand.
 *
 * @param last position of the last byte that counts; beyond the text means its end
 * @param stride at least 1
 * @return notFound for an empty pattern or text, too
 */
std::size_t search(std::string_view i_text, std::string_view i_pattern, std::size_t i_from, std::size_t i_last,
                   std::size_t i_stride);

/** Last position at which the pattern stands in the text; notFound for an empty pattern. */
std::size_t searchLast(std::string_view i_text, std::string_view i_pattern);

/** The same answers byte by byte: the reference of the two above, and what they do with VORNTOOLS_PLAIN_SEARCH. */
std::size_t searchPlain(std::string_view i_text, std::string_view i_pattern, std::size_t i_from, std::size_t i_last,
                        std::size_t i_stride);
std::size_t searchLastPlain(std::string_view i_text, std::string_view i_pattern);

} // namespace vorntools

#endif
