#ifndef CATBSTR_H
#define CATBSTR_H

#include "CATDataType.h"
#include "ExportedByCatia.h"

/** Text of the automation interfaces: a pointer to 16-bit characters, terminated by 0, its length in front. */
typedef CATUC2Bytes* CATBSTR;

/** Frees a text that an automation call handed out; null is allowed. */
ExportedByCatia void CATFreeString(CATBSTR iText);

#endif
