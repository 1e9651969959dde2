#include "foundation/HoldingSwitch.h"

#include "CATIProduct.h"
#include "TYPMapCATUnicodeStringPVoid.h"

#include <cstring>

namespace vorntools {

namespace {

/** Class name of the products that hold a reference. */
constexpr const char* kHolding = "MAP_CATIPRODUCT_HOLDING";

} // namespace

/** Calls `call()`, after which the map's last product may be a new one. */
template <class Call>
HRESULT HoldingSwitch::holding(Call&& i_call) {
    TYPMapCATUnicodeStringPVoid* const& p_products = m_switcher.m_products; // there as soon as it holds something
    const int known = p_products ? p_products->size() : 0;
    const HRESULT code = i_call();
    for (int i = known; p_products && i < p_products->size(); ++i) {
        auto* const pi_product = static_cast<CATIProduct*>(p_products->valueAt(i));
        pi_product->AddRef();
        // Its own key: needs no memory, which may be at its end.
        p_products->insert(p_products->keyAt(i), pi_product, kHolding);
    }
    return code;
}

HRESULT HoldingSwitch::setWorkMode(CATIProduct* ipi_product, EnumWorkMode i_new_mode, EnumWorkMode i_original_mode,
                                   unsigned char i_force) {
    return holding([&] { return m_switcher.setWorkMode(ipi_product, i_new_mode, i_original_mode, "", i_force); });
}

HRESULT HoldingSwitch::switchDefault(const CATUnicodeString& i_file_name, CATIProduct* ipi_product,
                                     unsigned char i_force) {
    return holding([&] { return m_switcher.switchDefault(i_file_name, ipi_product, i_force); });
}

HRESULT HoldingSwitch::getDefaultRepName(CATIProduct* ipi_product, CATUnicodeString& o_name) {
    return holding([&] { return m_switcher.getDefaultRepName(ipi_product, o_name); });
}

void releaseProducts(const TYPMapCATUnicodeStringPVoid& i_products) {
    for (int i = 0; i < i_products.size(); ++i)
        if (std::strcmp(i_products.classNameAt(i), kHolding) == 0)
            static_cast<CATIProduct*>(i_products.valueAt(i))->Release();
}

} // namespace vorntools
