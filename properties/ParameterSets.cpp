#include "properties/ParameterSets.h"

#include "foundation/JournalFrame.h"

#include "CATIAlias.h"
#include "CATICkeRelationFactory.h"
#include "CATIRedrawEvent.h"
#include "CATLISTV_CATISpecObject.h"
#include "VornToolsCADDOCProperties.h"

using namespace vorntools;

namespace {

constexpr const char* kNewSet = "Parameters.1";

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

HRESULT setInList(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, InterfacePtr<CATICkeParameterSet>& o_set) {
    HRESULT code = E_FAIL;
    forEachComponent(ipi_access, ipi_key, [&](CATISpecObject* ipi_object) {
        if (!ipi_object || ipi_object->GetDisplayName() != kExcludedSet) code = setBehind(ipi_object, o_set);
        return static_cast<bool>(o_set);
    });
    return code;
}

/** @return empty when a step failed */
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
    o_container_name = aliasOf(sp_container);
    return sp_set;
}

} // namespace

namespace vorntools {

InterfacePtr<CATICkeParameterSet> setBelow(CATISpecObject* ipi_feature) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_feature);
    CATListValCATISpecObject_var children;
    if (sp_publisher) sp_publisher->GetDirectChildren(CATICkeParameterSet::ClassName(), children);
    InterfacePtr<CATICkeParameterSet> sp_set;
    for (int i = 1; i <= children.Size(); ++i)
        if (asParameterSet(children[i], sp_set) == S_OK && children[i]->GetDisplayName() != kExcludedSet) return sp_set;
    return {};
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
    auto sp_set = appendNewSet(ipi_spec_object, container_name);
    if (!sp_set) {
        frame.write("Unable to create ParameterSet\n");
        return frame.endWith(E_FAIL);
    }
    frame.write("Create ParameterSet \"%s\" append to feature %s in container %s\n", kNewSet,
                ipi_spec_object->GetDisplayName(), container_name);
    opi_set = sp_set.detach();
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::getParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set) {
    JournalFrame frame(_CteCLASS_NAME, "getParameterSet");
    opi_set = nullptr;
    if (!ipi_spec_object) return frame.endWith(frame.missing("ipi_spec_object"));
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_spec_object);
    if (!sp_access) return frame.endWith(E_FAIL);
    HRESULT code = E_FAIL;
    auto sp_key = keyOf(sp_access.get(), "_AttrForLiterals");
    if (!sp_key) sp_key = keyOf(sp_access.get(), "_FtrList");
    if (sp_key) code = getParameterSetByAttributKey(sp_key.get(), sp_access.get(), opi_set);
    if (opi_set) return frame.endWith(code);
    sp_key = keyOf(sp_access.get(), "UserParameters");
    if (sp_key) code = getParameterSetByAttributKey(sp_key.get(), sp_access.get(), opi_set);
    return frame.endWith(code);
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
    frame.write("\tGet attribut for %s ", ipi_key->GetName());
    HRESULT code = E_FAIL;
    InterfacePtr<CATICkeParameterSet> sp_set;
    if (ipi_access->TestAttributeValue(ipi_key)) {
        const CATAttrKind kind = ipi_key->GetType();
        if (kind == tk_component) {
            frame.write("Manage component");
            code = setInComponent(ipi_access, ipi_key, sp_set);
        } else if (kind == tk_list && ipi_key->GetListType() == tk_component) {
            frame.write("Manage list of component");
            code = setInList(ipi_access, ipi_key, sp_set);
        } else {
            frame.write("This attribut type is not managed");
        }
    }
    if (!sp_set) frame.write("No ParameterSet\n");
    opi_set = sp_set.detach();
    return frame.endWith(code);
}

HRESULT VornToolsCADDOCProperties::redrawParametersNode(CATICkeParameterSet* ipi_set) {
    JournalFrame frame(_CteCLASS_NAME, "redrawParametersNode");
    if (!ipi_set) return frame.endWith(frame.missing("ipi_set"));
    const auto sp_event = queryInterface<CATIRedrawEvent>(ipi_set);
    if (!sp_event) return frame.endWith(E_FAIL);
    sp_event->Redraw();
    return frame.endWith(S_OK);
}
