#include "VornToolsInstanceProperty.h"

#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "foundation/Utf8.h"
#include "properties/InstancePropertySet.h"
#include "properties/InstancePropertyValues.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterTexts.h"

#include "CATICkeParmFactory.h"
#include "CATIParmPublisher.h"
#include "VornToolsCADDOCProperties.h"

#include <algorithm>
#include <memory>
#include <vector>

using namespace vorntools;

const CATUnicodeString VornToolsInstanceProperty::_CteCLASS_NAME("VornToolsInstanceProperty::");

namespace {

/** Whether a parameter holds values of a type. Several truth values may be those of a text. */
bool takes(CATICkeParm* ipi_parameter, const CATUnicodeString& i_type, const CATUnicodeString& i_value) {
    const ParameterKind kind = parameterKindOf(ipi_parameter);
    if (i_type == "b")
        return kind == ParameterKind::Truth || (kind == ParameterKind::Text && holdsSeveralValues(i_value));
    if (i_type == "i") return kind == ParameterKind::Integer;
    if (i_type == "d") return kind == ParameterKind::Real || kind == ParameterKind::Dimension;
    return kind == ParameterKind::Text;
}

bool comesBefore(const NamedParameter& i_a, const NamedParameter& i_b) { return utf8Of(i_a.name) < utf8Of(i_b.name); }

/** Runs the work of an operation on an instance. */
template <class Work>
HRESULT forInstance(CATIProduct* ipi_instance, Work&& i_work) {
    return ipi_instance ? guarded(i_work, E_FAIL) : E_INVALIDARG;
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
    return forInstance(ipi_instance, [&]() -> HRESULT {
        if (i_name.IsNull()) return frame.badInput("i_name");
        const CATIContainer_var sp_container = sharedContainer(frame, ipi_instance);
        if (sp_container == nullptr) return E_FAIL;
        const auto sp_factory = queryInterface<CATICkeParmFactory>(static_cast<CATIContainer*>(sp_container));
        if (!sp_factory) return frame.missing("pi_param_factory");
        const bool may_create = i_create_if_empty != 0 || !i_value.IsNull();
        InterfacePtr<CATICkeParameterSet> sp_set;
        const HRESULT code = propertySetForWriting(frame, ipi_instance, sp_container, may_create, sp_set);
        if (FAILED(code)) return code;

        const CATUnicodeString type = propertyTypeToString(i_type);
        InterfacePtr<CATICkeParm> sp_parameter;
        // No name gets a second property.
        if (FAILED(findProperty(sp_set.get(), i_name, sp_parameter))) return frame.missing("pi_param");
        if (sp_parameter) {
            o_created = 0;
            return VornToolsCADDOCProperties::updateParameter(sp_parameter.get(), i_name, i_value, type);
        }
        if (!may_create) return E_FAIL;
        const auto sp_publisher = sp_set.query<CATIParmPublisher>();
        return VornToolsCADDOCProperties::createParameter(sp_factory.get(), sp_publisher.get(), i_name, i_value, type,
                                                          0, 0, 1);
    });
}

HRESULT VornToolsInstanceProperty::updateMaroInstanceProperty(CATIProduct* ipi_instance, const EnumPropertyType& i_type,
                                                              const CATUnicodeString& i_name,
                                                              const CATUnicodeString& i_value) {
    const JournalFrame frame(_CteCLASS_NAME, "updateMaroInstanceProperty");
    return forInstance(ipi_instance, [&]() -> HRESULT {
        InterfacePtr<CATICkeParameterSet> sp_set;
        const HRESULT code = existingPropertySet(frame, ipi_instance, sp_set);
        if (FAILED(code)) return code;
        const auto sp_parameter = InterfacePtr<CATICkeParm>::adopt(getParameter(sp_set.get(), i_name));
        if (!sp_parameter) return E_FAIL;
        return VornToolsCADDOCProperties::updateParameter(sp_parameter.get(), i_name, i_value,
                                                          propertyTypeToString(i_type));
    });
}

HRESULT VornToolsInstanceProperty::getAllMaroInstanceProperties(CATIProduct* ipi_instance,
                                                                CATListValCATBaseUnknown_var*& op_properties) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllMaroInstanceProperties");
    op_properties = nullptr;
    return forInstance(ipi_instance, [&] {
        ParameterList properties;
        const HRESULT code = listProperties(frame, ipi_instance, properties);
        op_properties = properties.release();
        return code;
    });
}

HRESULT
VornToolsInstanceProperty::getAllMaroInstancePropertiesOrderedByName(CATIProduct* ipi_instance,
                                                                     CATListValCATBaseUnknown_var*& op_properties) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllMaroInstancePropertiesOrderedByName");
    op_properties = nullptr;
    return forInstance(ipi_instance, [&] {
        std::vector<NamedParameter> properties;
        const HRESULT code = listProperties(frame, ipi_instance, properties);
        if (FAILED(code)) return code;
        std::stable_sort(properties.begin(), properties.end(), comesBefore);
        auto sorted = std::make_unique<CATListValCATBaseUnknown_var>();
        for (const NamedParameter& each : properties) sorted->Append(CATBaseUnknown_var(each.parameter.get()));
        op_properties = sorted.release();
        return code;
    });
}

HRESULT VornToolsInstanceProperty::getAllMaroInstancePropertiesNamesAndValues(CATIProduct* ipi_instance,
                                                                              CATListValCATUnicodeString& o_names,
                                                                              CATListValCATUnicodeString& o_values) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllMaroInstancePropertiesNamesAndValues");
    const auto clear = [&] {
        o_names.RemoveAll();
        o_values.RemoveAll();
    };
    clear();
    const HRESULT code = forInstance(ipi_instance, [&]() -> HRESULT {
        std::vector<NamedParameter> properties;
        const HRESULT listed = listProperties(frame, ipi_instance, properties);
        if (FAILED(listed)) return listed;
        for (const NamedParameter& each : properties) {
            EnumPropertyType type = PropertyString;
            CATUnicodeString value;
            if (FAILED(readProperty(each.parameter.get(), kEveryDigit, type, value))) return frame.callFailed("Value");
            o_names.Append(each.name);
            o_values.Append(value);
        }
        return S_OK;
    });
    if (FAILED(code)) clear();
    return code;
}

HRESULT VornToolsInstanceProperty::getAttribute(CATIProduct* ipi_instance, const CATUnicodeString& i_name,
                                                unsigned char& o_found, EnumPropertyType& o_type,
                                                CATUnicodeString& o_value) {
    const JournalFrame frame(_CteCLASS_NAME, "getAttribute");
    CATUnicodeString name;
    const bool copied = guarded([&] { name = i_name; }); // it may be the same text as the output
    o_found = 0;
    o_type = PropertyString;
    o_value = "";
    return forInstance(ipi_instance, [&]() -> HRESULT {
        if (!copied) return E_FAIL;
        InterfacePtr<CATICkeParameterSet> sp_set;
        const HRESULT code = existingPropertySet(frame, ipi_instance, sp_set);
        if (FAILED(code)) return code;
        InterfacePtr<CATICkeParm> sp_parameter;
        if (sp_set && FAILED(findProperty(sp_set.get(), name, sp_parameter))) return frame.missing("pi_param");
        if (!sp_parameter) return S_OK;
        EnumPropertyType type = PropertyString;
        CATUnicodeString value;
        if (FAILED(readProperty(sp_parameter.get(), kFewDigits, type, value))) return frame.callFailed("Value");
        o_value = value;
        o_type = type;
        o_found = 1;
        return S_OK;
    });
}

HRESULT VornToolsInstanceProperty::setAttribute(CATIProduct* ipi_instance, const CATUnicodeString& i_name,
                                                const EnumPropertyType& i_type, const CATUnicodeString& i_value) {
    const JournalFrame frame(_CteCLASS_NAME, "setAttribute");
    return forInstance(ipi_instance, [&]() -> HRESULT {
        InterfacePtr<CATICkeParameterSet> sp_set;
        const HRESULT code = existingPropertySet(frame, ipi_instance, sp_set);
        if (FAILED(code)) return code;
        InterfacePtr<CATICkeParm> sp_parameter;
        if (sp_set && FAILED(findProperty(sp_set.get(), i_name, sp_parameter))) return frame.missing("pi_param");
        if (!sp_parameter) {
            unsigned char created = 0;
            return createMaroInstanceProperty(ipi_instance, i_type, i_name, i_value, 1, created);
        }
        const CATUnicodeString type = propertyTypeToString(i_type);
        if (!takes(sp_parameter.get(), type, i_value)) return E_FAIL;
        return VornToolsCADDOCProperties::updateParameter(sp_parameter.get(), i_name, i_value, type);
    });
}

CATICkeParameterSet* VornToolsInstanceProperty::getUserInstancePropertiesParameterSet(CATISpecAttrAccess* ipi_access,
                                                                                      CATISpecAttrKey* ipi_key) {
    if (!ipi_access || !ipi_key) return nullptr;
    InterfacePtr<CATICkeParameterSet> sp_set;
    findPropertySet(ipi_access, ipi_key, sp_set);
    return sp_set.detach();
}

CATICkeParm* VornToolsInstanceProperty::getParameter(CATICkeParameterSet* ipi_set, const CATUnicodeString& i_name) {
    if (!ipi_set) return nullptr;
    InterfacePtr<CATICkeParm> sp_parameter;
    findProperty(ipi_set, i_name, sp_parameter);
    return sp_parameter.detach();
}

CATUnicodeString VornToolsInstanceProperty::propertyTypeToString(EnumPropertyType i_type) {
    switch (i_type) {
    case PropertyReal: return "d";
    case PropertyInteger: return "i";
    case PropertyBoolean: return "b";
    default: return "s";
    }
}
