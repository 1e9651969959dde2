#include "VornToolsCommon.h"

#include "VornCache.h"
#include "VornToolsExportAsReference.h"
#include "VornToolsWorkModeServices.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/HoldingSwitch.h"
#include "foundation/JournalFrame.h"
#include "session/DescriptionText.h"
#include "session/ProductHelpers.h"

#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATIADocument.h"
#include "CATIDocRoots.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "UTILFile.h"
#include "VornIHMMessageDialog.h"

#include <memory>

using namespace vorntools;

namespace {

constexpr int kActiveDocumentCatalogue = 11221;
constexpr int kNoActiveDocument = 11137;
constexpr int kOpenADocument = 11507;

constexpr const char* kItemRevision = "<ItemRevUID>";

/** The document that a reference lies in. E_FAIL, reported, when it cannot be reached. */
HRESULT readDocument(const JournalFrame& i_frame, const InterfacePtr<CATIProduct>& i_reference,
                     CATDocument*& op_document) {
    op_document = documentOf(i_reference);
    return op_document ? S_OK : i_frame.missing("pi_linkable_object");
}

/** Loads a product that is not in design mode yet. The switcher journals what fails. */
void loadForDesign(VornToolsSwitchMgt& i_switcher, CATIProduct* ipi_product) {
    using Modes = VornToolsWorkModeServices;
    Modes::EnumWorkMode mode = Modes::WorkModeUnknown;
    Modes::getWorkMode(ipi_product, mode);
    if (mode != Modes::WorkModeDesign)
        HoldingSwitch(i_switcher).setWorkMode(ipi_product, Modes::WorkModeDesign, mode, 0);
}

void tellThatNoDocumentIsActive() {
    VornIHMMessageDialog::addDynamicLocalizedMessage(0, kActiveDocumentCatalogue, kNoActiveDocument);
    VornIHMMessageDialog::addDynamicLocalizedMessage(0, kActiveDocumentCatalogue, kOpenADocument);
    VornIHMMessageDialog::showDynamicInformationMessage(kActiveDocumentCatalogue, 0);
}

/** Puts the directory that its file lies in before a bare name. */
void completeName(CATUnicodeString& io_file_name) {
    if (contains(io_file_name, UTILFile::getPathSeparator())) return;
    unsigned char is_reference = 0;
    VornToolsExportAsReference().isAnExportAsReference(io_file_name, is_reference);
    CATUnicodeString full_name =
        environmentText(is_reference ? &ENVManager::getReferencePath : &ENVManager::getFilesDirectory);
    full_name.Append(io_file_name);
    io_file_name = full_name;
}

/** What the PDM knows of a product's document. */
struct KnownDocument {
    CATUnicodeString file_name;
    CATUnicodeString item_revision;
    bool has_dat_file = false;
};

KnownDocument lookUp(CATIProduct* ipi_product, VornCache& i_cache) {
    KnownDocument known;
    CATDocument* p_document = nullptr;
    VornToolsCommon::getDocumentFileName(ipi_product, p_document, known.file_name);
    completeName(known.file_name);
    if (environmentSays(&ENVManager::getCATIAIsUsingDLName)) makePhysical(known.file_name);
    known.has_dat_file = UTILFile::existingFile(known.file_name + ".dat") != 0;
    if (known.has_dat_file && SUCCEEDED(i_cache.addDocument(known.file_name, p_document)))
        i_cache.getDataAtLine(known.file_name, kItemRevision, known.item_revision);
    return known;
}

} // namespace

HRESULT VornToolsCommon::getCATDocument(CATIProduct* ipi_the_product, CATDocument*& op_document) {
    const JournalFrame frame(_CteCLASS_NAME, "getCATDocument");
    op_document = nullptr;
    if (!ipi_the_product) return frame.badInput("ipi_the_product");
    const auto work = [&]() -> HRESULT {
        const auto sp_reference = referenceOf(ipi_the_product);
        if (!sp_reference) return frame.missing("sp_reference");
        return readDocument(frame, sp_reference, op_document);
    };
    return guarded(work, E_FAIL);
}

CATDocument* VornToolsCommon::getCATDocument(CATIADocument* ipi_document) {
    const JournalFrame frame(_CteCLASS_NAME, "getCATDocument");
    const auto work = [&]() -> CATDocument* {
        if (ipi_document) return documentBehind(queryInterface<CATILinkableObject>(ipi_document));
        frame.badInput("ipi_document");
        return nullptr;
    };
    return guarded(work, nullptr);
}

HRESULT VornToolsCommon::getActiveCATDocument(CATDocument*& op_document, unsigned char i_tell_user) {
    const JournalFrame frame(_CteCLASS_NAME, "getActiveCATDocument");
    const auto work = [&]() -> HRESULT {
        CATFrmEditor* const p_editor = CATFrmEditor::GetCurrentEditor();
        op_document = p_editor ? p_editor->GetDocument() : nullptr;
        if (!op_document && i_tell_user) tellThatNoDocumentIsActive();
        return p_editor ? S_OK : E_FAIL;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getActiveCATIProduct(CATDocument* ip_active_document, CATIProduct*& opi_active_product) {
    const JournalFrame frame(_CteCLASS_NAME, "getActiveCATIProduct");
    opi_active_product = nullptr;
    if (!ip_active_document) return frame.badInput("ip_active_document");
    const auto work = [&]() -> HRESULT {
        const auto sp_main_doc_roots = queryInterface<CATIDocRoots>(ip_active_document);
        if (!sp_main_doc_roots) return frame.missing("pi_main_doc_roots");
        const std::unique_ptr<CATListValCATBaseUnknown_var> sp_roots(sp_main_doc_roots->GiveDocRoots());
        if (!sp_roots || sp_roots->Size() == 0) return S_OK;
        opi_active_product = queryInterface<CATIProduct>(static_cast<CATBaseUnknown*>((*sp_roots)[1])).detach();
        return opi_active_product ? S_OK : frame.missing("opi_active_product");
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getPrimaryDocument(CATIProduct* ipi_product, VornCache* ip_cache,
                                            CATUnicodeString& o_file_name, CATIProduct*& opi_primary_product) {
    const JournalFrame frame(_CteCLASS_NAME, "getPrimaryDocument");
    o_file_name = "";
    opi_primary_product = nullptr;
    if (!ipi_product) return frame.badInput("ipi_product");
    const auto work = [&]() -> HRESULT {
        for (auto sp_father = fatherOf(ipi_product); sp_father; sp_father = fatherOf(sp_father.get())) {
            unsigned char is_component = 0;
            if (FAILED(isComponent(sp_father.get(), is_component))) return frame.callFailed("isComponent");
            if (is_component) continue;
            if (!ip_cache) return E_FAIL;
            const KnownDocument known = lookUp(sp_father.get(), *ip_cache);
            if (!known.item_revision.IsNull()) {
                o_file_name = known.file_name;
                opi_primary_product = sp_father.detach();
                return S_OK;
            }
            unsigned char is_secondary = 0;
            const HRESULT code =
                isElementSecondaryPart(sp_father.get(), known.has_dat_file ? 0 : 1, known.item_revision, is_secondary);
            // A root is no instance, so that it has no description: it ends the search as any other unknown product
            // does.
            if (FAILED(code) && fatherOf(sp_father.get())) return frame.callFailed("isElementSecondaryPart");
            if (!is_secondary) return E_FAIL;
        }
        return E_FAIL;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getAndSwitchdocument(CATIProduct* ipi_the_product, VornToolsSwitchMgt* ip_switcher,
                                              CATDocument*& op_document) {
    const JournalFrame frame(_CteCLASS_NAME, "getAndSwitchdocument");
    op_document = nullptr;
    if (!ipi_the_product) return frame.badInput("ipi_the_product");
    if (!ip_switcher) return frame.badInput("ip_switcher");
    const auto work = [&]() -> HRESULT {
        auto sp_reference = referenceOf(ipi_the_product);
        if (!sp_reference) {
            loadForDesign(*ip_switcher, ipi_the_product);
            sp_reference = referenceOf(ipi_the_product);
        }
        if (!sp_reference) {
            frame.missing("pi_reference");
            return S_OK;
        }
        return readDocument(frame, sp_reference, op_document);
    };
    return guardedButForeign(work, E_FAIL);
}
