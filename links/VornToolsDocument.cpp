#include "VornToolsDocument.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/LogicalNames.h"

#include "CATDocumentServices.h"

using namespace vorntools;

const CATUnicodeString VornToolsDocument::_CteCLASS_NAME("VornToolsDocument::");

HRESULT VornToolsDocument::getDocumentInSession(const CATUnicodeString& name, CATDocument*& document) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentInSession");
    document = nullptr;
    if (name.IsNull()) return frame.badInput("name");

    const auto look_up = [&] {
        CATUnicodeString session_name(name);
        if (environmentSays(&ENVManager::getCATIAIsUsingDLName)) makeLogical(session_name);
        return CATDocumentServices::GetDocumentInSession(session_name, document);
    };
    HRESULT code = guarded(look_up, E_FAIL);
    if (SUCCEEDED(code) && !document) code = E_FAIL;
    if (FAILED(code)) document = nullptr;
    return code;
}
