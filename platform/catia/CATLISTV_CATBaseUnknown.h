#ifndef CATLISTV_CATBaseUnknown_H
#define CATLISTV_CATBaseUnknown_H

#include "CATBaseUnknown.h"
#include "CATCollec.h"

/** List of handles, positions from 1; holds a reference an element. */
CATLISTV_DECLARE(CATBaseUnknown_var);

#endif
