#include "VornToolsCommon.h"

#include "VornToolsSwitchMgt.h"
#include "foundation/FileNames.h"
#include "foundation/JournalFrame.h"
#include "session/ProductHelpers.h"
#include "session/Shapes.h"

#include "CATDocument.h"

#include <memory>
#include <unordered_set>
#include <vector>

using namespace vorntools;

namespace {

using ProductPtr = InterfacePtr<CATIProduct>;

/** Whether a full name is the one looked for, letter case ignored; a bare name is compared with file names. */
class NameTest {
public:
    explicit NameTest(const CATUnicodeString& i_sought) : m_sought(i_sought) {
        CATUnicodeString directory;
        CATUnicodeString file_name;
        m_is_full = SUCCEEDED(splitFullName(i_sought, directory, file_name)) && !directory.IsNull();
    }
    bool accepts(const CATUnicodeString& i_full_name) const {
        if (m_is_full) return m_sought.Compare(i_full_name) != 0;
        CATUnicodeString directory;
        CATUnicodeString file_name;
        if (FAILED(splitFullName(i_full_name, directory, file_name))) return false;
        return !file_name.IsNull() && m_sought.Compare(file_name) != 0;
    }

private:
    const CATUnicodeString m_sought;
    bool m_is_full;
};

/** Adds the children of a product to a stack, the first one on top. */
HRESULT pushChildren(const JournalFrame& i_frame, CATIProduct& i_product, std::vector<ProductPtr>& io_stack) {
    const std::unique_ptr<CATListValCATBaseUnknown_var> sp_children(i_product.GetChildren("CATIProduct"));
    if (!sp_children) return i_product.GetChildrenCount() > 0 ? i_frame.platformFailed("GetChildren") : S_OK;
    for (int i = sp_children->Size(); i >= 1; --i) {
        auto sp_child = queryInterface<CATIProduct>(static_cast<CATBaseUnknown*>((*sp_children)[i]));
        if (!sp_child) return i_frame.missing("pi_child_product");
        io_stack.push_back(std::move(sp_child));
    }
    return S_OK;
}

/**
 * The first product below a root that `accepts(product, reference)`, in the order of the tree. What lies below a
 * reference is looked at once, however often the reference is used: it is the same everywhere. A product without a
 * reference is looked at wherever it stands. @param o_found empty when there is none
 */
template <class Test>
HRESULT findBelow(const JournalFrame& i_frame, CATIProduct& i_root, Test&& i_accepts, ProductPtr& o_found) {
    std::vector<ProductPtr> stack;
    std::vector<ProductPtr> seen; // keeps what the set below refers to
    std::unordered_set<const CATBaseUnknown*> known;
    if (FAILED(pushChildren(i_frame, i_root, stack))) return E_FAIL;
    while (!stack.empty()) {
        const ProductPtr sp_product = std::move(stack.back());
        stack.pop_back();
        ProductPtr sp_reference = referenceOf(sp_product.get());
        if (sp_reference && !known.insert(sp_reference->GetImpl()).second) continue;
        if (i_accepts(*sp_product.get(), sp_reference)) {
            o_found = sp_product;
            return S_OK;
        }
        if (sp_reference) seen.push_back(std::move(sp_reference));
        if (FAILED(pushChildren(i_frame, *sp_product.get(), stack))) return E_FAIL;
    }
    return S_OK;
}

bool isShownBy(const ProductPtr& i_reference, const NameTest& i_name) {
    const CATDocument* const p_document = documentOf(i_reference);
    return p_document && i_name.accepts(p_document->StorageName());
}

/** Whether the picture of a product whose document nobody has loaded is that of the file. */
bool isPictureOf(CATIProduct& i_product, const NameTest& i_name) {
    const auto sp_automation = queryInterface<CATIAProduct>(&i_product);
    CATUnicodeString path;
    return sp_automation && SUCCEEDED(readMasterShapePath(*sp_automation.get(), path)) && i_name.accepts(path);
}

/** Path of the file behind a named representation; empty when the product has none of that name. */
CATUnicodeString shapePath(CATIProduct& i_product, const CATUnicodeString& i_shape_name) {
    const auto sp_automation = queryInterface<CATIAProduct>(&i_product);
    CATUnicodeString path;
    if (sp_automation && !i_shape_name.IsNull()) readShapePath(*sp_automation.get(), i_shape_name, path);
    return path;
}

} // namespace

HRESULT VornToolsCommon::getProductInSession(CATIProduct* ipi_root_product, CATUnicodeString i_file_name,
                                             CATIProduct*& opi_product, unsigned char& o_found) {
    const JournalFrame frame(_CteCLASS_NAME, "getProductInSession");
    opi_product = nullptr;
    o_found = 0;
    if (!ipi_root_product) return frame.badInput("ipi_root_product");
    if (i_file_name.IsNull()) return frame.badInput("i_file_name");
    const NameTest name(i_file_name);
    ProductPtr sp_found;
    const auto accepts = [&](CATIProduct& i_product, const ProductPtr& i_reference) {
        return i_reference ? isShownBy(i_reference, name) : isPictureOf(i_product, name);
    };
    if (FAILED(findBelow(frame, *ipi_root_product, accepts, sp_found))) return E_FAIL;
    o_found = sp_found ? 1 : 0;
    opi_product = sp_found.detach();
    return S_OK;
}

HRESULT VornToolsCommon::getForeignFileInSession(CATIProduct* ipi_root_product, CATUnicodeString i_file_name,
                                                 CATUnicodeString i_shape_name, VornToolsSwitchMgt* ip_switcher,
                                                 CATIProduct*& opi_product, unsigned char& o_found) {
    const JournalFrame frame(_CteCLASS_NAME, "getForeignFileInSession");
    opi_product = nullptr;
    o_found = 0;
    if (!ipi_root_product) return frame.badInput("ipi_root_product");
    if (i_file_name.IsNull()) return frame.badInput("i_file_name");
    if (!ip_switcher) return frame.badInput("ip_switcher");
    const NameTest name(i_file_name);
    const auto accepts = [&](CATIProduct& i_product, const ProductPtr&) {
        CATUnicodeString shape_name = i_shape_name;
        if (shape_name.IsNull()) ip_switcher->getDefaultRepName(&i_product, shape_name);
        return name.accepts(shapePath(i_product, shape_name));
    };
    ProductPtr sp_found;
    if (FAILED(findBelow(frame, *ipi_root_product, accepts, sp_found))) return E_FAIL;
    o_found = sp_found ? 1 : 0;
    opi_product = sp_found.detach();
    return S_OK;
}
