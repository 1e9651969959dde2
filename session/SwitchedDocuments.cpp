#include "session/SwitchedDocuments.h"

#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"

namespace vorntools {

namespace {

using Modes = VornToolsWorkModeServices;

/** The switcher then reads it. */
constexpr Modes::EnumWorkMode kUnknown = Modes::WorkModeUnknown;

} // namespace

void loadForDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    Modes::EnumWorkMode original_mode = kUnknown;
    Modes::getWorkMode(ipi_product, original_mode);
    if (original_mode != Modes::WorkModeDesign)
        i_switcher.setWorkMode(ipi_product, Modes::WorkModeDesign, original_mode, "", 0);
}

void switchToDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    i_switcher.setWorkMode(ipi_product, Modes::WorkModeDesign, kUnknown, "", 0);
}

void switchToVisualisation(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    i_switcher.setWorkMode(ipi_product, Modes::WorkModeVisu, kUnknown, "", 0);
}

void switchToDefault(VornToolsSwitchMgt& i_switcher, const CATUnicodeString& i_file_name, CATIProduct* ipi_product) {
    i_switcher.switchDefault(i_file_name, ipi_product, 0);
}

HRESULT readDefaultRepresentation(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product, CATUnicodeString& o_name) {
    return i_switcher.getDefaultRepName(ipi_product, o_name);
}

} // namespace vorntools
