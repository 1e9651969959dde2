#include "VornToolsCommon.h"

const CATUnicodeString VornToolsCommon::_CteCLASS_NAME("VornToolsCommon::");
