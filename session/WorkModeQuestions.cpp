#include "VornToolsCommon.h"

#include "cache/DatLines.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATSessionServices.h"
#include "VornToolsWorkModeServices.h"

using namespace vorntools;

namespace {

struct LoadType {
    const char* text;
    VornToolsCommon::EnumLoadedFor loaded_for;
};
constexpr LoadType kLoadTypes[] = {{"LFC", VornToolsCommon::LoadedForLifeCycle},
                                   {"consult", VornToolsCommon::LoadedForConsultation},
                                   {"LFCCgr", VornToolsCommon::LoadedForLifeCycleAsCgr},
                                   {"consultCgr", VornToolsCommon::LoadedForConsultationAsCgr},
                                   {"Cgr", VornToolsCommon::LoadedAsCgr}};

VornToolsCommon::EnumLoadedFor loadedFor(const CATUnicodeString& i_load_type) {
    for (const LoadType& known : kLoadTypes)
        if (i_load_type == CATUnicodeString(known.text)) return known.loaded_for;
    return VornToolsCommon::LoadedForNothing;
}

bool holds(const CATUnicodeString& i_text, const CATUnicodeString& i_part) {
    return i_text.SearchSubString(i_part) >= 0;
}

} // namespace

HRESULT VornToolsCommon::isCATPartInVisuModeAnActivateNode(CATIProduct* ipi_product, unsigned char& o_is_active) {
    const JournalFrame frame(_CteCLASS_NAME, "isCATPartInVisuModeAnActivateNode");
    const auto work = [&]() -> HRESULT {
        VornToolsWorkModeServices::EnumWorkMode mode = VornToolsWorkModeServices::WorkModeUnknown;
        o_is_active = SUCCEEDED(VornToolsWorkModeServices::getWorkModeCAA(ipi_product, mode)) ? 1 : 0;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::isFileNameInVisu(CATUnicodeString i_file_name, unsigned char& o_is_in_visu) {
    const JournalFrame frame(_CteCLASS_NAME, "isFileNameInVisu");
    o_is_in_visu = 1;
    const auto work = [&]() -> HRESULT {
        frame.write("input file name %s", i_file_name);
        const CATListPtrCATDocument* const p_documents = ListDocuments();
        const int count = p_documents ? p_documents->Size() : 0;
        for (int i = 1; i <= count && o_is_in_visu; ++i) {
            if (!(*p_documents)[i]) continue;
            const CATUnicodeString name = (*p_documents)[i]->StorageName();
            frame.write("-->%d: %s\n", i, name);
            if (!holds(name, i_file_name)) continue;
            frame.write("file name match with input file name");
            if (holds(name, "cgr")) continue;
            frame.write("file name does not contain cgr");
            o_is_in_visu = 0;
        }
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

unsigned char VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(CATUnicodeString i_file_name, CATDocument* ip_document,
                                                              EnumLoadedFor& o_loaded_for) {
    const JournalFrame frame(_CteCLASS_NAME, "isLoadedForLFCOrConsultOrAsCGR");
    o_loaded_for = LoadedForNothing;
    const auto ask = [&]() -> unsigned char {
        CATUnicodeString uuid;
        if (FAILED(getDocUUID(ip_document, uuid))) {
            frame.callFailed("getDocUUID");
            uuid = "";
        }
        CATListValCATUnicodeString lines;
        if (FAILED(readDatTools(i_file_name, uuid, lines))) {
            frame.write("readDatTools returns failed for : %s", i_file_name);
            return 0;
        }
        constexpr int kPositionalLoadType = 6;
        const DatLines dat(lines);
        const bool positional = dat.isPositional();
        if (!positional && !dat.has(DatTag::LoadType)) return 0;
        o_loaded_for = loadedFor(positional ? dat.fileLine(kPositionalLoadType) : dat.valueOf(DatTag::LoadType));
        return 1;
    };
    return guarded(ask, static_cast<unsigned char>(0));
}
