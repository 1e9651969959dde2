#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "session/ProductHelpers.h"

using namespace vorntools;

namespace {

/** Takes the integration's lines off the description of an occurrence below a component, which its instance passes on.
 * @return S_OK for every other product, too; E_FAIL, reported, when its parent is missing */
HRESULT cleanBelowComponent(const JournalFrame& i_frame, CATIProduct* ipi_instance) {
    if (SUCCEEDED(ipi_instance->IsReference())) return S_OK;
    const auto sp_parent = fatherOf(ipi_instance);
    if (!sp_parent) return i_frame.missing("pi_parent_product");
    unsigned char is_component = 0;
    HRESULT code = VornToolsCommon::isComponent(sp_parent.get(), is_component);
    if (SUCCEEDED(code) && is_component && FAILED(sp_parent->IsReference()))
        code = VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(ipi_instance);
    if (FAILED(code)) i_frame.write("Impossible to update instance description for relative occurrence");
    return S_OK;
}

HRESULT setInstanceName(const JournalFrame& i_frame, CATIProduct* ipi_instance, const CATUnicodeString& i_name) {
    i_frame.write("Set InstanceName");
    return FAILED(ipi_instance->SetPrdInstanceName(i_name)) ? i_frame.callFailed("SetPrdInstanceName") : S_OK;
}

HRESULT setDescription(const JournalFrame& i_frame, CATIProduct* ipi_instance, CATIPrdProperties* ipi_properties,
                       const CATUnicodeString& i_description) {
    i_frame.write("Set DescriptionInst");
    const HRESULT code = cleanBelowComponent(i_frame, ipi_instance);
    // What the occurrence keeps of the old lines is no reason to lose the new text.
    return FAILED(writeDescription(ipi_properties, i_description)) ? i_frame.callFailed("SetDescriptionInst") : code;
}

} // namespace

HRESULT VornToolsCommon::setInstanceProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString i_names,
                                               CATListValCATUnicodeString i_values) {
    const JournalFrame frame(_CteCLASS_NAME, "setInstanceProperties");
    if (!ipi_catiproduct) return frame.badInput("ipi_catiproduct");
    if (i_names.Size() != i_values.Size()) return frame.badInput("i_values");
    const auto write = [&]() -> HRESULT {
        const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_catiproduct);
        if (!sp_properties) return frame.missing("pi_cati_prd_properties");
        HRESULT result = S_OK;
        for (int i = 1; i <= i_names.Size(); ++i) {
            HRESULT code = S_OK;
            if (i_names[i] == "InstanceName")
                code = setInstanceName(frame, ipi_catiproduct, i_values[i]);
            else if (i_names[i] == "DescriptionInst")
                code = setDescription(frame, ipi_catiproduct, sp_properties.get(), i_values[i]);
            if (FAILED(code)) result = code;
        }
        return result;
    };
    return guarded(write, E_FAIL);
}
