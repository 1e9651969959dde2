#ifndef TYPVectorCATUnicodeString_H
#define TYPVectorCATUnicodeString_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

#include <vector>

/** Growing array of texts, counted from 0. Proposed: the methods. */
class ExportedByCatia TYPVectorCATUnicodeString {
public:
    void push_back(const CATUnicodeString& iText) { m_texts.push_back(iText); }
    void clear() { m_texts.clear(); }
    int size() const { return static_cast<int>(m_texts.size()); }
    /** The text at a position, or the empty text outside. */
    const CATUnicodeString& at(int iIndex) const;

private:
    std::vector<CATUnicodeString> m_texts;
};

#endif
