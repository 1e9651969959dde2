#ifndef UTILConversion_H
#define UTILConversion_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** Texts of values. */
class ExportedByCatia UTILConversion {
public:
    /** "true" or "false". */
    static CATUnicodeString booleanToString(unsigned char iValue);
};

#endif
