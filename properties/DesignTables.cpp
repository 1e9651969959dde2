#include "VornToolsCommon.h"

#include "cache/ConfigurationText.h"
#include "cache/DesignTableSheet.h"
#include "foundation/AutomationText.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATIADesignTable.h"
#include "CATIAlias.h"
#include "CATIDesignTable.h"
#include "CATISpecObject.h"
#include "TYPMapCATUnicodeStringPVoid.h"
#include "UTILFile.h"

#include <algorithm>
#include <iterator>

using namespace vorntools;

namespace {

constexpr const char* kFileExtensions[] = {"txt", "xls", "xlsx", "xlsm"};
constexpr const char* kFileNameClass = "CATUnicodeString";
constexpr const char* kBeforeFile = "!!!";
constexpr const char* kPathSeparator = "\\";
constexpr int kTextSheet = 1;

/** Calls `call(CATIADesignTable&, CATBSTR& out)` on a table's automation object. */
template <class Call>
HRESULT readAutomationText(const JournalFrame& i_frame, CATIDesignTable* ipi_design_table, const char* i_name,
                           Call&& i_call, CATUnicodeString& o_text) {
    o_text = "";
    if (!ipi_design_table) return i_frame.badInput("ipi_design_table");
    const auto read = [&] {
        const auto sp_automation = queryInterface<CATIADesignTable>(ipi_design_table);
        if (!sp_automation) return i_frame.missing("pi_automation_design_table");
        AutomationText text;
        if (FAILED(text.receive([&](CATBSTR& o_received) { return i_call(*sp_automation.get(), o_received); })))
            return i_frame.platformFailed(i_name);
        o_text = text.text();
        return S_OK;
    };
    return guarded(read, E_FAIL);
}

/** File of a table on disk. E_FAIL when the table does not tell it or it is not there. */
HRESULT readFilePath(const JournalFrame& i_frame, CATIDesignTable* ipi_design_table, CATUnicodeString& o_path) {
    const HRESULT code = VornToolsCommon::getDesignTableFullFilename(ipi_design_table, o_path);
    if (FAILED(code)) return code;
    if (environmentSays(&ENVManager::getCATIAIsUsingDLName)) {
        if (FAILED(makePhysical(o_path))) i_frame.write("ERROR : getPhysicalPathFromDLName is failed.");
        i_frame.write("DLName, new filepath = %s", o_path);
    } else {
        i_frame.write("Not a DLName, filepath = %s", o_path);
    }
    return UTILFile::existingFile(o_path) ? S_OK : E_FAIL;
}

/** The file name without directory and extension. */
HRESULT readFileName(const JournalFrame& i_frame, const CATUnicodeString& i_path, CATUnicodeString& o_name) {
    CATUnicodeString directory;
    if (FAILED(splitFullName(i_path, directory, o_name))) return i_frame.callFailed("UTILFile::splitPathAndFileName");
    const int extension = UTILFile::getExtension(o_name).GetLengthInChar();
    if (extension > 0) o_name = o_name.SubString(0, o_name.GetLengthInChar() - extension - 1);
    return S_OK;
}

/** Adds the file of the part that a parameter path begins with, once. */
void addAssociatedFile(const JournalFrame& i_frame, const CATUnicodeString& i_parameter_path,
                       const TYPMapCATUnicodeStringPVoid& i_part_number_to_file_name, CATUnicodeString& io_files) {
    i_frame.write(" Associated item retrieved in DesignTable : %s", i_parameter_path);
    const int separator = i_parameter_path.SearchSubString(kPathSeparator);
    const CATUnicodeString part_number = separator < 0 ? i_parameter_path : i_parameter_path.SubString(0, separator);
    const auto* const p_file_name =
        static_cast<const CATUnicodeString*>(i_part_number_to_file_name.find(part_number, kFileNameClass));
    // The journal is Latin-1, whatever the encoding of the session.
    if (!p_file_name) {
        i_frame.write(" PN de Part associ\351 (%s) NON trouv\351 dans notre map de fileName", part_number);
        return;
    }
    i_frame.write(" PN de Part associ\351 (%s) - FileName : %s", part_number, *p_file_name);
    CATUnicodeString entry(kBeforeFile);
    entry.Append(*p_file_name);
    if (io_files.SearchSubString(entry) < 0) io_files.Append(entry);
}

HRESULT readAssociatedFiles(const JournalFrame& i_frame, CATIDesignTable* ipi_design_table,
                            const TYPMapCATUnicodeStringPVoid& i_part_number_to_file_name, CATUnicodeString& o_files) {
    DesignTableParameters parameters;
    if (FAILED(readAssociatedParameters(i_frame, ipi_design_table, parameters))) return E_FAIL;
    for (const auto& sp_parameter : parameters)
        addAssociatedFile(i_frame, sp_parameter->Pathname(), i_part_number_to_file_name, o_files);
    return S_OK;
}

/** Number of the sheet that is shown, from 1. */
HRESULT readSheetNumber(const JournalFrame& i_frame, const CATICkeSheet_var& isp_sheet, int& o_sheet) {
    InterfacePtr<CATICkeOleSheet> sp_ole_sheet;
    if (FAILED(findOleSheet(isp_sheet, sp_ole_sheet))) return i_frame.missing("pi_ole_sheet");
    o_sheet = sp_ole_sheet ? sp_ole_sheet->GetSheetIndex() : kTextSheet;
    return o_sheet < 1 ? i_frame.platformFailed("GetSheetIndex") : S_OK;
}

/** What getConfigurationValues answers. @return E_FAIL, reported, when it cannot be read: a configuration may also be
 * without text */
HRESULT readConfigurationValues(CATIDesignTable* ipi_design_table, int i_configuration, CATUnicodeString& o_values) {
    const JournalFrame frame(VornToolsCommon::_CteCLASS_NAME, "getConfigurationValues");
    o_values = "";
    if (!ipi_design_table) return frame.badInput("ipi_design_table");
    const CATICkeSheet_var sp_sheet = ipi_design_table->Sheet();
    if (!sp_sheet) return frame.missing("sp_sheet");
    DesignTableParameters parameters;
    if (FAILED(readAssociatedParameters(frame, ipi_design_table, parameters))) return E_FAIL;
    o_values = ConfigurationText(ipi_design_table, sp_sheet, parameters).read(i_configuration);
    return S_OK;
}

/** What readDesignTableInformation tells. */
struct DesignTableInformation {
    CATUnicodeString file_path;
    CATUnicodeString file_name;
    int sheet = 0;
    int configuration = 0;
    CATUnicodeString checksum;
    CATUnicodeString associated_files;
    CATUnicodeString name;

    /** @param ip_map file names by part number; null for none. @param i_update_sheet has a sheet read its file again */
    HRESULT read(const JournalFrame& i_frame, CATIDesignTable* ipi_design_table,
                 const TYPMapCATUnicodeStringPVoid* ip_map, HRESULT (*i_update_sheet)(CATICkeSheet_var)) {
        if (FAILED(readFilePath(i_frame, ipi_design_table, file_path)) ||
            FAILED(readFileName(i_frame, file_path, file_name)) ||
            (ip_map && FAILED(readAssociatedFiles(i_frame, ipi_design_table, *ip_map, associated_files))))
            return E_FAIL;
        const CATICkeSheet_var sp_sheet = ipi_design_table->Sheet();
        if (!sp_sheet) return i_frame.missing("sp_sheet");
        if (FAILED(readSheetNumber(i_frame, sp_sheet, sheet))) return E_FAIL;
        configuration = ipi_design_table->ConfigurationRow();
        // A file that cannot be read again leaves the values that the document was made with.
        if (isFileModified(sp_sheet) && FAILED(i_update_sheet(sp_sheet)))
            i_frame.callFailed("updateDesignTableCurrentSheet");
        CATUnicodeString values;
        if (FAILED(readConfigurationValues(ipi_design_table, configuration, values))) return E_FAIL;
        i_frame.write(" String used to find CkSum : %s", values);
        checksum = checksumOf(values);
        if (FAILED(VornToolsCommon::getDesignTableName(ipi_design_table, name)))
            i_frame.write("Cannot get design table name");
        return S_OK;
    }
};

} // namespace

unsigned char VornToolsCommon::isACatdesigntable(CATUnicodeString i_file_name, CATUnicodeString i_extension) {
    const JournalFrame frame(_CteCLASS_NAME, "isACatdesigntable");
    const auto test = [&] {
        if (i_extension.IsNull()) i_extension = UTILFile::getExtension(i_file_name);
        const auto is_extension = [&](const char* i_candidate) { return i_extension == i_candidate; };
        return std::any_of(std::begin(kFileExtensions), std::end(kFileExtensions), is_extension);
    };
    return guarded(test, false) ? 1 : 0;
}

HRESULT VornToolsCommon::getDesignTableFullFilename(CATIDesignTable* ipi_design_table,
                                                    CATUnicodeString& o_full_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableFullFilename");
    const auto read = [](CATIADesignTable& i_table, CATBSTR& o_text) { return i_table.get_FilePath(o_text); };
    return readAutomationText(frame, ipi_design_table, "get_FilePath", read, o_full_file_name);
}

HRESULT VornToolsCommon::getDesignTableNameProperty(CATIDesignTable* ipi_design_table, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableNameProperty");
    const auto read = [](CATIADesignTable& i_table, CATBSTR& o_text) { return i_table.get_Name(o_text); };
    return readAutomationText(frame, ipi_design_table, "get_Name", read, o_name);
}

HRESULT VornToolsCommon::getDesignTableName(CATIDesignTable* ipi_design_table, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableName");
    o_name = "";
    if (!ipi_design_table) return frame.badInput("ipi_design_table");
    const auto read = [&]() -> HRESULT {
        const auto sp_alias = queryInterface<CATIAlias>(ipi_design_table);
        if (!sp_alias) return frame.missing("pi_alias");
        o_name = sp_alias->GetAlias();
        return o_name.IsNull() ? frame.platformFailed("GetAlias") : S_OK;
    };
    return guarded(read, E_FAIL);
}

HRESULT VornToolsCommon::readDesignTableInformation(CATISpecObject_var isp_design_table,
                                                    CATUnicodeString i_document_name,
                                                    TYPMapCATUnicodeStringPVoid* ip_part_number_to_file_name,
                                                    CATUnicodeString& o_file_path, CATUnicodeString& o_file_name,
                                                    int& o_sheet, int& o_configuration,
                                                    CATUnicodeString& o_configuration_text,
                                                    CATUnicodeString& o_associated_files, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "readDesignTableInformation");
    const auto write_outputs = [&](const DesignTableInformation& i_information) {
        o_file_path = i_information.file_path;
        o_file_name = i_information.file_name;
        o_sheet = i_information.sheet;
        o_configuration = i_information.configuration;
        o_configuration_text = i_information.checksum;
        o_associated_files = i_information.associated_files;
        o_name = i_information.name;
    };
    const DesignTableInformation nothing;
    write_outputs(nothing);
    const auto read = [&]() -> HRESULT {
        const auto sp_design_table = queryInterface<CATIDesignTable>(static_cast<CATISpecObject*>(isp_design_table));
        if (!sp_design_table) return frame.badInput("isp_design_table");
        frame.writeInDebug("Design table of %s", i_document_name);
        DesignTableInformation information;
        const HRESULT code =
            information.read(frame, sp_design_table.get(), ip_part_number_to_file_name, updateDesignTableCurrentSheet);
        if (SUCCEEDED(code)) write_outputs(information);
        return code;
    };
    const HRESULT code = guarded(read, E_FAIL);
    if (FAILED(code)) write_outputs(nothing);
    return code;
}

CATUnicodeString VornToolsCommon::getConfigurationValues(CATIDesignTable* ipi_design_table, int i_configuration) {
    CATUnicodeString values;
    readConfigurationValues(ipi_design_table, i_configuration, values);
    return values;
}

HRESULT VornToolsCommon::updateDesignTableCurrentSheet(CATICkeSheet_var isp_sheet) {
    const JournalFrame frame(_CteCLASS_NAME, "updateDesignTableCurrentSheet");
    if (!isp_sheet) return frame.badInput("isp_sheet");
    return isp_sheet->UpdateLocalCopy() ? S_OK : E_FAIL;
}
