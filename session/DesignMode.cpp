#include "session/DesignMode.h"

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "foundation/Guarded.h"

#include "CATDocument.h"
#include "UTILFile.h"

namespace vorntools {

using Modes = VornToolsWorkModeServices;

namespace {

/** Empty for any other document. */
InterfacePtr<CATIProduct> rootOfPart(CATDocument* ip_document) {
    InterfacePtr<CATIProduct> sp_root;
    if (ip_document && UTILFile::isACATPart(UTILFile::getExtension(ip_document->StorageName())))
        sp_root.receive(
            [&](CATIProduct*& o_root) { return VornToolsCommon::getActiveCATIProduct(ip_document, o_root); });
    return sp_root;
}

} // namespace

DesignMode::DesignMode(CATDocument* ip_document, const SwitchWay& i_way)
    : DesignMode(rootOfPart(ip_document).get(), i_way) {}

DesignMode::DesignMode(CATIProduct* ipi_product, const SwitchWay& i_way) : m_way(i_way) {
    if (!ipi_product || FAILED(Modes::getWorkMode(ipi_product, m_former)) || m_former == Modes::WorkModeUnknown ||
        m_former == Modes::WorkModeDesign)
        return;
    m_product = InterfacePtr<CATIProduct>::share(ipi_product);
    if (change(m_former, Modes::WorkModeDesign) == S_FALSE) m_product.reset();
}

DesignMode::~DesignMode() {
    if (m_product) guarded([&] { change(Modes::WorkModeDesign, m_former); });
}

HRESULT DesignMode::change(Modes::EnumWorkMode i_from, Modes::EnumWorkMode i_to) {
    return m_way.p_switcher ? m_way.p_switcher->setWorkMode(m_product.get(), i_to, i_from, "", m_way.flag)
                            : Modes::setWorkMode(m_product.get(), i_to);
}

} // namespace vorntools
