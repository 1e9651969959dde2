#include "foundation/Md5.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <utility>

namespace vorntools {

namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kSteps = 64;
constexpr std::size_t kLengthSize = 8; ///< bytes of the message's length behind its padding

struct State {
    std::uint32_t a, b, c, d;

    void add(const State& i_other) { a += i_other.a, b += i_other.b, c += i_other.c, d += i_other.d; }
};

constexpr State kBeginning = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};

/** The integer part of 2^32 * |sin(n)|, n = 1 .. 64. */
constexpr std::array<std::uint32_t, kSteps> kSines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501, //
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821, //
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8, //
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a, //
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70, //
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665, //
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1, //
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

/** Rotations of a round's four kinds of step. */
constexpr int kShifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

/** Where a round's words begin in the block and how far the next one lies. */
constexpr std::size_t kFirstWord[4] = {0, 1, 5, 0};
constexpr std::size_t kWordStride[4] = {1, 5, 3, 7};

std::uint32_t littleEndian(const unsigned char* ip_bytes) {
    return static_cast<std::uint32_t>(ip_bytes[0]) | static_cast<std::uint32_t>(ip_bytes[1]) << 8 |
           static_cast<std::uint32_t>(ip_bytes[2]) << 16 | static_cast<std::uint32_t>(ip_bytes[3]) << 24;
}

/** Every step waits for the one before it, that is for b: what does not need b is added first. In the second round the
 * two halves share no bit, so that they can be added one by one. */
template <std::size_t Step>
void mix(std::uint32_t& a, std::uint32_t b, std::uint32_t c, std::uint32_t d, const unsigned char* ip_block) {
    constexpr std::size_t round = Step / 16;
    constexpr std::size_t word = (kFirstWord[round] + Step * kWordStride[round]) % 16;
    constexpr int shift = kShifts[round][Step % 4];
    a += littleEndian(ip_block + 4 * word) + kSines[Step];
    if constexpr (round == 0) a += d ^ (b & (c ^ d));
    if constexpr (round == 1) {
        a += c & ~d;
        a += b & d;
    }
    if constexpr (round == 2) a += b ^ (c ^ d);
    if constexpr (round == 3) a += c ^ (b | ~d);
    a = (a << shift | a >> (32 - shift)) + b;
}

/** Takes several messages through the same four steps: what one waits for leaves time for another. */
template <std::size_t Step, std::size_t Messages>
void mixFour(State (&io_states)[Messages], const unsigned char* const (&i_blocks)[Messages]) {
    for (std::size_t i = 0; i < Messages; ++i) {
        auto& [a, b, c, d] = io_states[i];
        mix<Step>(a, b, c, d, i_blocks[i]);
        mix<Step + 1>(d, a, b, c, i_blocks[i]);
        mix<Step + 2>(c, d, a, b, i_blocks[i]);
        mix<Step + 3>(b, c, d, a, i_blocks[i]);
    }
}

template <std::size_t Messages, std::size_t... Fours>
void mixAll(State (&io_states)[Messages], const unsigned char* const (&i_blocks)[Messages],
            std::index_sequence<Fours...>) {
    (mixFour<4 * Fours>(io_states, i_blocks), ...);
}

/** A message on its way through its blocks: its own, and those of what is added to its end. */
class Message {
public:
    Message(const char* ip_bytes, std::size_t i_count)
        : m_bytes(reinterpret_cast<const unsigned char*>(ip_bytes)), m_own_blocks(i_count / kBlock) {
        const std::size_t rest = i_count % kBlock;
        if (rest > 0) std::memcpy(m_end, m_bytes + m_own_blocks * kBlock, rest);
        m_end[rest] = 0x80;
        m_end_blocks = rest + 1 + kLengthSize <= kBlock ? 1 : 2;
        const std::uint64_t bits = static_cast<std::uint64_t>(i_count) * 8;
        for (std::size_t i = 0; i < kLengthSize; ++i)
            m_end[m_end_blocks * kBlock - kLengthSize + i] = static_cast<unsigned char>(bits >> 8 * i);
    }

    std::size_t blocks() const { return m_own_blocks + m_end_blocks; }
    const unsigned char* block(std::size_t i_index) const {
        return i_index < m_own_blocks ? m_bytes + i_index * kBlock : m_end + (i_index - m_own_blocks) * kBlock;
    }
    Md5Digest digest() const {
        const std::uint32_t words[] = {state.a, state.b, state.c, state.d};
        Md5Digest digest;
        for (std::size_t i = 0; i < digest.size(); ++i)
            digest[i] = static_cast<unsigned char>(words[i / 4] >> 8 * (i % 4));
        return digest;
    }

    State state = kBeginning;

private:
    const unsigned char* const m_bytes;
    const std::size_t m_own_blocks;
    std::size_t m_end_blocks;
    unsigned char m_end[2 * kBlock] = {};
};

/** Adds the blocks of each message from one up to another. */
template <class... Messages>
void addBlocks(std::size_t i_first, std::size_t i_end, Messages&... io_messages) {
    State states[] = {io_messages.state...};
    constexpr std::size_t count = sizeof...(io_messages);
    for (std::size_t block = i_first; block < i_end; ++block) {
        const unsigned char* const blocks[] = {io_messages.block(block)...};
        State before[count];
        std::copy(std::begin(states), std::end(states), before);
        mixAll(states, blocks, std::make_index_sequence<kSteps / 4>());
        for (std::size_t i = 0; i < count; ++i) states[i].add(before[i]);
    }
    const State* p_state = states;
    ((io_messages.state = *p_state++), ...);
}

} // namespace

Md5Digest md5Digest(const char* ip_bytes, std::size_t i_count) {
    Message message(ip_bytes, i_count);
    addBlocks(0, message.blocks(), message);
    return message.digest();
}

std::array<Md5Digest, 2> md5Digests(std::string_view i_first, std::string_view i_second) {
    Message first(i_first.data(), i_first.size());
    Message second(i_second.data(), i_second.size());
    const std::size_t common = std::min(first.blocks(), second.blocks());
    addBlocks(0, common, first, second);
    addBlocks(common, first.blocks(), first);
    addBlocks(common, second.blocks(), second);
    return {first.digest(), second.digest()};
}

Md5Text md5Text(const Md5Digest& i_digest) {
    constexpr char digits[] = "0123456789abcdef";
    Md5Text text;
    for (std::size_t i = 0; i < i_digest.size(); ++i) {
        text[2 * i] = digits[i_digest[i] >> 4];
        text[2 * i + 1] = digits[i_digest[i] & 0xf];
    }
    text.back() = '\0';
    return text;
}

} // namespace vorntools
