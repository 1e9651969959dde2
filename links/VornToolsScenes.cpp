#include "VornToolsScenes.h"

#include "foundation/AutomationText.h"
#include "foundation/AutomationValue.h"
#include "foundation/FileNames.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATIACollection.h"
#include "CATIAPosition.h"
#include "CATIAProduct.h"
#include "CATIAScene.h"
#include "CATIASceneProduct.h"
#include "CATIProduct.h"
#include "CATMathTransformation.h"
#include "VornToolsCommon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

using namespace vorntools;

// The system's own interface: declared by its header alone.
template <>
struct vorntools::InterfaceId<IEnumVARIANT> {
    static const IID& value() { return IID_IEnumVARIANT; }
};

const CATUnicodeString VornToolsScenes::_CteCLASS_NAME("VornToolsScenes::");

namespace {

/** Name under which a root product keeps its scenes; the platform does not publish it. */
constexpr const char* kScenesItem = "ScenesCollection";

constexpr const char* kOpeningEntry = "<CATProduct>";
constexpr const char* kClosingEntry = "</CATProduct>";
constexpr const char* kTrue = "TRUE";
constexpr const char* kFalse = "FALSE";
constexpr const char* kPathSeparator = "!";
constexpr int kGroupSize = 4;

using Position = std::array<double, 12>;
constexpr Position kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
/** "-1.234567890123456E-308 " twelve times, and more. */
constexpr std::size_t kPositionTextSize = 320;

/** Calls `call(T*& out)`; a success that gives no object counts as failure. */
template <class T, class Call>
HRESULT obtain(InterfacePtr<T>& o_object, Call&& i_call) {
    const HRESULT code = o_object.receive(i_call);
    return SUCCEEDED(code) && !o_object ? E_FAIL : code;
}

/** Another interface of an object, with the query's own code. */
template <class U, class T>
HRESULT obtainInterface(T* ipi_object, InterfacePtr<U>& o_interface) {
    return obtain(o_interface, [=](U*& o_found) {
        void* p_found = nullptr;
        const HRESULT code = ipi_object->QueryInterface(InterfaceId<U>::value(), &p_found);
        o_found = static_cast<U*>(p_found);
        return code;
    });
}

HRESULT obtainScenesItem(CATIProduct* ipi_root, InterfacePtr<CATBaseDispatch>& o_item) {
    InterfacePtr<CATIAProduct> sp_automation;
    const HRESULT code = obtainInterface(ipi_root, sp_automation);
    if (FAILED(code)) return code;
    const AutomationText name{CATUnicodeString(kScenesItem)};
    return obtain(o_item, [&](CATBaseDispatch*& o_found) { return sp_automation->GetItem(name.get(), o_found); });
}

HRESULT obtainEnumeration(CATIACollection* ipi_collection, InterfacePtr<IEnumVARIANT>& o_enumeration) {
    InterfacePtr<IUnknown> sp_walk;
    const HRESULT code = obtain(sp_walk, [=](IUnknown*& o_walk) { return ipi_collection->get__NewEnum(o_walk); });
    return FAILED(code) ? code : obtainInterface(sp_walk.get(), o_enumeration);
}

/** Calls `visit(CATBaseDispatch* scene, long index)` for each scene from where the walk stands, index from 1.
 * @return the code, reported, of a walk that breaks off */
template <class Visit>
HRESULT forEachScene(const JournalFrame& i_frame, IEnumVARIANT* ipi_scenes, long i_count, Visit&& i_visit) {
    for (long index = 1; index <= i_count; ++index) {
        AutomationValue scene;
        ULONG fetched = 0;
        const HRESULT code = scene.receive([&](CATVariant& o_item) { return ipi_scenes->Next(1, &o_item, &fetched); });
        if (FAILED(code)) i_frame.callFailed("Next");
        if (code != S_OK) return FAILED(code) ? code : S_OK;
        if (fetched == 1) i_visit(scene.object(), index);
    }
    return S_OK;
}

bool readSceneName(const JournalFrame& i_frame, CATBaseDispatch* ipi_scene, CATUnicodeString& o_name) {
    const auto sp_base = queryInterface<CATIABase>(ipi_scene);
    AutomationText name;
    if (!sp_base || FAILED(name.receive([&](CATBSTR& o_text) { return sp_base->get_Name(o_text); }))) {
        i_frame.callFailed("get_Name");
        return false;
    }
    o_name = name.text();
    return true;
}

/** Whether a product is shown by a product document; components are, by that of their parent. */
bool isShownByProductDocument(CATIProduct* ipi_product) {
    CATDocument* p_document = nullptr;
    CATUnicodeString name;
    return SUCCEEDED(VornToolsCommon::getDocumentFileName(ipi_product, p_document, name)) && p_document &&
           VornToolsCommon::returnDocumentType(name) == VornToolsCommon::DocumentTypeProduct;
}

/** @return E_FAIL, reported, when the name cannot be split */
HRESULT readNameWithoutExtension(const JournalFrame& i_frame, const CATUnicodeString& i_full_name,
                                 CATUnicodeString& o_name) {
    CATUnicodeString directory;
    if (FAILED(splitFullName(i_full_name, directory, o_name))) return i_frame.callFailed("splitPathAndFileName");
    const int dot = o_name.SearchSubString(".", 0, CATUnicodeString::CATSearchModeBackward);
    if (dot >= 0) o_name = o_name.SubString(0, dot);
    return S_OK;
}

/** Reads where a scene shows a product. False when it does not tell all twelve numbers. */
bool readPosition(CATIASceneProduct* ipi_data, Position& o_position) {
    InterfacePtr<CATIAPosition> sp_position;
    if (FAILED(obtain(sp_position, [=](CATIAPosition*& o_found) { return ipi_data->get_Position(o_found); })))
        return false;
    Position unknown;
    unknown.fill(std::numeric_limits<double>::quiet_NaN());
    const long size = static_cast<long>(unknown.size());
    AutomationNumbers numbers(unknown.data(), size);
    return numbers && SUCCEEDED(sp_position->GetComponents(numbers.get())) && numbers.read(o_position.data(), size) &&
           std::all_of(o_position.begin(), o_position.end(), [](double i_value) { return std::isfinite(i_value); });
}

/** Flag of a product that is in a scene; empty when the scene does not tell. */
const char* hiddenFlag(CATIASceneProduct* ipi_data) {
    CAT_VARIANT_BOOL hidden = 0;
    if (FAILED(ipi_data->get_Hidden(hidden))) return "";
    return hidden ? kTrue : kFalse;
}

CATUnicodeString positionText(Position i_position) {
    char text[kPositionTextSize];
    VornToolsScenes::getMatrixString(i_position.data(), text);
    return CATUnicodeString(text);
}

/** A product in front of the scenes, with what is the same in all of them. */
struct Child {
    CATIProduct* product;
    InterfacePtr<CATIAProduct> automation;
    CATUnicodeString path;
};

/** Appends the groups of the children of one parent to the scenes data. */
class SceneGroups {
public:
    /** @param ip_parents null at the root */
    SceneGroups(const JournalFrame& i_frame, IEnumVARIANT* ipi_scenes, long i_count,
                const CATListPtrCATMathTransformation* ip_parents, CATListValCATUnicodeString& io_data)
        : m_frame(i_frame), m_scenes(ipi_scenes), m_count(i_count), m_parents(ip_parents), m_data(io_data) {}

    /** The groups of a child and of everything below it. */
    void append(CATIProduct* ipi_child) {
        Child child{ipi_child, queryInterface<CATIAProduct>(ipi_child), CATUnicodeString()};
        unsigned char has_component_parent = 0;
        if (FAILED(VornToolsScenes::getParentsWithComponents(ipi_child, child.path, has_component_parent)))
            m_frame.callFailed("getParentsWithComponents"); // its groups keep an empty path: the list stays in step
        std::vector<CATMathTransformation> positions;
        forEachScene(m_frame, m_scenes, m_count, [&](CATBaseDispatch* ipi_scene, long i_index) {
            positions.emplace_back().SetCoefficients(appendGroup(child, ipi_scene, i_index).data());
        });
        if (FAILED(m_scenes->Reset())) m_frame.callFailed("Reset");
        if (isShownByProductDocument(ipi_child)) appendBelow(ipi_child, positions);
    }

private:
    void appendBelow(CATIProduct* ipi_child, std::vector<CATMathTransformation>& i_positions) {
        CATListPtrCATMathTransformation positions;
        for (CATMathTransformation& position : i_positions) positions.Append(&position);
        VornToolsScenes::readScenesDataInAssy("", ipi_child, m_scenes, positions, m_count, m_data);
    }

    /** @return what the child's own children take as its position in this scene */
    Position appendGroup(const Child& i_child, CATBaseDispatch* ipi_scene, long i_index) {
        m_data.Append(i_child.path);
        CATUnicodeString name;
        if (!readSceneName(m_frame, ipi_scene, name)) return m_working;
        m_data.Append(name);

        const auto sp_scene = queryInterface<CATIAScene>(ipi_scene);
        CatSceneType type = CatSceneTypeDelta;
        CAT_VARIANT_BOOL exists = 0;
        if (!askScene(i_child, sp_scene.get(), type, exists)) return m_working;
        if (exists) return appendPresent(i_child, sp_scene.get(), i_index);
        m_data.Append("");
        m_data.Append(type == CatSceneTypeFull ? kTrue : "");
        return m_working;
    }

    bool askScene(const Child& i_child, CATIAScene* ipi_scene, CatSceneType& o_type, CAT_VARIANT_BOOL& o_exists) const {
        if (!ipi_scene) return SUCCEEDED(m_frame.badInput("catia_scene_object"));
        if (FAILED(ipi_scene->get_Type(o_type))) return SUCCEEDED(m_frame.callFailed("get_Type"));
        m_frame.write(o_type == CatSceneTypeFull ? "it is a full scene" : "it is a partial scene");
        if (!i_child.automation) return SUCCEEDED(m_frame.badInput("p_child_catiaproduct"));
        if (FAILED(ipi_scene->ExistsInScene(i_child.automation.get(), o_exists)))
            return SUCCEEDED(m_frame.callFailed("ExistsInScene"));
        return true;
    }

    Position appendPresent(const Child& i_child, CATIAScene* ipi_scene, long i_index) {
        InterfacePtr<CATIASceneProduct> sp_data;
        const auto get_data = [&](CATIASceneProduct*& o_data) {
            return ipi_scene->GetSceneProductData(i_child.automation.get(), o_data);
        };
        if (FAILED(obtain(sp_data, get_data))) {
            m_frame.badInput("scene_product_data");
            return m_working;
        }
        takeParentPosition(i_index);
        Position absolute = m_working;
        Position position;
        if (readPosition(sp_data.get(), position)) {
            VornToolsScenes::multiplyPositionMatrix(m_working.data(), position.data(), absolute.data());
            m_data.Append(positionText(absolute));
        } else {
            m_data.Append("");
        }
        m_data.Append(hiddenFlag(sp_data.get()));
        return absolute;
    }

    /** Kept because the commands rely on it: a child that is not in a scene gets the position that was taken last, for
     * whatever child and scene, and the identity before any was. */
    void takeParentPosition(long i_index) {
        if (!m_parents)
            m_working = kIdentity;
        else if (i_index <= m_parents->Size())
            if (const CATMathTransformation* const p_parent = (*m_parents)[static_cast<int>(i_index)])
                p_parent->GetCoefficients(m_working.data());
    }

    const JournalFrame& m_frame;
    IEnumVARIANT* const m_scenes;
    const long m_count;
    const CATListPtrCATMathTransformation* const m_parents;
    CATListValCATUnicodeString& m_data;
    Position m_working = kIdentity;
};

/** Whether the scenes data tell that a product is hidden in a scene. */
bool isHidden(const CATListValCATUnicodeString& i_data, const CATUnicodeString& i_path,
              const CATUnicodeString& i_scene_name) {
    const CATUnicodeString hidden(kTrue);
    // Kept because groups may be short: any place of the list may begin one.
    for (int i = 1; i + kGroupSize - 1 <= i_data.Size(); ++i)
        if (i_data[i] == i_path && i_data[i + 1] == i_scene_name && i_data[i + 3] == hidden) return true;
    return false;
}

/** Calls `visit(CATIProduct* parent, bool& stop)` for each parent from the nearest to the root. @return the code of the
 * last getParent, or the negative one of a visit */
template <class Visit>
HRESULT forEachParent(CATIProduct* ipi_product, Visit&& i_visit) {
    auto sp_product = InterfacePtr<CATIProduct>::share(ipi_product);
    while (true) {
        InterfacePtr<CATIProduct> sp_parent;
        HRESULT code = sp_parent.receive(
            [&](CATIProduct*& o_parent) { return VornToolsCommon::getParent(sp_product.get(), o_parent); });
        if (FAILED(code) || !sp_parent) return code;
        bool stop = false;
        code = i_visit(sp_parent.get(), stop);
        if (FAILED(code) || stop) return code;
        sp_product = std::move(sp_parent);
    }
}

/** What cannot tell whether it is a component is none; the question has been reported. */
bool isComponent(CATIProduct* ipi_product) {
    unsigned char is_component = 0;
    return SUCCEEDED(VornToolsCommon::isComponent(ipi_product, is_component)) && is_component;
}

HRESULT isHiddenInScene(const JournalFrame& i_frame, CATIProduct* ipi_product, const CATListValCATUnicodeString& i_data,
                        const CATUnicodeString& i_scene_name, bool& o_hidden) {
    CATUnicodeString path;
    unsigned char has_component_parent = 0;
    o_hidden = false;
    if (FAILED(VornToolsScenes::getParentsWithComponents(ipi_product, path, has_component_parent)))
        return i_frame.callFailed("getParentsWithComponents");
    o_hidden = isHidden(i_data, path, i_scene_name);
    return S_OK;
}

} // namespace

HRESULT VornToolsScenes::getAllScenesOnRoot(CATIProduct* ipi_root, IEnumVARIANT*& opi_scenes, long& o_count) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllScenesOnRoot");
    opi_scenes = nullptr;
    o_count = 0;
    if (!ipi_root) return frame.badInput("ipi_root");
    const auto report = [&](HRESULT i_code, const char* i_what) {
        frame.badInput(i_what);
        return i_code;
    };
    InterfacePtr<CATBaseDispatch> sp_item;
    HRESULT code = obtainScenesItem(ipi_root, sp_item);
    if (FAILED(code)) return report(code, "p_base_dispatch");
    InterfacePtr<CATIACollection> sp_collection;
    code = obtainInterface(sp_item.get(), sp_collection);
    if (FAILED(code)) return report(code, "catia_collection_scenes");
    CATLONG count = 0;
    code = sp_collection->get_Count(count);
    if (FAILED(code)) {
        frame.callFailed("get_Count");
        return code;
    }
    InterfacePtr<IEnumVARIANT> sp_scenes;
    code = obtainEnumeration(sp_collection.get(), sp_scenes);
    if (FAILED(code)) return report(code, "o_list_scenes_enum");
    o_count = count;
    opi_scenes = sp_scenes.detach();
    return S_OK;
}

HRESULT VornToolsScenes::readScenesNamesInAssy(CATIProduct* ipi_root, CATListValCATUnicodeString& o_names) {
    const JournalFrame frame(_CteCLASS_NAME, "readScenesNamesInAssy");
    o_names.RemoveAll();
    InterfacePtr<IEnumVARIANT> sp_scenes;
    long count = 0;
    HRESULT code =
        sp_scenes.receive([&](IEnumVARIANT*& o_scenes) { return getAllScenesOnRoot(ipi_root, o_scenes, count); });
    if (!sp_scenes) {
        frame.badInput("list_scenes_enum");
        return code;
    }
    CATListValCATUnicodeString names;
    code = forEachScene(frame, sp_scenes.get(), count, [&](CATBaseDispatch* ipi_scene, long) {
        CATUnicodeString name;
        if (readSceneName(frame, ipi_scene, name)) names.Append(name);
    });
    if (SUCCEEDED(code)) o_names = names;
    return code;
}

HRESULT VornToolsScenes::readScenesDataInAssy(CATUnicodeString i_root_name, CATIProduct* ipi_parent,
                                              IEnumVARIANT* ipi_scenes,
                                              CATListPtrCATMathTransformation i_parent_positions, long i_count,
                                              CATListValCATUnicodeString& o_data) {
    const JournalFrame frame(_CteCLASS_NAME, "readScenesDataInAssy");
    const bool is_root = !i_root_name.IsNull();
    if (is_root) o_data.RemoveAll();
    if (!ipi_parent) return frame.badInput("ip_parent_catiproduct");

    auto sp_scenes = InterfacePtr<IEnumVARIANT>::share(is_root ? nullptr : ipi_scenes);
    CATUnicodeString name;
    if (is_root) {
        if (FAILED(readNameWithoutExtension(frame, i_root_name, name))) return E_FAIL;
        sp_scenes.receive([&](IEnumVARIANT*& o_scenes) { return getAllScenesOnRoot(ipi_parent, o_scenes, i_count); });
    }
    if (!sp_scenes) frame.badInput("list_scenes_enum");
    const std::unique_ptr<CATListValCATBaseUnknown_var> p_children(sp_scenes ? ipi_parent->GetChildren() : nullptr);
    if (!p_children) {
        frame.badInput("p_all_children");
        return S_OK;
    }
    if (is_root) {
        o_data.Append(kOpeningEntry);
        o_data.Append(name);
    }
    SceneGroups groups(frame, sp_scenes.get(), i_count, is_root ? nullptr : &i_parent_positions, o_data);
    for (int i = 1; i <= p_children->Size(); ++i) {
        const CATIProduct_var sp_child = (*p_children)[i];
        if (!!sp_child)
            groups.append(sp_child);
        else
            frame.badInput("p_child_catiproduct");
    }
    if (is_root) o_data.Append(kClosingEntry);
    return S_OK;
}

HRESULT VornToolsScenes::getParentsWithComponents(CATIProduct* ipi_product, CATUnicodeString& o_path,
                                                  unsigned char& o_has_component_parent) {
    const JournalFrame frame(_CteCLASS_NAME, "getParentsWithComponents");
    o_path = "";
    o_has_component_parent = 0;
    if (!ipi_product) return frame.badInput("ip_product");
    CATUnicodeString path;
    if (FAILED(VornToolsCommon::getPrdInstanceNameWithoutNewLines(ipi_product, path)))
        return frame.callFailed("getPrdInstanceNameWithoutNewLines");
    bool has_component_parent = false;
    const HRESULT code = forEachParent(ipi_product, [&](CATIProduct* ipi_parent, bool&) {
        CATUnicodeString name;
        if (FAILED(VornToolsCommon::getPrdInstanceNameWithoutNewLines(ipi_parent, name)))
            return frame.callFailed("getPrdInstanceNameWithoutNewLines");
        path.Append(kPathSeparator).Append(name);
        has_component_parent = isComponent(ipi_parent) || has_component_parent;
        return S_OK;
    });
    frame.write("getParent is failed.");
    if (FAILED(code)) return code;
    o_path = path;
    o_has_component_parent = has_component_parent ? 1 : 0;
    return code;
}

HRESULT VornToolsScenes::hasParentHideInScene(CATIProduct* ipi_product, CATListValCATUnicodeString i_scenes_data,
                                              CATUnicodeString i_scene_name, CATUnicodeString& o_hidden_by_parent,
                                              CATUnicodeString& o_hidden_by_component) {
    const JournalFrame frame(_CteCLASS_NAME, "hasParentHideInScene");
    o_hidden_by_parent = kFalse;
    o_hidden_by_component = kFalse;
    if (!ipi_product) return frame.badInput("ip_product");
    bool by_parent = false;
    bool by_component = false;
    const HRESULT code = forEachParent(ipi_product, [&](CATIProduct* ipi_parent, bool& o_stop) {
        bool hidden = false;
        const HRESULT result = isHiddenInScene(frame, ipi_parent, i_scenes_data, i_scene_name, hidden);
        if (hidden) (isComponent(ipi_parent) ? by_component : by_parent) = true;
        o_stop = by_parent;
        return result;
    });
    if (FAILED(code)) return code;
    if (by_parent) o_hidden_by_parent = kTrue;
    if (by_component) o_hidden_by_component = kTrue;
    return code;
}

HRESULT VornToolsScenes::hasParentComponentHideInScene(CATIProduct* ipi_product,
                                                       CATListValCATUnicodeString i_scenes_data,
                                                       CATUnicodeString i_scene_name, CATUnicodeString& o_hidden) {
    const JournalFrame frame(_CteCLASS_NAME, "hasParentComponentHideInScene");
    o_hidden = kFalse;
    if (!ipi_product) return frame.badInput("ip_product");
    bool hidden = false;
    const HRESULT code = forEachParent(ipi_product, [&](CATIProduct* ipi_parent, bool& o_stop) {
        o_stop = !isComponent(ipi_parent);
        if (o_stop) return S_OK;
        const HRESULT result = isHiddenInScene(frame, ipi_parent, i_scenes_data, i_scene_name, hidden);
        o_stop = hidden;
        return result;
    });
    if (SUCCEEDED(code) && hidden) o_hidden = kTrue;
    return code;
}

void VornToolsScenes::getMatrixString(double i_values[12], char* op_buffer) {
    const JournalFrame frame(_CteCLASS_NAME, "getMatrixString");
    if (!op_buffer) return;
    *op_buffer = '\0';
    if (!i_values) return;
    char* p_end = op_buffer;
    for (std::size_t i = 0; i < kIdentity.size(); ++i) {
        char number[32];
        const int length = std::snprintf(number, sizeof number, i == 0 ? "%.16G" : " %.16G", i_values[i]);
        // The locale's decimal separator.
        p_end = std::replace_copy(number, number + length, p_end, ',', '.');
    }
    *p_end = '\0';
}

// NOLINTNEXTLINE(readability-non-const-parameter): the signature that callers know
void VornToolsScenes::multiplyPositionMatrix(double* ip_a, double* ip_b, double* op_result) {
    std::optional<JournalFrame> frame;
    if (VornDebugOptions::getDebugModeValue()) frame.emplace(_CteCLASS_NAME, "multiplyPositionMatrix");
    if (!ip_a || !ip_b || !op_result) return;
    Position result = kIdentity;
    for (std::size_t column = 0; column < 4; ++column) {
        const double* const p_b = ip_b + 3 * column;
        for (std::size_t row = 0; row < 3; ++row)
            result[3 * column + row] = ip_a[row] * p_b[0] + ip_a[3 + row] * p_b[1] + ip_a[6 + row] * p_b[2];
    }
    for (std::size_t row = 0; row < 3; ++row) result[9 + row] += ip_a[9 + row];
    std::copy(result.begin(), result.end(), op_result);
}

CATUnicodeString VornToolsScenes::replaceAll(CATUnicodeString i_text, const CATUnicodeString& i_pattern,
                                             const CATUnicodeString& i_replacement) {
    const JournalFrame frame(_CteCLASS_NAME, "replaceAll");
    if (!i_pattern.IsNull()) i_text.ReplaceAll(i_pattern, i_replacement);
    return i_text;
}
