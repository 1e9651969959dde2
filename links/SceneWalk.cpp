#include "links/SceneWalk.h"

#include "VornToolsScenes.h"
#include "foundation/AutomationText.h"
#include "foundation/Guarded.h"
#include "links/Obtain.h"

#include "CATIACollection.h"
#include "CATIAProduct.h"
#include "CATIAScene.h"
#include "CATIProduct.h"

namespace vorntools {

// The system's own interface: declared by its header alone.
template <>
struct InterfaceId<IEnumVARIANT> {
    static const IID& value() { return IID_IEnumVARIANT; }
};

HRESULT readSceneName(const JournalFrame& i_frame, CATBaseDispatch* ipi_scene, CATUnicodeString& o_name) {
    const auto sp_base = queryInterface<CATIABase>(ipi_scene);
    AutomationText name;
    if (!sp_base || FAILED(name.receive([&](CATBSTR& o_text) { return sp_base->get_Name(o_text); })))
        return i_frame.callFailed("get_Name");
    o_name = name.text();
    return S_OK;
}

} // namespace vorntools

using namespace vorntools;

namespace {

/** Name under which a root product keeps its scenes; the platform does not publish it. */
constexpr const char* kScenesItem = "ScenesCollection";

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

} // namespace

HRESULT VornToolsScenes::getAllScenesOnRoot(CATIProduct* ipi_root, IEnumVARIANT*& opi_scenes, long& o_count) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllScenesOnRoot");
    opi_scenes = nullptr;
    o_count = 0;
    if (!ipi_root) return frame.badInput("ipi_root");
    const auto work = [&]() -> HRESULT {
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
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsScenes::readScenesNamesInAssy(CATIProduct* ipi_root, CATListValCATUnicodeString& o_names) {
    const JournalFrame frame(_CteCLASS_NAME, "readScenesNamesInAssy");
    o_names.RemoveAll();
    InterfacePtr<IEnumVARIANT> sp_scenes;
    long count = 0;
    const HRESULT code =
        sp_scenes.receive([&](IEnumVARIANT*& o_scenes) { return getAllScenesOnRoot(ipi_root, o_scenes, count); });
    if (!sp_scenes) {
        frame.badInput("list_scenes_enum");
        return code;
    }
    const auto append_name = [&](CATBaseDispatch* ipi_scene, long) {
        CATUnicodeString name;
        if (SUCCEEDED(readSceneName(frame, ipi_scene, name))) o_names.Append(name);
    };
    if (guarded([&] { forEachScene(frame, sp_scenes.get(), count, append_name); })) return S_OK;
    o_names.RemoveAll();
    return E_FAIL;
}
