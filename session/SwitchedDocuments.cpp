#include "session/SwitchedDocuments.h"

#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"

namespace vorntools {

namespace {

using Modes = VornToolsWorkModeServices;

constexpr Modes::EnumWorkMode kReadMode = static_cast<Modes::EnumWorkMode>(0);
constexpr Modes::EnumWorkMode kVisualisation = static_cast<Modes::EnumWorkMode>(1);
constexpr Modes::EnumWorkMode kDesign = static_cast<Modes::EnumWorkMode>(4);

} // namespace

void loadForDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    Modes::EnumWorkMode mode = kReadMode;
    Modes::getWorkMode(ipi_product, mode);
    if (mode != kDesign) i_switcher.setWorkMode(ipi_product, kDesign, mode, "", 0);
}

void switchToDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    i_switcher.setWorkMode(ipi_product, kDesign, kReadMode, "", 0);
}

void switchToVisualisation(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    i_switcher.setWorkMode(ipi_product, kVisualisation, kReadMode, "", 0);
}

void switchToDefault(VornToolsSwitchMgt& i_switcher, const CATUnicodeString& i_file_name, CATIProduct* ipi_product) {
    i_switcher.switchDefault(i_file_name, ipi_product, 0);
}

HRESULT readDefaultRepresentation(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product, CATUnicodeString& o_name) {
    return i_switcher.getDefaultRepName(ipi_product, o_name);
}

} // namespace vorntools
