#ifndef CATString_H
#define CATString_H

#include "ExportedByCatia.h"

#include <string>

/** Plain 7-bit text of the frame and message calls; made from a literal where one is asked for. */
class ExportedByCatia CATString {
public:
    CATString(const char* iText = nullptr) : m_text(iText ? iText : "") {}
    const char* ConvertToChar() const { return m_text.c_str(); }

private:
    std::string m_text;
};

#endif
