#ifndef UTILLog_H
#define UTILLog_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** The integration's log file, which users read. */
class ExportedByCatia UTILLog {
public:
    /** Appends a title and a text of any number of lines. @return S_OK or E_FAIL */
    static HRESULT writeInLogFile(const CATUnicodeString& iTitle, const CATUnicodeString& iText);
};

#endif
