#include "VornToolsScenes.h"

#include "foundation/FileNames.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"
#include "links/SceneGroups.h"

#include "CATIProduct.h"

#include <memory>

using namespace vorntools;

const CATUnicodeString VornToolsScenes::_CteCLASS_NAME("VornToolsScenes::");

namespace {

constexpr const char* kOpeningEntry = "<CATProduct>";
constexpr const char* kClosingEntry = "</CATProduct>";

/** @return E_FAIL, reported, when the name cannot be split */
HRESULT readNameWithoutExtension(const JournalFrame& i_frame, const CATUnicodeString& i_full_name,
                                 CATUnicodeString& o_name) {
    CATUnicodeString directory;
    if (FAILED(splitFullName(i_full_name, directory, o_name))) return i_frame.callFailed("splitPathAndFileName");
    const int dot = o_name.SearchSubString(".", 0, CATUnicodeString::CATSearchModeBackward);
    if (dot >= 0) o_name = o_name.SubString(0, dot);
    return S_OK;
}

} // namespace

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

CATUnicodeString VornToolsScenes::replaceAll(CATUnicodeString i_text, const CATUnicodeString& i_pattern,
                                             const CATUnicodeString& i_replacement) {
    const JournalFrame frame(_CteCLASS_NAME, "replaceAll");
    if (!i_pattern.IsNull()) i_text.ReplaceAll(i_pattern, i_replacement);
    return i_text;
}
