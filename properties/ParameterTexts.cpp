#include "properties/ParameterTexts.h"

#include <cmath>
#include <cstring>

namespace vorntools {

namespace {

constexpr const char* kBlanks = " \t\r\n\f\v";
constexpr const char* kDigits = "0123456789";

/** Walks over the characters of a text; ends at the first NUL. */
class Scanner {
public:
    explicit Scanner(const char* i_text) : m_at(i_text) {}

    char next() const { return *m_at; }
    bool skipOne(const char* i_characters) {
        const bool found = *m_at != '\0' && std::strchr(i_characters, *m_at);
        if (found) ++m_at;
        return found;
    }
    bool skipAll(const char* i_characters) {
        bool found = false;
        while (skipOne(i_characters)) found = true;
        return found;
    }
    /** An "e" without digits is no exponent. */
    void skipExponent() {
        const char* const mantissa = m_at;
        if (!skipOne("eE")) return;
        skipOne("+-");
        if (!skipAll(kDigits)) m_at = mantissa;
    }
    const char* at() const { return m_at; }

private:
    const char* m_at;
};

/** The number that a text begins with, for platforms that read a whole text only; empty when there is none, or half a
 * number: one with a second mark or hexadecimal digits behind it. */
CATUnicodeString leadingNumber(const CATUnicodeString& i_text, bool i_is_real) {
    const char* const begin = i_text.ConvertToChar();
    Scanner scanner(begin);
    scanner.skipAll(kBlanks);
    scanner.skipOne("+-");
    bool digits = scanner.skipAll(kDigits);
    if (i_is_real && scanner.skipOne(".,")) digits = scanner.skipAll(kDigits) || digits;
    if (i_is_real) scanner.skipExponent();
    if (!digits || scanner.skipOne(i_is_real ? ".,xX" : ".,")) return CATUnicodeString();
    return i_text.SubString(0, static_cast<int>(scanner.at() - begin));
}

} // namespace

bool readReal(const CATUnicodeString& i_text, double& o_number) {
    constexpr const char* format = "%le";
    const bool read =
        i_text.ConvertToNum(&o_number, format) || leadingNumber(i_text, true).ConvertToNum(&o_number, format);
    return read && std::isfinite(o_number);
}

bool readInteger(const CATUnicodeString& i_text, int& o_number) {
    return i_text.ConvertToNum(&o_number) || leadingNumber(i_text, false).ConvertToNum(&o_number);
}

NumberText numberTextOf(const CATUnicodeString& i_text, const CATUnicodeString& i_separator) {
    const CATUnicodeString marks = i_separator + ".";
    Scanner scanner(i_text.ConvertToChar());
    scanner.skipAll(kBlanks);
    scanner.skipOne("+-");
    bool digits = scanner.skipAll(kDigits);
    if (scanner.skipOne(marks.ConvertToChar())) digits = scanner.skipAll(kDigits) || digits;
    if (!digits) return NumberText::None;
    scanner.skipExponent();
    if (scanner.skipOne(".,")) return NumberText::None;
    scanner.skipAll(kBlanks);
    return scanner.next() == '\0' ? NumberText::Number : NumberText::WithUnit;
}

} // namespace vorntools
