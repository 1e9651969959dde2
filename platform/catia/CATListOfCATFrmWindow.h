#ifndef CATListOfCATFrmWindow_H
#define CATListOfCATFrmWindow_H

#include "CATCollec.h"
#include "CATFrmWindow.h"

/** List of windows, positions from 1; adds no reference. */
CATLISTP_DECLARE(CATFrmWindow);

#endif
