#ifndef UTILString_H
#define UTILString_H

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** Text helpers. */
class ExportedByCatia UTILString {
public:
    /** A new universal identifier as text. */
    static CATUnicodeString genUuid();
    /** Turns each line that begins with "Context KETO_ID_" into one that begins with "KETO_ID_"; other text stays. */
    static void removeContextKeyWord(CATUnicodeString& ioText);
    /** Splits a text at every separator. N separators give N + 1 parts, empty ones included.
     * @param oParts emptied first. An empty separator gives the whole text as one part. */
    static void split(const CATUnicodeString& iText, const CATUnicodeString& iSeparator,
                      CATListValCATUnicodeString& oParts);
};

#endif
