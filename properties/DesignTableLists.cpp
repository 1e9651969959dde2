#include "VornToolsCommon.h"

#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/DesignMode.h"
#include "properties/DesignTableHelpers.h"

#include "CATCSO.h"
#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATIDesignTable.h"
#include "CATIDocRoots.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATListOfInt.h"
#include "CATListPtrCATIProduct.h"
#include "CATPathElement.h"
#include "TYPMapCATUnicodeStringPVoid.h"

#include <cstring>
#include <memory>
#include <unordered_set>
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
        m_map.insert(i_part_number, new CATUnicodeString(i_file_name), kFileNameClass);
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
    CATListValCATISpecObject_var design_tables;
    FileNames file_names;
    bool has_file_names = false;
    bool ends_without_tables = true; ///< nothing more is said then
    std::vector<DesignMode> modes;
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

/** Keeps a part in design mode for as long as its tables are read. */
void keepInDesignMode(CATDocument* ip_document, const SwitchWay& i_way, std::vector<DesignMode>& io_modes) {
    InterfacePtr<CATIProduct> sp_root;
    sp_root.receive([&](CATIProduct*& o_root) { return VornToolsCommon::getActiveCATIProduct(ip_document, o_root); });
    if (sp_root) io_modes.emplace_back(sp_root.get(), i_way);
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
        keepInDesignMode(ip_document, i_way, o_sources.modes);
        code = VornToolsCommon::getDesignTableInPartDocument(ip_document, i_way.p_switcher, i_way.flag,
                                                             &o_sources.design_tables);
        nothing_found = "There is no DesignTables in Part Document";
        break;
    default: return collectOther(i_frame, ip_document, i_way, o_sources);
    }
    if (o_sources.design_tables.Size() == 0) i_frame.writeInDebug(nothing_found);
    return code;
}

/** Texts, each once, in the order in which they came. */
class DistinctTexts {
public:
    explicit DistinctTexts(CATListValCATUnicodeString& io_list) : m_list(io_list) {}

    /** False for an empty text and for one that is there already. */
    bool append(const CATUnicodeString& i_text) {
        if (i_text.IsNull() || !m_seen.insert(i_text).second) return false;
        m_list.Append(i_text);
        return true;
    }

private:
    CATListValCATUnicodeString& m_list;
    std::unordered_set<CATUnicodeString> m_seen;
};

/** Adds the file of a design table; false when the object is none. */
bool appendTableFile(CATBaseUnknown* ip_object, DistinctTexts& io_files) {
    const auto sp_design_table = queryInterface<CATIDesignTable>(ip_object);
    if (!sp_design_table) return false;
    CATUnicodeString full_file_name;
    VornToolsCommon::getDesignTableFullFilename(sp_design_table.get(), full_file_name);
    io_files.append(full_file_name);
    return true;
}

/** What an assembly is listed into. */
struct AssemblyLists {
    AssemblyLists(CATListValCATUnicodeString& o_file_names, CATListPtrCATIProduct& o_products,
                  CATListValCATUnicodeString& o_design_table_files)
        : file_names(o_file_names), products(o_products), design_table_files(o_design_table_files) {}

    DistinctTexts file_names;
    CATListPtrCATIProduct& products;
    DistinctTexts design_table_files;
    std::unordered_set<const CATDocument*> documents_with_tables; ///< those whose tables are listed
};

void appendProduct(const CATUnicodeString& i_name, const InterfacePtr<CATIProduct>& i_product,
                   AssemblyLists& io_lists) {
    if (io_lists.file_names.append(i_name)) io_lists.products.Append(InterfacePtr<CATIProduct>(i_product).detach());
}

HRESULT appendTableFiles(CATDocument* ip_document, const SwitchWay& i_way, AssemblyLists& io_lists) {
    if (!ip_document || !io_lists.documents_with_tables.insert(ip_document).second) return S_OK;
    CATListValCATISpecObject_var design_tables;
    const HRESULT code = VornToolsCommon::getDesignTableList(ip_document, i_way.p_switcher, i_way.flag, &design_tables);
    for (int i = 1; i <= design_tables.Size(); ++i)
        appendTableFile(static_cast<CATISpecObject*>(design_tables[i]), io_lists.design_table_files);
    return code;
}

bool isProductDocument(const CATDocument* ip_document) {
    return ip_document && std::strcmp(ip_document->IsA(), "CATProduct") == 0;
}

/** Adds a product below the root; @return the document that it shows, null for none */
CATDocument* appendChild(const InterfacePtr<CATIProduct>& i_product, AssemblyLists& io_lists) {
    CATDocument* p_document = nullptr;
    CATUnicodeString name;
    VornToolsCommon::getDocumentFileName(i_product.get(), p_document, name);
    unsigned char is_component = 0;
    if (isProductDocument(p_document)) VornToolsCommon::isComponent(i_product.get(), is_component);
    if (is_component) VornToolsCommon::getProductPath(i_product.get(), name);
    appendProduct(name, i_product, io_lists);
    return p_document;
}

/** What goes wrong with a single table or product is reported; the others are listed all the same. */
HRESULT listAssembly(const JournalFrame& i_frame, CATDocument* ip_document, const SwitchWay& i_way,
                     bool i_with_design_tables, AssemblyLists& io_lists) {
    InterfacePtr<CATIProduct> sp_root;
    sp_root.receive([&](CATIProduct*& o_root) { return VornToolsCommon::getActiveCATIProduct(ip_document, o_root); });
    if (!sp_root) return i_frame.callFailed("getActiveCATIProduct");
    appendProduct(ip_document->StorageName(), sp_root, io_lists);
    if (i_with_design_tables) i_frame.write("DesignTables are managd.");
    const DesignMode design_mode(i_with_design_tables ? sp_root.get() : nullptr, i_way);
    if (i_with_design_tables) appendTableFiles(ip_document, i_way, io_lists);

    const auto children = productsBelow(sp_root.get());
    i_frame.write("[%d] children are found.", static_cast<int>(children.size()));
    for (const auto& sp_product : children) {
        if (!sp_product) {
            i_frame.write("p_product not SUCCEEDED");
            continue;
        }
        CATDocument* const p_document = appendChild(sp_product, io_lists);
        if (i_with_design_tables) appendTableFiles(p_document, i_way, io_lists);
    }
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
    for (CATListValCATUnicodeString* const p_list :
         {&o_file_paths, &o_file_names, &o_configuration_texts, &o_associated_files, &o_names})
        p_list->RemoveAll();
    o_sheets.RemoveAll();
    o_configurations.RemoveAll();
    if (!ip_document) return frame.badInput("ip_document");
    SheetSources sources;
    const HRESULT code = collectSources(frame, ip_document, SwitchWay{ip_switcher, i_switch_flag}, sources);
    if (FAILED(code)) return code;
    if (sources.design_tables.Size() == 0 && sources.ends_without_tables) return S_OK;
    frame.write(" Nb design table found : %d", sources.design_tables.Size());
    const CATUnicodeString document_name = ip_document->StorageName();
    for (int i = 1; i <= sources.design_tables.Size(); ++i) {
        CATUnicodeString path, file_name, configuration_text, associated_files, name;
        int sheet = 0;
        int configuration = 0;
        if (FAILED(readDesignTableInformation(
                sources.design_tables[i], document_name, sources.has_file_names ? sources.file_names.get() : nullptr,
                path, file_name, sheet, configuration, configuration_text, associated_files, name)))
            continue;
        o_file_paths.Append(path);
        o_file_names.Append(file_name);
        o_sheets.Append(sheet);
        o_configurations.Append(configuration);
        o_configuration_texts.Append(configuration_text);
        o_associated_files.Append(associated_files);
        o_names.Append(name);
    }
    return S_OK;
}

HRESULT VornToolsCommon::getAllProductsAndDesignTablesNames(CATDocument* ip_activ_document,
                                                            VornToolsSwitchMgt* ip_switcher,
                                                            unsigned char i_with_design_tables,
                                                            CATListValCATUnicodeString& o_file_names,
                                                            CATListPtrCATIProduct& o_products,
                                                            CATListValCATUnicodeString& o_design_table_files) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllProductsAndDesignTablesNames");
    o_file_names.RemoveAll();
    o_products.RemoveAll();
    o_design_table_files.RemoveAll();
    if (!ip_activ_document) {
        frame.write("ip_activ_document is NULL");
        return E_FAIL;
    }
    AssemblyLists lists(o_file_names, o_products, o_design_table_files);
    const SwitchWay way{ip_switcher, 0};
    if (isProductDocument(ip_activ_document))
        return listAssembly(frame, ip_activ_document, way, i_with_design_tables != 0, lists);
    return i_with_design_tables ? appendTableFiles(ip_activ_document, way, lists) : S_OK;
}

HRESULT VornToolsCommon::getSelectedProductsAndDesignTables(CATListPtrCATBaseUnknown& o_products,
                                                            CATListValCATUnicodeString& o_design_table_files) {
    const JournalFrame frame(_CteCLASS_NAME, "getSelectedProductsAndDesignTables");
    o_products.RemoveAll();
    o_design_table_files.RemoveAll();
    CATFrmEditor* const p_form_editor = CATFrmEditor::GetCurrentEditor();
    CATCSO* const p_cso = p_form_editor ? p_form_editor->GetCSO() : nullptr;
    if (!p_cso) return E_FAIL;
    DistinctTexts files(o_design_table_files);
    std::unordered_set<const CATBaseUnknown*> listed;
    p_cso->InitElementList();
    while (auto* const p_element = static_cast<CATPathElement*>(p_cso->NextElement())) {
        const int size = p_element->GetSize();
        if (size > 0 && appendTableFile((*p_element)[size - 1], files)) continue;
        InterfacePtr<CATIProduct> sp_product;
        sp_product.receive([&](CATIProduct*& o_product) { return getSelectedProduct(p_element, o_product); });
        if (sp_product && listed.insert(sp_product->GetImpl()).second) o_products.Append(sp_product.detach());
    }
    return S_OK;
}
