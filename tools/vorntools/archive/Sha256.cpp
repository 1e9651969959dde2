#include "tools/vorntools/archive/Sha256.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kRounds[64] = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};

std::uint32_t turned(std::uint32_t word, unsigned int bits) { return word >> bits | word << (32U - bits); }

std::uint32_t wordAt(const char* bytes) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) word = word << 8U | static_cast<unsigned char>(bytes[i]);
    return word;
}

} // namespace

void Sha256::addBlock(const char* block) {
    std::uint32_t words[64];
    for (std::size_t i = 0; i < 16; ++i) words[i] = wordAt(block + 4 * i);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t early = words[i - 15], late = words[i - 2];
        words[i] = words[i - 16] + (turned(early, 7) ^ turned(early, 18) ^ early >> 3U) + words[i - 7] +
                   (turned(late, 17) ^ turned(late, 19) ^ late >> 10U);
    }
    auto [a, b, c, d, e, f, g, h] = m_state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t one =
            h + (turned(e, 6) ^ turned(e, 11) ^ turned(e, 25)) + ((e & f) ^ (~e & g)) + kRounds[i] + words[i];
        const std::uint32_t two = (turned(a, 2) ^ turned(a, 13) ^ turned(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + one;
        d = c;
        c = b;
        b = a;
        a = one + two;
    }
    const std::uint32_t result[] = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < m_state.size(); ++i) m_state[i] += result[i];
}

void Sha256::add(std::string_view bytes) {
    m_size += bytes.size();
    if (!m_rest.empty()) {
        const std::size_t taken = std::min(bytes.size(), kBlockBytes - m_rest.size());
        m_rest += bytes.substr(0, taken);
        bytes.remove_prefix(taken);
        if (m_rest.size() < kBlockBytes) return;
        addBlock(m_rest.data());
    }
    for (; bytes.size() >= kBlockBytes; bytes.remove_prefix(kBlockBytes)) addBlock(bytes.data());
    m_rest = bytes;
}

std::string Sha256::text() {
    const std::uint64_t bits = m_size * 8;
    std::string end(1, '\x80');
    end.resize(1 + (2 * kBlockBytes - 9 - m_size % kBlockBytes) % kBlockBytes);
    for (int shift = 56; shift >= 0; shift -= 8) end += static_cast<char>(bits >> static_cast<unsigned int>(shift));
    add(end);
    std::string text;
    for (const std::uint32_t word : m_state)
        for (int shift = 28; shift >= 0; shift -= 4)
            text += "0123456789abcdef"[word >> static_cast<unsigned int>(shift) & 0xFU];
    return text;
}
