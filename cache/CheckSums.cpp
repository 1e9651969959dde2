#include "VornToolsCommon.h"

#include "cache/ConfigurationText.h"
#include "cache/DesignTableSheet.h"
#include "cache/FileBackup.h"
#include "foundation/DesignMode.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATIDesignTable.h"
#include "UTILDLName.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

using namespace vorntools;

namespace {

/** Marks a checksum that is to be computed again. */
constexpr const char* kToBeComputed = "ERROR";

/** The decimal number at a text's beginning; 0 for none. */
int numberOf(const CATUnicodeString& i_text) {
    const long number = std::strtol(i_text.ConvertToChar(), nullptr, 10);
    constexpr long least = (std::numeric_limits<int>::min)();
    constexpr long most = (std::numeric_limits<int>::max)();
    return static_cast<int>((std::min)((std::max)(number, least), most));
}

CATUnicodeString tableFileOnDisk(const JournalFrame& i_frame, CATUnicodeString i_name) {
    if (environmentSays(&ENVManager::getCATIAIsUsingDLName) && FAILED(makePhysical(i_name)))
        i_frame.callFailed("UTILDLName::getPhysicalPathFromDLName");
    return i_name;
}

/** Has a sheet read its file again. */
using UpdateSheet = HRESULT (*)(CATICkeSheet_var);

/** One call of calculateCheckSums on the design table that it found. */
class CheckSums {
public:
    CheckSums(const JournalFrame& i_frame, UpdateSheet i_update, CATIDesignTable* ipi_design_table,
              CATListValCATUnicodeString& io_sheets, CATListValCATUnicodeString& io_configurations,
              CATListValCATUnicodeString& io_checksums)
        : m_frame(i_frame), m_update_sheet(i_update), m_design_table(ipi_design_table), m_sheets(io_sheets),
          m_configurations(io_configurations), m_checksums(io_checksums), m_is_update(io_checksums.Size() > 0) {}

    /** Computes what is to be computed. Sheet, configuration and file are afterwards what they were, even when the work
     * did not come to its end. */
    void calculate() {
        CATUnicodeString file;
        if (FAILED(VornToolsCommon::getDesignTableFullFilename(m_design_table, file))) return;
        FileBackup backup(m_frame, tableFileOnDisk(m_frame, file));
        backup.make();
        const int configuration = m_design_table->ConfigurationRow();
        if (!guarded([&] { calculateOnSheets(); })) m_frame.write("%s : the work was broken off", m_frame.name());
        guarded([&] { giveSheetBack(); });
        guarded([&] { giveConfigurationBack(configuration); });
        backup.restore();
        letGo();
    }

private:
    /** The table's part may leave design mode, and memory with it, before this object ends. */
    void letGo() {
        m_text = ConfigurationText();
        m_ole_sheet.reset();
        m_sheet = CATICkeSheet_var();
    }

    void calculateOnSheets() {
        if (!findSheet()) {
            m_frame.write("%sERROR piSheet", m_frame.name());
            return;
        }
        refreshSheet();
        calculateEntries();
    }

    /** False when the sheet, or what chooses it among those of a spreadsheet, cannot be obtained. */
    bool findSheet() {
        m_sheet = m_design_table->Sheet();
        if (!m_sheet || FAILED(findOleSheet(m_sheet, m_ole_sheet))) return false;
        if (!m_ole_sheet) return true;
        m_first = m_ole_sheet->GetSheetIndex();
        m_selected = m_first;
        return m_first > 0;
    }

    void refreshSheet() {
        if (isFileModified(m_sheet) && FAILED(m_update_sheet(m_sheet)))
            m_frame.callFailed("updateDesignTableCurrentSheet");
        readColumns();
    }

    void readColumns() {
        DesignTableParameters parameters;
        m_is_readable = SUCCEEDED(readAssociatedParameters(m_frame, m_design_table, parameters));
        m_text = ConfigurationText(m_design_table, m_sheet, parameters);
    }

    /** Dropped entries give their place to the next one. Lists that are not as long as the others end the work. */
    void calculateEntries() {
        for (int i = 1; i <= m_sheets.Size() && i <= m_configurations.Size();) {
            if (m_is_update && i > m_checksums.Size()) return;
            if (calculateEntry(i)) ++i;
        }
    }

    /** False when the entry was dropped. */
    bool calculateEntry(int i_index) {
        const int sheet = numberOf(m_sheets[i_index]);
        const int configuration = numberOf(m_configurations[i_index]);
        if (m_is_update && m_checksums[i_index] != kToBeComputed) {
            m_frame.write("%s CkSum of config %d : No need to update", m_frame.name(), configuration);
            return true;
        }
        if (m_ole_sheet && sheet != m_selected && !select(sheet)) {
            const bool is_kept = setCheckSum(i_index, CATUnicodeString());
            m_frame.write("%s sheet n\260%d n'existe pas", m_frame.name(), sheet);
            return is_kept;
        }
        if (!m_ole_sheet && sheet != 1) {
            m_frame.write("%s Sheet n\260%d n'existe pas", m_frame.name(), sheet);
            return true;
        }
        m_frame.write("%s Sheet n\260%d existe", m_frame.name(), sheet);
        const CATUnicodeString text = m_text.read(configuration);
        m_frame.write("%s String used to find CkSum : %s", m_frame.name(), text);
        // Without all its parameters a configuration has no checksum: none is better than that of something else.
        const CATUnicodeString checksum = m_is_readable ? checksumOf(text) : CATUnicodeString();
        const bool is_kept = setCheckSum(i_index, checksum);
        m_frame.write("%s checkSum calcul\351 : %s", m_frame.name(), checksum);
        return is_kept;
    }

    /** An entry without a checksum is dropped from lists that are updated. @return false when it was */
    bool setCheckSum(int i_index, const CATUnicodeString& i_checksum) {
        if (!m_is_update) {
            m_checksums.Append(i_checksum);
            return true;
        }
        if (!i_checksum.IsNull()) {
            m_checksums[i_index] = i_checksum;
            return true;
        }
        for (CATListValCATUnicodeString* const p_list : {&m_sheets, &m_configurations, &m_checksums})
            p_list->RemovePosition(i_index);
        return false;
    }

    /** Until a sheet's cells are there none is selected: a sheet that failed is tried again. */
    bool select(int i_sheet) {
        if (i_sheet < 1) return false;
        m_selected.reset();
        m_ole_sheet->SetSheetIndex(i_sheet);
        if (m_ole_sheet->GetSheetIndex() != i_sheet || FAILED(m_update_sheet(m_sheet))) return false;
        m_selected = i_sheet;
        readColumns();
        return true;
    }

    /** Tried twice: a file that is busy for a moment must not leave the document with another sheet. */
    void giveSheetBack() {
        if (!m_ole_sheet || m_selected == m_first || select(m_first) || select(m_first)) return;
        m_frame.write("%s : sheet %d cannot be selected again", m_frame.name(), m_first);
    }

    void giveConfigurationBack(int i_configuration) const {
        if (m_design_table->ConfigurationRow() == i_configuration) return;
        if (m_design_table->SetCurrentConfiguration(i_configuration) != CATIDesignTable::NoError)
            m_frame.write("%s : configuration %d cannot be set again", m_frame.name(), i_configuration);
    }

    const JournalFrame& m_frame;
    const UpdateSheet m_update_sheet;
    CATIDesignTable* const m_design_table;
    CATListValCATUnicodeString& m_sheets;
    CATListValCATUnicodeString& m_configurations;
    CATListValCATUnicodeString& m_checksums;
    const bool m_is_update;
    CATICkeSheet_var m_sheet;
    InterfacePtr<CATICkeOleSheet> m_ole_sheet; ///< empty for a text file, which has sheet 1 only
    int m_first = 0;                           ///< selected when the call began
    std::optional<int> m_selected;             ///< the one whose cells are read; none when it failed
    ConfigurationText m_text;
    bool m_is_readable = false; ///< whether the table told all its parameters
};

} // namespace

HRESULT VornToolsCommon::calculateCheckSums(CATDocument* ip_document, CATUnicodeString i_design_table_file,
                                            VornToolsSwitchMgt* ip_switcher, unsigned char i_switch_flag,
                                            CATListValCATUnicodeString*& iop_sheets,
                                            CATListValCATUnicodeString*& iop_configurations,
                                            CATListValCATUnicodeString*& iop_checksums, unsigned char& o_found) {
    const JournalFrame frame(_CteCLASS_NAME, "CalculateCheckSums");
    o_found = 0;
    if (!iop_sheets) frame.badInput("iop_sheets");
    if (!iop_configurations) frame.badInput("iop_configurations");
    if (!iop_checksums) frame.badInput("iop_checksums");
    if (!iop_sheets || !iop_configurations || !iop_checksums) return S_OK;
    if (iop_checksums->Size() > 0) frame.write("%s Update...", frame.name());
    const auto calculate = [&] {
        const DesignMode design_mode(ip_document, SwitchWay{ip_switcher, i_switch_flag});
        CATIDesignTable* p_found = nullptr;
        o_found = getDesignTable(ip_document, i_design_table_file, ip_switcher, i_switch_flag, p_found);
        const auto sp_design_table = InterfacePtr<CATIDesignTable>::adopt(p_found);
        if (o_found)
            CheckSums(frame, updateDesignTableCurrentSheet, sp_design_table.get(), *iop_sheets, *iop_configurations,
                      *iop_checksums)
                .calculate();
    };
    if (!guarded(calculate)) frame.write("%s : the work was broken off", frame.name());
    return S_OK;
}
