#include "UTILConversion.h"

CATUnicodeString UTILConversion::booleanToString(unsigned char iValue) { return iValue ? "true" : "false"; }
