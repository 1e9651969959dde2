#ifndef SESSION_SWITCHED_DOCUMENTS_H
#define SESSION_SWITCHED_DOCUMENTS_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"

class CATIProduct;
class VornToolsSwitchMgt;

namespace vorntools {

// What searches ask of the switch manager. It journals what fails; a search then goes on with what is loaded.

/** Loads a product that is not in design mode yet. */
void loadForDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product);
/** Puts a product into design mode whatever its mode is. */
void switchToDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product);
/** Puts a product back into visualisation mode. */
void switchToVisualisation(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product);
/** Loads the part of a file name that is only seen. */
void switchToDefault(VornToolsSwitchMgt& i_switcher, const CATUnicodeString& i_file_name, CATIProduct* ipi_product);
/** Name of the representation that a product shows by default; loads a product that is only seen. */
HRESULT readDefaultRepresentation(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product, CATUnicodeString& o_name);

} // namespace vorntools

#endif
