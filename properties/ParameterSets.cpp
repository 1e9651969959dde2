#include "properties/ParameterSets.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATIAlias.h"
#include "CATICkeNaming.h"
#include "CATICkeRelationFactory.h"
#include "CATIContainer.h"
#include "CATIRedrawEvent.h"
#include "CATISpecAttrKey.h"
#include "CATLISTV_CATISpecObject.h"
#include "VornToolsCADDOCProperties.h"

#include <algorithm>
#include <iterator>

using namespace vorntools;

namespace {

constexpr const char* kNewSet = "Parameters.1";
constexpr const char* kExcludedSet = "ExternalParameterSet";
/** The attributes in which a feature may keep its set; the second is only asked when the first is missing. */
constexpr const char* kSetAttributes[] = {"_AttrForLiterals", "_FtrList", "UserParameters"};

bool isExcluded(const CATUnicodeString& i_name) { return i_name == kExcludedSet; }

CATUnicodeString aliasOf(const CATIContainer_var& i_container) {
    const auto sp_alias = queryInterface<CATIAlias>(static_cast<CATIContainer*>(i_container));
    return sp_alias ? sp_alias->GetAlias() : CATUnicodeString();
}

/** The set that an object is. @return S_OK and no set for an object of another type */
HRESULT setBehind(CATISpecObject* ipi_object, InterfacePtr<CATICkeParameterSet>& o_set) {
    const HRESULT code = asParameterSet(ipi_object, o_set);
    return code == S_FALSE ? S_OK : code;
}

HRESULT setInComponent(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                       InterfacePtr<CATICkeParameterSet>& o_set) {
    const auto sp_component = InterfacePtr<CATISpecObject>::adopt(ipi_access->GetSpecObject(ipi_key));
    return setBehind(sp_component.get(), o_set);
}

/** A set that does not tell its name or its type ends the walk: behind it stand others only, and it may be the excluded
 * one. */
HRESULT setInList(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, InterfacePtr<CATICkeParameterSet>& o_set) {
    HRESULT code = E_FAIL;
    forEachComponent(ipi_access, ipi_key, [&](CATISpecObject* ipi_object) {
        const CATUnicodeString name = ipi_object ? ipi_object->GetDisplayName() : CATUnicodeString();
        if (isExcluded(name)) return false;
        code = setBehind(ipi_object, o_set);
        const bool unnamed = o_set && name.IsNull();
        if (unnamed) o_set.reset();
        if (unnamed) code = E_FAIL;
        return o_set || unnamed || (ipi_object && FAILED(code));
    });
    return code;
}

/** The set behind an attribute. @return E_FAIL for one without a value or of another kind */
HRESULT setBehindKey(const JournalFrame& i_frame, CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                     InterfacePtr<CATICkeParameterSet>& o_set) {
    i_frame.write("\tGet attribut for %s ", ipi_key->GetName());
    if (!ipi_access->TestAttributeValue(ipi_key)) return E_FAIL;
    const CATAttrKind kind = ipi_key->GetType();
    if (kind == tk_component) {
        i_frame.write("Manage component");
        return setInComponent(ipi_access, ipi_key, o_set);
    }
    if (kind == tk_list && ipi_key->GetListType() == tk_component) {
        i_frame.write("Manage list of component");
        return setInList(ipi_access, ipi_key, o_set);
    }
    i_frame.write("This attribut type is not managed");
    return E_FAIL;
}

/** @return empty when a step failed; a set that stands nowhere would take attributes that are never saved */
InterfacePtr<CATICkeParameterSet> appendNewSet(CATISpecObject* ipi_feature, CATUnicodeString& o_container_name) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_feature);
    if (!sp_publisher) return {};
    const CATIContainer_var sp_container = sp_publisher->GetContainer();
    const auto sp_factory = queryInterface<CATICkeRelationFactory>(static_cast<CATIContainer*>(sp_container));
    if (!sp_factory) return {};
    const CATIParmPublisher_var sp_made = sp_factory->CreateParameterSet(kNewSet);
    const auto sp_object = queryInterface<CATISpecObject>(static_cast<CATIParmPublisher*>(sp_made));
    auto sp_set = sp_object.query<CATICkeParameterSet>();
    if (!sp_set) return {};
    sp_publisher->Append(CATISpecObject_var(sp_object.get()));
    if (!hasChild(sp_publisher.get(), CATICkeParameterSet::ClassName(), sp_object.get())) return {};
    o_container_name = aliasOf(sp_container);
    return sp_set;
}

/** Whether an attribute tells that it holds no set but the excluded one. */
bool holdsNoSet(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key) {
    InterfacePtr<CATICkeParameterSet> sp_set;
    const CATAttrKind kind = ipi_key->GetType();
    if (kind == tk_component) return SUCCEEDED(setInComponent(ipi_access, ipi_key, sp_set)) && !sp_set;
    if (kind != tk_list || ipi_key->GetListType() != tk_component) return true;
    const HRESULT code = findSet(
        ipi_access, ipi_key, [](const CATUnicodeString& i_name) { return !isExcluded(i_name); }, sp_set);
    return SUCCEEDED(code) && !sp_set;
}

} // namespace

namespace vorntools {

void dropNulls(CATListValCATISpecObject_var& io_objects) {
    for (int i = io_objects.Size(); i >= 1; --i)
        if (!io_objects[i]) io_objects.RemovePosition(i);
}

bool contains(const CATListValCATISpecObject_var& i_objects, CATISpecObject* ipi_object) {
    for (int i = i_objects.Size(); i >= 1; --i)
        if (i_objects[i] != nullptr && i_objects[i]->IsEqual(ipi_object)) return true;
    return false;
}

bool hasChild(CATIParmPublisher* ipi_publisher, CATClassId i_class, CATISpecObject* ipi_object) {
    CATListValCATISpecObject_var children;
    ipi_publisher->GetDirectChildren(i_class, children);
    return contains(children, ipi_object);
}

HRESULT findSetBelow(CATIParmPublisher* ipi_publisher, InterfacePtr<CATICkeParameterSet>& o_set) {
    o_set.reset();
    CATListValCATISpecObject_var children;
    ipi_publisher->GetDirectChildren(CATICkeParameterSet::ClassName(), children);
    for (int i = 1; i <= children.Size(); ++i) {
        const HRESULT code = asParameterSet(children[i], o_set);
        if (code != S_FALSE) return code;
    }
    // Listing has no result code: what comes out empty is checked against the list of all that has a name.
    InterfacePtr<CATICkeParameterSet> sp_missed;
    ipi_publisher->GetDirectChildren(CATICkeNaming::ClassName(), children);
    for (int i = 1; i <= children.Size(); ++i)
        if (asParameterSet(children[i], sp_missed) == S_OK) return E_FAIL;
    return S_OK;
}

bool hasNoSet(CATISpecObject* ipi_feature) {
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_feature);
    const auto is_empty = [&](const char* i_name) {
        const auto sp_key = keyOf(sp_access.get(), i_name);
        return !sp_key || !sp_access->TestAttributeValue(sp_key.get()) || holdsNoSet(sp_access.get(), sp_key.get());
    };
    return sp_access && std::all_of(std::begin(kSetAttributes), std::end(kSetAttributes), is_empty);
}

InterfacePtr<CATICkeParameterSet> makeSet(CATISpecObject* ipi_feature) {
    InterfacePtr<CATICkeParameterSet> sp_set;
    sp_set.receive(
        [&](CATICkeParameterSet*& o_set) { return VornToolsCADDOCProperties::createParameterSet(ipi_feature, o_set); });
    return sp_set;
}

} // namespace vorntools

HRESULT VornToolsCADDOCProperties::createParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set) {
    JournalFrame frame(_CteCLASS_NAME, "createParameterSet");
    opi_set = nullptr;
    if (!ipi_spec_object) return frame.endWith(frame.missing("ipi_spec_object"));
    CATUnicodeString container_name;
    InterfacePtr<CATICkeParameterSet> sp_set;
    guarded([&] {
        sp_set = appendNewSet(ipi_spec_object, container_name);
        if (sp_set)
            frame.write("Create ParameterSet \"%s\" append to feature %s in container %s\n", kNewSet,
                        ipi_spec_object->GetDisplayName(), container_name);
    });
    if (!sp_set) {
        frame.write("Unable to create ParameterSet\n");
        return frame.endWith(E_FAIL);
    }
    opi_set = sp_set.detach();
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::getParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set) {
    JournalFrame frame(_CteCLASS_NAME, "getParameterSet");
    opi_set = nullptr;
    const auto work = [&]() -> HRESULT {
        if (!ipi_spec_object) return frame.endWith(frame.missing("ipi_spec_object"));
        const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_spec_object);
        if (!sp_access) return frame.endWith(E_FAIL);
        HRESULT code = E_FAIL;
        auto sp_key = keyOf(sp_access.get(), kSetAttributes[0]);
        if (!sp_key) sp_key = keyOf(sp_access.get(), kSetAttributes[1]);
        if (sp_key) code = getParameterSetByAttributKey(sp_key.get(), sp_access.get(), opi_set);
        if (opi_set) return frame.endWith(code);
        sp_key = keyOf(sp_access.get(), kSetAttributes[2]);
        if (sp_key) code = getParameterSetByAttributKey(sp_key.get(), sp_access.get(), opi_set);
        return frame.endWith(code);
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCADDOCProperties::getParameterSetByAttributKey(CATISpecAttrKey* ipi_key,
                                                                CATISpecAttrAccess* ipi_access,
                                                                CATICkeParameterSet*& opi_set) {
    JournalFrame frame(_CteCLASS_NAME, "getParameterSetByAttributKey");
    opi_set = nullptr;
    if (!ipi_key || !ipi_access) {
        frame.write("No ParameterSet\n");
        return frame.endWith(E_FAIL);
    }
    InterfacePtr<CATICkeParameterSet> sp_set;
    const HRESULT code = guarded([&] { return setBehindKey(frame, ipi_access, ipi_key, sp_set); }, E_FAIL);
    if (!sp_set) frame.write("No ParameterSet\n");
    opi_set = sp_set.detach();
    return frame.endWith(code);
}

HRESULT VornToolsCADDOCProperties::redrawParametersNode(CATICkeParameterSet* ipi_set) {
    JournalFrame frame(_CteCLASS_NAME, "redrawParametersNode");
    const auto work = [&]() -> HRESULT {
        if (!ipi_set) return frame.endWith(frame.missing("ipi_set"));
        const auto sp_event = queryInterface<CATIRedrawEvent>(ipi_set);
        if (!sp_event) return frame.endWith(E_FAIL);
        sp_event->Redraw();
        return frame.endWith(S_OK);
    };
    return guarded(work, E_FAIL);
}
