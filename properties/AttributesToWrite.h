#ifndef PROPERTIES_ATTRIBUTES_TO_WRITE_H
#define PROPERTIES_ATTRIBUTES_TO_WRITE_H

#include "foundation/JournalFrame.h"
#include "properties/Parameters.h"

#include "VornToolsCADDOCProperties.h"

namespace vorntools {

/** Names, values and type letters of attributes or properties; the lists belong to the caller. */
struct AttributesToWrite {
    const CATListValCATUnicodeString& names;
    const CATListValCATUnicodeString& values;
    const CATListValCATUnicodeString& types;

    /** Whether the lists are parallel; the first one that is not is reported. */
    bool areParallel(const JournalFrame& i_frame) const {
        const char* const p_shorter = values.Size() != names.Size()  ? "i_values"
                                      : types.Size() != names.Size() ? "i_types"
                                                                     : nullptr;
        if (p_shorter) i_frame.badInput(p_shorter);
        return !p_shorter;
    }
    HRESULT update(CATICkeParm* ipi_parameter, int i_entry) const {
        return VornToolsCADDOCProperties::updateParameter(ipi_parameter, names[i_entry], values[i_entry],
                                                          types[i_entry]);
    }
    HRESULT create(CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_publisher, int i_entry, bool i_read_only,
                   bool i_rename, InterfacePtr<CATICkeParm>& o_made) const {
        return makeParameter(ipi_factory, ipi_publisher,
                             {names[i_entry], values[i_entry], types[i_entry], i_read_only, false, i_rename}, o_made);
    }
};

} // namespace vorntools

#endif
