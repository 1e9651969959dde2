#include "tools/vorntools/Text.h"

#include <algorithm>

namespace {

constexpr unsigned char kDelete = 0x7F;

unsigned int byteAt(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

bool isHexDigit(unsigned int byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

bool continues(unsigned int byte) { return (byte & 0xC0U) == 0x80U; }

/** Bytes of the character of several bytes at a place; 0 when they are no UTF-8 or a control character. */
std::size_t wideCharacterAt(std::string_view bytes, std::size_t at) {
    const unsigned int first = byteAt(bytes, at), second = byteAt(bytes, at + 1);
    if (!continues(second)) return 0;
    if (first >= 0xC2U && first <= 0xDFU) return first == 0xC2U && second < 0xA0U ? 0 : 2;
    if (!continues(byteAt(bytes, at + 2))) return 0;
    if (first >= 0xE0U && first <= 0xEFU) {
        const bool overlong = first == 0xE0U && second < 0xA0U;
        const bool surrogate = first == 0xEDU && second >= 0xA0U;
        return overlong || surrogate ? 0 : 3;
    }
    if (first < 0xF0U || first > 0xF4U || !continues(byteAt(bytes, at + 3))) return 0;
    const bool overlong = first == 0xF0U && second < 0x90U;
    const bool beyond = first == 0xF4U && second >= 0x90U;
    return overlong || beyond ? 0 : 4;
}

/** Bytes of the character at a place that can stand as it is; 0 when it has to be escaped. */
std::size_t plainAt(std::string_view bytes, std::size_t at) {
    const unsigned int byte = byteAt(bytes, at);
    if (byte >= 0x80U) return wideCharacterAt(bytes, at);
    const bool looksEscaped = byte == '%' && isHexDigit(byteAt(bytes, at + 1)) && isHexDigit(byteAt(bytes, at + 2));
    return byte < ' ' || byte == kDelete || looksEscaped ? 0 : 1;
}

} // namespace

std::string bytesOf(const CATUnicodeString& text) {
    return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
}

CATUnicodeString textOf(const std::string& bytes) { return CATUnicodeString(bytes.data(), bytes.size()); }

std::string fileNameOf(const std::string& name) { return name.substr(name.find_last_of("/\\") + 1); }

std::size_t appendPrintable(std::string_view bytes, std::size_t at, std::string& text) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const std::size_t length = plainAt(bytes, at);
    if (length > 0) {
        text.append(bytes.substr(at, length));
        return length;
    }
    const unsigned int byte = byteAt(bytes, at);
    text += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    return 1;
}

std::string printable(const std::string& bytes) {
    std::string result;
    result.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t begin = at;
        while (at < bytes.size() && isPlainLetter(bytes[at])) ++at;
        result.append(bytes, begin, at - begin);
        if (at < bytes.size()) at += appendPrintable(bytes, at, result);
    }
    return result;
}

std::string bytesOfPrintable(const std::string& text) {
    if (text.find('%') == std::string::npos) return text;
    const auto valueOf = [](unsigned int digit) { return digit <= '9' ? digit - '0' : (digit | 0x20U) - 'a' + 10; };
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const unsigned int high = byteAt(text, at + 1), low = byteAt(text, at + 2);
        if (text[at] == '%' && isHexDigit(high) && isHexDigit(low)) {
            bytes += static_cast<char>(valueOf(high) << 4U | valueOf(low));
            at += 2;
        } else {
            bytes += text[at];
        }
    }
    return bytes;
}

std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return !continues(static_cast<unsigned char>(byte)); }));
}
