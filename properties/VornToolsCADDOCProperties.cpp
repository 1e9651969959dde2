#include "VornToolsCADDOCProperties.h"

#include "foundation/JournalFrame.h"
#include "properties/ParameterHelpers.h"

#include "CATDocument.h"
#include "CATIAlias.h"
#include "CATIProduct.h"
#include "ENVManager.h"
#include "VornToolsCADDOCPropertiesDflt.h"
#include "VornToolsCADDOCPropertiesPX1.h"
#include "VornToolsCommon.h"
#include "VornToolsLibraryLoader.h"

#include <new>

using namespace vorntools;

const CATUnicodeString VornToolsCADDOCProperties::_CteCLASS_NAME("VornToolsCADDOCProperties::");
VornToolsCADDOCProperties* VornToolsCADDOCProperties::_singleton = nullptr;

namespace {

constexpr const char* kNewSet = "Parameters.1";
constexpr const char* kSetType = "ParameterSet";
constexpr const char* kExcludedSet = "ExternalParameterSet";

CATUnicodeString aliasOf(const CATIContainer_var& i_container) {
    const auto sp_alias = queryInterface<CATIAlias>(static_cast<CATIContainer*>(i_container));
    return sp_alias ? sp_alias->GetAlias() : CATUnicodeString();
}

/** The set that an object is. @return the code of asking for it; S_OK and no set for an object of another type */
HRESULT setBehind(CATISpecObject* ipi_object, InterfacePtr<CATICkeParameterSet>& o_set) {
    if (ipi_object->GetType() != kSetType) return S_OK;
    o_set = queryInterface<CATICkeParameterSet>(ipi_object);
    return o_set ? S_OK : E_NOINTERFACE;
}

HRESULT setInComponent(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                       InterfacePtr<CATICkeParameterSet>& o_set) {
    const auto sp_component = InterfacePtr<CATISpecObject>::adopt(ipi_access->GetSpecObject(ipi_key));
    return sp_component ? setBehind(sp_component.get(), o_set) : E_FAIL;
}

HRESULT setInList(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, InterfacePtr<CATICkeParameterSet>& o_set) {
    HRESULT code = E_FAIL;
    const int count = ipi_access->GetListSize(ipi_key);
    for (int i = 1; i <= count && !o_set; ++i) {
        const auto sp_element = InterfacePtr<CATISpecObject>::adopt(ipi_access->GetSpecObject(ipi_key, i));
        if (!sp_element)
            code = E_FAIL;
        else if (sp_element->GetDisplayName() != kExcludedSet)
            code = setBehind(sp_element.get(), o_set);
    }
    return code;
}

/** Makes a set below a feature; empty when a step failed. */
InterfacePtr<CATICkeParameterSet> makeSet(CATISpecObject* ipi_feature, CATUnicodeString& o_container_name) {
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

VornToolsCADDOCProperties::VornToolsCADDOCProperties() = default;

VornToolsCADDOCProperties::~VornToolsCADDOCProperties() {
    releaseClassVariables();
    _singleton = nullptr;
}

HRESULT VornToolsCADDOCProperties::releaseClassVariables() { return S_OK; }

VornToolsCADDOCProperties* VornToolsCADDOCProperties::getInstance() {
    const JournalFrame frame(_CteCLASS_NAME, "getInstance");
    if (_singleton) return _singleton;
    ENVManager* const p_environment = ENVManager::getInstance();
    if (p_environment && p_environment->isPX1Available())
        _singleton = new (std::nothrow) VornToolsCADDOCPropertiesPX1;
    else
        _singleton = new (std::nothrow) VornToolsCADDOCPropertiesDflt;
    return _singleton;
}

HRESULT VornToolsCADDOCProperties::createParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set) {
    JournalFrame frame(_CteCLASS_NAME, "createParameterSet");
    opi_set = nullptr;
    if (!ipi_spec_object) return frame.endWith(frame.missing("ipi_spec_object"));
    CATUnicodeString container_name;
    auto sp_set = makeSet(ipi_spec_object, container_name);
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

HRESULT VornToolsCADDOCProperties::getElectricalParameters(CATDocument* ip_document,
                                                           CATListValCATUnicodeString& o_parameters) {
    JournalFrame frame(_CteCLASS_NAME, "getElectricalParameters");
    o_parameters.RemoveAll();
    if (!ip_document || !ip_document->IsAKindOf("CATPart")) return frame.endWith(E_INVALIDARG);
    InterfacePtr<CATIProduct> sp_product;
    sp_product.receive(
        [&](CATIProduct*& o_product) { return VornToolsCommon::getActiveCATIProduct(ip_document, o_product); });
    if (!sp_product) return frame.endWith(E_FAIL);
    const auto function = VornToolsLibraryLoader::getElectricalParametersFuncPtr();
    if (!function) return frame.endWith(S_OK);
    const HRESULT code = function(sp_product.get(), &o_parameters);
    if (FAILED(code)) o_parameters.RemoveAll();
    return frame.endWith(code);
}
