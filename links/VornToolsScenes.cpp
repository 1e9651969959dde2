#include "VornToolsScenes.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"
#include "links/SceneGroups.h"

#include "CATIProduct.h"
#include "CATLISTV_CATBaseUnknown.h"

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

/** Where the scenes of a call come from. */
struct ScenesSource {
    InterfacePtr<IEnumVARIANT> scenes;
    long count = 0;
    const CATListPtrCATMathTransformation* parent_positions = nullptr; ///< none at the root
};

/** Appends the groups of everything below a product. */
HRESULT appendGroups(const JournalFrame& i_frame, const ScenesSource& i_source,
                     const CATListValCATBaseUnknown_var& i_children, CATListValCATUnicodeString& io_data) {
    SceneGroups groups(i_frame, i_source.scenes.get(), i_source.count, i_source.parent_positions, io_data);
    for (int i = 1; i <= i_children.Size(); ++i) {
        const CATIProduct_var sp_child = i_children[i];
        if (!sp_child)
            i_frame.badInput("p_child_catiproduct");
        else if (FAILED(groups.append(sp_child)))
            return E_FAIL;
    }
    return S_OK;
}

/** @param i_root_name empty below the root */
HRESULT appendData(const JournalFrame& i_frame, const CATUnicodeString& i_root_name, CATIProduct* ipi_parent,
                   ScenesSource& io_source, CATListValCATUnicodeString& io_data) {
    const bool is_root = !i_root_name.IsNull();
    CATUnicodeString name;
    if (is_root) {
        if (FAILED(readNameWithoutExtension(i_frame, i_root_name, name))) return E_FAIL;
        io_source.scenes.receive([&](IEnumVARIANT*& o_scenes) {
            return VornToolsScenes::getAllScenesOnRoot(ipi_parent, o_scenes, io_source.count);
        });
    }
    if (!io_source.scenes) i_frame.badInput("list_scenes_enum");
    const std::unique_ptr<CATListValCATBaseUnknown_var> p_children(io_source.scenes ? ipi_parent->GetChildren()
                                                                                    : nullptr);
    if (!p_children) {
        i_frame.badInput("p_all_children");
        return S_OK;
    }
    if (is_root) {
        io_data.Append(kOpeningEntry);
        io_data.Append(name);
    }
    const HRESULT code = appendGroups(i_frame, io_source, *p_children, io_data);
    if (is_root) io_data.Append(kClosingEntry);
    return code;
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

    ScenesSource source;
    if (!is_root) source = {InterfacePtr<IEnumVARIANT>::share(ipi_scenes), i_count, &i_parent_positions};
    const int before = o_data.Size();
    const HRESULT code = guarded([&] { return appendData(frame, i_root_name, ipi_parent, source, o_data); }, E_FAIL);
    while (FAILED(code) && o_data.Size() > before) o_data.RemovePosition(o_data.Size());
    return code;
}

CATUnicodeString VornToolsScenes::replaceAll(CATUnicodeString i_text, const CATUnicodeString& i_pattern,
                                             const CATUnicodeString& i_replacement) {
    const JournalFrame frame(_CteCLASS_NAME, "replaceAll");
    if (!i_pattern.IsNull() && !guarded([&] { i_text.ReplaceAll(i_pattern, i_replacement); }))
        frame.callFailed("ReplaceAll");
    return i_text;
}
