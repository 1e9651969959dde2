#ifndef EMBEDDED_FRAME_FRAME_DATA_H
#define EMBEDDED_FRAME_FRAME_DATA_H

#include "embedded/documents/SessionData.h"
#include "embedded/frame/Application.h"
#include "embedded/frame/WindowObjects.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace embedded {

/** Windows, editors, selections, messages and locks of the session. */
struct FrameData final : SessionPart {
    static constexpr const char* kName = "windows";

    explicit FrameData(SessionData& sessionData);
    static FrameData& get();

    void addToDigest(std::string& text) const override;

    /** The editor of a document, made on first use; null asks for the one without a document. */
    EditorObject& editorOf(DocumentObject* document);
    WindowObject& openWindow(WindowKind kind, EditorObject* editor);
    /** Makes a window the active one; it is then the one that was activated last. */
    void activate(WindowObject& window);
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
    std::set<const DocumentObject*> readOnly; ///< opened for reading only
    std::vector<std::string> startedCommands;
    std::vector<std::string> centred;
    LayoutObject layout;
    ApplicationFrameObject frame;

private:
    WindowObject* lastActivated() const;
    bool isUsedElsewhere(const DocumentObject& document) const;
    void reportHolders(const DocumentObject& document) const;

    unsigned long m_activations = 0;
    // Kept, so that a use of what is closed is named.
    std::vector<std::unique_ptr<WindowObject>> m_closedWindows;
    std::vector<std::unique_ptr<DocumentObject>> m_closedDocuments;
};

} // namespace embedded

#endif
