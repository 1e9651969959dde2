#include "VornToolsCommon.h"

#include "foundation/AutomationText.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATApplicationFrame.h"
#include "CATCafCenterGraph.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATIAApplication.h"
#include "CATMsgCatalog.h"
#include "CATNavigBox.h"
#include "CATString.h"

using namespace vorntools;

namespace {

constexpr const char* kGraphicWindow = "CATFrmNavigGraphicWindow";
constexpr const char* kCommandTitles = "CATFrmCmdHeader";
constexpr const char* kReframeTitle = "CATFrmCmdHeader.ReframeOnHSO.Title";

} // namespace

HRESULT VornToolsCommon::centerGraphOnSelection(CATFrmWindow* ip_active_window) {
    const JournalFrame frame(_CteCLASS_NAME, "centerGraphOnSelection");
    const auto work = [&]() -> HRESULT {
        if (!ip_active_window) {
            frame.write("ip_active_window is NULL.");
            return E_FAIL;
        }
        if (!ip_active_window->IsAKindOf(kGraphicWindow)) return frame.missing("p_graphic_window");
        CATNavigBox* const p_navig_box = static_cast<CATFrmNavigGraphicWindow*>(ip_active_window)->GetNavigBox();
        if (!p_navig_box) return frame.missing("p_navig_box");
        const auto sp_center_graph = InterfacePtr<CATCafCenterGraph>::adopt(new CATCafCenterGraph);
        const HRESULT code = sp_center_graph->CenterGraph("OnCSO", p_navig_box);
        return FAILED(code) ? frame.platformFailed("CenterGraph") : code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::centerGraphOnSelection() {
    const JournalFrame frame(_CteCLASS_NAME, "centerGraphOnSelection");
    const auto work = [&]() -> HRESULT {
        CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
        if (!p_layout) return frame.badInput("p_layout");
        CATFrmWindow* const p_active_window = p_layout->GetCurrentWindow();
        if (!p_active_window) {
            frame.callFailed("GetCurrentWindow");
            return frame.missing("p_active_window");
        }
        return centerGraphOnSelection(p_active_window);
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::reframeOn() {
    const JournalFrame frame(_CteCLASS_NAME, "reframeOn");
    const auto work = [&]() -> HRESULT {
        const CATUnicodeString title = CATMsgCatalog::BuildMessage(kCommandTitles, kReframeTitle);
        if (title.IsNull()) return S_OK;
        CATApplicationFrame* const p_frame = CATApplicationFrame::GetFrame();
        if (!p_frame) return frame.missing("p_frame");
        InterfacePtr<CATIAApplication> sp_application;
        const HRESULT code = sp_application.receive([p_frame](CATIAApplication*& o_application) {
            void* p_found = nullptr;
            const HRESULT query_code = p_frame->QueryInterface(InterfaceId<CATIAApplication>::value(), &p_found);
            o_application = static_cast<CATIAApplication*>(p_found);
            return query_code;
        });
        if (!sp_application) {
            frame.missing("pi_application");
            return FAILED(code) ? code : E_FAIL;
        }
        const AutomationText command(title);
        if (FAILED(sp_application->StartCommand(command.get()))) frame.platformFailed("StartCommand");
        return code;
    };
    return guarded(work, E_FAIL);
}
