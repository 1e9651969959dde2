#ifndef CATListOfCATUnicodeString_H
#define CATListOfCATUnicodeString_H

#include "CATCollec.h"
#include "CATUnicodeString.h"

#include <functional>
#include <string_view>

/** List of texts, positions from 1. */
class CATListValCATUnicodeString : public CATListOf<CATUnicodeString> {
public:
    /** Keeps the first of equal texts, letter case included. @return the number removed */
    int RemoveDuplicates() { return RemoveRepeated<Hash>(); }

private:
    struct Hash {
        std::size_t operator()(const CATUnicodeString& iText) const {
            const auto length = static_cast<std::size_t>(iText.GetLengthInByte());
            return std::hash<std::string_view>()(std::string_view(iText.ConvertToChar(), length));
        }
    };
};
typedef CATListValCATUnicodeString CATListOfCATUnicodeString;

#endif
