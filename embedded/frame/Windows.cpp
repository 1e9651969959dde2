#include "embedded/Windows.h"

#include "embedded/documents/LoadedDocuments.h"
#include "embedded/documents/SessionObject.h"
#include "embedded/frame/FrameData.h"

#include <algorithm>

namespace embedded {

CATFrmWindow* Window::get() const { return m_object; }

WindowKind Window::kind() const { return m_object ? m_object->kind : WindowKind::plain; }

Document Window::document() const { return Document(m_object ? m_object->document() : nullptr); }

Window& Window::minimised(bool value) {
    if (m_object) m_object->minimised = value;
    return *this;
}

bool Window::minimised() const { return m_object && m_object->minimised; }

Window& Window::withoutHold() {
    if (m_object) m_object->holdsDocument = false;
    return *this;
}

Window& Window::withoutNavigationBox() {
    if (m_object) m_object->hasNavigationBox = false;
    return *this;
}

SelectionPath::SelectionPath(const Product& selected) {
    for (Product above = selected; above; above = above.father()) product(above);
    std::reverse(m_items.begin(), m_items.end());
}

SelectionPath& SelectionPath::product(const Product& product) {
    m_items.push_back({Item::Kind::product, product, Document(), {}, {}});
    return *this;
}

SelectionPath& SelectionPath::document(const Document& document) {
    m_items.push_back({Item::Kind::document, Product(), document, {}, {}});
    return *this;
}

SelectionPath& SelectionPath::feature(const std::string& type) {
    m_items.push_back({Item::Kind::feature, Product(), Document(), type, {}});
    return *this;
}

SelectionPath& SelectionPath::object(const std::string& type, const std::string& derived) {
    m_items.push_back({Item::Kind::object, Product(), Document(), type, derived});
    return *this;
}

SelectionPath& SelectionPath::designTable(const Document& document, const std::string& name) {
    m_items.push_back({Item::Kind::designTable, Product(), document, name, {}});
    return *this;
}

Windows Windows::current() { return Windows(FrameData::get()); }

Window Windows::open(const Document& document, WindowKind kind) {
    return document ? Window(&m_data->openWindow(kind, &m_data->editorOf(document.object()))) : Window();
}

Window Windows::openEmpty(WindowKind kind) { return Window(&m_data->openWindow(kind, &m_data->editorOf(nullptr))); }

Window Windows::openWithoutEditor(WindowKind kind) { return Window(&m_data->openWindow(kind, nullptr)); }

void Windows::close(const Window& window) {
    if (window) m_data->closeWindow(*window.object());
}

std::size_t Windows::count() const { return m_data->windows.size(); }

Window Windows::at(std::size_t index) const { return Window(index < count() ? m_data->windows[index].get() : nullptr); }

void Windows::activate(const Window& window) {
    if (WindowObject* const known = m_data->windowBehind(window.get())) m_data->activate(*known);
}

Window Windows::active() const { return Window(m_data->active); }

Windows& Windows::withoutLayout() {
    m_data->hasLayout = false;
    return *this;
}

Windows& Windows::withoutCurrentEditor() {
    m_data->hasCurrentEditor = false;
    return *this;
}

Windows& Windows::withoutSession() {
    SessionDocuments::get().exists = false;
    return *this;
}

bool Windows::openedReadOnly(const Document& document) const { return m_data->readOnly.count(document.object()) != 0; }

void Windows::select(const SelectionPath& path) {
    if (EditorObject* const editor = m_data->currentEditor()) editor->selection.add(path);
}

std::size_t Windows::selectedCount() const {
    const EditorObject* const editor = m_data->currentEditor();
    return editor ? editor->selection.elements().size() : 0;
}

CATPathElement* Windows::selected(std::size_t index) const {
    return index < selectedCount() ? m_data->currentEditor()->selection.elements()[index].get() : nullptr;
}

void Windows::clearSelection() {
    if (EditorObject* const editor = m_data->currentEditor()) editor->selection.clear();
}

Windows& Windows::withoutSelection() {
    if (EditorObject* const editor = m_data->currentEditor()) editor->hasSelection = false;
    return *this;
}

void Windows::message(const std::string& catalogue, const std::string& key, const std::string& text) {
    if (text.empty())
        m_data->messages.erase({catalogue, key});
    else
        m_data->messages[{catalogue, key}] = text;
}

std::vector<std::string>& Windows::startedCommands() { return m_data->startedCommands; }

std::vector<std::string>& Windows::centred() { return m_data->centred; }

void Windows::lock(const Document& document) {
    if (!document) return;
    ++m_data->locks[document.object()];
    LoadedDocuments(m_data->session).settle(*document.object());
}

int Windows::locks(const Document& document) const {
    const auto found = m_data->locks.find(document.object());
    return found == m_data->locks.end() ? 0 : found->second;
}

} // namespace embedded
