#include "embedded/frame/Frame.h"

#include "CATCafCenterGraph.h"
#include "CATDocument.h"
#include "CATMsgCatalog.h"
#include "embedded/files/FileNames.h"
#include "embedded/tables/DesignTableObjects.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATIMechanicalFeature, CATBaseUnknown, 0x100);
EMBEDDED_INTERFACE(CATIEditor, CATBaseUnknown, 0x101);
EMBEDDED_INTERFACE(CATIAApplication, CATIABase, 0x102);

namespace embedded {

namespace {

const char* classOf(WindowKind kind) {
    switch (kind) {
    case WindowKind::graphic: return "CATFrmNavigGraphicWindow";
    case WindowKind::desk: return "CATDeskWindow";
    default: return "CATFrmWindow";
    }
}

std::string nameOf(const DocumentObject* document) { return document ? document->name() : std::string(); }

/** The window types of CATFrmLayout::GetWindowList. */
bool isOfType(const WindowObject& window, int type) {
    return type == 0 || (type == 1 && !window.minimised) || (type == 2 && window.minimised);
}

std::string digestOf(const SelectionPath& path) {
    std::string text;
    for (const SelectionPath::Item& item : path.items())
        text += " [" + (item.shown ? item.shown.object()->objectName() : item.opened.name()) + item.type + ":" +
                item.derived + "]";
    return text;
}

} // namespace

PathElementObject::PathElementObject(const SelectionPath& path) : Implements("CATPathElement"), m_path(path) {
    pin();
    for (const SelectionPath::Item& item : path.items()) m_objects.push_back(entryOf(item));
}

PathElementObject::Entry PathElementObject::entryOf(const SelectionPath::Item& item) {
    const auto entry = [](auto* object) { return object ? Entry{object->unknown(), object} : Entry(); };
    switch (item.kind) {
    case SelectionPath::Item::Kind::product:
        item.shown.get(); // may be called without a reference from now on
        return entry(item.shown.object());
    case SelectionPath::Item::Kind::document: return entry(item.opened.object());
    case SelectionPath::Item::Kind::designTable: {
        DesignTableObject* const table = DesignTablesData::get().find(item.opened.object(), item.type);
        if (table) table->pin();
        return entry(table);
    }
    case SelectionPath::Item::Kind::feature:
        m_features.push_back(std::make_unique<FeatureObject>(item.type));
        return entry(m_features.back().get());
    default:
        m_others.push_back(std::make_unique<SelectableObject>(
            item.type, item.derived.empty() ? CATBaseUnknown::ClassName() : item.derived));
        return entry(m_others.back().get());
    }
}

int PathElementObject::GetSize() const {
    return failing("CATPathElement::GetSize") ? 0 : static_cast<int>(m_objects.size());
}

CATBaseUnknown* PathElementObject::operator[](int iPosition) const {
    if (failing("CATPathElement::operator[]") || iPosition < 0) return nullptr;
    const auto position = static_cast<std::size_t>(iPosition);
    return position < m_objects.size() ? m_objects[position].unknown : nullptr;
}

HRESULT PathElementObject::Search(const IID& iIID, void** oPointer) {
    if (!oPointer) return E_POINTER;
    *oPointer = nullptr;
    const FaultFlavour flavour = called("CATPathElement::Search");
    if (flavour != FaultFlavour::none) return failedAnswer<void*>(flavour, *oPointer, nullptr, this);
    for (auto entry = m_objects.rbegin(); entry != m_objects.rend(); ++entry) {
        *oPointer = entry->object ? entry->object->findInterface(iIID) : nullptr;
        if (!*oPointer) continue;
        entry->unknown->AddRef();
        return S_OK;
    }
    return E_FAIL;
}

void SelectionObject::clear() {
    for (auto& element : m_elements) {
        element->unpin();
        m_gone.push_back(std::move(element));
    }
    m_elements.clear();
    m_next = 0;
}

void SelectionObject::InitElementList() {
    if (!failing("CATCSO::InitElementList")) m_next = 0;
}

CATBaseUnknown* SelectionObject::NextElement() {
    if (failing("CATCSO::NextElement") || m_next >= m_elements.size()) return nullptr;
    return m_elements[m_next++]->unknown();
}

int SelectionObject::GetSize() { return failing("CATCSO::GetSize") ? 0 : static_cast<int>(m_elements.size()); }

void SelectionObject::Empty(int) {
    if (!failing("CATCSO::Empty")) clear();
}

std::string EditorObject::objectName() const { return "editor of " + nameOf(document); }

CATDocument* EditorObject::GetDocument() { return failing("CATFrmEditor::GetDocument") ? nullptr : document; }

CATCSO* EditorObject::GetCSO() { return failing("CATFrmEditor::GetCSO") || !hasSelection ? nullptr : &selection; }

std::string NavigationBoxObject::shownName() const { return nameOf(m_window.document()); }

WindowObject::WindowObject(WindowKind windowKind, EditorObject* shown)
    : Implements(classOf(windowKind), windowKind == WindowKind::plain ? CATBaseUnknown::ClassName() : "CATFrmWindow"),
      kind(windowKind), editor(shown), m_box(*this) {
    pin();
}

std::string WindowObject::objectName() const { return "window of " + nameOf(document()); }

CATFrmEditor* WindowObject::GetEditor() { return failing("CATFrmWindow::GetEditor") ? nullptr : editor; }

CATNavigBox* WindowObject::GetNavigBox() {
    if (failing("CATFrmNavigGraphicWindow::GetNavigBox") || !hasNavigationBox) return nullptr;
    if (kind == WindowKind::graphic) return &m_box;
    Accounting::get().breach(objectName() + " is no graphic window");
    return nullptr;
}

// The layout's own list is not one that somebody must give back.
LayoutObject::LayoutObject(FrameData& data) : Implements("CATFrmLayout"), m_data(data) {
    pin();
    --Accounting::get().live().lists;
}

LayoutObject::~LayoutObject() { ++Accounting::get().live().lists; }

CATLISTP(CATFrmWindow) & LayoutObject::GetWindowList(int iWinType, int iSort) {
    constexpr int newestFirst = 2;
    m_list.RemoveAll();
    if (failing("CATFrmLayout::GetWindowList")) return m_list;
    std::vector<CATFrmWindow*> chosen;
    for (const auto& window : m_data.windows)
        if (isOfType(*window, iWinType)) chosen.push_back(window.get());
    if (iSort == newestFirst) std::reverse(chosen.begin(), chosen.end());
    for (CATFrmWindow* const window : chosen) m_list.Append(window);
    return m_list;
}

CATFrmWindow* LayoutObject::GetCurrentWindow() {
    return failing("CATFrmLayout::GetCurrentWindow") ? nullptr : m_data.active;
}

void LayoutObject::SetCurrentWindow(CATFrmWindow* iWindow) {
    if (failing("CATFrmLayout::SetCurrentWindow")) return;
    if (WindowObject* const window = m_data.windowBehind(iWindow)) m_data.active = window;
}

HRESULT __stdcall ApplicationFrameObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIAApplication::get_Name"), "CNEXT", oName);
}

HRESULT __stdcall ApplicationFrameObject::StartCommand(const CATBSTR& iCommandId) {
    const FaultFlavour flavour = called("CATIAApplication::StartCommand");
    if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    const std::string command = fromAutomationText(iCommandId);
    const auto isTitle = [&command](const auto& message) { return message.second == command; };
    if (std::none_of(m_data.messages.begin(), m_data.messages.end(), isTitle)) return E_FAIL;
    m_data.startedCommands.push_back(command);
    return S_OK;
}

const CatalogueTexts& FrameData::usualMessages() {
    static const CatalogueTexts usual{{{"CATFrmCmdHeader", "CATFrmCmdHeader.ReframeOnHSO.Title"}, "Reframe On"}};
    return usual;
}

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
    active = windows.back().get();
    return *active;
}

void FrameData::closeWindow(WindowObject& window) {
    const auto isIt = [&window](const auto& entry) { return entry.get() == &window; };
    const auto found = std::find_if(windows.begin(), windows.end(), isIt);
    if (found == windows.end()) return;
    window.unpin();
    m_closedWindows.push_back(std::move(*found));
    windows.erase(found);
    if (active == &window) active = windows.empty() ? nullptr : windows.back().get();
    if (DocumentObject* const document = window.document()) closeUnlessHeld(*document);
}

WindowObject* FrameData::windowBehind(const CATFrmWindow* pointer) const {
    for (const auto& window : windows)
        if (window.get() == pointer) return window.get();
    return nullptr;
}

bool FrameData::isHeld(const DocumentObject& document) const {
    const auto lock = locks.find(&document);
    if (lock != locks.end() && lock->second > 0) return true;
    const auto holds = [&document](const auto& window) {
        return window->document() == &document && window->holdsDocument;
    };
    return std::any_of(windows.begin(), windows.end(), holds) || isUsedElsewhere(document);
}

bool FrameData::isUsedElsewhere(const DocumentObject& document) const {
    for (const auto& reference : session.references) {
        if (reference->document != &document) continue;
        for (const Reference* user : reference->usedIn)
            if (user->document != &document && user->document->inSession) return true;
    }
    return false;
}

void FrameData::reportHolders(const DocumentObject& document) const {
    const auto report = [&document](const Object& object) {
        if (object.references() == 0) return;
        Accounting::get().breach(document.objectName() + " is closed while somebody holds " + object.objectName());
    };
    report(document);
    for (const auto& product : session.products)
        if (product->reference() && product->reference()->document == &document) report(*product);
}

void FrameData::closeUnlessHeld(DocumentObject& document) {
    if (isHeld(document)) return;
    const auto isIt = [&document](const auto& entry) { return entry.get() == &document; };
    const auto found = std::find_if(session.documents.begin(), session.documents.end(), isIt);
    if (found == session.documents.end()) return;
    reportHolders(document);
    document.unpin();
    document.inSession = false;
    session.documentIndex.erase(foldedName(document.name()));
    m_closedDocuments.push_back(std::move(*found));
    session.documents.erase(found);
    locks.erase(&document);
    for (const auto& editor : editors)
        if (editor->document == &document) editor->document = nullptr;
}

} // namespace embedded

CATFrmLayout* CATFrmLayout::GetCurrentLayout() {
    embedded::FrameData& data = embedded::FrameData::get();
    return embedded::fails("CATFrmLayout::GetCurrentLayout") || !data.hasLayout ? nullptr : &data.layout;
}

CATFrmEditor* CATFrmEditor::GetCurrentEditor() {
    return embedded::fails("CATFrmEditor::GetCurrentEditor") ? nullptr : embedded::FrameData::get().currentEditor();
}

CATApplicationFrame* CATApplicationFrame::GetFrame() {
    return embedded::fails("CATApplicationFrame::GetFrame") ? nullptr : &embedded::FrameData::get().frame;
}

CATCafCenterGraph::CATCafCenterGraph() = default;

HRESULT CATCafCenterGraph::CenterGraph(const CATString& iType, CATNavigBox* iNavigBox) {
    using namespace embedded;
    const FaultFlavour flavour = Failures::get().ask("CATCafCenterGraph::CenterGraph");
    if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    if (const auto* const box = dynamic_cast<const NavigationBoxObject*>(iNavigBox))
        FrameData::get().centred.push_back(std::string(iType.ConvertToChar()) + " " + box->shownName());
    return S_OK;
}

// NOLINTNEXTLINE(readability-const-return-type): published so
const CATUnicodeString CATMsgCatalog::BuildMessage(const CATString& iCatalogName, const CATString& iMessageKey,
                                                   CATUnicodeString* iMsgParameters, int iParamNb,
                                                   const CATUnicodeString& iDefaultMsg) {
    using namespace embedded;
    if (fails("CATMsgCatalog::BuildMessage")) return iDefaultMsg;
    const auto& messages = FrameData::get().messages;
    const auto found = messages.find({iCatalogName.ConvertToChar(), iMessageKey.ConvertToChar()});
    if (found == messages.end()) return iDefaultMsg;
    CATUnicodeString text = toText(found->second);
    for (int i = 0; iMsgParameters && i < iParamNb; ++i)
        text.ReplaceAll(toText("/P" + std::to_string(i + 1)), iMsgParameters[i]);
    return text;
}
