#ifndef CATGetEnvValue_H
#define CATGetEnvValue_H

#include "CATLib.h"

/** Value of an environment variable. @param oVarValue may be null; else a text that the caller frees with free.
 * @return CATLibError when it is not set */
ExportedByCatia CATLibStatus CATGetEnvValue(const char* iVarName, char** oVarValue);

#endif
