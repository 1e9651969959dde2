#include "properties/ConfigurationText.h"

#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"

#include "CATICkeRelation.h"

#include <limits>

namespace vorntools {

namespace {

/** The titles stand above the first configuration. */
constexpr int kTitleRows = 1;

} // namespace

ConfigurationText::ConfigurationText(CATIDesignTable* ipi_design_table) {
    if (!ipi_design_table) return;
    m_sheet = ipi_design_table->Sheet();
    const auto sp_relation = queryInterface<CATICkeRelation>(ipi_design_table);
    const CATCkeListOfParm p_parameters = sp_relation ? sp_relation->OutParameters() : nullptr;
    if (!m_sheet || !p_parameters) return;
    m_is_readable = true;
    for (int i = 1; i <= p_parameters->Size(); ++i) {
        const auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>((*p_parameters)[i]));
        m_is_readable = m_is_readable && sp_parameter;
        if (!sp_parameter) continue;
        const int column = ipi_design_table->ParameterColumn(CATICkeParm_var(sp_parameter.get()));
        if (column > 0) m_columns.push_back(column);
    }
}

CATUnicodeString ConfigurationText::read(int i_configuration) const {
    CATUnicodeString text;
    if (i_configuration > std::numeric_limits<int>::max() - kTitleRows) return text;
    for (const int column : m_columns) text.Append(m_sheet->Cell(i_configuration + kTitleRows, column));
    return text;
}

} // namespace vorntools
