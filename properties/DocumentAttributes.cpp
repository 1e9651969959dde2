#include "properties/DocumentAttributes.h"

#include "properties/SpecAttributes.h"

#include "CATICkeType.h"
#include "CATISpecAttrKey.h"

namespace vorntools {

TextMap<int> positionsOf(const CATListValCATUnicodeString& i_names) {
    TextMap<int> positions;
    for (int i = 1; i <= i_names.Size(); ++i) positions.emplace(i_names[i], i);
    return positions;
}

HRESULT createAttribute(const JournalFrame& i_frame, const AttributesToWrite& i_attributes, int i_entry,
                        CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_set, bool i_read_only, bool i_rename,
                        InterfacePtr<CATICkeParm>& o_made) {
    o_made.reset();
    if (i_attributes.names[i_entry].IsNull()) return i_frame.badInput("i_names");
    return i_attributes.create(ipi_factory, ipi_set, i_entry, i_read_only, i_rename, o_made);
}

HRESULT addParameter(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                     JoinValues i_join, AttributePairs& io_pairs) {
    if (io_pairs.has(i_name)) return S_OK;
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
    if (!sp_access) return i_frame.missing("pi_param");
    CATUnicodeString value = ipi_parameter->Show();
    if (const auto sp_key = keyOf(sp_access.get(), kListOfValues)) {
        const CATUnicodeString shown = value;
        if (FAILED(i_join(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(), shown, value)))
            i_frame.write("Multiple value but empty list\n");
    }
    io_pairs.addWithAlias(i_name, value);
    return S_OK;
}

} // namespace vorntools
