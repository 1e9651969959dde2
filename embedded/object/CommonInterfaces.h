// Interfaces that classes of more than one room implement.
#ifndef EMBEDDED_OBJECT_COMMON_INTERFACES_H
#define EMBEDDED_OBJECT_COMMON_INTERFACES_H

#include "CATIAlias.h"
#include "CATILinkableObject.h"
#include "CATISpecObject.h"
#include "embedded/object/Interfaces.h"

namespace embedded {

EMBEDDED_IDENTITY(CATIAlias);
EMBEDDED_IDENTITY(CATILinkableObject);
EMBEDDED_IDENTITY(CATISpecObject);

} // namespace embedded

#endif
