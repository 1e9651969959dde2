#ifndef FOUNDATION_SEARCH_KERNEL_H
#define FOUNDATION_SEARCH_KERNEL_H

#include <array>
#include <cstddef>
#include <string_view>

namespace vorntools {

/** Answer of a search that finds nothing. */
constexpr std::size_t notFound = static_cast<std::size_t>(-1);

/**
 * How common a byte is in document files, 0 for those on no list: small numbers and fill bytes first, then the letters
 * by their frequency in names. NUL must lead, for every second byte of 16-bit text is one.
 */
constexpr std::array<unsigned char, 256> makeCommonness() {
    constexpr std::string_view commonFirst = "\xFF\x01 0\x02@\xC0?\xBF\x04\x08\x10\x80"
                                             "etaoinsr1lcdh2um3p4g5f6y7b8w9v._-/\\:kxjqz"
                                             "ETAOINSRLCDHUMPGFYBWVKXJQZ";
    std::array<unsigned char, 256> result{};
    unsigned char rank = 255;
    result[0] = rank;
    for (const char byte : commonFirst) result[static_cast<unsigned char>(byte)] = --rank;
    return result;
}
inline constexpr std::array<unsigned char, 256> commonness = makeCommonness();

/**
 * A pattern with the two of its bytes that are looked for first, for they are rare in document files. Of one that is
 * known when the program is compiled they are chosen then. The bytes must outlive it.
 */
class SearchPattern {
public:
    constexpr SearchPattern(std::string_view i_bytes)
        : m_bytes(i_bytes), m_rarest(rarestOf(i_bytes)), m_second(rarestBeside(i_bytes, m_rarest)) {}

    constexpr operator std::string_view() const { return m_bytes; }
    constexpr std::string_view bytes() const { return m_bytes; }
    constexpr std::size_t size() const { return m_bytes.size(); }
    constexpr std::size_t rarest() const { return m_rarest; }
    constexpr std::size_t second() const { return m_second; }

private:
    static constexpr int rank(char i_byte) { return commonness[static_cast<unsigned char>(i_byte)]; }

    static constexpr std::size_t rarestOf(std::string_view i_bytes) {
        std::size_t best = 0;
        for (std::size_t k = 1; k < i_bytes.size(); ++k)
            if (rank(i_bytes[k]) < rank(i_bytes[best])) best = k;
        return best;
    }
    /**
     * The rarest of another value in the other half of the pattern, for the words of a pattern often stand alone; a
     * byte of the same half only when it is much rarer. The last byte when all are the same.
     */
    static constexpr std::size_t rarestBeside(std::string_view i_bytes, std::size_t i_rarest) {
        std::size_t best = i_rarest;
        for (std::size_t k = 0; k < i_bytes.size(); ++k) {
            if (i_bytes[k] == i_bytes[i_rarest]) continue;
            if (best == i_rarest || cost(i_bytes, i_rarest, k) < cost(i_bytes, i_rarest, best)) best = k;
        }
        return best != i_rarest || i_bytes.empty() ? best : i_bytes.size() - 1;
    }
    static constexpr int cost(std::string_view i_bytes, std::size_t i_rarest, std::size_t i_place) {
        constexpr int sameHalf = 64;
        const std::size_t distance = i_place < i_rarest ? i_rarest - i_place : i_place - i_rarest;
        return rank(i_bytes[i_place]) + (distance < (i_bytes.size() - 1) / 2 ? sameHalf : 0);
    }

    std::string_view m_bytes;
    std::size_t m_rarest, m_second;
};

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
std::size_t search(std::string_view i_text, const SearchPattern& i_pattern, std::size_t i_from, std::size_t i_last,
                   std::size_t i_stride);

/** Last position at which the pattern stands in the text; notFound for an empty pattern. */
std::size_t searchLast(std::string_view i_text, std::string_view i_pattern);

/** The same answers byte by byte: the reference of the two above, and what they do with VORNTOOLS_PLAIN_SEARCH. */
std::size_t searchPlain(std::string_view i_text, std::string_view i_pattern, std::size_t i_from, std::size_t i_last,
                        std::size_t i_stride);
std::size_t searchLastPlain(std::string_view i_text, std::string_view i_pattern);

} // namespace vorntools

#endif
