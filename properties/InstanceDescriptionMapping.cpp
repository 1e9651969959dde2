#include "VornToolsInstanceProperty.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"
#include "properties/InstancePropertySet.h"
#include "session/DescriptionText.h"
#include "session/ProductHelpers.h"

#include "UTILString.h"

#include <algorithm>

using namespace vorntools;

namespace {

bool isFirstMappingLine(const CATUnicodeString& i_line) {
    return beginsWith(i_line, kIdentity) || beginsWith(i_line, kSecondIdentity) || i_line == kBrokenIcon ||
           i_line == kIgnoreNode;
}

/** The integration's lines at the front of a description. Kept because mappings rely on it: another marker goes. */
CATUnicodeString mappingLinesOf(const CATUnicodeString& i_description) {
    CATListValCATUnicodeString lines;
    UTILString::split(i_description, kLineEnd, lines);
    for (int i = 1; i <= (std::min)(lines.Size(), 2); ++i) {
        CATUnicodeString& line = lines[i];
        if (endsWith(line, "\r")) line = line.SubString(0, line.GetLengthInChar() - 1);
    }
    if (lines.Size() == 0 || !isFirstMappingLine(lines[1])) return CATUnicodeString();
    const bool has_second =
        lines.Size() > 1 && beginsWith(lines[1], kIdentity) && beginsWith(lines[2], kSecondIdentity);
    return has_second ? lines[1] + kLineEnd + lines[2] : lines[1];
}

} // namespace

HRESULT VornToolsInstanceProperty::updateDescriptionInstMapping(CATIProduct* ipi_instance,
                                                                const CATUnicodeString& i_mapping) {
    const JournalFrame frame(_CteCLASS_NAME, "updateDescriptionInstMapping");
    if (!ipi_instance) return E_INVALIDARG;
    const auto write = [&]() -> HRESULT {
        if (sharedContainer(frame, ipi_instance) == nullptr) return E_FAIL;
        const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_instance);
        if (!sp_properties) return frame.missing("pi_cati_prd_properties");
        CATUnicodeString description;
        if (FAILED(sp_properties->GetDescriptionInst(description))) return frame.callFailed("GetDescriptionInst");
        CATUnicodeString text = mappingLinesOf(description);
        if (text.IsNull())
            text = i_mapping;
        else if (!i_mapping.IsNull())
            text = withFirstLine(text, i_mapping);
        return FAILED(writeDescription(sp_properties.get(), text)) ? frame.callFailed("SetDescriptionInst") : S_OK;
    };
    return guarded(write, E_FAIL);
}
