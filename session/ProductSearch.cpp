#include "VornToolsCommon.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/HoldingSwitch.h"
#include "foundation/JournalFrame.h"
#include "foundation/WorkModes.h"
#include "session/ProductHelpers.h"
#include "session/Shapes.h"

#include "CATDocument.h"
#include "CATLISTV_CATBaseUnknown.h"

#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace vorntools;

namespace {

using Modes = VornToolsWorkModeServices;
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
    /** Of a file in a directory that nobody knows. */
    bool acceptsFileName(const CATUnicodeString& i_file_name) const {
        return !m_is_full && m_sought.Compare(i_file_name) != 0;
    }

private:
    const CATUnicodeString m_sought;
    bool m_is_full;
};

/** What hangs below a product, or below the root of a search, and how far the walk through it is. */
struct Level {
    ProductPtr sp_reference; ///< of the product; empty for a root, and while none is loaded
    std::vector<ProductPtr> children{};
    std::size_t next = 0;
    bool is_complete = true; ///< whether nothing that was walked was out of reach
};

HRESULT readChildren(const JournalFrame& i_frame, CATIProduct& i_product, std::vector<ProductPtr>& o_children) {
    const std::unique_ptr<CATListValCATBaseUnknown_var> sp_children(i_product.GetChildren("CATIProduct"));
    if (!sp_children) return i_product.GetChildrenCount() > 0 ? i_frame.platformFailed("GetChildren") : S_OK;
    for (int i = 1; i <= sp_children->Size(); ++i) {
        auto sp_child = queryInterface<CATIProduct>(static_cast<CATBaseUnknown*>((*sp_children)[i]));
        if (!sp_child) return i_frame.missing("pi_child_product");
        o_children.push_back(std::move(sp_child));
    }
    return S_OK;
}

/** References below which there is nothing left to look at. */
class SeenReferences {
public:
    bool contains(const ProductPtr& i_reference) const {
        return i_reference && m_seen.count(i_reference->GetImpl()) != 0;
    }
    void add(const ProductPtr& i_reference) {
        if (i_reference && m_seen.insert(i_reference->GetImpl()).second) m_held.push_back(i_reference);
    }

private:
    std::vector<ProductPtr> m_held; ///< keeps what the set refers to
    std::unordered_set<const CATBaseUnknown*> m_seen;
};

/**
 * The first product below a root that `accepts(product, reference)`, in the order of the tree. What lies below a
 * reference is the same wherever the reference is used, and is looked at once. How far it is loaded is a matter of each
 * place: where something was only seen, the reference's next place is looked at as well. A product that no place can
 * load does not count. @param o_found empty when there is none
 */
template <class Test>
HRESULT findBelow(const JournalFrame& i_frame, CATIProduct& i_root, Test&& i_accepts, ProductPtr& o_found) {
    SeenReferences seen;
    std::vector<Level> levels(1);
    if (FAILED(readChildren(i_frame, i_root, levels.back().children))) return E_FAIL;
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.size()) {
            const bool is_complete = level.is_complete;
            if (is_complete) seen.add(level.sp_reference);
            levels.pop_back();
            if (!is_complete && !levels.empty()) levels.back().is_complete = false;
            continue;
        }
        const ProductPtr sp_product = std::move(level.children[level.next++]);
        Level below{referenceOf(sp_product.get())};
        if (seen.contains(below.sp_reference)) continue;
        if (i_accepts(*sp_product.get(), below.sp_reference)) {
            o_found = sp_product;
            return S_OK;
        }
        if (!below.sp_reference && isOnlySeen(*sp_product.get())) level.is_complete = false;
        if (FAILED(readChildren(i_frame, *sp_product.get(), below.children))) return E_FAIL;
        levels.push_back(std::move(below));
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
    if (sp_automation && SUCCEEDED(readMasterShapePath(*sp_automation.get(), path))) return i_name.accepts(path);
    // A picture that does not tell its file has the name of it; the directory stays unknown.
    const CATUnicodeString file_name = fileNameOfPicture(i_product);
    return !file_name.IsNull() && i_name.acceptsFileName(file_name);
}

/** What is looked for among the representations of products. */
struct ShapeTest {
    const NameTest file_name;
    const CATUnicodeString& shape_name; ///< empty: each product's default representation
    VornToolsSwitchMgt& switcher;
};

/** Path of the file behind the representation that is looked for; empty when the product does not tell. */
CATUnicodeString shapePath(CATIProduct& i_product, CATUnicodeString i_shape_name) {
    CATUnicodeString path;
    const auto sp_automation = queryInterface<CATIAProduct>(&i_product);
    if (!sp_automation) return path;
    if (i_shape_name.IsNull()) readDefaultShapeName(*sp_automation.get(), i_shape_name);
    if (!i_shape_name.IsNull()) readShapePath(*sp_automation.get(), i_shape_name, path);
    return path;
}

/**
 * Loads a product that is only seen for a look at its representations. Only what shows the file stays loaded, and is
 * the switcher's to put back; so is what cannot be put back at once.
 */
bool showsWhenLoaded(CATIProduct& i_product, const ShapeTest& i_test) {
    if (!i_test.switcher.isSwitchEnabled()) return false;
    Modes::setWorkMode(&i_product, Modes::WorkModeDefault);
    // Whatever keeps it from telling, it is put back.
    const bool shows =
        guarded([&] { return i_test.file_name.accepts(shapePath(i_product, i_test.shape_name)); }, false);
    if (isOnlySeen(i_product)) return shows;
    if (!shows && Modes::setWorkMode(&i_product, Modes::WorkModeVisu) == S_OK) return false;
    const HRESULT kept =
        HoldingSwitch(i_test.switcher).setWorkMode(&i_product, Modes::WorkModeDefault, Modes::WorkModeVisu, 0);
    if (SUCCEEDED(kept)) return shows;
    Modes::setWorkMode(&i_product, Modes::WorkModeVisu); // nobody else would
    return false;
}

/** Whether a product that is only seen tells of the representation, be it that there is none of that name. */
bool tellsShape(CATIProduct& i_product, const CATUnicodeString& i_shape_name, const CATUnicodeString& i_path) {
    return !i_path.IsNull() || (!i_shape_name.IsNull() && !shapePath(i_product, "").IsNull());
}

/** Whether a product shows the file. What it tells without being loaded is believed. */
bool shows(CATIProduct& i_product, const ProductPtr& i_reference, const ShapeTest& i_test) {
    const CATUnicodeString path = shapePath(i_product, i_test.shape_name);
    if (i_reference || !isOnlySeen(i_product) || tellsShape(i_product, i_test.shape_name, path))
        return i_test.file_name.accepts(path);
    return showsWhenLoaded(i_product, i_test);
}

} // namespace

HRESULT VornToolsCommon::getProductInSession(CATIProduct* ipi_root_product, CATUnicodeString i_file_name,
                                             CATIProduct*& opi_product, unsigned char& o_found) {
    const JournalFrame frame(_CteCLASS_NAME, "getProductInSession");
    opi_product = nullptr;
    o_found = 0;
    if (!ipi_root_product) return frame.badInput("ipi_root_product");
    if (i_file_name.IsNull()) return frame.badInput("i_file_name");
    const auto work = [&]() -> HRESULT {
        const NameTest name(i_file_name);
        ProductPtr sp_found;
        const auto accepts = [&](CATIProduct& i_product, const ProductPtr& i_reference) {
            return i_reference ? isShownBy(i_reference, name) : isPictureOf(i_product, name);
        };
        if (FAILED(findBelow(frame, *ipi_root_product, accepts, sp_found))) return E_FAIL;
        o_found = sp_found ? 1 : 0;
        opi_product = sp_found.detach();
        return S_OK;
    };
    return guarded(work, E_FAIL);
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
    const auto work = [&]() -> HRESULT {
        const ShapeTest test{NameTest(i_file_name), i_shape_name, *ip_switcher};
        const auto accepts = [&](CATIProduct& i_product, const ProductPtr& i_reference) {
            return shows(i_product, i_reference, test);
        };
        ProductPtr sp_found;
        if (FAILED(findBelow(frame, *ipi_root_product, accepts, sp_found))) return E_FAIL;
        o_found = sp_found ? 1 : 0;
        opi_product = sp_found.detach();
        return S_OK;
    };
    return guardedButForeign(work, E_FAIL);
}
