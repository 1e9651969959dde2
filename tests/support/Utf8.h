#ifndef TESTS_SUPPORT_UTF8_H
#define TESTS_SUPPORT_UTF8_H

#include "CATUnicodeString.h"

#include <string>

// Texts with all their characters, whatever the platform's 8-bit encoding lacks.

inline CATUnicodeString utf8(const std::string& bytes) {
    CATUnicodeString text;
    text.BuildFromUTF8(bytes.data(), bytes.size());
    return text;
}

inline std::string toUtf8(const CATUnicodeString& text) {
    std::string bytes(4U * static_cast<std::size_t>(text.GetLengthInChar()), '\0');
    std::size_t size = 0;
    text.ConvertToUTF8(bytes.data(), &size);
    bytes.resize(size);
    return bytes;
}

/** What the platform's 8-bit encoding keeps of a text. */
inline std::string eightBit(const std::string& bytes) {
    const CATUnicodeString text = utf8(bytes);
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

#endif
