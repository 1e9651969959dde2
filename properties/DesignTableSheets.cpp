#include "VornToolsCommon.h"

#include "foundation/DesignMode.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/DesignTableSources.h"
#include "properties/ProductsBelow.h"

#include "CATDocument.h"
#include "CATIDesignTable.h"
#include "CATIDocRoots.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATListOfInt.h"
#include "TYPMapCATUnicodeStringPVoid.h"

#include <memory>
#include <vector>

using namespace vorntools;

namespace {

constexpr const char* kFileNameClass = "CATUnicodeString";

/** File names by part number; owns both. */
class FileNames {
public:
    FileNames() = default;
    ~FileNames() {
        for (int i = 0; i < m_map.size(); ++i) delete static_cast<CATUnicodeString*>(m_map.valueAt(i));
    }
    FileNames(const FileNames&) = delete;
    FileNames& operator=(const FileNames&) = delete;

    bool contains(const CATUnicodeString& i_part_number) const { return m_map.contains(i_part_number) != 0; }
    void insert(const CATUnicodeString& i_part_number, const CATUnicodeString& i_file_name) {
        auto sp_file_name = std::make_unique<CATUnicodeString>(i_file_name);
        m_map.insert(i_part_number, sp_file_name.get(), kFileNameClass);
        static_cast<void>(sp_file_name.release()); // the map's from now on
    }
    TYPMapCATUnicodeStringPVoid* get() { return &m_map; }

private:
    TYPMapCATUnicodeStringPVoid m_map;
};

/** A document's main root as a product, which that of a drawing is not. @return E_FAIL, reported, without a root */
HRESULT readRootProduct(const JournalFrame& i_frame, CATDocument* ip_document, InterfacePtr<CATIProduct>& o_root) {
    const auto sp_doc_roots = queryInterface<CATIDocRoots>(ip_document);
    const std::unique_ptr<CATListValCATBaseUnknown_var> roots(sp_doc_roots ? sp_doc_roots->GiveDocRoots() : nullptr);
    if (!roots || roots->Size() == 0) return i_frame.missing("psp_doc_roots");
    CATBaseUnknown* const pi_doc_root = (*roots)[1];
    if (!pi_doc_root) return i_frame.missing("pi_doc_root");
    o_root = queryInterface<CATIProduct>(pi_doc_root);
    return S_OK;
}

/**
 * Names the files of the products below a root by their part numbers. Parts go to design mode for that and stay there
 * as long as the modes are kept.
 */
void collectFileNames(const JournalFrame& i_frame, CATIProduct* ipi_root, const SwitchWay& i_way,
                      FileNames& io_file_names, std::vector<DesignMode>& io_modes) {
    for (const auto& sp_product : productsBelow(ipi_root)) {
        if (!sp_product || io_file_names.contains(sp_product->GetPartNumber())) continue;
        CATDocument* p_document = nullptr;
        CATUnicodeString file_name;
        VornToolsCommon::getDocumentFileName(sp_product.get(), p_document, file_name);
        if (VornToolsCommon::returnDocumentType(file_name) == VornToolsCommon::DocumentTypePart)
            io_modes.emplace_back(sp_product.get(), i_way);
        const CATUnicodeString part_number = sp_product->GetPartNumber();
        if (part_number.IsNull() || file_name.IsNull() || io_file_names.contains(part_number)) continue;
        io_file_names.insert(part_number, file_name);
        i_frame.write(" Insert (%s, %s) in the map", part_number, file_name);
    }
}

/** What the tables of a document are read with: modes that last and, where asked for, the parts' files. */
struct SheetSources {
    std::vector<DesignMode> modes; ///< end last: what is read may leave memory with them
    CATListValCATISpecObject_var design_tables;
    FileNames file_names;
    bool has_file_names = false;
    bool ends_without_tables = true; ///< nothing more is said then
};

HRESULT collectOther(const JournalFrame& i_frame, CATDocument* ip_document, const SwitchWay& i_way,
                     SheetSources& o_sources) {
    o_sources.ends_without_tables = false;
    const HRESULT code = appendTablesOfRootContainer(i_frame, ip_document, o_sources.design_tables);
    if (FAILED(code)) return code;
    InterfacePtr<CATIProduct> sp_root;
    // Without the map the tables can still be read.
    if (FAILED(readRootProduct(i_frame, ip_document, sp_root))) return S_OK;
    o_sources.has_file_names = true;
    if (sp_root) collectFileNames(i_frame, sp_root.get(), i_way, o_sources.file_names, o_sources.modes);
    return S_OK;
}

HRESULT collectSources(const JournalFrame& i_frame, CATDocument* ip_document, const SwitchWay& i_way,
                       SheetSources& o_sources) {
    HRESULT code = S_OK;
    const char* nothing_found = "";
    switch (kindOf(ip_document)) {
    case DocumentKind::Analysis:
        code = VornToolsCommon::getDesignTableInAnalysisDocument(ip_document, &o_sources.design_tables);
        nothing_found = "There is no DesignTables in Analysis Document";
        break;
    case DocumentKind::Process:
        code = VornToolsCommon::getDesignTableInProcessDocument(ip_document, &o_sources.design_tables);
        nothing_found = "There is no DesignTables in Process Document";
        break;
    case DocumentKind::Part:
        o_sources.modes.emplace_back(ip_document, i_way);
        code = VornToolsCommon::getDesignTableInPartDocument(ip_document, i_way.p_switcher, i_way.flag,
                                                             &o_sources.design_tables);
        nothing_found = "There is no DesignTables in Part Document";
        break;
    default: return collectOther(i_frame, ip_document, i_way, o_sources);
    }
    if (o_sources.design_tables.Size() == 0) i_frame.writeInDebug(nothing_found);
    return code;
}

/** The seven lists that parallel entries are appended to. */
struct SheetLists {
    CATListValCATUnicodeString& file_paths;
    CATListValCATUnicodeString& file_names;
    CATRawCollint& sheets;
    CATRawCollint& configurations;
    CATListValCATUnicodeString& configuration_texts;
    CATListValCATUnicodeString& associated_files;
    CATListValCATUnicodeString& names;

    void clear() {
        for (CATListValCATUnicodeString* const p_list :
             {&file_paths, &file_names, &configuration_texts, &associated_files, &names})
            p_list->RemoveAll();
        sheets.RemoveAll();
        configurations.RemoveAll();
    }
};

/** Appends a table's entry, unless it cannot be read. */
void appendTable(const JournalFrame& i_frame, const CATISpecObject_var& isp_design_table,
                 const CATUnicodeString& i_document_name, SheetSources& i_sources, SheetLists& io_lists) {
    if (!queryInterface<CATIDesignTable>(static_cast<CATISpecObject*>(isp_design_table))) {
        i_frame.missing("p_dt");
        return;
    }
    CATUnicodeString path, file_name, configuration_text, associated_files, name;
    int sheet = 0;
    int configuration = 0;
    TYPMapCATUnicodeStringPVoid* const p_map = i_sources.has_file_names ? i_sources.file_names.get() : nullptr;
    if (FAILED(VornToolsCommon::readDesignTableInformation(isp_design_table, i_document_name, p_map, path, file_name,
                                                           sheet, configuration, configuration_text, associated_files,
                                                           name)))
        return;
    io_lists.file_paths.Append(path);
    io_lists.file_names.Append(file_name);
    io_lists.sheets.Append(sheet);
    io_lists.configurations.Append(configuration);
    io_lists.configuration_texts.Append(configuration_text);
    io_lists.associated_files.Append(associated_files);
    io_lists.names.Append(name);
}

HRESULT listTables(const JournalFrame& i_frame, CATDocument* ip_document, const SwitchWay& i_way,
                   SheetLists& io_lists) {
    SheetSources sources;
    const HRESULT code = collectSources(i_frame, ip_document, i_way, sources);
    if (FAILED(code)) return code;
    if (sources.design_tables.Size() == 0 && sources.ends_without_tables) return S_OK;
    i_frame.write(" Nb design table found : %d", sources.design_tables.Size());
    const CATUnicodeString document_name = ip_document->StorageName();
    for (int i = 1; i <= sources.design_tables.Size(); ++i)
        appendTable(i_frame, sources.design_tables[i], document_name, sources, io_lists);
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::getDesignTableSheet(CATDocument* ip_document, VornToolsSwitchMgt* ip_switcher,
                                             unsigned char i_switch_flag, CATListValCATUnicodeString& o_file_paths,
                                             CATListValCATUnicodeString& o_file_names, CATRawCollint& o_sheets,
                                             CATRawCollint& o_configurations,
                                             CATListValCATUnicodeString& o_configuration_texts,
                                             CATListValCATUnicodeString& o_associated_files,
                                             CATListValCATUnicodeString& o_names) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableSheet");
    SheetLists lists{o_file_paths,          o_file_names,       o_sheets, o_configurations,
                     o_configuration_texts, o_associated_files, o_names};
    lists.clear();
    if (!ip_document) return frame.badInput("ip_document");
    const SwitchWay way{ip_switcher, i_switch_flag};
    const HRESULT code = guarded([&] { return listTables(frame, ip_document, way, lists); }, E_FAIL);
    if (FAILED(code)) lists.clear();
    return code;
}
