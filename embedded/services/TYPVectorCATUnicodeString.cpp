#include "TYPVectorCATUnicodeString.h"

const CATUnicodeString& TYPVectorCATUnicodeString::at(int iIndex) const {
    static const CATUnicodeString& empty = *new CATUnicodeString;
    return iIndex < 0 || iIndex >= size() ? empty : m_texts[static_cast<std::size_t>(iIndex)];
}
