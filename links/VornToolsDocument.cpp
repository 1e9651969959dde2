#include "VornToolsDocument.h"

#include "foundation/Environment.h"
#include "foundation/JournalFrame.h"
#include "links/LogicalNames.h"

#include "CATDocumentServices.h"

using namespace vorntools;

const CATUnicodeString VornToolsDocument::_CteCLASS_NAME("VornToolsDocument::");

HRESULT VornToolsDocument::getDocumentInSession(const CATUnicodeString& name, CATDocument*& document) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentInSession");
    document = nullptr;
    if (name.IsNull()) return frame.badInput("name");

    CATUnicodeString session_name(name);
    if (environmentSays(&ENVManager::getCATIAIsUsingDLName)) makeLogical(session_name);
    CATDocument* p_found = nullptr;
    const HRESULT code = CATDocumentServices::GetDocumentInSession(session_name, p_found);
    if (FAILED(code)) return code;
    document = p_found;
    return p_found ? code : E_FAIL;
}
