#include "VornToolsInstanceProperty.h"

#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"
#include "properties/ParameterHelpers.h"
#include "session/DescriptionText.h"
#include "session/ProductHelpers.h"

#include "CATISpecAttribute.h"
#include "UTILString.h"
#include "VornToolsCADDOCProperties.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

using namespace vorntools;

const CATUnicodeString VornToolsInstanceProperty::_CteCLASS_NAME("VornToolsInstanceProperty::");

namespace {

constexpr const char* kAttribute = "_Maro";
constexpr const char* kSetName = "UserInstanceProperties";
constexpr const char* kSetType = "ParameterSet";
constexpr const char* kEveryDigit = "%.16G";
constexpr const char* kFewDigits = "%g";

using ParameterList = std::unique_ptr<CATListValCATBaseUnknown_var>;

CATIContainer_var containerOf(CATIProduct* ipi_product) {
    const auto sp_object = queryInterface<CATISpecObject>(ipi_product);
    return sp_object ? sp_object->GetFeatContainer() : CATIContainer_var();
}

/** The container of an instance that is stored where its reference is; null, and reported, otherwise. */
CATIContainer_var sharedContainer(const JournalFrame& i_frame, CATIProduct* ipi_instance) {
    const auto sp_reference = referenceOf(ipi_instance);
    if (!sp_reference) {
        i_frame.missing("sp_reference_product");
        return CATIContainer_var();
    }
    const CATIContainer_var sp_container = containerOf(ipi_instance);
    if (sp_container == nullptr) {
        i_frame.missing("sp_container");
        return CATIContainer_var();
    }
    const CATIContainer_var sp_reference_container = containerOf(sp_reference.get());
    return sp_container == sp_reference_container ? sp_container : CATIContainer_var();
}

/** Attribute access of an instance; empty, and reported, when it is missing. */
InterfacePtr<CATISpecAttrAccess> accessTo(const JournalFrame& i_frame, CATIProduct* ipi_instance) {
    auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_instance);
    if (!sp_access) i_frame.missing("pi_spec_attr_access");
    return sp_access;
}

/** The key of the properties' list; made when it is missing. */
InterfacePtr<CATISpecAttrKey> keyForWriting(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                                            CATISpecAttrAccess* ipi_access) {
    auto sp_key = keyOf(ipi_access, kAttribute);
    if (sp_key) return sp_key;
    const auto sp_object = queryInterface<CATISpecObject>(ipi_instance);
    if (!sp_object) {
        i_frame.missing("pi_spec_object");
        return {};
    }
    const auto sp_attribute =
        InterfacePtr<CATISpecAttribute>::adopt(sp_object->AddAttribute(kAttribute, tk_list, tk_component));
    if (sp_attribute) sp_key = keyOf(ipi_access, kAttribute);
    if (!sp_key) i_frame.callFailed("AddAttribute");
    return sp_key;
}

/** Whether every component of a list tells that it is not the properties' set. Asked when the set is not found: a list
 * that cannot be read may hold it. */
bool holdsNoSet(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key) {
    const int size = ipi_access->GetListSize(ipi_key);
    for (int i = 1; i <= size; ++i) {
        const auto sp_object = InterfacePtr<CATISpecObject>::adopt(ipi_access->GetSpecObject(ipi_key, i));
        const CATUnicodeString type = sp_object ? sp_object->GetType() : CATUnicodeString();
        const CATUnicodeString name = type == kSetType ? sp_object->GetDisplayName() : type;
        if (name.IsNull() || name == kSetName) return false;
    }
    return size > 0 || !ipi_access->TestAttributeValue(ipi_key);
}

/** A new set at the end of the list; empty, and reported, when it cannot be put there. */
InterfacePtr<CATICkeParameterSet> addSet(const JournalFrame& i_frame, const CATIContainer_var& i_container,
                                         CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key) {
    const auto sp_factory = queryInterface<CATICkeRelationFactory>(static_cast<CATIContainer*>(i_container));
    if (!sp_factory) {
        i_frame.missing("pi_relation_factory");
        return {};
    }
    const CATIParmPublisher_var sp_publisher = sp_factory->CreateParameterSet(kSetName);
    const CATISpecObject_var sp_object(sp_publisher);
    auto sp_set = queryInterface<CATICkeParameterSet>(static_cast<CATIParmPublisher*>(sp_publisher));
    if (sp_object == nullptr || !sp_set) {
        i_frame.callFailed("CreateParameterSet");
        return {};
    }
    if (FAILED(ipi_access->SetSpecObject(ipi_key, sp_object))) {
        i_frame.callFailed("SetSpecObject");
        return {};
    }
    return sp_set;
}

/** The name that a property is found by: that of a user, else the one at creation. */
CATUnicodeString nameOf(CATICkeParm* ipi_parameter) {
    return ipi_parameter->IsNamed() ? ipi_parameter->Name() : ipi_parameter->InternalRole();
}

/** The parameters of a set; null when it does not tell or something in it does not answer. */
ParameterList parametersOf(CATICkeParameterSet* ipi_set) {
    ParameterList members(ipi_set->Parameters());
    for (int i = 1; members && i <= members->Size(); ++i)
        if (!queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>((*members)[i]))) members.reset();
    return members;
}

/** The first parameter of a name. @param o_readable false when a member that does not answer may have been it */
InterfacePtr<CATICkeParm> lookFor(CATICkeParameterSet* ipi_set, const CATUnicodeString& i_name, bool& o_readable) {
    const ParameterList list(ipi_set->Parameters());
    o_readable = list != nullptr;
    for (int i = 1; list && i <= list->Size(); ++i) {
        auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>((*list)[i]));
        const CATUnicodeString name = sp_parameter ? nameOf(sp_parameter.get()) : CATUnicodeString();
        if (sp_parameter && name == i_name) return sp_parameter;
        if (name.IsNull()) o_readable = false;
    }
    return {};
}

struct NamedParameter {
    CATUnicodeString name;
    InterfacePtr<CATICkeParm> parameter;
};

/** @return false when a parameter or its name is not to be had */
bool nameParameters(const CATListValCATBaseUnknown_var& i_list, std::vector<NamedParameter>& o_parameters) {
    for (int i = 1; i <= i_list.Size(); ++i) {
        auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>(i_list[i]));
        const CATUnicodeString name = sp_parameter ? nameOf(sp_parameter.get()) : CATUnicodeString();
        if (name.IsNull()) return false;
        o_parameters.push_back({name, std::move(sp_parameter)});
    }
    return true;
}

VornToolsInstanceProperty::EnumPropertyType propertyTypeOf(const CATUnicodeString& i_type_name) {
    if (i_type_name == "String") return VornToolsInstanceProperty::PropertyString;
    if (i_type_name == "Integer") return VornToolsInstanceProperty::PropertyInteger;
    if (i_type_name == "Boolean") return VornToolsInstanceProperty::PropertyBoolean;
    return VornToolsInstanceProperty::PropertyReal;
}

CATUnicodeString textOf(double i_value, const char* i_real_format) {
    CATUnicodeString text;
    text.BuildFromNum(i_value, i_real_format);
    return text;
}

CATUnicodeString textOf(int i_value, const char*) {
    CATUnicodeString text;
    text.BuildFromNum(i_value, "%d");
    return text;
}

CATUnicodeString textOf(const CATUnicodeString& i_value, const char*) { return i_value; }

/** The values of a list joined as they were given. @return S_FALSE for an empty list, E_FAIL without one */
template <class List>
HRESULT joinValues(const List* ip_owned_list, const char* i_real_format, CATUnicodeString& o_text) {
    const std::unique_ptr<const List> list(ip_owned_list);
    if (!list) return E_FAIL;
    if (list->Size() == 0) return S_FALSE;
    CATListValCATUnicodeString texts;
    for (int i = 1; i <= list->Size(); ++i) texts.Append(textOf((*list)[i], i_real_format));
    const HRESULT code = UTILString::concat(texts, kValueSeparator, o_text);
    const bool lost = FAILED(code) || (texts.Size() > 1 && o_text.IsNull());
    if (lost) o_text = "";
    return lost ? E_FAIL : S_OK;
}

/** The values of a parameter that keeps several. @return S_FALSE when it keeps none */
HRESULT readSeveral(CATICkeParm* ipi_parameter, VornToolsInstanceProperty::EnumPropertyType i_type,
                    const char* i_real_format, CATUnicodeString& o_text) {
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
    if (!sp_access) return E_FAIL;
    const auto sp_key = keyOf(sp_access.get(), kListOfValues);
    if (!sp_key) return S_FALSE;
    if (i_type == VornToolsInstanceProperty::PropertyInteger)
        return joinValues(sp_access->GetListInteger(sp_key.get()), i_real_format, o_text);
    if (i_type == VornToolsInstanceProperty::PropertyReal)
        return joinValues(sp_access->GetListDouble(sp_key.get()), i_real_format, o_text);
    return joinValues(sp_access->GetListString(sp_key.get()), i_real_format, o_text);
}

/** Type and value of a parameter. @return E_FAIL when it does not tell its type or its value */
HRESULT readParameter(CATICkeParm* ipi_parameter, const char* i_real_format,
                      VornToolsInstanceProperty::EnumPropertyType& o_type, CATUnicodeString& o_text) {
    const CATUnicodeString type_name = typeNameOf(ipi_parameter);
    if (type_name.IsNull()) return E_FAIL;
    o_type = propertyTypeOf(type_name);
    const HRESULT code = readSeveral(ipi_parameter, o_type, i_real_format, o_text);
    if (code != S_FALSE) return code;
    o_text = "";
    if (!ipi_parameter->IsSet()) return S_OK;
    const CATICkeInst_var sp_value = ipi_parameter->Value();
    if (sp_value == nullptr) return E_FAIL;
    switch (o_type) {
    case VornToolsInstanceProperty::PropertyInteger: o_text = textOf(sp_value->AsInteger(), i_real_format); break;
    case VornToolsInstanceProperty::PropertyReal: o_text = textOf(sp_value->AsReal(), i_real_format); break;
    case VornToolsInstanceProperty::PropertyBoolean: o_text = sp_value->AsBoolean() ? "1" : "0"; break;
    default: o_text = sp_value->AsString(); break;
    }
    return S_OK;
}

/** The properties' set in a list of components; empty when there is none. @return E_FAIL, reported, when the list may
 * hold one that cannot be read */
template <class Find>
HRESULT setInList(const JournalFrame& i_frame, CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, Find&& i_find,
                  InterfacePtr<CATICkeParameterSet>& o_set) {
    o_set = InterfacePtr<CATICkeParameterSet>::adopt(i_find(ipi_access, ipi_key));
    return o_set || holdsNoSet(ipi_access, ipi_key) ? S_OK : i_frame.missing("pi_set");
}

/** The properties' set of an instance; empty when there is none. @return E_FAIL, reported, when it cannot be read */
template <class Find>
HRESULT existingSet(const JournalFrame& i_frame, CATIProduct* ipi_instance, Find&& i_find,
                    InterfacePtr<CATICkeParameterSet>& o_set) {
    o_set.reset();
    const auto sp_access = accessTo(i_frame, ipi_instance);
    if (!sp_access) return E_FAIL;
    const auto sp_key = keyOf(sp_access.get(), kAttribute);
    return sp_key ? setInList(i_frame, sp_access.get(), sp_key.get(), i_find, o_set) : S_OK;
}

/** The same, made when it is missing and may be. @return E_FAIL without a set; unreported when it may not be made */
template <class Find>
HRESULT setForWriting(const JournalFrame& i_frame, CATIProduct* ipi_instance, const CATIContainer_var& i_container,
                      bool i_may_create, Find&& i_find, InterfacePtr<CATICkeParameterSet>& o_set) {
    const auto sp_access = accessTo(i_frame, ipi_instance);
    if (!sp_access) return E_FAIL;
    auto sp_key = keyOf(sp_access.get(), kAttribute);
    if (!sp_key && i_may_create) sp_key = keyForWriting(i_frame, ipi_instance, sp_access.get());
    if (!sp_key || FAILED(setInList(i_frame, sp_access.get(), sp_key.get(), i_find, o_set))) return E_FAIL;
    if (!o_set && i_may_create) o_set = addSet(i_frame, i_container, sp_access.get(), sp_key.get());
    return o_set ? S_OK : E_FAIL;
}

/** Whether a parameter can take values of a type. Several truth values are kept as texts. */
bool takes(CATICkeParm* ipi_parameter, const CATUnicodeString& i_type, const CATUnicodeString& i_value) {
    const CATUnicodeString type_name = typeNameOf(ipi_parameter);
    if (type_name.IsNull()) return false;
    if (i_type == "b") return type_name == (holdsSeveralValues(i_value) ? "String" : "Boolean");
    if (i_type == "i") return type_name == "Integer";
    if (i_type == "d") return propertyTypeOf(type_name) == VornToolsInstanceProperty::PropertyReal;
    return type_name == "String";
}

bool isFirstMappingLine(const CATUnicodeString& i_line) {
    return beginsWith(i_line, kIdentity) || beginsWith(i_line, kSecondIdentity) || i_line == kBrokenIcon ||
           i_line == kIgnoreNode;
}

/** The integration's lines at the front of a description. Kept because mappings rely on it: another marker goes. */
CATUnicodeString mappingLinesOf(const CATUnicodeString& i_description) {
    CATListValCATUnicodeString lines;
    UTILString::split(i_description, kLineEnd, lines);
    for (int i = 1; i <= std::min(lines.Size(), 2); ++i) {
        CATUnicodeString& line = lines[i];
        if (endsWith(line, "\r")) line = line.SubString(0, line.GetLengthInChar() - 1);
    }
    if (lines.Size() == 0 || !isFirstMappingLine(lines[1])) return CATUnicodeString();
    const bool has_second =
        lines.Size() > 1 && beginsWith(lines[1], kIdentity) && beginsWith(lines[2], kSecondIdentity);
    return has_second ? lines[1] + kLineEnd + lines[2] : lines[1];
}

} // namespace

VornToolsInstanceProperty::VornToolsInstanceProperty() = default;
VornToolsInstanceProperty::~VornToolsInstanceProperty() = default;

HRESULT VornToolsInstanceProperty::createMaroInstanceProperty(CATIProduct* ipi_instance, const EnumPropertyType& i_type,
                                                              const CATUnicodeString& i_name,
                                                              const CATUnicodeString& i_value,
                                                              unsigned char i_create_if_empty,
                                                              unsigned char& o_created) {
    const JournalFrame frame(_CteCLASS_NAME, "createMaroInstanceProperty");
    o_created = 1;
    if (!ipi_instance) return E_INVALIDARG;
    if (i_name.IsNull()) return frame.badInput("i_name");
    const CATIContainer_var sp_container = sharedContainer(frame, ipi_instance);
    if (sp_container == nullptr) return E_FAIL;
    const auto sp_factory = queryInterface<CATICkeParmFactory>(static_cast<CATIContainer*>(sp_container));
    if (!sp_factory) return frame.missing("pi_param_factory");
    const bool may_create = i_create_if_empty != 0 || !i_value.IsNull();
    InterfacePtr<CATICkeParameterSet> sp_set;
    const HRESULT code =
        setForWriting(frame, ipi_instance, sp_container, may_create, &getUserInstancePropertiesParameterSet, sp_set);
    if (FAILED(code)) return code;

    const CATUnicodeString type = propertyTypeToString(i_type);
    bool readable = true;
    const auto sp_parameter = lookFor(sp_set.get(), i_name, readable);
    if (sp_parameter) {
        o_created = 0;
        return VornToolsCADDOCProperties::updateParameter(sp_parameter.get(), i_name, i_value, type);
    }
    if (!readable) return frame.missing("pi_param"); // no second one of a name
    if (!may_create) return E_FAIL;
    const auto sp_publisher = sp_set.query<CATIParmPublisher>();
    return VornToolsCADDOCProperties::createParameter(sp_factory.get(), sp_publisher.get(), i_name, i_value, type, 0, 0,
                                                      1);
}

HRESULT VornToolsInstanceProperty::updateMaroInstanceProperty(CATIProduct* ipi_instance, const EnumPropertyType& i_type,
                                                              const CATUnicodeString& i_name,
                                                              const CATUnicodeString& i_value) {
    const JournalFrame frame(_CteCLASS_NAME, "updateMaroInstanceProperty");
    if (!ipi_instance) return E_INVALIDARG;
    InterfacePtr<CATICkeParameterSet> sp_set;
    const HRESULT code = existingSet(frame, ipi_instance, &getUserInstancePropertiesParameterSet, sp_set);
    if (FAILED(code)) return code;
    const auto sp_parameter = InterfacePtr<CATICkeParm>::adopt(getParameter(sp_set.get(), i_name));
    if (!sp_parameter) return E_FAIL;
    return VornToolsCADDOCProperties::updateParameter(sp_parameter.get(), i_name, i_value,
                                                      propertyTypeToString(i_type));
}

HRESULT VornToolsInstanceProperty::getAllMaroInstanceProperties(CATIProduct* ipi_instance,
                                                                CATListValCATBaseUnknown_var*& op_properties) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllMaroInstanceProperties");
    op_properties = nullptr;
    if (!ipi_instance) return E_INVALIDARG;
    InterfacePtr<CATICkeParameterSet> sp_set;
    const HRESULT code = existingSet(frame, ipi_instance, &getUserInstancePropertiesParameterSet, sp_set);
    if (FAILED(code)) return code;
    ParameterList list = sp_set ? parametersOf(sp_set.get()) : std::make_unique<CATListValCATBaseUnknown_var>();
    if (!list) return frame.callFailed("Parameters");
    op_properties = list.release();
    return S_OK;
}

HRESULT
VornToolsInstanceProperty::getAllMaroInstancePropertiesOrderedByName(CATIProduct* ipi_instance,
                                                                     CATListValCATBaseUnknown_var*& op_properties) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllMaroInstancePropertiesOrderedByName");
    op_properties = nullptr;
    CATListValCATBaseUnknown_var* p_list = nullptr;
    const HRESULT code = getAllMaroInstanceProperties(ipi_instance, p_list);
    ParameterList list(p_list);
    if (FAILED(code)) return code;
    std::vector<NamedParameter> parameters;
    if (!nameParameters(*list, parameters)) return frame.missing("pi_param");
    std::stable_sort(parameters.begin(), parameters.end(), [](const NamedParameter& i_a, const NamedParameter& i_b) {
        return std::strcmp(i_a.name.ConvertToChar(), i_b.name.ConvertToChar()) < 0;
    });
    list->RemoveAll();
    for (const NamedParameter& each : parameters) list->Append(CATBaseUnknown_var(each.parameter.get()));
    op_properties = list.release();
    return S_OK;
}

HRESULT VornToolsInstanceProperty::getAllMaroInstancePropertiesNamesAndValues(CATIProduct* ipi_instance,
                                                                              CATListValCATUnicodeString& o_names,
                                                                              CATListValCATUnicodeString& o_values) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllMaroInstancePropertiesNamesAndValues");
    o_names.RemoveAll();
    o_values.RemoveAll();
    CATListValCATBaseUnknown_var* p_list = nullptr;
    const HRESULT code = getAllMaroInstanceProperties(ipi_instance, p_list);
    const ParameterList list(p_list);
    if (FAILED(code)) return code;
    std::vector<NamedParameter> parameters;
    if (!nameParameters(*list, parameters)) return frame.missing("pi_param");
    CATListValCATUnicodeString names, values;
    for (const NamedParameter& each : parameters) {
        EnumPropertyType type = PropertyString;
        CATUnicodeString value;
        if (FAILED(readParameter(each.parameter.get(), kEveryDigit, type, value))) return frame.callFailed("Value");
        names.Append(each.name);
        values.Append(value);
    }
    o_names = names;
    o_values = values;
    return S_OK;
}

HRESULT VornToolsInstanceProperty::getAttribute(CATIProduct* ipi_instance, const CATUnicodeString& i_name,
                                                unsigned char& o_found, EnumPropertyType& o_type,
                                                CATUnicodeString& o_value) {
    const JournalFrame frame(_CteCLASS_NAME, "getAttribute");
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): may be the same text as the output
    const CATUnicodeString name = i_name;
    o_found = 0;
    o_type = PropertyString;
    o_value = "";
    if (!ipi_instance) return E_INVALIDARG;
    InterfacePtr<CATICkeParameterSet> sp_set;
    const HRESULT code = existingSet(frame, ipi_instance, &getUserInstancePropertiesParameterSet, sp_set);
    if (FAILED(code)) return code;
    if (!sp_set) return S_OK;
    bool readable = true;
    const auto sp_parameter = lookFor(sp_set.get(), name, readable);
    if (!sp_parameter) return readable ? S_OK : frame.missing("pi_param");
    EnumPropertyType type = PropertyString;
    if (FAILED(readParameter(sp_parameter.get(), kFewDigits, type, o_value))) return frame.callFailed("Value");
    o_type = type;
    o_found = 1;
    return S_OK;
}

HRESULT VornToolsInstanceProperty::setAttribute(CATIProduct* ipi_instance, const CATUnicodeString& i_name,
                                                const EnumPropertyType& i_type, const CATUnicodeString& i_value) {
    const JournalFrame frame(_CteCLASS_NAME, "setAttribute");
    if (!ipi_instance) return E_INVALIDARG;
    InterfacePtr<CATICkeParameterSet> sp_set;
    const HRESULT code = existingSet(frame, ipi_instance, &getUserInstancePropertiesParameterSet, sp_set);
    if (FAILED(code)) return code;
    const auto sp_parameter = InterfacePtr<CATICkeParm>::adopt(getParameter(sp_set.get(), i_name));
    if (!sp_parameter) {
        unsigned char created = 0;
        return createMaroInstanceProperty(ipi_instance, i_type, i_name, i_value, 1, created);
    }
    const CATUnicodeString type = propertyTypeToString(i_type);
    if (!takes(sp_parameter.get(), type, i_value)) return E_FAIL;
    return VornToolsCADDOCProperties::updateParameter(sp_parameter.get(), i_name, i_value, type);
}

HRESULT VornToolsInstanceProperty::updateDescriptionInstMapping(CATIProduct* ipi_instance,
                                                                const CATUnicodeString& i_mapping) {
    const JournalFrame frame(_CteCLASS_NAME, "updateDescriptionInstMapping");
    if (!ipi_instance) return E_INVALIDARG;
    if (sharedContainer(frame, ipi_instance) == nullptr) return E_FAIL;
    const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_instance);
    if (!sp_properties) return frame.missing("pi_cati_prd_properties");
    CATUnicodeString description;
    if (FAILED(sp_properties->GetDescriptionInst(description))) return frame.callFailed("GetDescriptionInst");
    CATUnicodeString text = mappingLinesOf(description);
    if (text.IsNull())
        text = i_mapping;
    else if (!i_mapping.IsNull())
        text = withFirstLine(text, i_mapping);
    return FAILED(writeDescription(sp_properties.get(), text)) ? frame.callFailed("SetDescriptionInst") : S_OK;
}

CATICkeParameterSet* VornToolsInstanceProperty::getUserInstancePropertiesParameterSet(CATISpecAttrAccess* ipi_access,
                                                                                      CATISpecAttrKey* ipi_key) {
    if (!ipi_access || !ipi_key) return nullptr;
    const int size = ipi_access->GetListSize(ipi_key);
    for (int i = 1; i <= size; ++i) {
        const auto sp_object = InterfacePtr<CATISpecObject>::adopt(ipi_access->GetSpecObject(ipi_key, i));
        if (sp_object && sp_object->GetType() == kSetType && sp_object->GetDisplayName() == kSetName)
            return sp_object.query<CATICkeParameterSet>().detach();
    }
    return nullptr;
}

CATICkeParm* VornToolsInstanceProperty::getParameter(CATICkeParameterSet* ipi_set, const CATUnicodeString& i_name) {
    if (!ipi_set) return nullptr;
    bool readable = true;
    return lookFor(ipi_set, i_name, readable).detach();
}

CATUnicodeString VornToolsInstanceProperty::propertyTypeToString(EnumPropertyType i_type) {
    switch (i_type) {
    case PropertyReal: return "d";
    case PropertyInteger: return "i";
    case PropertyBoolean: return "b";
    default: return "s";
    }
}
