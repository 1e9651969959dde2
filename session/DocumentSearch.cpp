#include "VornToolsCommon.h"

#include "VornToolsDocument.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATSessionServices.h"
#include "UTILDLName.h"

#include <algorithm>

using namespace vorntools;

namespace {

/** Splits a full name into its parts; a failure is reported. */
HRESULT splitName(const JournalFrame& i_frame, const CATUnicodeString& i_full_name, CATUnicodeString& o_directory,
                  CATUnicodeString& o_file_name) {
    if (SUCCEEDED(splitFullName(i_full_name, o_directory, o_file_name))) return S_OK;
    return i_frame.callFailed("splitPathAndFileName");
}

/** Brings a name into the form without the marks of logical names; a failure is reported and leaves it as it is. */
HRESULT cleanUpName(const JournalFrame& i_frame, CATUnicodeString& io_name) {
    CATUnicodeString clean;
    if (FAILED(UTILDLName::cleanUpDLName(io_name, clean)) || clean.IsNull()) return i_frame.callFailed("cleanUpDLName");
    io_name = clean;
    return S_OK;
}

/** A name looked for among the session's documents. */
struct SoughtName {
    CATUnicodeString full_name;
    CATUnicodeString file_name;
    bool has_directory = false;
    bool is_logical = false; ///< whether documents are named by logical directory
};

/** Takes a name apart; failures are reported. */
SoughtName soughtName(const JournalFrame& i_frame, const CATUnicodeString& i_name) {
    SoughtName sought;
    sought.full_name = i_name;
    CATUnicodeString directory;
    splitName(i_frame, i_name, directory, sought.file_name);
    sought.has_directory = !directory.IsNull();
    if (!sought.has_directory) return sought;
    sought.is_logical = environmentSays(&ENVManager::getCATIAIsUsingDLName);
    if (sought.is_logical) cleanUpName(i_frame, sought.full_name);
    return sought;
}

/** Whether two names are equal but for letter case; an empty one, which nobody could read, equals none. */
bool isSameName(const CATUnicodeString& i_first, const CATUnicodeString& i_second) {
    return !i_first.IsNull() && i_first.Compare(i_second) != 0;
}

/** Whether a document has the name. @param o_code of the last step of reading its name */
bool hasName(const JournalFrame& i_frame, const CATDocument& i_document, const SoughtName& i_sought, HRESULT& o_code) {
    CATUnicodeString storage_name = i_document.StorageName();
    CATUnicodeString directory;
    CATUnicodeString file_name;
    o_code = splitName(i_frame, storage_name, directory, file_name);
    if (!i_sought.has_directory) {
        if (!isSameName(i_sought.file_name, file_name)) return false;
        i_frame.write("Document is found in session : %s", storage_name);
        return true;
    }
    if (i_sought.is_logical) o_code = cleanUpName(i_frame, storage_name);
    if (!isSameName(i_sought.full_name, storage_name)) return false;
    i_frame.write("Document is found in session");
    return true;
}

/** The managed document that the platform's own table knows under a full name; null when there is none. */
CATDocument* lookUpDocument(const CATUnicodeString& i_full_name) {
    CATDocument* p_document = nullptr;
    if (FAILED(VornToolsDocument::getDocumentInSession(i_full_name, p_document)) || !p_document) return nullptr;
    return VornToolsCommon::isDocumentInSessionManagedByMaro(p_document) ? p_document : nullptr;
}

/** The first managed document with the name; null when there is none. */
CATDocument* findDocument(const JournalFrame& i_frame, const SoughtName& i_sought, HRESULT& o_code) {
    const CATListPtrCATDocument* const p_documents = ListDocuments();
    if (!p_documents) return nullptr;
    const int count = p_documents->Size();
    for (int i = 1; i <= (std::min)(count, p_documents->Size()); ++i) {
        CATDocument* const p_document = (*p_documents)[i];
        if (!p_document || !VornToolsCommon::isDocumentInSessionManagedByMaro(p_document)) continue;
        if (hasName(i_frame, *p_document, i_sought, o_code)) return p_document;
    }
    return nullptr;
}

} // namespace

HRESULT VornToolsCommon::getDocumentsInSession(CATListPtrCATDocument& o_documents, const CATUnicodeString& i_type) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentsInSession");
    o_documents.RemoveAll();
    const auto work = [&]() -> HRESULT {
        const bool only_managed = i_type.IsNull() != 0;
        if (only_managed)
            frame.write("Retrieve only documents managed by Maro");
        else
            frame.write("Retrieve only documents of type : %s", i_type);
        const CATListPtrCATDocument* const p_documents = ListDocuments();
        if (!p_documents || p_documents->Size() == 0) {
            frame.write("There is not document in session");
            return S_OK;
        }
        for (int i = 1; i <= p_documents->Size(); ++i) {
            CATDocument* const p_document = (*p_documents)[i];
            if (!p_document) continue;
            const bool kept = only_managed ? isDocumentInSessionManagedByMaro(p_document) != 0
                                           : i_type == CATUnicodeString(p_document->IsA());
            if (kept) o_documents.Append(p_document);
        }
        if (o_documents.Size() == 0) frame.write("There is not valid document in session");
        return S_OK;
    };
    const HRESULT code = guarded(work, E_FAIL);
    if (FAILED(code)) o_documents.RemoveAll();
    return code;
}

HRESULT VornToolsCommon::getDocumentInSession(CATUnicodeString i_name, CATDocument*& op_document,
                                              unsigned char& o_found) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentInSession");
    op_document = nullptr;
    o_found = 0;
    const auto work = [&]() -> HRESULT {
        frame.write("searching in session the document : %s", i_name);
        const SoughtName sought = soughtName(frame, i_name);
        HRESULT code = S_OK;
        CATDocument* p_found = sought.has_directory ? lookUpDocument(sought.full_name) : nullptr;
        if (p_found)
            frame.write("Document is found in session (with VornToolsDocument::getDocumentInSession)");
        else
            p_found = findDocument(frame, sought, code);
        if (!p_found) return code;
        op_document = p_found;
        o_found = 1;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}
