#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "session/ProductHelpers.h"
#include "session/Shapes.h"

#include "CATDocument.h"

#include <vector>

using namespace vorntools;

namespace {

constexpr const char* kPathSeparator = "\\";

InterfacePtr<CATIAProduct> automationOf(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    auto sp_automation = queryInterface<CATIAProduct>(ipi_product);
    if (!sp_automation) i_frame.missing("pi_automation_product");
    return sp_automation;
}

/** Whether a file shows the product. @return E_FAIL, reported, when the product does not tell */
HRESULT askForMasterShape(const JournalFrame& i_frame, const InterfacePtr<CATIAProduct>& i_product, bool& o_has_shape) {
    CAT_VARIANT_BOOL has_shape = 0;
    o_has_shape = false;
    if (!i_product) return E_FAIL;
    if (FAILED(i_product->HasAMasterShapeRepresentation(has_shape)))
        return i_frame.platformFailed("HasAMasterShapeRepresentation");
    o_has_shape = has_shape != 0;
    return S_OK;
}

/** Instance names from a product up to below its root, and the root. */
HRESULT readChain(const JournalFrame& i_frame, CATIProduct* ipi_product, std::vector<CATUnicodeString>& o_names,
                  InterfacePtr<CATIProduct>& o_root) {
    o_root = InterfacePtr<CATIProduct>::share(ipi_product);
    for (auto sp_father = fatherOf(ipi_product); sp_father; sp_father = fatherOf(o_root.get())) {
        CATUnicodeString name;
        if (FAILED(o_root->GetPrdInstanceName(name)) || name.IsNull())
            return i_frame.platformFailed("GetPrdInstanceName");
        o_names.push_back(name);
        o_root = sp_father;
    }
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::getDocumentFileName(CATIProduct* ipi_the_product, CATDocument*& op_document,
                                             CATUnicodeString& o_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentFileName");
    o_file_name = "";
    const auto work = [&]() -> HRESULT {
        if (!ipi_the_product) {
            op_document = nullptr;
            frame.write("ipi_the_product is NULL");
            return E_FAIL;
        }
        const auto sp_reference = referenceOf(ipi_the_product);
        const auto sp_linkable = sp_reference.query<CATILinkableObject>();
        CATDocument* const p_document = documentBehind(sp_linkable);
        // Kept because callers rely on it: a reference that lies in no document leaves theirs in place.
        if (!sp_reference || sp_linkable) op_document = p_document;
        if (p_document)
            o_file_name = p_document->StorageName();
        else
            getProductPath(ipi_the_product, o_file_name);
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getParent(CATIProduct* ipi_product, CATIProduct*& opi_parent) {
    const JournalFrame frame(_CteCLASS_NAME, "getParent");
    opi_parent = nullptr;
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        opi_parent = fatherOf(ipi_product).detach();
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getInstanceInFirstProductParent(CATIProduct* ipi_product, CATIProduct*& opi_instance) {
    const JournalFrame frame(_CteCLASS_NAME, "getInstanceInFirstProductParent");
    opi_instance = nullptr;
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        const auto sp_father = fatherOf(ipi_product);
        if (!sp_father) return E_FAIL; // every root gets here: nothing to report
        const auto sp_father_reference = referenceOf(sp_father.get());
        if (!sp_father_reference) return frame.missing("sp_father_reference");

        auto sp_instance = sp_father->IsEqual(sp_father_reference.get())
                               ? InterfacePtr<CATIProduct>::share(ipi_product)
                               : occurrenceIn(ipi_product, sp_father_reference.get());
        if (!sp_instance) return frame.missing("sp_instance");
        opi_instance = sp_instance.detach();
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::isComponent(CATIProduct* ipi_product, unsigned char& o_is_component) {
    const JournalFrame frame(_CteCLASS_NAME, "isComponent");
    o_is_component = 0;
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        const auto sp_father = fatherOf(ipi_product);
        const auto sp_reference = referenceOf(ipi_product);
        if (!sp_father || !sp_reference) return S_OK; // a root, or a document that is not loaded
        const auto sp_father_reference = referenceOf(sp_father.get());
        if (!sp_father_reference) return frame.missing("sp_father_reference");

        const CATDocument* const p_document = documentOf(sp_reference);
        const CATDocument* const p_father_document = p_document ? documentOf(sp_father_reference) : nullptr;
        if (!p_father_document) return frame.missing("pi_linkable_object");
        o_is_component = p_document == p_father_document ? 1 : 0;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::isAForeignFile(CATUnicodeString i_file_name, unsigned char& o_is_foreign) {
    const JournalFrame frame(_CteCLASS_NAME, "isAForeignFile");
    o_is_foreign = 0;
    if (i_file_name.IsNull()) return frame.badInput("i_file_name");
    const auto work = [&]() -> HRESULT {
        o_is_foreign = returnDocumentType(i_file_name) == DocumentTypeUnknown ? 1 : 0;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::isAForeignFile(CATIProduct* ipi_product, unsigned char& o_is_foreign) {
    const JournalFrame frame(_CteCLASS_NAME, "isAForeignFile");
    o_is_foreign = 0;
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        bool has_shape = false;
        const HRESULT code = askForMasterShape(frame, automationOf(frame, ipi_product), has_shape);
        if (FAILED(code) || !has_shape) return code;
        CATUnicodeString path;
        if (FAILED(getMasterShapeRepresentationPathName(ipi_product, path)))
            return frame.callFailed("VornToolsCommon::getMasterShapeRepresentationPathName");
        return isAForeignFile(path, o_is_foreign);
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getMasterShapeRepresentationPathName(CATIProduct* ipi_product, CATUnicodeString& o_path) {
    const JournalFrame frame(_CteCLASS_NAME, "getMasterShapeRepresentationPathName");
    o_path = "";
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        const auto sp_automation = automationOf(frame, ipi_product);
        bool has_shape = false;
        if (FAILED(askForMasterShape(frame, sp_automation, has_shape)) || !has_shape) return E_FAIL;
        const HRESULT code = readMasterShapePath(*sp_automation.get(), o_path);
        return FAILED(code) ? frame.platformFailed("GetMasterShapeRepresentationPathName") : code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getShapePathName(CATIProduct* ipi_product, const CATUnicodeString& i_shape_name,
                                          CATUnicodeString& o_path) {
    const JournalFrame frame(_CteCLASS_NAME, "getShapePathName");
    const auto work = [&]() -> HRESULT {
        CATUnicodeString shape_name = i_shape_name; // the output may be the same text
        o_path = "";
        if (!ipi_product) return frame.badInput("ipi_product");
        const auto sp_automation = automationOf(frame, ipi_product);
        if (!sp_automation) return E_FAIL;
        if (shape_name.IsNull() && FAILED(readDefaultShapeName(*sp_automation.get(), shape_name)))
            return frame.platformFailed("GetDefaultShapeName");
        const HRESULT code = readShapePath(*sp_automation.get(), shape_name, o_path);
        return FAILED(code) ? frame.platformFailed("GetShapePathName") : code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getProductPath(CATIProduct* ipi_product, CATUnicodeString& o_path) {
    const JournalFrame frame(_CteCLASS_NAME, "getProductPath");
    o_path = "";
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        std::vector<CATUnicodeString> names;
        InterfacePtr<CATIProduct> sp_root;
        if (FAILED(readChain(frame, ipi_product, names, sp_root))) return E_FAIL;
        CATUnicodeString path = sp_root->GetPartNumber();
        if (path.IsNull()) return frame.platformFailed("GetPartNumber");
        for (auto name = names.rbegin(); name != names.rend(); ++name) path.Append(kPathSeparator).Append(*name);
        o_path = path;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}
