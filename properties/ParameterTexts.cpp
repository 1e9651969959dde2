#include "properties/ParameterTexts.h"

#include <cstring>

namespace vorntools {

namespace {

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
    void goBackTo(const Scanner& i_earlier) { m_at = i_earlier.m_at; }

private:
    const char* m_at;
};

constexpr const char* kBlanks = " \t\r\n\f\v";
constexpr const char* kDigits = "0123456789";

} // namespace

NumberText numberTextOf(const CATUnicodeString& i_text, const CATUnicodeString& i_separator) {
    const CATUnicodeString marks = i_separator + ".";
    Scanner scanner(i_text.ConvertToChar());
    scanner.skipAll(kBlanks);
    scanner.skipOne("+-");
    bool digits = scanner.skipAll(kDigits);
    if (scanner.skipOne(marks.ConvertToChar())) digits = scanner.skipAll(kDigits) || digits;
    if (!digits) return NumberText::None;
    const Scanner mantissa = scanner;
    if (scanner.skipOne("eE")) {
        scanner.skipOne("+-");
        if (!scanner.skipAll(kDigits)) scanner.goBackTo(mantissa);
    }
    if (scanner.skipOne(".,")) return NumberText::None;
    scanner.skipAll(kBlanks);
    return scanner.next() == '\0' ? NumberText::Number : NumberText::WithUnit;
}

} // namespace vorntools
