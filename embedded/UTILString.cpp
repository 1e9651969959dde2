#include "UTILString.h"
#include "CATUuid.h"
#include "embedded/Answers.h"

#include <string_view>

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
        oParts.Append(CATUnicodeString(text.data() + from, found - from));
        from = found + separator.size();
    }
    oParts.Append(CATUnicodeString(text.data() + from, text.size() - from));
}
