#ifndef CATListOfCATBaseUnknown_H
#define CATListOfCATBaseUnknown_H

#include "CATBaseUnknown.h"
#include "CATCollec.h"

/** List of object pointers, positions from 1; adds no reference. */
CATLISTP_DECLARE(CATBaseUnknown);

#endif
