#include "cache/ConfigurationText.h"

#include "foundation/InterfaceIds.h"
#include "foundation/Md5.h"

#include "CATICkeRelation.h"
#include "CATLISTV_CATBaseUnknown.h"

#include <limits>
#include <string_view>

namespace vorntools {

namespace {

/** The titles stand above the first configuration. */
constexpr int kTitleRows = 1;

} // namespace

HRESULT readAssociatedParameters(const JournalFrame& i_frame, CATIDesignTable* ipi_design_table,
                                 DesignTableParameters& o_parameters) {
    o_parameters.clear();
    const auto sp_relation = queryInterface<CATICkeRelation>(ipi_design_table);
    if (!sp_relation) return i_frame.missing("pi_relation");
    const CATListValCATBaseUnknown_var* const p_list = sp_relation->OutParameters();
    if (!p_list) return i_frame.platformFailed("OutParameters");
    DesignTableParameters parameters;
    for (int i = 1; i <= p_list->Size(); ++i) {
        auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>((*p_list)[i]));
        if (!sp_parameter) return i_frame.missing("pi_parameter");
        parameters.push_back(std::move(sp_parameter));
    }
    o_parameters.swap(parameters);
    return S_OK;
}

ConfigurationText::ConfigurationText(CATIDesignTable* ipi_design_table, const CATICkeSheet_var& isp_sheet,
                                     const DesignTableParameters& i_parameters)
    : m_sheet(isp_sheet) {
    for (const auto& sp_parameter : i_parameters) {
        const int column = ipi_design_table->ParameterColumn(CATICkeParm_var(sp_parameter.get()));
        if (column > 0) m_columns.push_back(column);
    }
}

CATUnicodeString ConfigurationText::read(int i_configuration) const {
    CATUnicodeString text;
    if (i_configuration > (std::numeric_limits<int>::max)() - kTitleRows) return text;
    for (const int column : m_columns) text.Append(m_sheet->Cell(i_configuration + kTitleRows, column));
    return text;
}

CATUnicodeString checksumOf(const CATUnicodeString& i_configuration_text) {
    const std::string_view bytes = i_configuration_text.ConvertToChar();
    return md5Text(md5Digest(bytes.data(), bytes.size())).data();
}

} // namespace vorntools
