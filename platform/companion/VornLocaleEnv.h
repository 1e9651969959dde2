#ifndef VornLocaleEnv_H
#define VornLocaleEnv_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** How the session writes numbers. */
class ExportedByCatia VornLocaleEnv {
public:
    /** "." or ","; empty when it is not known. */
    static CATUnicodeString getDecimalSeparatorSymbol();
};

#endif
