#ifndef CATDLName_H
#define CATDLName_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"

/** Physical directory of a logical name. @param oRealName a new text that the caller deletes (Proposed: that), null on
 * failure. */
ExportedByCatia HRESULT CATGetDLName(const CATUnicodeString* iDLName, CATUnicodeString** oRealName);

/** Logical path of a file from a logical name and a file name.
 * @param oLogicalPath a new text that the caller deletes (Proposed: that), null on failure. */
ExportedByCatia HRESULT CATMakeLogicalPath(const CATUnicodeString* iDLName, const CATUnicodeString* iFileName,
                                           CATUnicodeString** oLogicalPath);

/** Every logical name of the session. @param iCriterion compares a name with iToCompare, non-zero keeps it; null keeps
 * all. @param oNames a new array of new texts; the caller deletes the texts and then the array with delete[]
 * (Proposed: that). */
ExportedByCatia HRESULT CATGetDLNameList(int (*iCriterion)(CATUnicodeString*, CATUnicodeString*),
                                         CATUnicodeString* iToCompare, unsigned int* oCount,
                                         CATUnicodeString*** oNames);

#endif
