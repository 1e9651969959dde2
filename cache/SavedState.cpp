#include "cache/SavedState.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "VornToolsCommon.h"
#include "VornToolsDocument.h"

using namespace vorntools;

HRESULT VornToolsCommon::isModifiedStatusInCATIA(CATUnicodeString i_file_name, unsigned char& o_modified) {
    const JournalFrame frame(_CteCLASS_NAME, "isModifiedStatusInCATIA");
    o_modified = 0;
    const auto work = [&]() -> HRESULT {
        if (!fileExists(i_file_name)) return S_OK;
        CATDocument* p_document = nullptr;
        const HRESULT code = VornToolsDocument::getDocumentInSession(i_file_name, p_document);
        if (FAILED(code) || !p_document) return code;
        const auto ask = [&] { return holdsChanges(queryInterface<CATIADocument>(p_document)); };
        o_modified = guarded(ask, true) ? 1 : 0;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::isDocumentToBeSaved(CATDocument* ip_document, unsigned char& o_to_be_saved) {
    const JournalFrame frame(_CteCLASS_NAME, "isDocumentToBeSaved");
    const auto ask = [&] { return holdsChanges(queryInterface<CATIADocument>(ip_document)); };
    o_to_be_saved = guarded(ask, true) ? 1 : 0;
    return S_OK;
}
