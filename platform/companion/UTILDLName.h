#ifndef UTILDLName_H
#define UTILDLName_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** Names by logical directory: the three characters 0x01, 0x02 and backslash, then name, separator and file name. */
class ExportedByCatia UTILDLName {
public:
    /** @param oPhysical the path on disk; a name that is in no logical form comes back unchanged; empty on failure.
     * @return S_OK; E_FAIL when the logical name is unknown to the session. */
    static HRESULT getPhysicalPathFromDLName(const CATUnicodeString& iName, CATUnicodeString& oPhysical);
    /** @param oClean the name without the three characters in front; a name that is in no logical form comes back
     * unchanged; empty on failure. */
    static HRESULT cleanUpDLName(const CATUnicodeString& iName, CATUnicodeString& oClean);
};

#endif
