#include "VornToolsCommon.h"

#include "foundation/DesignMode.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "foundation/TextKeys.h"
#include "properties/ProductsBelow.h"

#include "CATCSO.h"
#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATIDesignTable.h"
#include "CATLISTV_CATISpecObject.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATListPtrCATIProduct.h"
#include "CATPathElement.h"

#include <cstring>
#include <unordered_set>

using namespace vorntools;

namespace {

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
    TextSet m_seen;
};

/** Adds a product with a reference for the caller. */
template <class List>
void appendReference(InterfacePtr<CATIProduct> i_product, List& io_products) {
    io_products.Append(i_product.get());
    i_product.detach();
}

/** Gives the references of a list back. */
template <class List>
void releaseAll(List& io_products) {
    for (int i = 1; i <= io_products.Size(); ++i) io_products[i]->Release();
    io_products.RemoveAll();
}

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
    if (io_lists.file_names.append(i_name)) appendReference(i_product, io_lists.products);
}

HRESULT appendTableFiles(CATDocument* ip_document, const SwitchWay& i_way, AssemblyLists& io_lists) {
    const DesignMode design_mode(ip_document, i_way); // without it the tables leave memory once they are listed
    CATListValCATISpecObject_var design_tables;
    const HRESULT code = VornToolsCommon::getDesignTableList(ip_document, i_way.p_switcher, i_way.flag, &design_tables);
    for (int i = 1; i <= design_tables.Size(); ++i)
        appendTableFile(static_cast<CATISpecObject*>(design_tables[i]), io_lists.design_table_files);
    return code;
}

/** Does nothing for a document whose tables are listed, and for none. */
void appendTableFilesOnce(CATDocument* ip_document, const SwitchWay& i_way, AssemblyLists& io_lists) {
    if (ip_document && io_lists.documents_with_tables.insert(ip_document).second)
        appendTableFiles(ip_document, i_way, io_lists);
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
    if (i_with_design_tables) appendTableFilesOnce(ip_document, i_way, io_lists);

    const auto children = productsBelow(sp_root.get());
    i_frame.write("[%d] children are found.", static_cast<int>(children.size()));
    for (const auto& sp_product : children) {
        if (!sp_product) {
            i_frame.write("p_product not SUCCEEDED");
            continue;
        }
        CATDocument* const p_document = appendChild(sp_product, io_lists);
        if (i_with_design_tables) appendTableFilesOnce(p_document, i_way, io_lists);
    }
    return S_OK;
}

void listSelection(CATCSO& io_selection, CATListPtrCATBaseUnknown& io_products,
                   CATListValCATUnicodeString& io_design_table_files) {
    DistinctTexts files(io_design_table_files);
    std::unordered_set<const CATBaseUnknown*> listed;
    io_selection.InitElementList();
    while (auto* const p_element = static_cast<CATPathElement*>(io_selection.NextElement())) {
        const int size = p_element->GetSize();
        if (size > 0 && appendTableFile((*p_element)[size - 1], files)) continue;
        InterfacePtr<CATIProduct> sp_product;
        sp_product.receive(
            [&](CATIProduct*& o_product) { return VornToolsCommon::getSelectedProduct(p_element, o_product); });
        if (sp_product && listed.insert(sp_product->GetImpl()).second) appendReference(sp_product, io_products);
    }
}

} // namespace

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
    const SwitchWay way{ip_switcher, 0};
    const auto list = [&] {
        AssemblyLists lists(o_file_names, o_products, o_design_table_files);
        if (isProductDocument(ip_activ_document))
            return listAssembly(frame, ip_activ_document, way, i_with_design_tables != 0, lists);
        return i_with_design_tables ? appendTableFiles(ip_activ_document, way, lists) : S_OK;
    };
    const HRESULT code = guarded(list, E_FAIL);
    if (FAILED(code)) {
        o_file_names.RemoveAll();
        releaseAll(o_products);
        o_design_table_files.RemoveAll();
    }
    return code;
}

HRESULT VornToolsCommon::getSelectedProductsAndDesignTables(CATListPtrCATBaseUnknown& o_products,
                                                            CATListValCATUnicodeString& o_design_table_files) {
    const JournalFrame frame(_CteCLASS_NAME, "getSelectedProductsAndDesignTables");
    o_products.RemoveAll();
    o_design_table_files.RemoveAll();
    const auto list = [&]() -> HRESULT {
        CATFrmEditor* const p_form_editor = CATFrmEditor::GetCurrentEditor();
        CATCSO* const p_cso = p_form_editor ? p_form_editor->GetCSO() : nullptr;
        if (!p_cso) return E_FAIL;
        listSelection(*p_cso, o_products, o_design_table_files);
        return S_OK;
    };
    if (SUCCEEDED(guarded(list, E_FAIL))) return S_OK;
    releaseAll(o_products);
    o_design_table_files.RemoveAll();
    return E_FAIL;
}
