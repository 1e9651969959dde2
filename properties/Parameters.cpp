#include "VornToolsCADDOCProperties.h"

#include "foundation/JournalFrame.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterTexts.h"
#include "properties/SpecAttributes.h"
#include "properties/ValueList.h"

#include "CATICkeMagnitude.h"
#include "CATICkeParmFactory.h"
#include "VornLocaleEnv.h"

using namespace vorntools;

namespace {

constexpr const char* kStore = "setAttributeOnCATISpecObject";

/** A new parameter with a single value; null when the text does not fit the type. */
CATICkeParm_var createSingle(CATICkeParmFactory* ipi_factory, const CATUnicodeString& i_name,
                             const CATUnicodeString& i_value, const CATUnicodeString& i_type,
                             const CATUnicodeString& i_separator) {
    if (i_type == "i") {
        int number = 0;
        return i_value.ConvertToNum(&number) ? ipi_factory->CreateInteger(i_name, number) : CATICkeParm_var();
    }
    if (i_type == "d") {
        double number = 0.0;
        return readReal(inSessionNotation(i_value, i_separator), number) ? ipi_factory->CreateReal(i_name, number)
                                                                         : CATICkeParm_var();
    }
    if (i_type == "b") return ipi_factory->CreateBoolean(i_name, truthOf(i_value) ? CATCke::True : CATCke::False);
    return ipi_factory->CreateString(i_name, i_value);
}

/** Marks a parameter as the users' own. The platform publishes no property for this: what tells such a parameter is
 * that it bears a name of its own. */
void markAsUsers(CATICkeParm* ipi_parameter) { ipi_parameter->Rename(ipi_parameter->InternalRole()); }

bool isPlainType(const CATUnicodeString& i_type_name) {
    return i_type_name == "String" || i_type_name == "Integer" || i_type_name == "Boolean";
}

InterfacePtr<CATICkeMagnitude> magnitudeOf(CATICkeParm* ipi_parameter) {
    const CATICkeType_var sp_type = ipi_parameter->Type();
    return queryInterface<CATICkeMagnitude>(static_cast<CATICkeType*>(sp_type));
}

/** A dimension is given as text, in the unit that users see. */
HRESULT updateDimension(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_value) {
    const auto sp_magnitude = magnitudeOf(ipi_parameter);
    if (!sp_magnitude) {
        i_frame.missing("pi_magnitude");
        i_frame.write("    value applied : %s (MKS unit)", i_value);
        ipi_parameter->ValuateReal(i_value);
        return S_OK;
    }
    const CATICkeUnit_var sp_unit = sp_magnitude->CurrentUnit();
    if (sp_unit == nullptr) return i_frame.missing("sp_current_unit");
    const CATUnicodeString value = i_value + sp_unit->Symbol();
    i_frame.write("    value applied : %s", value);
    ipi_parameter->ValuateReal(value);
    return S_OK;
}

HRESULT updateReal(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                   const CATUnicodeString& i_value) {
    const CATUnicodeString type_name = typeNameOf(ipi_parameter->Type());
    i_frame.write("Updating the Double property %s (%s)", i_name, type_name);
    if (type_name.IsNull()) return i_frame.missing("sp_type");
    if (isPlainType(type_name)) {
        ipi_parameter->Valuate(i_value);
        return S_OK;
    }
    double number = 0.0;
    if (!readReal(inSessionNotation(i_value, VornLocaleEnv::getDecimalSeparatorSymbol()), number)) return E_FAIL;
    if (type_name != "Real") return updateDimension(i_frame, ipi_parameter, i_value);
    ipi_parameter->Valuate(number);
    return S_OK;
}

HRESULT updateSingle(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                     const CATUnicodeString& i_value, const CATUnicodeString& i_type) {
    if (i_type == "d") return updateReal(i_frame, ipi_parameter, i_name, i_value);
    if (i_type == "i") {
        int number = 0;
        if (!i_value.ConvertToNum(&number)) return E_FAIL;
        ipi_parameter->Valuate(number);
    } else if (i_type == "b") {
        ipi_parameter->Valuate(truthOf(i_value) ? CATCke::True : CATCke::False);
    } else {
        ipi_parameter->Valuate(i_value);
    }
    return S_OK;
}

/** Sets what a new parameter's users may do with it and under which name they see it. The platform's calls have no
 * result: whether they took is asked. */
HRESULT applyFlags(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                   bool i_read_only, bool i_user_access, bool i_rename_to_name) {
    if (i_user_access) {
        ipi_parameter->SetUserAccess(CATICkeParm::User);
        markAsUsers(ipi_parameter);
    }
    if (i_rename_to_name) ipi_parameter->Rename(i_name);
    if (i_read_only) ipi_parameter->SetUserAccess(CATICkeParm::ReadOnly);
    const CATICkeParm::UserAccessMode access = i_read_only ? CATICkeParm::ReadOnly : CATICkeParm::User;
    if ((i_read_only || i_user_access) && ipi_parameter->UserAccess() != access)
        return i_frame.callFailed("SetUserAccess");
    if ((i_user_access || i_rename_to_name) && !i_name.IsNull() && !ipi_parameter->IsNamed())
        return i_frame.callFailed("Rename");
    return S_OK;
}

/** Gives a parameter the first of several values. @param i_storage_text gives the text of a dimension */
template <class StorageText>
HRESULT valuateFirst(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const ValueList& i_values,
                     StorageText&& i_storage_text) {
    if (i_values.isInteger()) {
        ipi_parameter->Valuate(i_values.firstInteger());
        return S_OK;
    }
    if (!i_values.isReal()) {
        ipi_parameter->Valuate(i_values.firstText());
        return S_OK;
    }
    const CATUnicodeString type_name = typeNameOf(ipi_parameter->Type());
    if (type_name.IsNull()) return i_frame.missing("sp_type");
    if (type_name == "Real" || isPlainType(type_name)) {
        ipi_parameter->Valuate(i_values.firstReal());
        return S_OK;
    }
    const CATUnicodeString text = i_storage_text(i_values.firstReal());
    if (text.IsNull()) return i_frame.missing("sp_unit");
    ipi_parameter->ValuateReal(text);
    return S_OK;
}

} // namespace

unsigned char VornToolsCADDOCProperties::isMultipleValuesParameter(const CATUnicodeString& i_value) {
    const JournalFrame frame(_CteCLASS_NAME, "isMultipleValuesParameter");
    return holdsSeveralValues(i_value) ? 1 : 0;
}

HRESULT VornToolsCADDOCProperties::createParameter(CATICkeParmFactory* ipi_param_factory,
                                                   CATIParmPublisher* ipi_param_publisher, CATUnicodeString i_name,
                                                   CATUnicodeString i_value, CATUnicodeString i_type,
                                                   unsigned char i_read_only, unsigned char i_user_access,
                                                   unsigned char i_rename_to_name) {
    JournalFrame frame(_CteCLASS_NAME, "createParameter");
    if (!ipi_param_factory) return frame.endWith(frame.badInput("ipi_param_factory"));
    if (!ipi_param_publisher) return frame.endWith(frame.badInput("ipi_param_publisher"));
    const CATUnicodeString separator = VornLocaleEnv::getDecimalSeparatorSymbol();
    const bool several = holdsSeveralValues(i_value);
    ValueList values;
    if (several && !values.split(i_value, i_type, separator)) {
        frame.write("Unable to split parameter [%s] with value [%s]\n", i_name, i_value);
        return frame.endWith(E_FAIL);
    }
    const CATICkeParm_var sp_parameter = several ? values.create(ipi_param_factory, i_name)
                                                 : createSingle(ipi_param_factory, i_name, i_value, i_type, separator);
    if (sp_parameter == nullptr) {
        frame.write("Unable to create parameter [%s] with type [%s]\n", i_name, i_type);
        return frame.endWith(E_FAIL);
    }
    const CATISpecObject_var sp_object(sp_parameter);
    if (sp_object == nullptr) return frame.endWith(frame.missing("sp_spec_object"));
    // A parameter that lost its values or its flags is not put anywhere.
    if (several && FAILED(values.store(sp_object))) return frame.endWith(frame.callFailed(kStore));
    const HRESULT code =
        applyFlags(frame, sp_parameter, i_name, i_read_only != 0, i_user_access != 0, i_rename_to_name != 0);
    if (FAILED(code)) return frame.endWith(code);
    ipi_param_publisher->Append(sp_object);
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::updateParameter(CATICkeParm* ipi_parameter, CATUnicodeString i_name,
                                                   CATUnicodeString i_value, CATUnicodeString i_type) {
    JournalFrame frame(_CteCLASS_NAME, "updateParameter");
    if (!ipi_parameter) return frame.endWith(frame.missing("ipi_parameter"));
    if (!holdsSeveralValues(i_value)) {
        const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
        if (!sp_access) return frame.endWith(frame.missing("pi_spec_attr_access"));
        const auto sp_key = keyOf(sp_access.get(), kListOfValues);
        CATUnicodeString present;
        if (sp_key && FAILED(getParamMultipleValues(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(),
                                                    ipi_parameter->Show(), present)))
            frame.write("Multiple value but empty list\n");
        if (present.IsNull()) return frame.endWith(updateSingle(frame, ipi_parameter, i_name, i_value, i_type));
        i_value = i_value.IsNull() ? present : i_value + kValueSeparator + present;
    }
    ValueList values;
    if (!values.split(i_value, i_type, VornLocaleEnv::getDecimalSeparatorSymbol())) {
        frame.write("Unable to split parameter [%s] with value [%s]\n", i_name, i_value);
        return frame.endWith(E_FAIL);
    }
    const auto sp_object = queryInterface<CATISpecObject>(ipi_parameter);
    if (!sp_object) return frame.endWith(frame.missing("sp_spec_object"));
    const HRESULT code = valuateFirst(frame, ipi_parameter, values, [&](double i_first) {
        CATUnicodeString text;
        getParamValueInStorageUnit(magnitudeOf(ipi_parameter).get(), i_first, text);
        return text;
    });
    if (FAILED(code)) return frame.endWith(code);
    if (FAILED(values.store(sp_object.get()))) return frame.endWith(frame.callFailed(kStore));
    return frame.endWith(S_OK);
}
