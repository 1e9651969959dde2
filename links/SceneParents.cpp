#include "VornToolsScenes.h"

#include "foundation/Guarded.h"
#include "links/Ancestors.h"
#include "links/SceneGroups.h"

using namespace vorntools;

namespace {

constexpr const char* kPathSeparator = "!";
constexpr int kGroupSize = 4;

/** Whether the scenes data tell that a product is hidden in a scene. */
bool isHidden(const CATListValCATUnicodeString& i_data, const CATUnicodeString& i_path,
              const CATUnicodeString& i_scene_name) {
    const CATUnicodeString hidden(kTrueFlag);
    // Kept because groups may be short: any place of the list may begin one.
    for (int i = 1; i + kGroupSize - 1 <= i_data.Size(); ++i)
        if (i_data[i] == i_path && i_data[i + 1] == i_scene_name && i_data[i + 3] == hidden) return true;
    return false;
}

/** What cannot tell whether it is a component is none; the question has been reported. */
bool isComponent(CATIProduct* ipi_product) {
    unsigned char is_component = 0;
    return SUCCEEDED(VornToolsCommon::isComponent(ipi_product, is_component)) && is_component;
}

CATUnicodeString readInstanceName(CATIProduct* ipi_product) {
    CATUnicodeString name;
    VornToolsCommon::getPrdInstanceNameWithoutNewLines(ipi_product, name);
    return name;
}

HRESULT isHiddenInScene(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_data,
                        const CATUnicodeString& i_scene_name, bool& o_hidden) {
    CATUnicodeString path;
    unsigned char has_component_parent = 0;
    const HRESULT code = VornToolsScenes::getParentsWithComponents(ipi_product, path, has_component_parent);
    o_hidden = SUCCEEDED(code) && isHidden(i_data, path, i_scene_name);
    return code;
}

} // namespace

HRESULT VornToolsScenes::getParentsWithComponents(CATIProduct* ipi_product, CATUnicodeString& o_path,
                                                  unsigned char& o_has_component_parent) {
    const JournalFrame frame(_CteCLASS_NAME, "getParentsWithComponents");
    o_path = "";
    o_has_component_parent = 0;
    if (!ipi_product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        o_path = readInstanceName(ipi_product);
        const HRESULT code = forEachAncestor(ipi_product, [&](CATIProduct* ipi_parent, bool&) {
            o_path.Append(kPathSeparator).Append(readInstanceName(ipi_parent));
            if (isComponent(ipi_parent)) o_has_component_parent = 1;
            return S_OK;
        });
        frame.write("getParent is failed.");
        if (SUCCEEDED(code)) return code;
        o_path = "";
        o_has_component_parent = 0;
        return code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsScenes::hasParentHideInScene(CATIProduct* ipi_product, CATListValCATUnicodeString i_scenes_data,
                                              CATUnicodeString i_scene_name, CATUnicodeString& o_hidden_by_parent,
                                              CATUnicodeString& o_hidden_by_component) {
    const JournalFrame frame(_CteCLASS_NAME, "hasParentHideInScene");
    o_hidden_by_parent = kFalseFlag;
    o_hidden_by_component = kFalseFlag;
    if (!ipi_product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        bool by_parent = false;
        bool by_component = false;
        const HRESULT code = forEachAncestor(ipi_product, [&](CATIProduct* ipi_parent, bool& o_stop) {
            const bool is_component = isComponent(ipi_parent);
            bool hidden = false;
            const HRESULT result = isHiddenInScene(ipi_parent, i_scenes_data, i_scene_name, hidden);
            if (hidden) (is_component ? by_component : by_parent) = true;
            o_stop = by_parent;
            return result;
        });
        if (FAILED(code)) return code;
        if (by_parent) o_hidden_by_parent = kTrueFlag;
        if (by_component) o_hidden_by_component = kTrueFlag;
        return code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsScenes::hasParentComponentHideInScene(CATIProduct* ipi_product,
                                                       CATListValCATUnicodeString i_scenes_data,
                                                       CATUnicodeString i_scene_name, CATUnicodeString& o_hidden) {
    const JournalFrame frame(_CteCLASS_NAME, "hasParentComponentHideInScene");
    o_hidden = kFalseFlag;
    if (!ipi_product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        bool hidden = false;
        const HRESULT code = forEachAncestor(ipi_product, [&](CATIProduct* ipi_parent, bool& o_stop) {
            o_stop = !isComponent(ipi_parent);
            if (o_stop) return S_OK;
            const HRESULT result = isHiddenInScene(ipi_parent, i_scenes_data, i_scene_name, hidden);
            o_stop = hidden;
            return result;
        });
        if (SUCCEEDED(code) && hidden) o_hidden = kTrueFlag;
        return code;
    };
    return guarded(work, E_FAIL);
}
