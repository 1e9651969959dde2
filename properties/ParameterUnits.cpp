// Numbers of dimensions in the unit that users see and in the one that they are kept in.

#include "properties/ParameterUnits.h"

#include "VornToolsCADDOCProperties.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterTexts.h"

#include "CATICkeMagnitude.h"
#include "CATICkeUnit.h"

using namespace vorntools;

namespace {

/** The one place that says which unit numbers are kept in. The platform's own storage unit differs (a length is kept in
 * millimetres); kept because the lists of values in existing documents are in MKS units. */
CATICkeUnit_var storageUnitOf(CATICkeMagnitude* ipi_magnitude) { return ipi_magnitude->MKSUnit(); }

/** A number of one unit as text in another; empty when a unit is missing. */
CATUnicodeString converted(double i_value, const CATICkeUnit_var& i_from, const CATICkeUnit_var& i_to) {
    if (i_from == nullptr || i_to == nullptr) return CATUnicodeString();
    return exactText(i_to, i_from->Convert(i_value));
}

/** A number when there is no unit to show it in. */
CATUnicodeString inMksUnit(const JournalFrame& i_frame, double i_value) {
    CATUnicodeString text;
    text.BuildFromNum(i_value, "%g");
    i_frame.write("    value applied : %s (MKS unit)", text);
    return text;
}

} // namespace

CATUnicodeString vorntools::exactText(const CATICkeUnit_var& i_unit, double i_mks) {
    CATUnicodeString shown = i_unit->Show(i_mks);
    double number = 0.0;
    if (readReal(shown, number) && areEqual(i_unit->Convert(number), i_mks)) return shown;
    const double exact = i_unit->Value(i_mks);
    if (!areEqual(i_unit->Convert(exact), i_mks)) return shown;
    CATUnicodeString text;
    text.BuildFromNum(exact, "%.15g");
    return text + i_unit->Symbol();
}

HRESULT VornToolsCADDOCProperties::getParamValueInCurrentUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                                              CATUnicodeString& o_text) {
    JournalFrame frame(_CteCLASS_NAME, "getParamValueInCurrentUnit");
    o_text = "";
    if (!ipi_magnitude) {
        frame.missing("pi_magnitude");
        o_text = inMksUnit(frame, i_value);
    } else {
        o_text = converted(i_value, storageUnitOf(ipi_magnitude), ipi_magnitude->CurrentUnit());
    }
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::getParamValueInStorageUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                                              CATUnicodeString& o_text) {
    JournalFrame frame(_CteCLASS_NAME, "getParamValueInStorageUnit");
    o_text = "";
    if (!ipi_magnitude) {
        frame.missing("ipi_magnitude");
        o_text = inMksUnit(frame, i_value);
        return frame.endWith(S_OK);
    }
    o_text = converted(i_value, ipi_magnitude->CurrentUnit(), storageUnitOf(ipi_magnitude));
    frame.write("    value applied : %s", o_text);
    return frame.endWith(S_OK);
}
