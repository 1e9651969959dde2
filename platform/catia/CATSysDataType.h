#ifndef CATSysDataType_H
#define CATSysDataType_H

#include "CATDataType.h"

/** Count of the automation interfaces. */
typedef CATLONG32 CATLONG;

#endif
