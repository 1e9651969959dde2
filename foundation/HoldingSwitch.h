#ifndef FOUNDATION_HOLDING_SWITCH_H
#define FOUNDATION_HOLDING_SWITCH_H

#include "VornToolsSwitchMgt.h"

namespace vorntools {

/**
 * The library's own way to a switcher: what the switcher newly remembers in one of these calls holds a reference until
 * it is released. A walk gives its products back long before they are put back; those who call the switcher itself keep
 * their products alive themselves.
 */
class HoldingSwitch {
public:
    using EnumWorkMode = VornToolsSwitchMgt::EnumWorkMode;

    explicit HoldingSwitch(VornToolsSwitchMgt& i_switcher) : m_switcher(i_switcher) {}

    // The switcher's operations; setWorkMode takes the file name from the product.
    HRESULT setWorkMode(CATIProduct* ipi_product, EnumWorkMode i_new_mode, EnumWorkMode i_original_mode,
                        unsigned char i_force);
    HRESULT switchDefault(const CATUnicodeString& i_file_name, CATIProduct* ipi_product, unsigned char i_force);
    HRESULT getDefaultRepName(CATIProduct* ipi_product, CATUnicodeString& o_name);

private:
    template <class Call>
    HRESULT holding(Call&& i_call);

    VornToolsSwitchMgt& m_switcher;
};

/** Gives back what the products of a switcher hold; afterwards their map is good for nothing but its end. Needs no
 * memory. */
void releaseProducts(const TYPMapCATUnicodeStringPVoid& i_products);

} // namespace vorntools

#endif
