#include "VornToolsCommon.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATCSO.h"
#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATIMechanicalFeature.h"
#include "CATIProduct.h"
#include "CATInit.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATPathElement.h"
#include "VornIHMMessageDialog.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace vorntools;

namespace {

constexpr int kErrorLevel = 1;
constexpr int kNothingSelected = 11133;
constexpr int kSeveralSelected = 11134;

/** Files that show a product without the platform's own geometry, by the class of their documents. */
constexpr const char* kVisualisationFiles[] = {"cgr", "wrl"};

/** The current editor's selection; null without an editor and for an editor without a selection. */
CATCSO* currentSelection() {
    CATFrmEditor* const p_form_editor = CATFrmEditor::GetCurrentEditor();
    return p_form_editor ? p_form_editor->GetCSO() : nullptr;
}

/** The next selected element; null behind the last one. A selection holds path elements only. */
CATPathElement* nextElement(CATCSO& i_selection) { return static_cast<CATPathElement*>(i_selection.NextElement()); }

/** Calls `call(CATPathElement&)` for each selected element in order, until it answers false. */
template <class Call>
void forEachElement(CATCSO& i_selection, Call&& i_call) {
    i_selection.InitElementList();
    for (CATPathElement* p_element = nextElement(i_selection); p_element; p_element = nextElement(i_selection))
        if (!i_call(*p_element)) return;
}

/** The deepest object of a path; null for an empty path. It is borrowed. */
CATBaseUnknown* lastObject(const CATPathElement& i_path) {
    const int size = i_path.GetSize();
    return size > 0 ? i_path[size - 1] : nullptr;
}

/** The deepest object of a path with an interface. */
template <class T>
InterfacePtr<T> findOnPath(CATPathElement& i_path) {
    InterfacePtr<T> sp_found;
    sp_found.receive([&i_path](T*& o_found) {
        void* p_found = nullptr;
        const HRESULT code = i_path.Search(InterfaceId<T>::value(), &p_found);
        o_found = static_cast<T*>(p_found);
        return code;
    });
    return sp_found;
}

/** Whether the deepest document on a path is one of a visualisation file. */
bool isBelowVisualisationFile(CATPathElement& i_path) {
    const auto sp_init = findOnPath<CATInit>(i_path);
    const CATBaseUnknown* const p_document = sp_init ? sp_init->GetImpl() : nullptr;
    if (!p_document) return false;
    const auto is_kind = [p_document](const char* i_kind) { return p_document->IsAKindOf(i_kind) != 0; };
    return std::any_of(std::begin(kVisualisationFiles), std::end(kVisualisationFiles), is_kind);
}

InterfacePtr<CATIProduct> productOf(CATPathElement* ip_path_element) {
    InterfacePtr<CATIProduct> sp_product;
    sp_product.receive([ip_path_element](CATIProduct*& o_product) {
        return VornToolsCommon::getSelectedProduct(ip_path_element, o_product);
    });
    return sp_product;
}

/** The one selected element. Tells the user when nothing or more than one is selected.
 * @return null when it is not one */
CATPathElement* onlyElement(const JournalFrame& i_frame, CATCSO& i_selection) {
    const int count = i_selection.GetSize();
    if (count == 1) {
        i_selection.InitElementList();
        CATPathElement* const p_path_element = nextElement(i_selection);
        if (!p_path_element) i_frame.missing("p_path_element");
        return p_path_element;
    }
    i_frame.write(count == 0 ? "No object is selected. Stop process."
                             : "More than 1 object is selected. Stop process.");
    VornIHMMessageDialog::showError(kErrorLevel, count == 0 ? kNothingSelected : kSeveralSelected, "");
    return nullptr;
}

/** Full name that stands for a selected product: its document's, or its path in the tree for a component. */
HRESULT readSelectedName(const JournalFrame& i_frame, CATIProduct* ipi_product, CATUnicodeString& o_name) {
    CATDocument* p_document = nullptr;
    const HRESULT code = VornToolsCommon::getDocumentFileName(ipi_product, p_document, o_name);
    if (FAILED(code)) i_frame.writeInDebug("getDocumentFileName is failed");
    if (!p_document || std::strcmp(p_document->IsA(), "CATProduct") != 0) return code;
    unsigned char is_component = 0;
    const HRESULT component_code = VornToolsCommon::isComponent(ipi_product, is_component);
    return is_component ? VornToolsCommon::getProductPath(ipi_product, o_name) : component_code;
}

HRESULT appendFileName(const JournalFrame& i_frame, const CATUnicodeString& i_name,
                       CATListValCATUnicodeString& io_names) {
    CATUnicodeString file_name;
    const HRESULT code = fileNameOf(i_name, file_name);
    if (file_name.IsNull()) return i_frame.callFailed("UTILFile::splitPathAndFileName");
    if (io_names.Locate(i_name) == 0) io_names.Append(file_name);
    return code;
}

/** Whether a product's document has a file name; the journal tells why it cannot be asked. */
bool hasFileName(const JournalFrame& i_frame, CATIProduct* ipi_product, const CATUnicodeString& i_file_name) {
    CATDocument* p_document = nullptr;
    CATUnicodeString full_name;
    if (FAILED(VornToolsCommon::getDocumentFileName(ipi_product, p_document, full_name))) {
        i_frame.write("getDocumentFileName is Failed. goto NEXT_ELEMENT");
        return false;
    }
    CATUnicodeString file_name;
    if (FAILED(fileNameOf(full_name, file_name))) {
        i_frame.write("splitPathAndFileName is Failed. goto NEXT_ELEMENT");
        return false;
    }
    return !file_name.IsNull() && file_name == i_file_name;
}

/** A list of products that holds a reference of each. */
struct ProductList {
    ProductList() = default;
    ~ProductList() {
        for (int i = 1; i <= list.Size(); ++i)
            if (list[i]) list[i]->Release();
    }
    ProductList(const ProductList&) = delete;
    ProductList& operator=(const ProductList&) = delete;

    CATListPtrCATBaseUnknown list;
};

} // namespace

HRESULT VornToolsCommon::getCSO(CATCSO*& op_cso) {
    const JournalFrame frame(_CteCLASS_NAME, "getCSO");
    op_cso = nullptr;
    const auto work = [&]() -> HRESULT {
        CATFrmEditor* const p_form_editor = CATFrmEditor::GetCurrentEditor();
        if (!p_form_editor) return E_FAIL;
        op_cso = p_form_editor->GetCSO();
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getSelectedProduct(CATPathElement* ip_path_element, CATIProduct*& opi_product) {
    const JournalFrame frame(_CteCLASS_NAME, "getSelectedProduct");
    opi_product = nullptr;
    const auto work = [&]() -> HRESULT {
        CATBaseUnknown* const p_last = ip_path_element ? lastObject(*ip_path_element) : nullptr;
        if (!p_last) return E_FAIL;
        auto sp_product = queryInterface<CATIProduct>(p_last);
        if (!sp_product &&
            (findOnPath<CATIMechanicalFeature>(*ip_path_element) || isBelowVisualisationFile(*ip_path_element)))
            sp_product = findOnPath<CATIProduct>(*ip_path_element);
        opi_product = sp_product.detach();
        return opi_product ? S_OK : E_FAIL;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getSelectedElement(CATIProduct*& opi_selected_catiproduct) {
    const JournalFrame frame(_CteCLASS_NAME, "getSelectedElement");
    opi_selected_catiproduct = nullptr;
    const auto work = [&]() -> HRESULT {
        CATFrmEditor* const p_form_editor = CATFrmEditor::GetCurrentEditor();
        if (!p_form_editor) return frame.missing("p_form_editor");
        CATCSO* const p_cso = p_form_editor->GetCSO();
        if (!p_cso) return frame.callFailed("GetCSO");
        CATPathElement* const p_path_element = onlyElement(frame, *p_cso);
        if (!p_path_element) return E_FAIL;
        if (p_path_element->GetSize() == 0) return frame.callFailed("p_path_element->GetSize");

        opi_selected_catiproduct = productOf(p_path_element).detach();
        if (opi_selected_catiproduct) return S_OK;
        frame.missing("opi_selected_catiproduct");
        VornIHMMessageDialog::showError(kErrorLevel, kNothingSelected, "");
        return E_FAIL;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getSelectedProducts(CATListPtrCATBaseUnknown& o_products) {
    const JournalFrame frame(_CteCLASS_NAME, "getSelectedProducts");
    o_products.RemoveAll();
    const auto work = [&]() -> HRESULT {
        CATCSO* const p_cso = currentSelection();
        if (!p_cso) return E_FAIL;
        // Different interface pointers may show one object.
        std::unordered_set<const CATBaseUnknown*> listed;
        std::vector<InterfacePtr<CATIProduct>> products;
        forEachElement(*p_cso, [&](CATPathElement& i_element) {
            auto sp_product = productOf(&i_element);
            if (sp_product && listed.insert(sp_product->GetImpl()).second) products.push_back(std::move(sp_product));
            return true;
        });
        for (const auto& sp_product : products) o_products.Append(sp_product.get());
        for (auto& sp_product : products) sp_product.detach(); // the list has them all
        return S_OK;
    };
    const HRESULT code = guarded(work, E_FAIL);
    if (FAILED(code)) o_products.RemoveAll();
    return code;
}

HRESULT VornToolsCommon::getSelectedObjectFromPathElement(CATBaseUnknown*& opi_object) {
    const JournalFrame frame(_CteCLASS_NAME, "getSelectedObjectFromPathElement");
    opi_object = nullptr;
    const auto work = [&]() -> HRESULT {
        CATFrmEditor* const p_form_editor = CATFrmEditor::GetCurrentEditor();
        if (!p_form_editor) return E_FAIL;
        CATCSO* const p_cso = p_form_editor->GetCSO();
        if (!p_cso) return S_OK;
        const CATPathElement* const p_path_element = onlyElement(frame, *p_cso);
        if (!p_path_element) return E_FAIL;
        CATBaseUnknown* const p_last = lastObject(*p_path_element);
        if (!p_last) return frame.callFailed("p_path_element->GetSize");
        opi_object = InterfacePtr<CATBaseUnknown>::share(p_last).detach();
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getAllDocNameFromSelection(CATListValCATUnicodeString& o_names) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllDocNameFromSelection");
    o_names.RemoveAll();
    const auto work = [&]() -> HRESULT {
        CATCSO* const p_cso = currentSelection();
        if (!p_cso) return E_FAIL;
        HRESULT code = S_OK;
        forEachElement(*p_cso, [&](CATPathElement& i_element) {
            CATUnicodeString name;
            code = readSelectedName(frame, productOf(&i_element).get(), name);
            if (!name.IsNull()) code = appendFileName(frame, name, o_names);
            return true;
        });
        return code;
    };
    return guarded(work, E_FAIL);
}

unsigned char VornToolsCommon::isSelectedInCatia(CATUnicodeString i_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "isSelectedInCatia");
    const auto work = [&]() -> unsigned char {
        ProductList held;
        CATListPtrCATBaseUnknown& products = held.list;
        if (FAILED(getSelectedProducts(products))) {
            frame.callFailed("getCSO");
            return 0;
        }
        if (products.Size() == 0) {
            frame.write("No object is selected. Stop process.");
            return 0;
        }
        frame.write("Number of selected objet(s) = %d", products.Size());
        bool is_selected = false;
        for (int i = 1; i <= products.Size(); ++i) {
            auto* const pi_product = static_cast<CATIProduct*>(products[i]);
            if (!pi_product)
                frame.missing("pi_prod");
            else if (hasFileName(frame, pi_product, i_file_name))
                is_selected = true;
        }
        return is_selected ? 1 : 0;
    };
    return guarded(work, static_cast<unsigned char>(0));
}

unsigned char VornToolsCommon::isCatiaDocumentSelected() {
    const JournalFrame frame(_CteCLASS_NAME, "isCatiaDocumentSelected");
    const auto work = [&]() -> unsigned char {
        CATCSO* const p_cso = currentSelection();
        if (!p_cso) return 0;
        bool is_selected = false;
        forEachElement(*p_cso, [&](const CATPathElement& i_element) {
            const int size = i_element.GetSize();
            frame.write("p_current_path_element->GetSize() is : %d", size);
            if (size == 1) {
                frame.write("the CATIA document is selected");
                is_selected = true;
            }
            return true;
        });
        p_cso->Empty();
        return is_selected ? 1 : 0;
    };
    return guarded(work, static_cast<unsigned char>(0));
}

unsigned char VornToolsCommon::isElementSelectedInProcessDocument(const char* i_class_name) {
    const JournalFrame frame(_CteCLASS_NAME, "isElementSelectedInProcessDocument");
    const auto work = [&]() -> unsigned char {
        if (!i_class_name) {
            frame.badInput("i_class_name");
            return 0;
        }
        CATCSO* const p_cso = currentSelection();
        if (!p_cso) {
            frame.callFailed("getCSO");
            return 0;
        }
        bool is_selected = false;
        forEachElement(*p_cso, [&](const CATPathElement& i_element) {
            const CATBaseUnknown* const p_last = lastObject(i_element);
            if (!p_last) frame.badInput("p_path_element");
            is_selected = p_last && p_last->IsAKindOf(i_class_name);
            return !is_selected;
        });
        return is_selected ? 1 : 0;
    };
    return guarded(work, static_cast<unsigned char>(0));
}
