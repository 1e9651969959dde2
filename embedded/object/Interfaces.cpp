#include "embedded/object/Interfaces.h"

#include <string>

namespace embedded {

namespace {

struct Site {
    const IID* iid;
    const char* name;
};

/** By the number of the interface. */
Site* sites() {
    static Site table[kInterfaceLimit] = {};
    return table;
}

std::uint32_t numberOf(const IID& iid) { return iid.Data1 - interfaceId(0).Data1; }

} // namespace

InterfaceSite::InterfaceSite(const IID& iid, const char* site) {
    const std::uint32_t number = numberOf(iid);
    if (number < kInterfaceLimit) sites()[number] = {&iid, site};
}

const char* querySite(const IID& iid) {
    if (iid == IID_IUnknown) return "QueryInterface(IUnknown)";
    const std::uint32_t number = numberOf(iid);
    const Site site = number < kInterfaceLimit ? sites()[number] : Site{};
    return site.iid && *site.iid == iid ? site.name : "QueryInterface";
}

const IID* interfaceNamed(const char* name) {
    const std::string site = "QueryInterface(" + std::string(name ? name : "") + ")";
    for (std::uint32_t number = 0; number < kInterfaceLimit; ++number)
        if (sites()[number].name && site == sites()[number].name) return sites()[number].iid;
    return nullptr;
}

} // namespace embedded

IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

IID IID_CATBaseUnknown = embedded::interfaceId(0x001);
static const embedded::InterfaceSite site_CATBaseUnknown(IID_CATBaseUnknown, "QueryInterface(CATBaseUnknown)");

EMBEDDED_INTERFACE(CATBaseDispatch, CATBaseUnknown, 0x002);
EMBEDDED_INTERFACE(CATIABase, CATBaseDispatch, 0x003);

HRESULT __stdcall CATIABase::GetItem(const CATBSTR&, CATBaseDispatch*& oObject) {
    oObject = nullptr;
    return E_FAIL;
}
