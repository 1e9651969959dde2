#ifndef CATICkeRelationForwards_H
#define CATICkeRelationForwards_H

#include "CATLISTV_CATBaseUnknown.h"

// Lists of knowledgeware objects as methods hand them out.
typedef CATListValCATBaseUnknown_var* CATCkeListOfParm;

#endif
