#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATIEditor.h"
#include "CATIIniInteractiveSession.h"
#include "CATSession.h"
#include "CATSessionServices.h"

using namespace vorntools;

namespace {

/** The current session, made now when there is none; null when that fails. */
CATSession* currentSession(const JournalFrame& i_frame) {
    if (CATSession* const p_cat_session = CATSession::GetPtrSession()) return p_cat_session;
    i_frame.writeInDebug("GetPtrSession returns NULL, create CATSession");
    char name[] = "test session";
    CATSession* p_created = nullptr;
    return SUCCEEDED(Create_Session(name, p_created)) ? p_created : nullptr;
}

/** Opens a file in a window. @return its document; null when it cannot be opened */
CATDocument* openInWindow(CATSession& i_session, const CATUnicodeString& i_path) {
    const auto sp_interactive = queryInterface<CATIIniInteractiveSession>(&i_session);
    if (!sp_interactive) return nullptr;
    InterfacePtr<CATIEditor> sp_editor;
    sp_editor.receive([&](CATIEditor*& o_editor) { return sp_interactive->Open(i_path, FALSE, &o_editor); });
    CATFrmEditor* const p_form_editor = sp_editor ? sp_editor->GetEditor() : nullptr;
    return p_form_editor ? p_form_editor->GetDocument() : nullptr;
}

} // namespace

HRESULT VornToolsCommon::openDocument(const CATUnicodeString& i_path, CATDocument*& op_document) {
    const JournalFrame frame(_CteCLASS_NAME, "openDocument");
    op_document = nullptr;
    const auto work = [&]() -> HRESULT {
        CATSession* const p_cat_session = currentSession(frame);
        CATDocument* p_opened = nullptr;
        if (p_cat_session) {
            frame.writeInDebug("p_cat_session=%p with id=[%s]", static_cast<const void*>(p_cat_session),
                               p_cat_session->GetIdent());
            p_opened = openInWindow(*p_cat_session, i_path);
        }
        if (!p_opened) return frame.report(ErrorDocumentNotOpened, i_path);
        frame.write("Document opened : %s.", p_opened->StorageName());
        op_document = p_opened;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}
