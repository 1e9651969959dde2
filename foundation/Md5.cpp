#include "foundation/Md5.h"

#include <cstdint>
#include <cstring>
#include <utility>

namespace vorntools {

namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kSteps = 64;
constexpr std::size_t kLengthSize = 8; ///< bytes of the message's length behind its padding

struct State {
    std::uint32_t a, b, c, d;
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

template <std::size_t Step>
void mixFour(State& io_state, const unsigned char* ip_block) {
    auto& [a, b, c, d] = io_state;
    mix<Step>(a, b, c, d, ip_block);
    mix<Step + 1>(d, a, b, c, ip_block);
    mix<Step + 2>(c, d, a, b, ip_block);
    mix<Step + 3>(b, c, d, a, ip_block);
}

template <std::size_t... Fours>
State behindBlock(const State& i_before, const unsigned char* ip_block, std::index_sequence<Fours...>) {
    State state = i_before;
    (mixFour<4 * Fours>(state, ip_block), ...);
    return {i_before.a + state.a, i_before.b + state.b, i_before.c + state.c, i_before.d + state.d};
}

State behindBlocks(State i_state, const unsigned char* ip_blocks, std::size_t i_count) {
    for (std::size_t i = 0; i < i_count; ++i)
        i_state = behindBlock(i_state, ip_blocks + i * kBlock, std::make_index_sequence<kSteps / 4>());
    return i_state;
}

/** What follows the whole blocks of a message: its rest, a bit that is set, and its length at the end of a block. */
struct End {
    unsigned char bytes[2 * kBlock] = {};
    std::size_t blocks;

    End(const unsigned char* ip_rest, std::size_t i_rest, std::size_t i_message)
        : blocks(i_rest + 1 + kLengthSize <= kBlock ? 1 : 2) {
        if (i_rest > 0) std::memcpy(bytes, ip_rest, i_rest);
        bytes[i_rest] = 0x80;
        const std::uint64_t bits = static_cast<std::uint64_t>(i_message) * 8;
        unsigned char* const p_length = bytes + blocks * kBlock - kLengthSize;
        for (std::size_t i = 0; i < kLengthSize; ++i) p_length[i] = static_cast<unsigned char>(bits >> 8 * i);
    }
};

} // namespace

Md5Digest md5Digest(const char* ip_bytes, std::size_t i_count) {
    const auto* const p_bytes = reinterpret_cast<const unsigned char*>(ip_bytes);
    const std::size_t blocks = i_count / kBlock;
    const End end(p_bytes + blocks * kBlock, i_count % kBlock, i_count);
    const State state = behindBlocks(behindBlocks(kBeginning, p_bytes, blocks), end.bytes, end.blocks);
    const std::uint32_t words[] = {state.a, state.b, state.c, state.d};
    Md5Digest digest;
    for (std::size_t i = 0; i < digest.size(); ++i) digest[i] = static_cast<unsigned char>(words[i / 4] >> 8 * (i % 4));
    return digest;
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
