#ifndef CATLISTV_CATISpecObject_H
#define CATLISTV_CATISpecObject_H

#include "CATCollec.h"
#include "CATISpecObject.h"

/** List of handles, positions from 1; holds a reference an element. */
CATLISTV_DECLARE(CATISpecObject_var);

#endif
