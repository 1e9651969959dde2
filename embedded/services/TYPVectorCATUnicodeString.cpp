#include "TYPVectorCATUnicodeString.h"

namespace {

const CATUnicodeString& emptyText() {
    static const CATUnicodeString empty;
    return empty;
}

} // namespace

const CATUnicodeString& TYPVectorCATUnicodeString::at(int iIndex) const {
    return iIndex < 0 || iIndex >= size() ? emptyText() : m_texts[static_cast<std::size_t>(iIndex)];
}
