#ifndef EMBEDDED_TEXT_TEXT_BYTES_H
#define EMBEDDED_TEXT_TEXT_BYTES_H

#include "CATUnicodeString.h"

#include <string>
#include <string_view>
#include <utility>

namespace embedded {

/** The UTF-8 that a platform text keeps, past its 8-bit form, in which characters may be missing. */
struct TextBytes {
    static const std::string& of(const CATUnicodeString& text) { return text.m_text; }
    static CATUnicodeString textOf(std::string bytes) {
        CATUnicodeString text;
        text.m_text = std::move(bytes);
        return text;
    }
    /** Whether the 8-bit form is that of the code page 1252, from now on and for every text. */
    static void useCodePage(bool use) { CATUnicodeString::s_codePage = use; }
    static bool usesCodePage() { return CATUnicodeString::s_codePage; }
};

// The 8-bit form of texts, as the platform's calls with `char*` take and give it.
std::string fromEightBit(std::string_view bytes);
std::string toEightBit(std::string_view text);

} // namespace embedded

#endif
