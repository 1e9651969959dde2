#ifndef SESSION_DESIGN_MODE_H
#define SESSION_DESIGN_MODE_H

#include "foundation/InterfacePtr.h"

#include "CATIProduct.h"
#include "VornToolsWorkModeServices.h"

class CATDocument;
class VornToolsSwitchMgt;

namespace vorntools {

/** How products are switched: by a switcher, or straight when there is none. */
struct SwitchWay {
    VornToolsSwitchMgt* p_switcher;
    unsigned char flag; ///< 1: also while the switcher is disabled
};

/** Keeps a product in design mode; its end puts the product back. A product whose mode is not known stays as it is. */
class DesignMode {
public:
    DesignMode(CATIProduct* ipi_product, const SwitchWay& i_way);
    /** Keeps the root product of a part's document there, outside of which nobody can count on what the part has. Other
     * documents stay as they are. */
    DesignMode(CATDocument* ip_document, const SwitchWay& i_way);
    ~DesignMode();
    DesignMode(DesignMode&&) = default;
    DesignMode(const DesignMode&) = delete;
    DesignMode& operator=(const DesignMode&) = delete;

private:
    HRESULT change(VornToolsWorkModeServices::EnumWorkMode i_from, VornToolsWorkModeServices::EnumWorkMode i_to);

    InterfacePtr<CATIProduct> m_product; ///< empty when there is nothing to put back
    SwitchWay m_way;
    VornToolsWorkModeServices::EnumWorkMode m_former = VornToolsWorkModeServices::WorkModeUnknown;
};

} // namespace vorntools

#endif
