#include "embedded/frame/WindowObjects.h"

#include "CATCafCenterGraph.h"
#include "embedded/frame/FrameData.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATIEditor, CATBaseUnknown, 0x101);

namespace embedded {

namespace {

const char* classOf(WindowKind kind) {
    switch (kind) {
    case WindowKind::graphic: return "CATFrmNavigGraphicWindow";
    case WindowKind::desk: return "CATDeskWindow";
    default: return "CATFrmWindow";
    }
}

/** The window types of CATFrmLayout::GetWindowList. */
bool isOfType(const WindowObject& window, int type) {
    return type == 0 || (type == 1 && !window.minimised) || (type == 2 && window.minimised);
}

} // namespace

std::string EditorObject::objectName() const { return "editor of " + nameOf(document); }

CATDocument* EditorObject::GetDocument() {
    return failing("CATFrmEditor::GetDocument") ? nullptr : documentOrStranger(document);
}

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
    constexpr int newestLast = 1;
    constexpr int newestFirst = 2;
    m_list.RemoveAll();
    if (failing("CATFrmLayout::GetWindowList")) return m_list;
    if (Failures::get().givesOtherKind()) m_list.Append(nullptr);
    std::vector<WindowObject*> chosen;
    for (const auto& window : m_data.windows)
        if (isOfType(*window, iWinType)) chosen.push_back(window.get());
    if (iSort == newestLast || iSort == newestFirst)
        std::sort(chosen.begin(), chosen.end(),
                  [](const WindowObject* a, const WindowObject* b) { return a->activated < b->activated; });
    if (iSort == newestFirst) std::reverse(chosen.begin(), chosen.end());
    for (WindowObject* const window : chosen) m_list.Append(window);
    return m_list;
}

CATFrmWindow* LayoutObject::GetCurrentWindow() {
    return failing("CATFrmLayout::GetCurrentWindow") ? nullptr : m_data.active;
}

void LayoutObject::SetCurrentWindow(CATFrmWindow* iWindow) {
    if (failing("CATFrmLayout::SetCurrentWindow")) return;
    if (WindowObject* const window = m_data.windowBehind(iWindow)) m_data.activate(*window);
}

} // namespace embedded

CATFrmLayout* CATFrmLayout::GetCurrentLayout() {
    embedded::FrameData& data = embedded::FrameData::get();
    return embedded::fails("CATFrmLayout::GetCurrentLayout") || !data.hasLayout ? nullptr : &data.layout;
}

CATFrmEditor* CATFrmEditor::GetCurrentEditor() {
    return embedded::fails("CATFrmEditor::GetCurrentEditor") ? nullptr : embedded::FrameData::get().currentEditor();
}

CATCafCenterGraph::CATCafCenterGraph() = default;

HRESULT CATCafCenterGraph::CenterGraph(const CATString& iType, CATNavigBox* iNavigBox) {
    using namespace embedded;
    const FaultFlavour flavour = Failures::get().ask("CATCafCenterGraph::CenterGraph");
    if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
    if (const auto* const box = dynamic_cast<const NavigationBoxObject*>(iNavigBox))
        FrameData::get().centred.push_back(std::string(iType.ConvertToChar()) + " " + box->shownName());
    return S_OK;
}
