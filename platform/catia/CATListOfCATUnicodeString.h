#ifndef CATListOfCATUnicodeString_H
#define CATListOfCATUnicodeString_H

#include "CATCollec.h"
#include "CATUnicodeString.h"

/** List of texts, positions from 1. */
CATLISTV_DECLARE(CATUnicodeString);
typedef CATListValCATUnicodeString CATListOfCATUnicodeString;

#endif
