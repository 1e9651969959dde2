#include "UTILString.h"
#include "CATUuid.h"
#include "embedded/object/Answers.h"
#include "embedded/text/Numbers.h"

#include <string_view>

namespace {

template <class Number, class List>
HRESULT splitNumbers(const CATUnicodeString& text, const CATUnicodeString& separator, List& numbers) {
    numbers.RemoveAll();
    if (embedded::fails("UTILString::split")) return E_FAIL;
    CATListValCATUnicodeString parts;
    UTILString::split(text, separator, parts);
    for (int i = 1; i <= parts.Size(); ++i) {
        Number number = 0;
        if (!parts[i].ConvertToNum(&number)) {
            numbers.RemoveAll();
            return E_FAIL;
        }
        numbers.Append(number);
    }
    return S_OK;
}

template <class List, class Show>
HRESULT join(const List& list, const CATUnicodeString& separator, CATUnicodeString& joined, Show show) {
    joined = "";
    const embedded::FaultFlavour flavour = embedded::Failures::get().ask("UTILString::concat");
    if (flavour != embedded::FaultFlavour::none) return embedded::textAnswer(flavour, "", joined);
    std::string text;
    for (int i = 1; i <= list.Size(); ++i) {
        if (i > 1) text += embedded::toBytes(separator);
        text += show(list[i]);
    }
    joined = embedded::toText(text);
    return S_OK;
}

} // namespace

CATUnicodeString UTILString::genUuid() {
    char text[256];
    CATUuid().UUID_to_chaine(text);
    return text;
}

void UTILString::removeContextKeyWord(CATUnicodeString& ioText) {
    constexpr std::string_view word = "Context ";
    constexpr std::string_view beginning = "Context KETO_ID_";
    std::string text = embedded::toBytes(ioText);
    bool changed = false;
    for (std::size_t found = text.find(beginning); found != std::string::npos; found = text.find(beginning, found)) {
        const bool beginsLine = found == 0 || text[found - 1] == '\n';
        if (beginsLine) text.erase(found, word.size());
        changed = changed || beginsLine;
        ++found;
    }
    if (changed) ioText = embedded::toText(text);
}

void UTILString::split(const CATUnicodeString& iText, const CATUnicodeString& iSeparator,
                       CATListValCATUnicodeString& oParts) {
    oParts.RemoveAll();
    const std::string text = embedded::toBytes(iText);
    const std::string separator = embedded::toBytes(iSeparator);
    std::size_t from = 0;
    for (std::size_t found = separator.empty() ? std::string::npos : text.find(separator); found != std::string::npos;
         found = text.find(separator, from)) {
        oParts.Append(embedded::toText(text.substr(from, found - from)));
        from = found + separator.size();
    }
    oParts.Append(embedded::toText(text.substr(from)));
}

HRESULT UTILString::split(const CATUnicodeString& iText, const CATUnicodeString& iSeparator, CATRawCollint& oParts) {
    return splitNumbers<int>(iText, iSeparator, oParts);
}

HRESULT UTILString::split(const CATUnicodeString& iText, const CATUnicodeString& iSeparator, CATRawColldouble& oParts) {
    return splitNumbers<double>(iText, iSeparator, oParts);
}

HRESULT UTILString::concat(const CATListValCATUnicodeString& iParts, const CATUnicodeString& iSeparator,
                           CATUnicodeString& oText) {
    return join(iParts, iSeparator, oText, [](const CATUnicodeString& part) { return embedded::toBytes(part); });
}

HRESULT UTILString::concat(const CATRawCollint& iParts, const CATUnicodeString& iSeparator, CATUnicodeString& oText) {
    return join(iParts, iSeparator, oText, [](int part) { return std::to_string(part); });
}

HRESULT UTILString::concat(const CATRawColldouble& iParts, const CATUnicodeString& iSeparator,
                           CATUnicodeString& oText) {
    return join(iParts, iSeparator, oText, [](double part) { return embedded::shortestText(part); });
}

void UTILString::replaceNewLineForMappings(CATUnicodeString& ioText) {
    ioText.ReplaceAll("\r\n", " ");
    ioText.ReplaceAll("\n", " ");
    ioText.ReplaceAll("\r", " ");
}
