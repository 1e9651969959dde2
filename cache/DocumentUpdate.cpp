#include "VornToolsCommon.h"

#include "foundation/Environment.h"
#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "APIDraftingInterfaces.h"
#include "CATDocument.h"
#include "CATIADocument.h"
#include "CATIDocId.h"
#include "CATIDocRoots.h"
#include "CATISpecObject.h"
#include "UTILFile.h"
#include "VornIHMMessageDialog.h"
#include "VornToolsDocument.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>

using namespace vorntools;

namespace {

constexpr const char* kManagedTypes[] = {"CATPart",
                                         "CATProduct",
                                         "CATDrawing",
                                         "CATProcess",
                                         "CATAnalysis",
                                         "catalog",
                                         "wrl",
                                         "CATShape",
                                         "model",
                                         "cgr",
                                         "jt",
                                         "CATAnalysisResults",
                                         "CATAnalysisComputations"};

// Message "is not up to date" of the integration's catalogue.
constexpr int kUpdateCatalogue = 11208;
constexpr int kPartNotUpToDate = 11125;

/** True as well when the document does not tell. */
bool holdsChanges(CATDocument* ip_document) {
    const auto sp_document = queryInterface<CATIADocument>(ip_document);
    CAT_VARIANT_BOOL saved = 0;
    return !sp_document || FAILED(sp_document->get_Saved(saved)) || saved == 0;
}

bool drawingIsToBeUpdated() {
    if (processSays(&PROCManager::isCommandBRR)) return environmentSays(&ENVManager::isUpdateDrawingInLUS);
    return environmentSays(&ENVManager::updateDrawing) && !processSays(&PROCManager::isCommandCreateSpreadsheet);
}

void updateDrawing(const JournalFrame& i_frame, CATDocument* ip_document) {
    if (!drawingIsToBeUpdated()) {
        i_frame.write("Do not manage update of drawing");
        return;
    }
    const unsigned char save_details = environmentSays(&ENVManager::saveDetailSheet) ? 1 : 0;
    if (FAILED(APIDraftingInterfaces::updateDrawing(ip_document, save_details)))
        i_frame.callFailed("APIDraftingInterfaces::updateDrawing");
}

CATBaseUnknown_var firstRootOf(CATDocument* ip_document) {
    const auto sp_roots = queryInterface<CATIDocRoots>(ip_document);
    const std::unique_ptr<CATListValCATBaseUnknown_var> roots(sp_roots ? sp_roots->GiveDocRoots() : nullptr);
    return roots && roots->Size() > 0 ? (*roots)[1] : CATBaseUnknown_var();
}

/** Reports what is missing and closes the entry, which its frame then closes again. Kept because those who read the
 * journals know a part without its objects by this second line. */
void reportMissingTwiceClosed(const JournalFrame& i_frame, const char* i_variable) {
    i_frame.missing(i_variable);
    if (JNLManager* const p_journal = JNLManager::getInstance()) p_journal->writeFunctionEnd(i_frame.name(), -1);
}

void warnWhenPartIsNotUpToDate(const JournalFrame& i_frame, CATDocument* ip_document) {
    if (!environmentSays(&ENVManager::checkForUpdatePart)) {
        i_frame.write("checkForUpdatePart preference is set to false");
        return;
    }
    i_frame.write("checkForUpdatePart preference is set to true");
    const CATBaseUnknown_var sp_root = firstRootOf(ip_document);
    if (!sp_root) return reportMissingTwiceClosed(i_frame, "pi_doc_root");
    const auto sp_spec_object = queryInterface<CATISpecObject>(static_cast<CATBaseUnknown*>(sp_root));
    if (!sp_spec_object) return reportMissingTwiceClosed(i_frame, "pi_spec_object");
    if (sp_spec_object->IsUpToDate(NULL_var)) return;
    VornIHMMessageDialog::addDynamicLocalizedMessage(0, kUpdateCatalogue, kPartNotUpToDate);
    VornIHMMessageDialog::addDynamicUnlocalizedMessage(kUpdateCatalogue, ip_document->StorageName(), 0);
}

} // namespace

unsigned char VornToolsCommon::isDocumentInSessionManagedByMaro(CATDocument* ip_cat_document) {
    static const CATUnicodeString name = _CteCLASS_NAME + "isDocumentInSessionManagedByMaro";
    const JournalFrame frame(name);
    if (!ip_cat_document) {
        frame.badInput("ip_cat_document");
        return 0;
    }
    InterfacePtr<CATIDocId> sp_doc_id;
    sp_doc_id.receive([&](CATIDocId*& o_doc_id) { return ip_cat_document->GetDocId(&o_doc_id); });
    CATUnicodeString type;
    if (!sp_doc_id || FAILED(sp_doc_id->GetType(type))) {
        frame.platformFailed(sp_doc_id ? "CATIDocId::GetType" : "CATDocument::GetDocId");
        return 0;
    }
    const char* const text = type.ConvertToChar();
    const auto is_type = [text](const char* i_managed) { return std::strcmp(text, i_managed) == 0; };
    return std::any_of(std::begin(kManagedTypes), std::end(kManagedTypes), is_type) ? 1 : 0;
}

HRESULT VornToolsCommon::isModifiedStatusInCATIA(CATUnicodeString i_file_name, unsigned char& o_modified) {
    const JournalFrame frame(_CteCLASS_NAME, "isModifiedStatusInCATIA");
    o_modified = 0;
    if (!UTILFile::existingFile(i_file_name)) return S_OK;

    CATDocument* p_document = nullptr;
    const HRESULT code = VornToolsDocument::getDocumentInSession(i_file_name, p_document);
    if (FAILED(code) || !p_document) return code;
    o_modified = holdsChanges(p_document) ? 1 : 0;
    return S_OK;
}

HRESULT VornToolsCommon::isDocumentToBeSaved(CATDocument* ip_document, unsigned char& o_to_be_saved) {
    const JournalFrame frame(_CteCLASS_NAME, "isDocumentToBeSaved");
    o_to_be_saved = holdsChanges(ip_document) ? 1 : 0;
    return S_OK;
}

HRESULT VornToolsCommon::documentIsUpToDate(CATDocument* ip_document, int i_document_type) {
    const JournalFrame frame(_CteCLASS_NAME, "documentIsUpToDate");
    if (!ip_document) return frame.badInput("ip_document");
    if (i_document_type == DocumentTypeDrawing) updateDrawing(frame, ip_document);
    if (i_document_type == DocumentTypePart) warnWhenPartIsNotUpToDate(frame, ip_document);
    return S_OK;
}
