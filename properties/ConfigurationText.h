#ifndef PROPERTIES_CONFIGURATION_TEXT_H
#define PROPERTIES_CONFIGURATION_TEXT_H

#include "CATIDesignTable.h"

#include <vector>

namespace vorntools {

/**
 * Reads configurations of a design table as texts. The columns of the parameters are looked up once, which is most of
 * the work: a reader serves any number of configurations, and is made anew when the sheet was read again.
 */
class ConfigurationText {
public:
    /** Reads nothing. */
    ConfigurationText() = default;
    /** @param ipi_design_table null reads nothing */
    explicit ConfigurationText(CATIDesignTable* ipi_design_table);

    /** Whether there is a sheet, and the table told all its parameters. */
    bool isReadable() const { return m_is_readable; }
    /** The cells of a configuration, from 1, in the order of the table's parameters; empty outside the sheet. */
    CATUnicodeString read(int i_configuration) const;

private:
    CATICkeSheet_var m_sheet;
    std::vector<int> m_columns;
    bool m_is_readable = false;
};

} // namespace vorntools

#endif
