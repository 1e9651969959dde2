#include "CATBSTR.h"
#include "CATUnicodeString.h"
#include "embedded/Accounting.h"
#include "embedded/object/Answers.h"
#include "embedded/text/Characters.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

/** What stands in front of the characters. */
struct TextHeader {
    std::uint32_t padding;
    std::uint32_t byteCount;
};

TextHeader* headerOf(CATBSTR text) { return reinterpret_cast<TextHeader*>(text) - 1; }

constexpr std::size_t kStaleLength = 5;

/** The text that a failing call leaves behind: nobody owns it. */
CATBSTR staleText() {
    static struct {
        TextHeader header = {0, 2 * kStaleLength};
        CATUC2Bytes characters[kStaleLength + 1] = {'s', 't', 'a', 'l', 'e', 0};
    } text;
    return text.characters;
}

std::u16string toUtf16(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    for (std::size_t offset = 0; offset < bytes.size();) {
        const embedded::Character character = embedded::characterAt(bytes, offset);
        offset += character.length;
        if (character.code < 0x10000) {
            units.push_back(static_cast<char16_t>(character.code));
        } else {
            units.push_back(static_cast<char16_t>(0xD7C0U + (character.code >> 10U)));
            units.push_back(static_cast<char16_t>(0xDC00U + (character.code & 0x3FFU)));
        }
    }
    return units;
}

} // namespace

void CATFreeString(CATBSTR iText) {
    if (!iText) return;
    if (iText == staleText()) {
        embedded::Accounting::get().breach("release of a text that a failing call left behind");
        return;
    }
    --embedded::Accounting::get().live().texts;
    std::free(headerOf(iText));
}

int CATUnicodeString::BuildFromBSTR(const CATBSTR& iText) {
    m_text = embedded::fromAutomationText(iText);
    return 0;
}

void CATUnicodeString::ConvertToBSTR(CATBSTR* oText) const {
    if (oText) *oText = embedded::newAutomationText(m_text);
}

namespace embedded {

CATBSTR newAutomationText(const std::string& bytes) {
    const std::u16string units = toUtf16(bytes);
    const std::size_t size = units.size() * sizeof(CATUC2Bytes);
    auto* const header = static_cast<TextHeader*>(std::malloc(sizeof(TextHeader) + size + sizeof(CATUC2Bytes)));
    if (!header) throw std::bad_alloc();
    *header = {0, static_cast<std::uint32_t>(size)};
    auto* const text = reinterpret_cast<CATBSTR>(header + 1);
    std::memcpy(text, units.c_str(), size + sizeof(CATUC2Bytes));
    ++Accounting::get().live().texts;
    return text;
}

std::string fromAutomationText(CATBSTR text) {
    return text ? fromUtf16(text, headerOf(text)->byteCount / sizeof(CATUC2Bytes)) : std::string();
}

HRESULT textAnswer(FaultFlavour flavour, const std::string& value, CATUnicodeString& output) {
    if (flavour != FaultFlavour::none) return failedAnswer<CATUnicodeString>(flavour, output, "", "stale");
    output = toText(value);
    return S_OK;
}

HRESULT automationTextAnswer(FaultFlavour flavour, const std::string& value, CATBSTR& output) {
    if (flavour != FaultFlavour::none) return failedAnswer<CATBSTR>(flavour, output, nullptr, staleText());
    output = newAutomationText(value);
    return S_OK;
}

} // namespace embedded
