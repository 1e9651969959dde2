#include "embedded/frame/FrameData.h"

#include "embedded/documents/LoadedDocuments.h"

#include <algorithm>

namespace embedded {

namespace {

std::string digestOf(const SelectionPath& path) {
    std::string text;
    for (const SelectionPath::Item& item : path.items())
        text += " [" + (item.shown ? item.shown.object()->objectName() : item.opened.name()) + item.type + ":" +
                item.derived + "]";
    return text;
}

} // namespace

FrameData::FrameData(SessionData& sessionData)
    : session(sessionData), messages(usualMessages()), layout(*this), frame(*this) {}

FrameData& FrameData::get() { return Session::current().data().part<FrameData>(); }

void FrameData::addToDigest(std::string& text) const {
    if (!hasLayout) text += "without_layout\n";
    if (!hasCurrentEditor) text += "without_current_editor\n";
    for (const auto& window : windows)
        text += std::string(" window ") + window->IsA() + (window->editor ? " " : " without_editor ") +
                nameOf(window->document()) + (window.get() == active ? " active" : "") +
                (window->minimised ? " minimised" : "") + (window->holdsDocument ? "" : " without_hold") +
                (window->hasNavigationBox ? "" : " without_navigation_box") + "\n";
    for (const auto& editor : editors)
        for (const auto& element : editor->selection.elements())
            text += " selected " + nameOf(editor->document) + digestOf(element->path()) + "\n";
    for (const DocumentObject* const document : readOnly) text += " read_only " + document->name() + "\n";
    for (const auto& editor : editors)
        if (!editor->hasSelection) text += " without_selection " + nameOf(editor->document) + "\n";
    if (messages != usualMessages())
        for (const auto& message : messages)
            text += " message " + message.first.first + " " + message.first.second + " " + message.second + "\n";
    if (messages != usualMessages() && messages.empty()) text += " no_message\n";
    for (const auto& document : session.documents) {
        const auto lock = locks.find(document.get());
        if (lock != locks.end()) text += " locks " + document->name() + " " + std::to_string(lock->second) + "\n";
    }
}

EditorObject& FrameData::editorOf(DocumentObject* document) {
    for (const auto& editor : editors)
        if (editor->document == document) return *editor;
    editors.push_back(std::make_unique<EditorObject>(document));
    return *editors.back();
}

WindowObject& FrameData::openWindow(WindowKind kind, EditorObject* editor) {
    windows.push_back(std::make_unique<WindowObject>(kind, editor));
    activate(*windows.back());
    if (DocumentObject* const document = active->document()) LoadedDocuments(session).settle(*document);
    return *active;
}

void FrameData::activate(WindowObject& window) {
    window.activated = ++m_activations;
    active = &window;
}

WindowObject* FrameData::lastActivated() const {
    const auto isEarlier = [](const auto& a, const auto& b) { return a->activated < b->activated; };
    const auto last = std::max_element(windows.begin(), windows.end(), isEarlier);
    return last == windows.end() ? nullptr : last->get();
}

void FrameData::closeWindow(WindowObject& window) {
    const auto isIt = [&window](const auto& entry) { return entry.get() == &window; };
    const auto found = std::find_if(windows.begin(), windows.end(), isIt);
    if (found == windows.end()) return;
    window.unpin();
    m_closedWindows.push_back(std::move(*found));
    windows.erase(found);
    if (active == &window) active = lastActivated();
    if (DocumentObject* const document = window.document()) closeUnlessHeld(*document);
}

WindowObject* FrameData::windowBehind(const CATFrmWindow* pointer) const {
    for (const auto& window : windows)
        if (window.get() == pointer) return window.get();
    return nullptr;
}

} // namespace embedded
