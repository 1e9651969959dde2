#ifndef EMBEDDED_FRAME_FRAME_H
#define EMBEDDED_FRAME_FRAME_H

#include "CATApplicationFrame.h"
#include "CATCSO.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATIAApplication.h"
#include "CATIEditor.h"
#include "CATIMechanicalFeature.h"
#include "CATNavigBox.h"
#include "CATPathElement.h"
#include "embedded/Windows.h"
#include "embedded/documents/SessionData.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Implements.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace embedded {

struct FrameData;

EMBEDDED_IDENTITY(CATIMechanicalFeature);
EMBEDDED_IDENTITY(CATIEditor);
EMBEDDED_AUTOMATION_IDENTITY(CATIAApplication);

/** An object below the products, such as a process activity. */
class SelectableObject final : public Implements<CATISpecObject> {
public:
    SelectableObject(const std::string& type, const std::string& derived) : Implements(type, derived) { pin(); }
    CATBoolean IsUpToDate(CATIDomain_var) const override {
        return !failing("CATISpecObject::IsUpToDate") ? TRUE : FALSE;
    }
};

/** A feature of a part. */
class FeatureObject final : public Implements<CATISpecObject, CATIMechanicalFeature> {
public:
    explicit FeatureObject(const std::string& type) : Implements(type) { pin(); }
    CATBoolean IsUpToDate(CATIDomain_var) const override {
        return !failing("CATISpecObject::IsUpToDate") ? TRUE : FALSE;
    }
};

/** A selected way. It owns the objects that nothing else in the session owns. */
class PathElementObject final : public Implements<CATPathElement> {
public:
    explicit PathElementObject(const SelectionPath& path);

    const SelectionPath& path() const { return m_path; }

    int GetSize() const override;
    CATBaseUnknown* operator[](int iPosition) const override;
    HRESULT Search(const IID& iIID, void** oPointer) override;

private:
    struct Entry {
        CATBaseUnknown* unknown = nullptr;
        Object* object = nullptr;
    };
    Entry entryOf(const SelectionPath::Item& item);

    const SelectionPath m_path;
    std::vector<std::unique_ptr<FeatureObject>> m_features;
    std::vector<std::unique_ptr<SelectableObject>> m_others;
    std::vector<Entry> m_objects;
};

/** What is selected in an editor. */
class SelectionObject final : public Implements<CATCSO> {
public:
    SelectionObject() : Implements("CATCSO") { pin(); }

    void add(const SelectionPath& path) { m_elements.push_back(std::make_unique<PathElementObject>(path)); }
    void clear();
    const std::vector<std::unique_ptr<PathElementObject>>& elements() const { return m_elements; }

    void InitElementList() override;
    CATBaseUnknown* NextElement() override;
    int GetSize() override;
    void Empty(int iDispatchChange) override;

private:
    std::vector<std::unique_ptr<PathElementObject>> m_elements;
    /** Kept, so that a use of what is no longer selected is named. */
    std::vector<std::unique_ptr<PathElementObject>> m_gone;
    std::size_t m_next = 0;
};

/** The editor of a document, or of none. */
class EditorObject final : public Implements<CATFrmEditor, CATIEditor> {
public:
    explicit EditorObject(DocumentObject* shown) : Implements("CATFrmEditor"), document(shown) { pin(); }

    std::string objectName() const override;

    DocumentObject* document; ///< null for none, or once the document is closed
    SelectionObject selection;
    bool hasSelection = true;

    CATDocument* GetDocument() override;
    CATCSO* GetCSO() override;
    CATFrmEditor* GetEditor() override { return failing("CATIEditor::GetEditor") ? nullptr : this; }
};

/** The navigation box of a window. */
class NavigationBoxObject final : public Implements<CATNavigBox> {
public:
    explicit NavigationBoxObject(WindowObject& window) : Implements("CATNavigBox"), m_window(window) { pin(); }
    /** Name of the document that the window shows. */
    std::string shownName() const;

private:
    WindowObject& m_window;
};

/** A window of any kind. All are of one class here; what the class is called tells the kind. */
class WindowObject final : public Implements<CATFrmNavigGraphicWindow> {
public:
    WindowObject(WindowKind windowKind, EditorObject* shown);

    std::string objectName() const override;
    DocumentObject* document() const { return editor ? editor->document : nullptr; }

    const WindowKind kind;
    EditorObject* const editor;
    bool minimised = false;
    bool holdsDocument = true;
    bool hasNavigationBox = true;

    CATFrmEditor* GetEditor() override;
    CATNavigBox* GetNavigBox() override;

private:
    NavigationBoxObject m_box;
};

/** The windows in their order. */
class LayoutObject final : public Implements<CATFrmLayout> {
public:
    explicit LayoutObject(FrameData& data);
    ~LayoutObject() override;

    CATLISTP(CATFrmWindow) & GetWindowList(int iWinType, int iSort) override;
    CATFrmWindow* GetCurrentWindow() override;
    void SetCurrentWindow(CATFrmWindow* iWindow) override;

private:
    FrameData& m_data;
    CATListPtrCATFrmWindow m_list;
};

/** The application's main window. */
class ApplicationFrameObject final : public Implements<CATApplicationFrame, CATIAApplication> {
public:
    explicit ApplicationFrameObject(FrameData& data) : Implements("CATApplicationFrame"), m_data(data) { pin(); }

    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall StartCommand(const CATBSTR& iCommandId) override;

private:
    FrameData& m_data;
};

/** Texts of the message catalogue by catalogue and key. */
using CatalogueTexts = std::map<std::pair<std::string, std::string>, std::string>;

/** Windows, editors, selections, messages and locks of the session. */
struct FrameData final : SessionPart {
    static constexpr const char* kName = "windows";

    explicit FrameData(SessionData& sessionData);
    static FrameData& get();
    /** What the catalogue holds in a new session. */
    static const CatalogueTexts& usualMessages();

    void addToDigest(std::string& text) const override;

    /** The editor of a document, made on first use; null asks for the one without a document. */
    EditorObject& editorOf(DocumentObject* document);
    WindowObject& openWindow(WindowKind kind, EditorObject* editor);
    void closeWindow(WindowObject& window);
    EditorObject* currentEditor() const { return hasCurrentEditor && active ? active->editor : nullptr; }
    /** The window behind a platform pointer; null for one that is not, or no longer, in the layout. */
    WindowObject* windowBehind(const CATFrmWindow* pointer) const;

    /** Whether a lock, a window or another loaded document keeps the document open. */
    bool isHeld(const DocumentObject& document) const;
    /** Closes the document unless it is held. */
    void closeUnlessHeld(DocumentObject& document);

    SessionData& session;
    bool hasLayout = true;
    bool hasCurrentEditor = true;
    WindowObject* active = nullptr;
    std::vector<std::unique_ptr<WindowObject>> windows;
    std::vector<std::unique_ptr<EditorObject>> editors;
    CatalogueTexts messages;
    std::map<const DocumentObject*, int> locks;
    std::vector<std::string> startedCommands;
    std::vector<std::string> centred;
    LayoutObject layout;
    ApplicationFrameObject frame;

private:
    bool isUsedElsewhere(const DocumentObject& document) const;
    void reportHolders(const DocumentObject& document) const;

    // Kept, so that a use of what is closed is named.
    std::vector<std::unique_ptr<WindowObject>> m_closedWindows;
    std::vector<std::unique_ptr<DocumentObject>> m_closedDocuments;
};

} // namespace embedded

#endif
