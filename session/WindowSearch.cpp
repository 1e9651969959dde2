#include "VornToolsCommon.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/HoldingSwitch.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmWindow.h"
#include "CATIProduct.h"
#include "CATListOfCATFrmWindow.h"
#include "CATSessionServices.h"

#include <utility>

using namespace vorntools;

namespace {

using Modes = VornToolsWorkModeServices;

/** What a search through windows knows and finds. */
struct WindowSearch {
    const CATUnicodeString& file_name;
    const CATUnicodeString& shape_name;
    VornToolsSwitchMgt& switcher;
    CATDocument* p_root_document = nullptr;
    InterfacePtr<CATIProduct> sp_product; ///< what was found; empty for nothing
};

/** Unlocks the document of the window looked at last, as soon as the next one's turn comes and at the end. */
class ExaminedDocument {
public:
    ExaminedDocument() = default;
    ~ExaminedDocument() { unlock(); }
    ExaminedDocument(const ExaminedDocument&) = delete;
    ExaminedDocument& operator=(const ExaminedDocument&) = delete;

    void set(CATDocument* ip_document) { m_document = ip_document; }
    void unlock() {
        if (CATDocument* const p_document = std::exchange(m_document, nullptr))
            guarded([p_document] { CATUnLockDocument(*p_document); });
    }

private:
    CATDocument* m_document = nullptr;
};

/** Looks for the file below one root document. Kept because error lists are searched for it: a failure is reported
 * under the name of a function of the integration's commands. */
HRESULT searchDocument(const JournalFrame& i_frame, CATDocument* ip_document, WindowSearch& io_search) {
    unsigned char found = 0;
    const HRESULT code = io_search.sp_product.receive([&](CATIProduct*& o_product) {
        return VornToolsCommon::analyzeSingleWindow(ip_document, io_search.file_name, io_search.shape_name,
                                                    &io_search.switcher, o_product, found);
    });
    if (FAILED(code)) i_frame.callFailed("VornCmdStateDetailsFactory::analyzeSingleWindow");
    return code;
}

/** Looks for the file below the documents of all windows in their order. */
HRESULT searchWindows(const JournalFrame& i_frame, ExaminedDocument& io_examined, WindowSearch& io_search) {
    CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
    if (!p_layout) return i_frame.callFailed("CATFrmLayout::GetCurrentLayout");
    const CATListPtrCATFrmWindow windows = p_layout->GetWindowList(0, 0); // the layout's own list changes when asked
    HRESULT code = S_OK;
    for (int i = 1; i <= windows.Size() && !io_search.sp_product; ++i) {
        io_examined.unlock();
        CATFrmEditor* const p_editor = windows[i] ? windows[i]->GetEditor() : nullptr;
        if (!p_editor) continue;
        CATDocument* const p_document = p_editor->GetDocument();
        if (!p_document) {
            // Kept because error lists are searched for it: the layout did not fail.
            i_frame.callFailed("CATFrmLayout::GetCurrentLayout");
            continue;
        }
        io_examined.set(p_document);
        code = searchDocument(i_frame, p_document, io_search);
        if (io_search.sp_product) io_search.p_root_document = p_document;
    }
    return code;
}

/** Loads a found document of the platform. @param op_document null, reported, when it has none @return S_OK */
HRESULT loadDocument(const JournalFrame& i_frame, const WindowSearch& i_search, CATDocument*& op_document) {
    i_frame.write("add file to switcher [%s]", i_search.file_name);
    HoldingSwitch(i_search.switcher).switchDefault(i_search.file_name, i_search.sp_product.get(), 0);
    VornToolsCommon::getCATDocument(i_search.sp_product.get(), op_document);
    if (!op_document) i_frame.callFailed("VornToolsCommon::getCATDocument");
    return S_OK;
}

/** Loads a found foreign file: the document of the product's default representation.
 * @param op_document null, reported, when it cannot be loaded @return the code of the last step */
HRESULT loadForeignDocument(const JournalFrame& i_frame, const WindowSearch& i_search, CATDocument*& op_document) {
    CATIProduct* const pi_product = i_search.sp_product.get();
    CATUnicodeString shape_name;
    if (FAILED(HoldingSwitch(i_search.switcher).getDefaultRepName(pi_product, shape_name)))
        i_frame.callFailed("getDefaultRepName");
    CATUnicodeString path;
    if (FAILED(VornToolsCommon::getShapePathName(pi_product, shape_name, path)))
        i_frame.callFailed("VornToolsCommon::getShapePathName");
    unsigned char found = 0;
    HRESULT code = VornToolsCommon::getDocumentInSession(path, op_document, found);
    if (!found) {
        i_frame.write("Document is not found in session");
        HoldingSwitch(i_search.switcher).setWorkMode(pi_product, Modes::WorkModeDesign, Modes::WorkModeUnknown, 0);
        code = VornToolsCommon::getDocumentInSession(path, op_document, found);
        HoldingSwitch(i_search.switcher).setWorkMode(pi_product, Modes::WorkModeVisu, Modes::WorkModeUnknown, 0);
    }
    if (!op_document) i_frame.missing("VornToolsCommon::getDocumentInSession");
    return code;
}

} // namespace

HRESULT VornToolsCommon::analyzeSingleWindow(CATDocument* ip_root_document, CATUnicodeString i_file_name,
                                             CATUnicodeString i_shape_name, VornToolsSwitchMgt* ip_switcher,
                                             CATIProduct*& opi_product, unsigned char& o_found) {
    const JournalFrame frame(_CteCLASS_NAME, "analyzeSingleWindow");
    opi_product = nullptr;
    o_found = 0;
    const auto work = [&]() -> HRESULT {
        InterfacePtr<CATIProduct> sp_root;
        sp_root.receive([&](CATIProduct*& o_root) { return getActiveCATIProduct(ip_root_document, o_root); });
        if (!sp_root) {
            frame.write("Unable to get CATIProduct for %s", i_file_name);
            return S_OK;
        }
        CATDocument* p_document = nullptr;
        CATUnicodeString root_name;
        CATUnicodeString root_file_name;
        getDocumentFileName(sp_root.get(), p_document, root_name);
        // The four colons are kept because error lists are searched for this text.
        if (FAILED(fileNameOf(root_name, root_file_name))) frame.callFailed("UTILFile::::splitPathAndFileName");
        frame.write("-->document in session [%s]\n", ip_root_document->StorageName());

        if (!root_file_name.IsNull() && i_file_name.Compare(root_file_name) != 0) {
            opi_product = sp_root.detach();
            o_found = 1;
            return S_OK;
        }
        if (returnDocumentType(i_file_name) == DocumentTypeUnknown) {
            const HRESULT code =
                getForeignFileInSession(sp_root.get(), i_file_name, i_shape_name, ip_switcher, opi_product, o_found);
            return FAILED(code) ? frame.callFailed("VornToolsCommon::getForeignFileInSession") : code;
        }
        const HRESULT code = getProductInSession(sp_root.get(), i_file_name, opi_product, o_found);
        return FAILED(code) ? frame.callFailed("VornToolsCommon::getProductInSession") : code;
    };
    return guardedButForeign(work, E_FAIL);
}

HRESULT VornToolsCommon::analyzeWindowsInSession(CATUnicodeString i_file_name, CATUnicodeString i_shape_name,
                                                 VornToolsSwitchMgt* ip_switcher, CATDocument*& op_document,
                                                 unsigned char& o_found, CATDocument*& iop_root_document,
                                                 CATIProduct*& opi_product) {
    const JournalFrame frame(_CteCLASS_NAME, "analyzeWindowsInSession");
    op_document = nullptr;
    o_found = 0;
    opi_product = nullptr;
    const auto work = [&]() -> HRESULT {
        if (!ip_switcher) {
            frame.missing("ip_switcher");
            return S_OK;
        }
        frame.write("looking for document in session [%s]", i_file_name);
        ExaminedDocument examined; // outlives the search: a document must not close below a product that is held
        WindowSearch search{i_file_name, i_shape_name, *ip_switcher, iop_root_document, {}};
        HRESULT code = S_OK;
        if (iop_root_document) {
            frame.write("-->looking in CATIA windows identified by root document %s", iop_root_document->StorageName());
            code = searchDocument(frame, iop_root_document, search);
        } else {
            frame.write("looking in all CATIA windows");
            code = searchWindows(frame, examined, search);
        }
        if (!search.sp_product) return code;

        const bool is_foreign = returnDocumentType(i_file_name) == DocumentTypeUnknown;
        code = is_foreign ? loadForeignDocument(frame, search, op_document) : loadDocument(frame, search, op_document);
        if (FAILED(code)) return code;
        // A file of the platform counts as found with its document only; where it is, the other outputs tell all the
        // same.
        o_found = is_foreign || op_document ? 1 : 0;
        iop_root_document = search.p_root_document;
        opi_product = search.sp_product.detach();
        return code;
    };
    return guardedButForeign(work, E_FAIL);
}
