#ifndef VornDebugOptions_H
#define VornDebugOptions_H

#include "ExportedByCatia.h"

/** Switches for those who look for a fault. */
class ExportedByCatia VornDebugOptions {
public:
    /** Non-zero in debug mode. */
    static int getDebugModeValue();
};

#endif
