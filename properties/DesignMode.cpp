#include "properties/DesignMode.h"

#include "session/HoldingSwitch.h"

namespace vorntools {

using Modes = VornToolsWorkModeServices;

DesignMode::DesignMode(CATIProduct* ipi_product, const SwitchWay& i_way) : m_way(i_way) {
    if (!ipi_product || FAILED(Modes::getWorkMode(ipi_product, m_former)) || m_former == Modes::WorkModeUnknown ||
        m_former == Modes::WorkModeDesign)
        return;
    m_product = InterfacePtr<CATIProduct>::share(ipi_product);
    if (change(m_former, Modes::WorkModeDesign) == S_FALSE) m_product.reset();
}

DesignMode::~DesignMode() {
    if (m_product) change(Modes::WorkModeDesign, m_former);
}

HRESULT DesignMode::change(Modes::EnumWorkMode i_from, Modes::EnumWorkMode i_to) {
    return m_way.p_switcher ? HoldingSwitch(*m_way.p_switcher).setWorkMode(m_product.get(), i_to, i_from, m_way.flag)
                            : Modes::setWorkMode(m_product.get(), i_to);
}

} // namespace vorntools
