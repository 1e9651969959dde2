#include "CATUnicodeString.h"
#include "embedded/Profile.h"
#include "embedded/text/Characters.h"
#include "embedded/text/CodePage.h"
#include "embedded/text/Numbers.h"
#include "embedded/text/TextBytes.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace embedded;

namespace {

std::size_t position(int value) { return value > 0 ? static_cast<std::size_t>(value) : 0; }

std::size_t findText(std::string_view text, std::string_view pattern, std::size_t from) {
    if (pattern.empty()) return std::string_view::npos;
    std::size_t found = text.find(pattern, from);
    while (found != std::string_view::npos &&
           !(beginsCharacter(text, found) && beginsCharacter(text, found + pattern.size())))
        found = text.find(pattern, found + 1);
    return found;
}

std::size_t findTextBackward(std::string_view text, std::string_view pattern, std::size_t end) {
    if (pattern.empty() || pattern.size() > end) return std::string_view::npos;
    std::size_t found = text.rfind(pattern, end - pattern.size());
    while (found != std::string_view::npos &&
           !(beginsCharacter(text, found) && beginsCharacter(text, found + pattern.size())))
        found = found == 0 ? std::string_view::npos : text.rfind(pattern, found - 1);
    return found;
}

unsigned foldedCase(unsigned code) { return toLower(toUpper(code)); }

bool equalAsciiLetters(char left, char right) {
    if (((static_cast<unsigned char>(left) | static_cast<unsigned char>(right)) & 0x80U) != 0) return false;
    const char lower = static_cast<char>(left | 0x20);
    return left == right || (lower == (right | 0x20) && lower >= 'a' && lower <= 'z');
}

void mapCase(std::string& text, unsigned (*map)(unsigned)) {
    std::string mapped;
    mapped.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const Character character = characterAt(text, offset);
        appendCharacter(mapped, map(character.code));
        offset += character.length;
    }
    text.swap(mapped);
}

/** Letter of the one conversion in a printf format that is fit for an `int`, or 0. */
char integerConversion(const char* format) {
    if (!format) return 0;
    char found = 0;
    for (const char* at = format; *at; ++at) {
        if (*at != '%') continue;
        if (*++at == '%') continue;
        at += std::strspn(at, "-+ #0123456789.");
        if (found || !*at || !std::strchr("diouxX", *at)) return 0;
        found = *at;
    }
    return found;
}

int baseOf(char conversion) {
    switch (conversion) {
    case 'i': return 0;
    case 'o': return 8;
    case 'x':
    case 'X': return 16;
    default: return 10;
    }
}

} // namespace

bool CATUnicodeString::s_codePage = false;

void CATUnicodeString::FromCodePage() {
    if (!isAscii(m_text)) m_text = fromCodePage(m_text);
}

/** ASCII is the same everywhere. The memory of an equal text stays, so that a pointer to it stays good. */
const std::string& CATUnicodeString::InCodePage() const {
    if (isAscii(m_text)) return m_text;
    if (!m_narrow.text) m_narrow.text = std::make_unique<std::string>();
    const std::string bytes = toCodePage(m_text);
    if (*m_narrow.text != bytes) *m_narrow.text = bytes;
    return *m_narrow.text;
}

CATUnicodeString& CATUnicodeString::operator=(const char* iText) {
    m_text.assign(iText ? iText : "");
    if (s_codePage) FromCodePage();
    return *this;
}

CATUnicodeString& CATUnicodeString::Append(const CATUnicodeString& iText) {
    m_text += iText.m_text;
    return *this;
}

int CATUnicodeString::Compare(const CATUnicodeString& iText) const {
    if (m_text == iText.m_text) return 2;
    // A letter and its other case have the same length in bytes.
    if (m_text.size() != iText.m_text.size()) return 0;
    for (std::size_t offset = 0; offset < m_text.size();) {
        if (equalAsciiLetters(m_text[offset], iText.m_text[offset])) {
            ++offset;
            continue;
        }
        const Character left = characterAt(m_text, offset);
        const Character right = characterAt(iText.m_text, offset);
        if (left.length != right.length) return 0;
        if (left.code != right.code && foldedCase(left.code) != foldedCase(right.code)) return 0;
        offset += left.length;
    }
    return 1;
}

int CATUnicodeString::SearchSubString(const CATUnicodeString& iToSearch, int iSearchBeginning,
                                      CATSearchMode iMode) const {
    const std::string_view text = m_text;
    const std::size_t skipped = position(iSearchBeginning);
    const std::size_t found = iMode == CATSearchModeForward
                                  ? findText(text, iToSearch.m_text, offsetOf(text, skipped))
                                  : findTextBackward(text, iToSearch.m_text, offsetFromEnd(text, skipped));
    return found == std::string_view::npos ? -1 : static_cast<int>(countCharacters(text.substr(0, found)));
}

CATUnicodeString CATUnicodeString::SubString(int iFirst, int iCount) const {
    const std::size_t from = offsetOf(m_text, position(iFirst));
    const std::string_view tail = std::string_view(m_text).substr(from);
    return TextBytes::textOf(std::string(tail.substr(0, offsetOf(tail, position(iCount)))));
}

int CATUnicodeString::ReplaceSubString(const CATUnicodeString& iToReplace, const CATUnicodeString& iReplacement) {
    const std::size_t found = findText(m_text, iToReplace.m_text, 0);
    if (found == std::string::npos) return -1;
    const std::size_t before = countCharacters(std::string_view(m_text).substr(0, found));
    m_text.replace(found, iToReplace.m_text.size(), std::string(iReplacement.m_text));
    return static_cast<int>(before);
}

void CATUnicodeString::ReplaceAll(const CATUnicodeString& iToReplace, const CATUnicodeString& iReplacement) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t found = findText(m_text, iToReplace.m_text, 0); found != std::string::npos;
         found = findText(m_text, iToReplace.m_text, from)) {
        result.append(m_text, from, found - from).append(iReplacement.m_text);
        from = found + iToReplace.m_text.size();
    }
    if (from == 0) return;
    result.append(m_text, from, std::string::npos);
    m_text.swap(result);
}

void CATUnicodeString::ToUpper() { mapCase(m_text, toUpper); }

int CATUnicodeString::GetLengthInChar() const { return static_cast<int>(countCharacters(m_text)); }

int CATUnicodeString::BuildFromUTF8(const char* iText, size_t iByteCount) {
    const std::string_view bytes(iText ? iText : "", iText ? iByteCount : 0);
    if (!isWellFormed(bytes)) {
        m_text.clear();
        return -1;
    }
    m_text = std::string(bytes);
    return 0;
}

void CATUnicodeString::ConvertToUTF8(char* oText, size_t* oByteCount) const {
    if (oText && !m_text.empty()) std::memcpy(oText, m_text.data(), m_text.size());
    if (oByteCount) *oByteCount = m_text.size();
}

int CATUnicodeString::BuildFromNum(int iValue, const char* iFormat) {
    m_text.clear();
    if (!integerConversion(iFormat)) return 0;
    const int length = std::snprintf(nullptr, 0, iFormat, iValue);
    if (length <= 0) return 0;
    m_text.resize(static_cast<std::size_t>(length) + 1);
    std::snprintf(&m_text[0], m_text.size(), iFormat, iValue);
    m_text.pop_back();
    return length;
}

int CATUnicodeString::BuildFromNum(double iValue, const char* iFormat) {
    m_text = realText(iValue, iFormat);
    return static_cast<int>(m_text.size());
}

int CATUnicodeString::ConvertToNum(double* oValue, const char* iFormat) const {
    std::size_t rest = 0;
    double value = 0.0;
    if (!oValue || !isRealFormat(iFormat) || !readReal(m_text, sessionDecimalMark(), value, rest)) return 0;
    if (rest < m_text.size() && (m_text[rest] == '.' || m_text[rest] == ',' || switches().numbersEndTexts)) return 0;
    *oValue = value;
    return 1;
}

int CATUnicodeString::ConvertToNum(int* oValue, const char* iFormat) const {
    const char conversion = integerConversion(iFormat);
    if (!oValue || !conversion) return 0;
    char* end = nullptr;
    errno = 0;
    const long long value = std::strtoll(m_text.c_str(), &end, baseOf(conversion));
    const long long largest = conversion == 'd' || conversion == 'i'
                                  ? static_cast<long long>(std::numeric_limits<int>::max())
                                  : static_cast<long long>(std::numeric_limits<unsigned>::max());
    if (end == m_text.c_str() || errno == ERANGE || value > largest || value < std::numeric_limits<int>::min())
        return 0;
    if (*end == '.' || *end == ',' || (*end && switches().numbersEndTexts)) return 0;
    *oValue = static_cast<int>(value);
    return 1;
}

CATUnicodeString CATUnicodeString::operator+(const char* iText) const {
    if (s_codePage) return *this + CATUnicodeString(iText);
    const std::string_view text = iText ? iText : "";
    CATUnicodeString result;
    result.m_text.reserve(m_text.size() + text.size());
    result.m_text.append(m_text).append(text);
    return result;
}

CATUnicodeChar CATUnicodeString::operator[](size_t iPosition) const {
    const std::size_t offset = offsetOf(m_text, iPosition);
    return CATUnicodeChar(offset < m_text.size() ? characterAt(m_text, offset).code : 0U);
}

CATUnicodeString operator+(const CATUnicodeString& iLeft, const CATUnicodeString& iRight) {
    CATUnicodeString result;
    result.m_text.reserve(iLeft.m_text.size() + iRight.m_text.size());
    result.m_text.append(iLeft.m_text).append(iRight.m_text);
    return result;
}
