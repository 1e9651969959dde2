#include "VornToolsCommon.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmWindow.h"
#include "CATListOfCATFrmWindow.h"
#include "UTILFile.h"

#include <cstring>

using namespace vorntools;

namespace {

constexpr int kAllWindows = 0;
constexpr int kAsTheyCome = 0;
constexpr int kNewestFirst = 2;

constexpr const char* kDesk = "CATDeskWindow";

/** A copy of the layout's windows: the layout's own list changes whenever somebody asks for it again. */
CATListPtrCATFrmWindow windowsOf(CATFrmLayout& i_layout, int i_sort) {
    return i_layout.GetWindowList(kAllWindows, i_sort);
}

CATDocument* shownDocument(CATFrmWindow& i_window) {
    CATFrmEditor* const p_editor = i_window.GetEditor();
    return p_editor ? p_editor->GetDocument() : nullptr;
}

/** Reads what a window shows. @return E_FAIL, with empty outputs, unless the document has a file name */
HRESULT readWindow(const JournalFrame& i_frame, CATFrmWindow* ip_window, CATUnicodeString& o_name,
                   CATDocument*& op_document) {
    if (!ip_window) return i_frame.badInput("ip_window");
    CATDocument* const p_document = shownDocument(*ip_window);
    if (!p_document) return E_FAIL;
    CATUnicodeString directory;
    CATUnicodeString name;
    if (FAILED(splitFullName(p_document->StorageName(), directory, name)))
        return i_frame.callFailed("splitPathAndFileName");
    if (name.IsNull()) return E_FAIL;
    o_name = name;
    op_document = p_document;
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::getDocumentFromWindow(CATFrmWindow* ip_window, CATDocument*& op_document) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentFromWindow");
    op_document = nullptr;
    if (!ip_window) return frame.badInput("ip_window");
    const auto work = [&]() -> HRESULT {
        op_document = shownDocument(*ip_window);
        return op_document ? S_OK : E_FAIL;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getDocumentNameFromWindow(CATFrmWindow* ip_window, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentNameFromWindow");
    o_name = "";
    const auto work = [&]() -> HRESULT {
        CATDocument* p_document = nullptr;
        return readWindow(frame, ip_window, o_name, p_document);
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::getDocumentAndNameFromWindow(CATFrmWindow* ip_window, CATUnicodeString& o_name,
                                                      CATDocument*& op_document) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocumentAndNameFromWindow");
    o_name = "";
    op_document = nullptr;
    return guarded([&] { return readWindow(frame, ip_window, o_name, op_document); }, E_FAIL);
}

HRESULT VornToolsCommon::getAllRootDocuments(CATUnicodeString i_name_filter, CATListPtrCATDocument& o_documents,
                                             unsigned char i_keep_duplicates) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllRootDocuments");
    o_documents.RemoveAll();
    const auto work = [&]() -> HRESULT {
        CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
        if (!p_layout) return frame.badInput("p_layout");
        const CATListPtrCATFrmWindow windows = windowsOf(*p_layout, kAsTheyCome);
        HRESULT code = S_OK;
        for (int i = 1; i <= windows.Size(); ++i) {
            CATUnicodeString name;
            CATDocument* p_document = nullptr;
            code = getDocumentAndNameFromWindow(windows[i], name, p_document);
            if (FAILED(code) || (!i_name_filter.IsNull() && name.Compare(i_name_filter) == 0)) continue;
            if (!isDocumentInSessionManagedByMaro(p_document)) continue;
            if (!i_keep_duplicates && o_documents.Locate(p_document) != 0) continue;
            frame.write("[%s] is a root document", name);
            o_documents.Append(p_document);
        }
        return o_documents.Size() > 0 ? S_OK : code;
    };
    const HRESULT code = guarded(work, E_FAIL);
    if (FAILED(code)) o_documents.RemoveAll();
    return code;
}

HRESULT VornToolsCommon::getAllRootDocNameFromWindows(CATListValCATUnicodeString& o_names) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllRootDocNameFromWindows");
    o_names.RemoveAll();
    const auto work = [&]() -> HRESULT {
        CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
        if (!p_layout) {
            frame.badInput("p_layout");
            return S_OK;
        }
        const CATListPtrCATFrmWindow windows = windowsOf(*p_layout, kNewestFirst);
        for (int i = 1; i <= windows.Size(); ++i) {
            CATUnicodeString name;
            if (SUCCEEDED(getDocumentNameFromWindow(windows[i], name))) o_names.Append(name);
        }
        return S_OK;
    };
    const HRESULT code = guarded(work, E_FAIL);
    if (FAILED(code)) o_names.RemoveAll();
    return code;
}

unsigned char VornToolsCommon::isADocumentWindowOpened() {
    const JournalFrame frame(_CteCLASS_NAME, "isADocumentWindowOpened");
    const auto work = [&]() -> unsigned char {
        CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
        if (!p_layout) return 0;
        const CATListPtrCATFrmWindow windows = windowsOf(*p_layout, kAsTheyCome);
        for (int i = 1; i <= windows.Size(); ++i) {
            CATDocument* const p_document = windows[i] ? shownDocument(*windows[i]) : nullptr;
            if (p_document && isDocumentInSessionManagedByMaro(p_document)) return 1;
        }
        return 0;
    };
    return guarded(work, static_cast<unsigned char>(0));
}

HRESULT VornToolsCommon::desktopIsActiveWindow(unsigned char& o_is_desktop) {
    const JournalFrame frame(_CteCLASS_NAME, "desktopIsActiveWindow");
    o_is_desktop = 0;
    const auto work = [&]() -> HRESULT {
        CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
        const CATFrmWindow* const p_window = p_layout ? p_layout->GetCurrentWindow() : nullptr;
        if (p_window && std::strcmp(p_window->IsA(), kDesk) == 0) o_is_desktop = 1;
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::activateWindowInCATIA(CATUnicodeString i_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "activateWindowInCATIA");
    const auto work = [&]() -> HRESULT {
        CATFrmLayout* const p_layout = CATFrmLayout::GetCurrentLayout();
        if (!p_layout) return frame.badInput("p_layout");
        const CATListPtrCATFrmWindow windows = windowsOf(*p_layout, kAsTheyCome);
        for (int i = 1; i <= windows.Size(); ++i) {
            CATUnicodeString name;
            if (FAILED(getDocumentNameFromWindow(windows[i], name))) {
                frame.platformFailed("getDocumentNameFromWindow");
                continue;
            }
            if (!UTILFile::filesAreEqual(name, i_file_name)) continue;
            frame.write("Activing [%s]", name);
            p_layout->SetCurrentWindow(windows[i]);
            return S_OK;
        }
        return E_FAIL;
    };
    return guarded(work, E_FAIL);
}
