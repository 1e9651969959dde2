// Any bytes as text, pattern, bounds and tables of the searches. The kernel must answer what the plain loop answers,
// and the searches with tables what the stride search answers.

#include "VornToolsString.h"
#include "foundation/SearchKernel.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

/** Takes the input apart; 0 and nothing behind its end. */
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

    std::uint8_t byte() {
        if (m_rest.empty()) return 0;
        const auto value = static_cast<std::uint8_t>(m_rest.front());
        m_rest.remove_prefix(1);
        return value;
    }
    std::string bytes(std::size_t count) {
        const std::string_view taken = m_rest.substr(0, count);
        m_rest.remove_prefix(taken.size());
        return std::string(taken);
    }
    std::string rest() { return bytes(m_rest.size()); }
    /** Mostly near 0, at times absurd. */
    unsigned int position() {
        const unsigned int value = byte();
        return value < 250 ? value : 0xFFFFFFFFU - (value - 250) * 0x20000000U;
    }

private:
    std::string_view m_rest;
};

struct Tables {
    std::vector<long long> suffix;
    std::array<long long, 256> byte;
};

/** Proper tables, by definition rather than fast: smallest shift that agrees with what has matched behind j. */
Tables tablesOf(const std::string& pattern) {
    const std::size_t count = pattern.size();
    Tables tables;
    tables.byte.fill(static_cast<long long>(count));
    for (std::size_t k = 0; k < count; ++k)
        tables.byte[static_cast<unsigned char>(pattern[k])] = static_cast<long long>(count - 1 - k);
    for (std::size_t j = 0; j < count; ++j) {
        std::size_t shift = 1;
        const auto agrees = [&] {
            for (std::size_t k = j + 1; k < count; ++k) {
                if (k >= shift && pattern[k - shift] != pattern[k]) return false;
            }
            return true;
        };
        while (!agrees()) ++shift;
        tables.suffix.push_back(static_cast<long long>(shift));
    }
    return tables;
}

/** Tables of the backward search: those of the mirrored pattern, by position from the front. */
Tables mirrored(const std::string& pattern) {
    Tables tables = tablesOf(std::string(pattern.rbegin(), pattern.rend()));
    std::reverse(tables.suffix.begin(), tables.suffix.end());
    return tables;
}

VornToolsString stringOf(const std::string& bytes) {
    char* const buffer = static_cast<char*>(std::malloc(bytes.size() + 1));
    std::memcpy(buffer, bytes.c_str(), bytes.size() + 1);
    return VornToolsString(static_cast<int>(bytes.size()), buffer);
}

void checkKernel(const std::string& text, const std::string& pattern, unsigned int from, unsigned int to,
                 unsigned int gap) {
    const std::size_t stride = std::size_t{gap} + 1;
    const std::size_t found = vorntools::searchPlain(text, pattern, from, to, stride);
    require(vorntools::search(text, std::string_view(pattern), from, to, stride) == found,
            "the kernel and the plain loop disagree");
    const std::size_t last = vorntools::searchLastPlain(text, pattern);
    require(vorntools::searchLast(text, pattern) == last, "the backward kernel and its plain loop disagree");
    require(pattern.empty() || text.rfind(pattern) == last, "the last occurrence is another one");
}

/** Last window within lower..upper at whatever position, as the stride search sees it. */
int lastByHand(const std::string& text, const std::string& pattern, std::size_t upper, std::size_t lower,
               std::size_t stride) {
    const std::size_t offset = (pattern.size() - 1) * stride;
    for (std::size_t end = std::min(upper, text.size() - 1); lower + offset <= end; --end) {
        std::size_t k = 0;
        while (k < pattern.size() && text[end - offset + k * stride] == pattern[k]) ++k;
        if (k == pattern.size()) return static_cast<int>(end - offset);
        if (end == 0) break;
    }
    return -1;
}

void checkTables(const std::string& text, const std::string& pattern, unsigned int from, unsigned int to) {
    const VornToolsString hay = stringOf(text);
    const VornToolsString sought = stringOf(pattern);
    const Tables forward = tablesOf(pattern);
    const Tables backward = mirrored(pattern);
    for (unsigned int gap = 0; gap < 3; ++gap) {
        const int found = hay.indexOf(sought, forward.suffix.data(), forward.byte.data(), from, to, gap);
        require(found == hay.indexOf(sought, from, to, gap), "the search with tables finds another place");
    }
    if (text.empty() || pattern.empty()) return;
    const int last = hay.lastIndexOf(sought, backward.suffix.data(), backward.byte.data(), to, from, 0);
    require(last == lastByHand(text, pattern, to, from, 1), "the backward search with tables finds another place");
}

/** Tables of noise: the search may miss, but must end, stay inside and find only what is there. */
void checkNoise(const std::string& text, const std::string& pattern, unsigned int from, unsigned int to,
                unsigned int gap, unsigned int noise) {
    Tables tables;
    tables.suffix.resize(pattern.size());
    const auto next = [&noise] {
        noise = noise * 1664525U + 1013904223U;
        return static_cast<long long>(noise % 3 == 0 ? noise : noise % 7) - 3;
    };
    for (long long& entry : tables.suffix) entry = next();
    for (long long& entry : tables.byte) entry = next();
    const VornToolsString hay = stringOf(text);
    const VornToolsString sought = stringOf(pattern);
    for (const int found : {hay.indexOf(sought, tables.suffix.data(), tables.byte.data(), from, to, gap),
                            hay.lastIndexOf(sought, tables.suffix.data(), tables.byte.data(), to, from, gap)}) {
        if (found < 0) continue;
        for (std::size_t k = 0; k < pattern.size(); ++k)
            require(text.at(static_cast<std::size_t>(found) + k * (std::size_t{gap} + 1)) == pattern[k], "no match");
    }
}

void checkReplace(const std::string& text, const std::string& pattern, const std::string& replacement) {
    std::string expected = text;
    for (std::size_t at = 0; !pattern.empty() && (at = expected.find(pattern, at)) != std::string::npos;) {
        expected.replace(at, pattern.size(), replacement);
        at += replacement.size();
    }
    VornToolsString replaced = stringOf(text);
    replaced.replaceAll(stringOf(pattern), stringOf(replacement));
    require(std::string(replaced.bytes(), replaced.size()) == expected, "another text after replacing");
}

void checkSubString(const std::string& text, unsigned int start, unsigned int end, unsigned int gap) {
    const std::unique_ptr<VornToolsString> part(stringOf(text).subString(start, end, gap));
    const std::uint64_t stop = std::min<std::uint64_t>(std::uint64_t{end} + 1, text.size());
    const std::uint64_t stride = std::uint64_t{gap} + 1;
    require(part->size() == (start < stop ? (stop - start) / stride : 0), "another number of steps");
    for (unsigned int i = 0; i < part->size(); ++i) require((*part)[i] == text.at(start + i * stride), "another byte");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, std::min<std::size_t>(size, 2000));
    const unsigned int from = input.position();
    const unsigned int to = input.position();
    const unsigned int gap = input.position();
    const std::string pattern = input.bytes(input.byte() % 24U);
    const std::string replacement = input.bytes(input.byte() % 5U);
    const std::string text = input.rest();
    checkKernel(text, pattern, from, to, gap);
    for (unsigned int small = 0; small < 4; ++small) checkKernel(text, pattern, from, to, small);
    checkTables(text, pattern, from, to);
    checkNoise(text, pattern, from, to, gap % 4, from * 257 + to);
    checkNoise(text, pattern, from, to, gap, to * 257 + gap);
    checkReplace(text, pattern, replacement);
    checkSubString(text, from, to, gap);
    return 0;
}
