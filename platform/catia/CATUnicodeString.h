#ifndef CATUnicodeString_H
#define CATUnicodeString_H

#include "CATBSTR.h"
#include "CATDataType.h"
#include "ExportedByCatia.h"

#include <cstddef>
#include <memory>
#include <string>

namespace embedded {
struct TextBytes;
}

/** One character. Proposed: the members. */
class CATUnicodeChar {
public:
    CATUnicodeChar() : m_code(0) {}
    CATUnicodeChar(char iCharacter) : m_code(static_cast<unsigned char>(iCharacter)) {}
    CATUnicodeChar(unsigned int iCode) : m_code(iCode) {}
    unsigned int GetCode() const { return m_code; }
    int operator==(const CATUnicodeChar& iOther) const { return m_code == iOther.m_code; }
    int operator!=(const CATUnicodeChar& iOther) const { return m_code != iOther.m_code; }

private:
    unsigned int m_code;
};

/**
 * The platform's text. Positions and counts are in characters, from 0.
 *
 * Texts of bytes are in the session's 8-bit encoding. Where that is UTF-8, a byte that is part of no well-formed
 * character counts as one of its own, so that any text of bytes survives unchanged; where it is a code page, '?' stands
 * for every character that it lacks.
 */
class ExportedByCatia CATUnicodeString {
public:
    enum CATSearchMode { CATSearchModeForward, CATSearchModeBackward };

    CATUnicodeString() = default;
    CATUnicodeString(const char* const iText) : m_text(iText ? iText : "") {
        if (s_codePage) FromCodePage();
    }
    CATUnicodeString(const char* const iText, size_t iLength) : m_text(iText ? iText : "", iText ? iLength : 0) {
        if (s_codePage) FromCodePage();
    }

    CATUnicodeString& operator=(const char* iText);
    CATUnicodeString& Append(const CATUnicodeString& iText);

    /** 2 identical, 1 equal but for letter case, 0 different. */
    int Compare(const CATUnicodeString& iText) const;
    /** Position of a text, or -1. Backward, iSearchBeginning counts characters from the END of this text and a match
     * needs at least that many characters behind it. */
    int SearchSubString(const CATUnicodeString& iToSearch, int iSearchBeginning = 0,
                        CATSearchMode iMode = CATSearchModeForward) const;
    CATUnicodeString SubString(int iFirst, int iCount) const;
    /** Replaces the first occurrence; its position, or -1. */
    int ReplaceSubString(const CATUnicodeString& iToReplace, const CATUnicodeString& iReplacement);
    void ReplaceAll(const CATUnicodeString& iToReplace, const CATUnicodeString& iReplacement);
    void ToUpper();

    int GetLengthInChar() const;
    /** Bytes of the ConvertToChar text. */
    int GetLengthInByte() const { return static_cast<int>((s_codePage ? InCodePage() : m_text).size()); }
    /** 8-bit text, NUL terminated, owned by this string until it changes. */
    const char* ConvertToChar() const { return (s_codePage ? InCodePage() : m_text).c_str(); }
    /** Whether the text is empty. Proposed: whole, as users' programs call it. */
    int IsNull() const { return m_text.empty(); }

    /** 0, or negative when the bytes are not UTF-8; this text is then empty. */
    int BuildFromUTF8(const char* iText, size_t iByteCount);
    /** iBytes: out, the bytes written; the caller provides 4 a character. */
    void ConvertToUTF8(char* oText, size_t* oByteCount) const;
    /** 0, or negative on failure; a null text gives the empty text. */
    int BuildFromBSTR(const CATBSTR& iText);
    /** @param oText a new text, freed by the caller with CATFreeString. */
    void ConvertToBSTR(CATBSTR* oText) const;
    /** Byte count of the text, 0 on failure. A real number has the session's decimal separator. */
    int BuildFromNum(int iValue, const char* iFormat = "%d");
    int BuildFromNum(double iValue, const char* iFormat = "%g");
    /** 1 when a number was read, else 0 and the output is untouched. A real number has the session's decimal separator.
     * What follows the number is left alone, such as a unit; it must not begin with "." or ",", so that half a number
     * is never taken for the whole. Proposed: what becomes of it. */
    int ConvertToNum(int* oValue, const char* iFormat = "%d") const;
    int ConvertToNum(double* oValue, const char* iFormat = "%le") const;

    int operator==(const CATUnicodeString& iText) const { return m_text == iText.m_text; }
    int operator!=(const CATUnicodeString& iText) const { return m_text != iText.m_text; }
    int operator<(const CATUnicodeString& iText) const { return m_text < iText.m_text; }
    int operator>(const CATUnicodeString& iText) const { return iText.m_text < m_text; }
    int operator<=(const CATUnicodeString& iText) const { return !(iText.m_text < m_text); }
    int operator>=(const CATUnicodeString& iText) const { return !(m_text < iText.m_text); }
    CATUnicodeString operator+(const char* iText) const;
    /** Proposed: whole, as users' programs write it. */
    CATUnicodeString& operator+=(const CATUnicodeString& iText) { return Append(iText); }
    /** Bounds checked: a position outside gives the character 0. */
    CATUnicodeChar operator[](size_t iPosition) const;

private:
    friend ExportedByCatia CATUnicodeString operator+(const CATUnicodeString& iLeft, const CATUnicodeString& iRight);
    friend struct embedded::TextBytes;

    /** The text in the code page, made when somebody asks for it. A copy begins without. */
    struct Narrow {
        Narrow() = default;
        Narrow(const Narrow&) noexcept {}
        Narrow& operator=(const Narrow&) noexcept { return *this; }
        std::unique_ptr<std::string> text;
    };

    void FromCodePage();
    const std::string& InCodePage() const;

    static bool s_codePage; ///< whether the 8-bit encoding is a code page
    std::string m_text;     ///< UTF-8
    mutable Narrow m_narrow;
};

/** Proposed: whole, as users' programs write it. */
ExportedByCatia CATUnicodeString operator+(const CATUnicodeString& iLeft, const CATUnicodeString& iRight);

#endif
