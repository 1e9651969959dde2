#include "foundation/SearchKernel.h"

#include <cstdint>
#include <cstring>

#if !defined(VORNTOOLS_PLAIN_SEARCH) && (defined(__SSE2__) || defined(_M_X64))
#define VORNTOOLS_VECTOR_SEARCH
#include <emmintrin.h>
#if defined(_MSC_VER)
#include <intrin.h>
#endif
#endif

namespace vorntools {

namespace {

bool standsAt(const char* i_place, std::string_view i_pattern, std::size_t i_stride) {
    if (i_stride == 1) return std::memcmp(i_place, i_pattern.data(), i_pattern.size()) == 0;
    for (std::size_t k = 0; k < i_pattern.size(); ++k) {
        if (i_place[k * i_stride] != i_pattern[k]) return false;
    }
    return true;
}

/** Last position at which the pattern's span still fits; notFound when none does. */
std::size_t lastStart(std::string_view i_text, std::string_view i_pattern, std::size_t i_from, std::size_t i_last,
                      std::size_t i_stride) {
    if (i_pattern.empty() || i_from >= i_text.size()) return notFound;
    const std::size_t end = i_last < i_text.size() ? i_last + 1 : i_text.size();
    if (i_from >= end || i_pattern.size() > (end - i_from) / i_stride) return notFound;
    return end - i_pattern.size() * i_stride;
}

std::size_t stepThrough(std::string_view i_text, std::string_view i_pattern, std::size_t i_from, std::size_t i_end,
                        std::size_t i_stride) {
    for (std::size_t at = i_from; at <= i_end; at += i_stride) {
        if (i_text[at] == i_pattern[0] && standsAt(i_text.data() + at, i_pattern, i_stride)) return at;
    }
    return notFound;
}

#if defined(VORNTOOLS_VECTOR_SEARCH)

/** Beyond it a step skips more than the vector loop reads in the same time. */
constexpr std::size_t longestVectorStride = 32;

/** Position of the lowest bit set; the mask must not be 0. */
unsigned int lowestBit(std::uint64_t i_mask) {
#if defined(_MSC_VER)
    unsigned long position;
    _BitScanForward64(&position, i_mask);
    return position;
#else
    return static_cast<unsigned int>(__builtin_ctzll(i_mask));
#endif
}

/** Position of the highest bit set; the mask must not be 0. */
unsigned int highestBit(unsigned int i_mask) {
#if defined(_MSC_VER)
    unsigned long position;
    _BitScanReverse(&position, i_mask);
    return position;
#else
    return 31U - static_cast<unsigned int>(__builtin_clz(i_mask));
#endif
}

/** The two bytes of a pattern that a search looks for first. */
class RarePair {
public:
    RarePair(const SearchPattern& i_pattern, std::size_t i_stride)
        : m_first(_mm_set1_epi8(i_pattern.bytes()[i_pattern.rarest()])),
          m_second(_mm_set1_epi8(i_pattern.bytes()[i_pattern.second()])), m_first_offset(i_pattern.rarest() * i_stride),
          m_second_offset(i_pattern.second() * i_stride) {}

    /** All bits of byte n set where a pattern at i_place + n would have both of its bytes. */
    __m128i candidates(const char* i_place) const {
        return _mm_and_si128(_mm_cmpeq_epi8(load(i_place + m_first_offset), m_first),
                             _mm_cmpeq_epi8(load(i_place + m_second_offset), m_second));
    }
    /** The same as one bit a position. */
    unsigned int mask(const char* i_place) const {
        return static_cast<unsigned int>(_mm_movemask_epi8(candidates(i_place)));
    }

private:
    static __m128i load(const char* i_place) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(i_place)); }

    __m128i m_first;
    __m128i m_second;
    std::size_t m_first_offset;
    std::size_t m_second_offset;
};

/** One forward search: positions i_from + n * stride up to and with i_end. */
class ForwardSearch {
public:
    ForwardSearch(std::string_view i_text, const SearchPattern& i_pattern, std::size_t i_from, std::size_t i_end,
                  std::size_t i_stride)
        : m_pair(i_pattern, i_stride), m_text(i_text), m_pattern(i_pattern), m_from(i_from), m_end(i_end),
          m_stride(i_stride) {}

    std::size_t run() const {
        std::size_t at = m_from;
        for (; at + 63 <= m_end; at += 64) {
            const std::uint64_t mask = candidatesOf64(m_text.data() + at);
            const std::size_t found = mask ? firstOf(at, mask) : notFound;
            if (found != notFound) return found;
        }
        for (; at + 15 <= m_end; at += 16) {
            const std::size_t found = firstOf(at, m_pair.mask(m_text.data() + at));
            if (found != notFound) return found;
        }
        return stepThrough(m_text, m_pattern, nextStep(at), m_end, m_stride);
    }

private:
    std::uint64_t candidatesOf64(const char* i_place) const {
        const __m128i c0 = m_pair.candidates(i_place), c1 = m_pair.candidates(i_place + 16),
                      c2 = m_pair.candidates(i_place + 32), c3 = m_pair.candidates(i_place + 48);
        if (!_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(c0, c1), _mm_or_si128(c2, c3)))) return 0;
        return bits(c0) | bits(c1) << 16 | bits(c2) << 32 | bits(c3) << 48;
    }
    static std::uint64_t bits(__m128i i_bytes) {
        return static_cast<std::uint64_t>(static_cast<unsigned int>(_mm_movemask_epi8(i_bytes)));
    }
    /** First candidate of the mask that lies on a step and has the pattern. */
    std::size_t firstOf(std::size_t i_at, std::uint64_t i_mask) const {
        for (; i_mask; i_mask &= i_mask - 1) {
            const std::size_t place = i_at + lowestBit(i_mask);
            if (isOnStep(place) && standsAt(m_text.data() + place, m_pattern, m_stride)) return place;
        }
        return notFound;
    }
    bool isOnStep(std::size_t i_place) const { return m_stride == 1 || (i_place - m_from) % m_stride == 0; }
    std::size_t nextStep(std::size_t i_place) const {
        return m_from + (i_place - m_from + m_stride - 1) / m_stride * m_stride;
    }

    const RarePair m_pair;
    const std::string_view m_text;
    const std::string_view m_pattern;
    const std::size_t m_from;
    const std::size_t m_end;
    const std::size_t m_stride;
};

#endif

} // namespace

std::size_t searchPlain(std::string_view i_text, std::string_view i_pattern, std::size_t i_from, std::size_t i_last,
                        std::size_t i_stride) {
    const std::size_t end = lastStart(i_text, i_pattern, i_from, i_last, i_stride);
    return end == notFound ? notFound : stepThrough(i_text, i_pattern, i_from, end, i_stride);
}

std::size_t searchLastPlain(std::string_view i_text, std::string_view i_pattern) {
    if (i_pattern.empty() || i_pattern.size() > i_text.size()) return notFound;
    for (std::size_t at = i_text.size() - i_pattern.size() + 1; at-- > 0;) {
        if (standsAt(i_text.data() + at, i_pattern, 1)) return at;
    }
    return notFound;
}

#if defined(VORNTOOLS_VECTOR_SEARCH)

std::size_t search(std::string_view i_text, const SearchPattern& i_pattern, std::size_t i_from, std::size_t i_last,
                   std::size_t i_stride) {
    if (i_stride > longestVectorStride) return searchPlain(i_text, i_pattern, i_from, i_last, i_stride);
    const std::size_t end = lastStart(i_text, i_pattern, i_from, i_last, i_stride);
    return end == notFound ? notFound : ForwardSearch(i_text, i_pattern, i_from, end, i_stride).run();
}

std::size_t searchLast(std::string_view i_text, std::string_view i_pattern) {
    if (i_pattern.empty() || i_pattern.size() > i_text.size()) return notFound;
    const RarePair pair(i_pattern, 1);
    std::size_t starts = i_text.size() - i_pattern.size() + 1;
    for (; starts >= 16; starts -= 16) {
        const char* const p_block = i_text.data() + starts - 16;
        for (unsigned int mask = pair.mask(p_block); mask; mask ^= 1U << highestBit(mask)) {
            const char* const p_place = p_block + highestBit(mask);
            if (standsAt(p_place, i_pattern, 1)) return static_cast<std::size_t>(p_place - i_text.data());
        }
    }
    if (starts == 0) return notFound;
    return searchLastPlain(i_text.substr(0, starts - 1 + i_pattern.size()), i_pattern);
}

#else

std::size_t search(std::string_view i_text, const SearchPattern& i_pattern, std::size_t i_from, std::size_t i_last,
                   std::size_t i_stride) {
    return searchPlain(i_text, i_pattern, i_from, i_last, i_stride);
}

std::size_t searchLast(std::string_view i_text, std::string_view i_pattern) {
    return searchLastPlain(i_text, i_pattern);
}

#endif

} // namespace vorntools
