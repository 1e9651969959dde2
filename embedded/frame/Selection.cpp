#include "embedded/frame/Selection.h"

#include "embedded/documents/Documents.h"
#include "embedded/object/Stranger.h"
#include "embedded/tables/DesignTableObjects.h"

#include <utility>

EMBEDDED_INTERFACE(CATIMechanicalFeature, CATBaseUnknown, 0x100);

namespace embedded {

PathElementObject::PathElementObject(const SelectionPath& path) : Implements("CATPathElement"), m_path(path) {
    pin();
    for (const SelectionPath::Item& item : path.items()) m_objects.push_back(entryOf(item));
}

PathElementObject::Entry PathElementObject::entryOf(const SelectionPath::Item& item) {
    const auto entry = [](auto* object) { return object ? Entry{object->unknown(), object} : Entry(); };
    switch (item.kind) {
    case SelectionPath::Item::Kind::product:
        if (item.shown) item.shown.object()->pin();
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
    if (iPosition < 0) Accounting::get().breach("a path was asked for an element in front of its first");
    if (failing("CATPathElement::operator[]") || iPosition < 0) return nullptr;
    if (Failures::get().givesOtherKind()) return StrangerObject::get().unknown();
    const auto position = static_cast<std::size_t>(iPosition);
    return position < m_objects.size() ? m_objects[position].unknown : nullptr;
}

HRESULT PathElementObject::Search(const IID& iIID, void** oPointer) {
    if (!oPointer) return E_POINTER;
    *oPointer = nullptr;
    const FaultFlavour flavour = called("CATPathElement::Search");
    if (flavour != FaultFlavour::none) return failedAnswer<void*>(flavour, *oPointer, nullptr, this);
    for (auto entry = m_objects.rbegin(); entry != m_objects.rend(); ++entry) {
        if (!entry->object || !entry->object->findInterface(iIID)) continue;
        // An object that has the interface: of another kind only a document can be.
        auto* const document = dynamic_cast<DocumentObject*>(entry->object);
        Object* const shown = document ? static_cast<DocumentObject*>(documentOrStranger(document)) : entry->object;
        const Found found = shown->findInterface(iIID);
        const HandingOut goesOn;
        shown->addReference(*found.hold);
        *oPointer = found.pointer;
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

} // namespace embedded
