#include "embedded/text/CodePage.h"

#include "embedded/text/Characters.h"

#include <algorithm>
#include <iterator>

namespace embedded {

namespace {

constexpr unsigned kFirst = 0x80;
constexpr unsigned kLatin = 0xA0;
/** Characters of the bytes from kFirst on; from kLatin on they are those of Latin-1. */
constexpr unsigned kCharacters[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char byteOf(unsigned code) {
    if (code < kFirst || (code >= kLatin && code <= 0xFF)) return static_cast<char>(code);
    const auto* const found = std::find(std::begin(kCharacters), std::end(kCharacters), code);
    return found == std::end(kCharacters) ? '?' : static_cast<char>(kFirst + (found - std::begin(kCharacters)));
}

} // namespace

std::string fromCodePage(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const unsigned value = static_cast<unsigned char>(byte);
        appendCharacter(text, value < kFirst || value >= kLatin ? value : kCharacters[value - kFirst]);
    }
    return text;
}

std::string toCodePage(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const Character character = characterAt(text, offset);
        bytes += byteOf(character.code);
        offset += character.length;
    }
    return bytes;
}

} // namespace embedded
