#ifndef BENCH_DOCUMENT_NOISE_H
#define BENCH_DOCUMENT_NOISE_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

/**
 * Bytes like those of a binary document file, the same in every run: 30 % records of small numbers and doubles, 20 %
 * runs of NUL, 15 % 16-bit text, 10 % 8-bit text, 25 % packed data. The texts are made of words that the marker is made
 * of, too, so that a search meets many places that only begin like it.
 */
class DocumentNoise {
public:
    /** 19 bytes that never stand in the noise, at any stride up to 3. */
    static constexpr std::string_view marker = "CATLinkRecord_v0017";
    /** A byte that never occurs. */
    static constexpr unsigned char absentByte = 0xF7;

    /** Fills `size` bytes. */
    DocumentNoise(char* out, std::size_t size) : m_out(out), m_end(out + size) {
        while (m_out < m_end) section(below(100));
    }

private:
    void section(std::uint32_t kind) {
        if (kind < 6) return records(400);
        if (kind < 46) return put('\0', 16 + below(500));
        if (kind < 59) return text(50, 1);
        if (kind < 76) return text(50, 0);
        packed(128);
    }
    void records(int count) {
        for (int i = 0; i < count; ++i) {
            const std::uint32_t number = below(4096);
            const double value = (static_cast<double>(below(2000000)) - 1e6) / 1024;
            raw(&number, sizeof number);
            raw(&value, sizeof value);
        }
    }
    void text(int words, std::size_t gap) {
        static constexpr std::string_view vocabulary[] = {
            "CATLink",  "CATLinkRecord", "LinkRecord_v", "Record_v0018", "CATLinkRecord_v", "_v001",
            "CATPart",  "CATProduct",    "Bracket",      "Assembly",     "Instance.1",      "Reference",
            "Position", "/data/project", "C:\\work",     "Shape"};
        for (int i = 0; i < words; ++i) {
            for (const char c : vocabulary[below(16)]) {
                put(c, 1);
                put('\0', gap);
            }
            put(below(4) ? '.' : '\0', 1);
            put('\0', gap);
        }
    }
    void packed(int words) {
        for (int i = 0; i < words; ++i) {
            const std::uint64_t bits = m_random();
            raw(&bits, sizeof bits);
        }
    }
    void raw(const void* bytes, std::size_t count) {
        char copy[8];
        std::memcpy(copy, bytes, count);
        for (std::size_t i = 0; i < count; ++i) put(copy[i], 1);
    }
    void put(char byte, std::size_t count) {
        const char kept = static_cast<unsigned char>(byte) == absentByte ? '\xF6' : byte;
        for (; count > 0 && m_out < m_end; --count) *m_out++ = kept;
    }
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>((m_random() >> 32) * limit >> 32); }

    std::mt19937_64 m_random{20261121};
    char* m_out;
    char* const m_end;
};

#endif
