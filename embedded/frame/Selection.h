#ifndef EMBEDDED_FRAME_SELECTION_H
#define EMBEDDED_FRAME_SELECTION_H

#include "CATCSO.h"
#include "CATIMechanicalFeature.h"
#include "CATPathElement.h"
#include "embedded/Windows.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Implements.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace embedded {

EMBEDDED_IDENTITY(CATIMechanicalFeature);

/** An object below the products, such as a process activity. */
class SelectableObject final : public Implements<CATBaseUnknown, CATISpecObject> {
public:
    SelectableObject(const std::string& type, const std::string& derived) : Implements(type, derived) { pin(); }
    CATBoolean IsUpToDate(CATIDomain_var) const override {
        return !failing("CATISpecObject::IsUpToDate") ? TRUE : FALSE;
    }
};

/** A feature of a part. */
class FeatureObject final : public Implements<CATBaseUnknown, CATISpecObject, CATIMechanicalFeature> {
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

} // namespace embedded

#endif
