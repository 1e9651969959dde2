#ifndef CACHE_CONFIGURATION_TEXT_H
#define CACHE_CONFIGURATION_TEXT_H

#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATICkeParm.h"
#include "CATICkeSheet.h"
#include "CATIDesignTable.h"

#include <vector>

namespace vorntools {

using DesignTableParameters = std::vector<InterfacePtr<CATICkeParm>>;

/** The parameters that a table sets, in the order of their association. @return E_FAIL, reported and without
 * parameters, unless all can be had: without one of them the values would be those of another configuration */
HRESULT readAssociatedParameters(const JournalFrame& i_frame, CATIDesignTable* ipi_design_table,
                                 DesignTableParameters& o_parameters);

/**
 * Reads configurations of a design table as texts. The columns of the parameters are looked up once, which is most of
 * the work: a reader serves any number of configurations, and is made anew when the sheet was read again.
 */
class ConfigurationText {
public:
    /** Reads nothing. */
    ConfigurationText() = default;
    /** @param isp_sheet of the table. @param i_parameters those that the table sets */
    ConfigurationText(CATIDesignTable* ipi_design_table, const CATICkeSheet_var& isp_sheet,
                      const DesignTableParameters& i_parameters);

    /** The cells of a configuration, from 1, in the order of the table's parameters; empty outside the sheet. */
    CATUnicodeString read(int i_configuration) const;

private:
    CATICkeSheet_var m_sheet;
    std::vector<int> m_columns;
};

/** The checksum that tells configurations apart: MD5 of the text's 8-bit bytes, up to the first NUL. */
CATUnicodeString checksumOf(const CATUnicodeString& i_configuration_text);

} // namespace vorntools

#endif
