// The windows of the application, their layout and the editors of what they show.
#ifndef EMBEDDED_FRAME_WINDOW_OBJECTS_H
#define EMBEDDED_FRAME_WINDOW_OBJECTS_H

#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATIEditor.h"
#include "CATNavigBox.h"
#include "embedded/documents/Documents.h"
#include "embedded/frame/Selection.h"

#include <string>

namespace embedded {

EMBEDDED_IDENTITY(CATIEditor);

struct FrameData;

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
    unsigned long activated = 0; ///< the greatest number is that of the window that was activated last
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

} // namespace embedded

#endif
