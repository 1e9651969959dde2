#ifndef UTILString_H
#define UTILString_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATListOfDouble.h"
#include "CATListOfInt.h"
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
    /** The same for numbers. @return E_FAIL, and an empty list, when a part is no number */
    static HRESULT split(const CATUnicodeString& iText, const CATUnicodeString& iSeparator, CATRawCollint& oParts);
    static HRESULT split(const CATUnicodeString& iText, const CATUnicodeString& iSeparator, CATRawColldouble& oParts);
    /** Joins values with a separator; a real number is written so that it reads back the same.
     * @param oText empty on failure. @return S_OK or E_FAIL */
    static HRESULT concat(const CATListValCATUnicodeString& iParts, const CATUnicodeString& iSeparator,
                          CATUnicodeString& oText);
    static HRESULT concat(const CATRawCollint& iParts, const CATUnicodeString& iSeparator, CATUnicodeString& oText);
    static HRESULT concat(const CATRawColldouble& iParts, const CATUnicodeString& iSeparator, CATUnicodeString& oText);
    /** Puts a blank in the place of each line break (CR LF, LF or CR): a mapped value is one line. */
    static void replaceNewLineForMappings(CATUnicodeString& ioText);
};

#endif
