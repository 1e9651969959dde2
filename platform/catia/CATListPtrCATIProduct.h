#ifndef CATListPtrCATIProduct_H
#define CATListPtrCATIProduct_H

#include "CATCollec.h"
#include "CATIProduct.h"

/** List of product pointers, positions from 1; adds no reference. */
CATLISTP_DECLARE(CATIProduct);

#endif
