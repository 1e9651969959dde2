#ifndef CATLISTP_CATMathTransformation_H
#define CATLISTP_CATMathTransformation_H

#include "CATCollec.h"

class CATMathTransformation;

/** List of transformations, positions from 1; it does not own them. */
CATLISTP_DECLARE(CATMathTransformation);

#endif
