#include "CATDocument.h"
#include "CATDocumentDescriptor.h"
#include "embedded/Object.h"

#include <cstdint>

namespace {

// Identifiers of this platform differ in their first field only.
constexpr IID identifier(std::uint32_t number) {
    return {number, 0x7C31, 0x11D4, {0xB0, 0x5E, 0x00, 0x08, 0xC7, 0x4B, 0x52, 0x1F}};
}

} // namespace

const IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
const IID IID_CATBaseUnknown = identifier(0x5E1A0001);
const IID IID_CATBaseDispatch = identifier(0x5E1A0002);
const IID IID_CATIABase = identifier(0x5E1A0003);
const IID IID_CATIADocument = identifier(0x5E1A0004);
const IID IID_CATIAProduct = identifier(0x5E1A0005);
const IID IID_CATIDocId = identifier(0x5E1A0006);
const IID IID_CATIDocRoots = identifier(0x5E1A0007);
const IID IID_CATIDomain = identifier(0x5E1A0008);
const IID IID_CATILinkableObject = identifier(0x5E1A0009);
const IID IID_CATIPrdProperties = identifier(0x5E1A000A);
const IID IID_CATIProduct = identifier(0x5E1A000B);
const IID IID_CATISpecObject = identifier(0x5E1A000C);

CATImplementInterface(CATBaseDispatch, CATBaseUnknown);
CATImplementInterface(CATIABase, CATBaseDispatch);
CATImplementInterface(CATIADocument, CATIABase);
CATImplementInterface(CATIAProduct, CATIABase);
CATImplementInterface(CATIDocId, CATBaseUnknown);
CATImplementInterface(CATIDocRoots, CATBaseUnknown);
CATImplementInterface(CATIDomain, CATBaseUnknown);
CATImplementInterface(CATILinkableObject, CATBaseUnknown);
CATImplementInterface(CATIPrdProperties, CATBaseUnknown);
CATImplementInterface(CATIProduct, CATBaseUnknown);
CATImplementInterface(CATISpecObject, CATBaseUnknown);

namespace embedded {

const char* querySite(const IID& iid) {
    struct Site {
        const IID* iid;
        const char* name;
    };
    static const Site sites[] = {
        {&IID_CATIProduct, "QueryInterface(CATIProduct)"},
        {&IID_CATIPrdProperties, "QueryInterface(CATIPrdProperties)"},
        {&IID_CATILinkableObject, "QueryInterface(CATILinkableObject)"},
        {&IID_CATIADocument, "QueryInterface(CATIADocument)"},
        {&IID_CATIAProduct, "QueryInterface(CATIAProduct)"},
        {&IID_CATIDocRoots, "QueryInterface(CATIDocRoots)"},
        {&IID_CATISpecObject, "QueryInterface(CATISpecObject)"},
        {&IID_CATIDocId, "QueryInterface(CATIDocId)"},
        {&IID_CATIABase, "QueryInterface(CATIABase)"},
        {&IID_CATIDomain, "QueryInterface(CATIDomain)"},
        {&IID_CATBaseDispatch, "QueryInterface(CATBaseDispatch)"},
        {&IID_CATBaseUnknown, "QueryInterface(CATBaseUnknown)"},
        {&IID_IUnknown, "QueryInterface(IUnknown)"},
    };
    for (const Site& site : sites)
        if (iid == *site.iid) return site.name;
    return "QueryInterface";
}

} // namespace embedded
