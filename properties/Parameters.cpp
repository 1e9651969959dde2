#include "properties/Parameters.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterSets.h"
#include "properties/ParameterTexts.h"
#include "properties/SpecAttributes.h"
#include "properties/Valuation.h"
#include "properties/ValueList.h"

#include "CATICkeParmFactory.h"
#include "CATISpecAttrKey.h"
#include "VornLocaleEnv.h"
#include "VornToolsCADDOCProperties.h"

using namespace vorntools;

namespace {

constexpr const char* kStore = "setAttributeOnCATISpecObject";

/** A new parameter with a single value; null when the text does not fit the type. */
CATICkeParm_var createSingle(CATICkeParmFactory* ipi_factory, const CATUnicodeString& i_name,
                             const CATUnicodeString& i_value, const CATUnicodeString& i_type) {
    if (i_type == "i") {
        int number = 0;
        return readInteger(i_value, number) ? ipi_factory->CreateInteger(i_name, number) : CATICkeParm_var();
    }
    if (i_type == "d") {
        double number = 0.0;
        return readReal(inSessionNotation(i_value, VornLocaleEnv::getDecimalSeparatorSymbol()), number)
                   ? ipi_factory->CreateReal(i_name, number)
                   : CATICkeParm_var();
    }
    if (i_type == "b") return ipi_factory->CreateBoolean(i_name, truthOf(i_value) ? CATCke::True : CATCke::False);
    return ipi_factory->CreateString(i_name, i_value);
}

/** Marks a parameter as the users' own. The platform publishes no property for this: what tells such a parameter is
 * that it bears a name of its own. */
void markAsUsers(CATICkeParm* ipi_parameter) { ipi_parameter->Rename(ipi_parameter->InternalRole()); }

/** Sets what a new parameter's users may do with it and under which name they see it. The platform's calls have no
 * result: whether they took is asked. */
HRESULT applyFlags(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const NewParameter& i_new) {
    if (i_new.user_access) {
        ipi_parameter->SetUserAccess(CATICkeParm::User);
        markAsUsers(ipi_parameter);
    }
    if (i_new.rename_to_name) ipi_parameter->Rename(i_new.name);
    if (i_new.read_only) ipi_parameter->SetUserAccess(CATICkeParm::ReadOnly);
    const CATICkeParm::UserAccessMode access = i_new.read_only ? CATICkeParm::ReadOnly : CATICkeParm::User;
    if ((i_new.read_only || i_new.user_access) && ipi_parameter->UserAccess() != access)
        return i_frame.callFailed("SetUserAccess");
    if ((i_new.user_access || i_new.rename_to_name) && !i_new.name.IsNull() && !ipi_parameter->IsNamed())
        return i_frame.callFailed("Rename");
    return S_OK;
}

/** A new parameter that stands nowhere yet; null, and journalled, when the value does not fit the type. */
CATICkeParm_var createUnplaced(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory, const NewParameter& i_new,
                               const ValueList& i_values) {
    const CATICkeParm_var sp_parameter = holdsSeveralValues(i_new.value)
                                             ? i_values.create(ipi_factory, i_new.name)
                                             : createSingle(ipi_factory, i_new.name, i_new.value, i_new.type);
    if (sp_parameter == nullptr)
        i_frame.write("Unable to create parameter [%s] with type [%s]\n", i_new.name, i_new.type);
    return sp_parameter;
}

HRESULT place(const JournalFrame& i_frame, CATIParmPublisher* ipi_publisher, const CATISpecObject_var& i_object) {
    ipi_publisher->Append(i_object);
    return hasChild(ipi_publisher, CATICkeParm::ClassName(), i_object) ? S_OK : i_frame.callFailed("Append");
}

HRESULT unableToSplit(const JournalFrame& i_frame, const CATUnicodeString& i_name, const CATUnicodeString& i_value) {
    i_frame.write("Unable to split parameter [%s] with value [%s]\n", i_name, i_value);
    return E_FAIL;
}

/** Name, value and type letter as they were given. */
struct GivenValue {
    const CATUnicodeString& name;
    const CATUnicodeString& value;
    const CATUnicodeString& type;
};

/** The kind of list that several values are kept in: that of the list which is there, else the one that the type letter
 * asks for. */
ValueList::Kind kindOfList(CATISpecAttrKey* ipi_stored, const CATUnicodeString& i_type) {
    switch (ipi_stored ? ipi_stored->GetListType() : tk_list) {
    case tk_string: return ValueList::Texts;
    case tk_integer: return ValueList::Integers;
    case tk_double: return ValueList::Reals;
    default: return ValueList::kindOf(i_type);
    }
}

/** Makes a parameter and puts it below a publisher. One that lost its values or its flags is not put anywhere. */
HRESULT make(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_publisher,
             const NewParameter& i_new, InterfacePtr<CATICkeParm>& o_made) {
    const bool several = holdsSeveralValues(i_new.value);
    ValueList values;
    if (several &&
        !values.split(i_new.value, ValueList::kindOf(i_new.type), VornLocaleEnv::getDecimalSeparatorSymbol()))
        return unableToSplit(i_frame, i_new.name, i_new.value);
    const CATICkeParm_var sp_parameter = createUnplaced(i_frame, ipi_factory, i_new, values);
    if (sp_parameter == nullptr) return E_FAIL;
    const CATISpecObject_var sp_object(sp_parameter);
    if (sp_object == nullptr) return i_frame.missing("sp_spec_object");
    if (several && FAILED(values.store(sp_object))) return i_frame.callFailed(kStore);
    HRESULT code = applyFlags(i_frame, sp_parameter, i_new);
    if (SUCCEEDED(code)) code = place(i_frame, ipi_publisher, sp_object);
    if (SUCCEEDED(code)) o_made = InterfacePtr<CATICkeParm>::share(static_cast<CATICkeParm*>(sp_parameter));
    return code;
}

/** Replaces what a parameter holds by several values. @param ipi_stored key of the list that it keeps; null: none yet
 */
HRESULT setSeveral(const JournalFrame& i_frame, const Valuation& i_valuation, const GivenValue& i_given,
                   CATICkeParm* ipi_parameter, CATISpecAttrKey* ipi_stored, ToStorageUnit i_to_storage_unit) {
    const ValueList::Kind kind = kindOfList(ipi_stored, i_given.type);
    ValueList values;
    if (!values.split(i_given.value, kind, VornLocaleEnv::getDecimalSeparatorSymbol()))
        return unableToSplit(i_frame, i_given.name, i_given.value);
    const auto sp_object = queryInterface<CATISpecObject>(ipi_parameter);
    if (!sp_object) return i_frame.missing("sp_spec_object");
    const bool keeps_texts = ipi_stored && kind == ValueList::Texts;
    const HRESULT code = i_valuation.setFirst(values, keeps_texts ? nullptr : &i_given.type, i_to_storage_unit);
    if (FAILED(code)) return code;
    return FAILED(values.store(sp_object.get())) ? i_frame.callFailed(kStore) : S_OK;
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
    InterfacePtr<CATICkeParm> sp_made;
    return makeParameter(ipi_param_factory, ipi_param_publisher,
                         {i_name, i_value, i_type, i_read_only != 0, i_user_access != 0, i_rename_to_name != 0},
                         sp_made);
}

HRESULT vorntools::makeParameter(CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_publisher,
                                 const NewParameter& i_new, InterfacePtr<CATICkeParm>& o_made) {
    JournalFrame frame(VornToolsCADDOCProperties::_CteCLASS_NAME, "createParameter");
    o_made.reset();
    if (!ipi_factory) return frame.endWith(frame.badInput("ipi_param_factory"));
    if (!ipi_publisher) return frame.endWith(frame.badInput("ipi_param_publisher"));
    return frame.endWith(guarded([&] { return make(frame, ipi_factory, ipi_publisher, i_new, o_made); }, E_FAIL));
}

HRESULT VornToolsCADDOCProperties::updateParameter(CATICkeParm* ipi_parameter, CATUnicodeString i_name,
                                                   CATUnicodeString i_value, CATUnicodeString i_type) {
    JournalFrame frame(_CteCLASS_NAME, "updateParameter");
    if (!ipi_parameter) return frame.endWith(frame.missing("ipi_parameter"));
    const auto update = [&]() -> HRESULT {
        const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
        if (!sp_access) return frame.missing("pi_spec_attr_access");
        const auto sp_key = keyOf(sp_access.get(), kListOfValues);
        const Valuation valuation(frame, ipi_parameter, i_name, i_value);
        CATUnicodeString value = i_value;
        if (!holdsSeveralValues(value)) {
            CATUnicodeString present;
            if (sp_key && FAILED(getParamMultipleValues(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(),
                                                        valuation.present(), present)))
                frame.write("Multiple value but empty list\n");
            if (present.IsNull()) return valuation.setSingle(value, i_type);
            value = value.IsNull() ? present : value + kValueSeparator + present;
        }
        return setSeveral(frame, valuation, {i_name, value, i_type}, ipi_parameter, sp_key.get(),
                          &getParamValueInStorageUnit);
    };
    return frame.endWith(guarded(update, E_FAIL));
}
