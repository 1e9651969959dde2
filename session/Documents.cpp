#include "VornToolsCommon.h"

#include "foundation/JournalFrame.h"

#include "CATSessionServices.h"

using namespace vorntools;

HRESULT VornToolsCommon::getDocumentsInSession(CATListPtrCATDocument& o_documents, const CATUnicodeString& i_type) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentsInSession");
    o_documents.RemoveAll();
    const bool managed_only = i_type.IsNull();
    if (managed_only)
        frame.write("Retrieve only documents managed by Maro");
    else
        frame.write("Retrieve only documents of type : %s", i_type);
    const CATListPtrCATDocument* const p_documents = ListDocuments();
    const int count = p_documents ? p_documents->Size() : 0;
    if (count == 0) frame.write("There is not document in session");
    for (int i = 1; i <= count; ++i) {
        CATDocument* const p_document = (*p_documents)[i];
        if (!p_document) continue;
        const bool wanted = managed_only ? isDocumentInSessionManagedByMaro(p_document) != 0
                                         : i_type == CATUnicodeString(p_document->IsA());
        if (wanted) o_documents.Append(p_document);
    }
    if (o_documents.Size() == 0) frame.write("There is not valid document in session");
    return S_OK;
}
