#include "VornToolsCommon.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "APIDraftingInterfaces.h"
#include "CATDocument.h"
#include "CATIDocRoots.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "VornIHMMessageDialog.h"

#include <memory>

using namespace vorntools;

namespace {

// Message "is not up to date" of the integration's catalogue.
constexpr int kUpdateCatalogue = 11208;
constexpr int kPartNotUpToDate = 11125;

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
    i_frame.writeEnd();
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

HRESULT VornToolsCommon::documentIsUpToDate(CATDocument* ip_document, int i_document_type) {
    const JournalFrame frame(_CteCLASS_NAME, "documentIsUpToDate");
    if (!ip_document) return frame.badInput("ip_document");
    const auto work = [&]() -> HRESULT {
        if (i_document_type == DocumentTypeDrawing) updateDrawing(frame, ip_document);
        if (i_document_type == DocumentTypePart) warnWhenPartIsNotUpToDate(frame, ip_document);
        return S_OK;
    };
    return guarded(work, E_FAIL);
}
