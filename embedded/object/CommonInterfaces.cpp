#include "embedded/object/CommonInterfaces.h"

EMBEDDED_INTERFACE(CATIAlias, CATBaseUnknown, 0x004);
EMBEDDED_INTERFACE(CATIDomain, CATBaseUnknown, 0x005);
EMBEDDED_INTERFACE(CATILinkableObject, CATBaseUnknown, 0x006);
EMBEDDED_INTERFACE(CATISpecObject, CATBaseUnknown, 0x007);

CATUnicodeString CATISpecObject::GetDisplayName() const { return CATUnicodeString(); }

CATUnicodeString CATISpecObject::GetType() const { return CATUnicodeString(); }

CATIContainer_var CATISpecObject::GetFeatContainer() const { return CATIContainer_var(); }

CATISpecAttribute* CATISpecObject::AddAttribute(const CATUnicodeString&, CATAttrKind, CATAttrKind, CATAttrInOut) {
    return nullptr;
}
