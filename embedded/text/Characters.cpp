#include "embedded/text/Characters.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace embedded {

namespace {

unsigned byteAt(std::string_view text, std::size_t offset) { return static_cast<unsigned char>(text[offset]); }

bool isContinuation(unsigned byte) { return (byte & 0xC0U) == 0x80U; }

std::size_t sequenceLength(unsigned lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 1;
}

bool isCharacter(unsigned code, std::size_t length) {
    if (length == 3) return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
    return length == 2 || (code >= 0x10000 && code <= 0x10FFFF);
}

struct CaseRange {
    unsigned firstUpper;
    unsigned lastUpper;
    int toLower;
    unsigned step; ///< 2 where capital and small letters alternate
};

constexpr CaseRange kCaseRanges[] = {
    {0x41, 0x5A, 32, 1},   {0xC0, 0xD6, 32, 1},   {0xD8, 0xDE, 32, 1},     {0x100, 0x12E, 1, 2},  {0x132, 0x136, 1, 2},
    {0x139, 0x147, 1, 2},  {0x14A, 0x176, 1, 2},  {0x178, 0x178, -121, 1}, {0x179, 0x17D, 1, 2},  {0x386, 0x386, 38, 1},
    {0x388, 0x38A, 37, 1}, {0x38C, 0x38C, 64, 1}, {0x38E, 0x38F, 63, 1},   {0x391, 0x3A1, 32, 1}, {0x3A3, 0x3AB, 32, 1},
    {0x400, 0x40F, 80, 1}, {0x410, 0x42F, 32, 1}, {0x460, 0x480, 1, 2},    {0x48A, 0x4BE, 1, 2},  {0x4C0, 0x4C0, 15, 1},
    {0x4C1, 0x4CD, 1, 2},  {0x4D0, 0x52E, 1, 2},
};
constexpr std::size_t kCaseTableSize = 0x530;
constexpr unsigned kFinalSigma = 0x3C2;
constexpr unsigned kCapitalSigma = 0x3A3;

using CaseTable = std::array<std::uint16_t, kCaseTableSize>;

constexpr CaseTable makeCaseTable(bool upper) {
    CaseTable table{};
    for (std::size_t i = 0; i < kCaseTableSize; ++i) table[i] = static_cast<std::uint16_t>(i);
    for (const CaseRange& range : kCaseRanges) {
        for (unsigned letter = range.firstUpper; letter <= range.lastUpper; letter += range.step) {
            const unsigned small = static_cast<unsigned>(static_cast<int>(letter) + range.toLower);
            table[upper ? small : letter] = static_cast<std::uint16_t>(upper ? letter : small);
        }
    }
    if (upper) table[kFinalSigma] = kCapitalSigma;
    return table;
}

constexpr CaseTable kLower = makeCaseTable(false);
constexpr CaseTable kUpper = makeCaseTable(true);

constexpr std::size_t kWord = sizeof(std::uint64_t);

bool isAsciiWord(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, kWord);
    return (word & 0x8080808080808080U) == 0;
}

} // namespace

Character characterAt(std::string_view text, std::size_t offset) {
    const unsigned lead = byteAt(text, offset);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = sequenceLength(lead);
    const Character undecodable{kUndecodable + lead, 1};
    if (length == 1 || text.size() - offset < length) return undecodable;
    unsigned code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned byte = byteAt(text, offset + i);
        if (!isContinuation(byte)) return undecodable;
        code = (code << 6U) | (byte & 0x3FU);
    }
    return isCharacter(code, length) ? Character{code, length} : undecodable;
}

bool beginsCharacter(std::string_view text, std::size_t offset) {
    if (offset >= text.size() || !isContinuation(byteAt(text, offset))) return true;
    for (std::size_t back = 1; back <= 3 && back <= offset; ++back) {
        if (isContinuation(byteAt(text, offset - back))) continue;
        return characterAt(text, offset - back).length <= back;
    }
    return true;
}

std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t offset = 0; offset < text.size(); ++count) {
        while (offset + kWord <= text.size() && isAsciiWord(text.data() + offset)) {
            offset += kWord;
            count += kWord;
        }
        if (offset == text.size()) break;
        offset += characterAt(text, offset).length;
    }
    return count;
}

bool isAscii(std::string_view text) {
    std::size_t offset = 0;
    for (; offset + kWord <= text.size(); offset += kWord)
        if (!isAsciiWord(text.data() + offset)) return false;
    for (; offset < text.size(); ++offset)
        if (byteAt(text, offset) >= 0x80) return false;
    return true;
}

bool isWellFormed(std::string_view text) {
    if (isAscii(text)) return true;
    for (std::size_t offset = 0; offset < text.size();) {
        const Character character = characterAt(text, offset);
        if (character.length == 1 && character.code >= 0x80) return false;
        offset += character.length;
    }
    return true;
}

std::size_t offsetOf(std::string_view text, std::size_t position) {
    if (isAscii(text.substr(0, position))) return position < text.size() ? position : text.size();
    std::size_t offset = 0;
    for (; position > 0 && offset < text.size(); --position) offset += characterAt(text, offset).length;
    return offset;
}

std::size_t offsetFromEnd(std::string_view text, std::size_t count) {
    std::size_t offset = text.size();
    while (count > 0 && offset > 0) {
        do --offset;
        while (!beginsCharacter(text, offset));
        --count;
    }
    return offset;
}

void appendCharacter(std::string& text, unsigned code) {
    if (code >= kUndecodable + 0x80 && code <= kUndecodable + 0xFF) {
        text.push_back(static_cast<char>(static_cast<unsigned char>(code - kUndecodable)));
        return;
    }
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = 0xFFFD;
    const auto add = [&text](unsigned byte) { text.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (code < 0x80) {
        add(code);
        return;
    }
    const int continuations = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const unsigned marks[] = {0, 0xC0, 0xE0, 0xF0};
    add(marks[continuations] | (code >> (6U * static_cast<unsigned>(continuations))));
    for (int i = continuations - 1; i >= 0; --i) add(0x80U | ((code >> (6U * static_cast<unsigned>(i))) & 0x3FU));
}

std::string fromUtf16(const unsigned short* units, std::size_t count) {
    std::string bytes;
    bytes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        unsigned code = units[i];
        const bool pair = (code & 0xFC00U) == 0xD800U && i + 1 < count && (units[i + 1] & 0xFC00U) == 0xDC00U;
        if (pair) code = 0x10000U + ((code & 0x3FFU) << 10U) + (units[++i] & 0x3FFU);
        appendCharacter(bytes, code);
    }
    return bytes;
}

unsigned toLower(unsigned code) { return code < kCaseTableSize ? kLower[code] : code; }

unsigned toUpper(unsigned code) { return code < kCaseTableSize ? kUpper[code] : code; }

} // namespace embedded
