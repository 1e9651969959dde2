#include "VornToolsCADDOCProperties.h"

#include "foundation/JournalFrame.h"
#include "properties/ParameterHelpers.h"

#include "UTILConversion.h"
#include "UTILString.h"

#include <memory>

using namespace vorntools;

namespace {

/** The one place that says which unit numbers are kept in. The platform's own storage unit differs (a length is kept in
 * millimetres); kept because the lists of values in existing documents are in MKS units. */
CATICkeUnit_var storageUnitOf(CATICkeMagnitude* ipi_magnitude) { return ipi_magnitude->MKSUnit(); }

/** A number of one unit as text in another; empty when a unit is missing. */
CATUnicodeString converted(double i_value, const CATICkeUnit_var& i_from, const CATICkeUnit_var& i_to) {
    if (i_from == nullptr || i_to == nullptr) return CATUnicodeString();
    return i_to->Show(i_from->Convert(i_value));
}

/** A number when there is no unit to show it in. */
CATUnicodeString inMksUnit(const JournalFrame& i_frame, double i_value) {
    CATUnicodeString text;
    text.BuildFromNum(i_value, "%g");
    i_frame.write("    value applied : %s (MKS unit)", text);
    return text;
}

/** Kind of the list that parameters of a plain type keep, and what the journal is told of it. */
struct ListWords {
    const char* type_name;
    CATAttrKind kind;
    const char* found;
    const char* empty;
    const char* failed;
};

/** Null for a dimension. */
const ListWords* wordsFor(const CATUnicodeString& i_type_name) {
    static constexpr ListWords kWords[] = {{"String", tk_string, "multiple String values",
                                            "multiple String values but empty list", "Cannot get String values list"},
                                           {"Integer", tk_integer, "multiple integer values",
                                            "multiple integer values but empty list", "Cannot get integer values list"},
                                           {"Real", tk_double, "multiple double values",
                                            "multiple double values but empty list", "Cannot get double values list"}};
    for (const ListWords& words : kWords)
        if (i_type_name == words.type_name) return &words;
    return nullptr;
}

template <class List>
HRESULT joinList(const JournalFrame& i_frame, const List* ip_owned_list, const ListWords& i_words,
                 CATUnicodeString& o_joined) {
    const std::unique_ptr<const List> list(ip_owned_list);
    i_frame.write(!list ? i_words.failed : list->Size() == 0 ? i_words.empty : i_words.found);
    return list ? UTILString::concat(*list, kValueSeparator, o_joined) : E_FAIL;
}

HRESULT joinPlain(const JournalFrame& i_frame, CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                  const ListWords& i_words, CATUnicodeString& o_joined) {
    switch (i_words.kind) {
    case tk_string: return joinList(i_frame, ipi_access->GetListString(ipi_key), i_words, o_joined);
    case tk_integer: return joinList(i_frame, ipi_access->GetListInteger(ipi_key), i_words, o_joined);
    default: return joinList(i_frame, ipi_access->GetListDouble(ipi_key), i_words, o_joined);
    }
}

/** The shown value of a dimension and behind it the values it keeps. @param show gives a kept value as text in the unit
 * that users see; one without a text stays in the unit that it is kept in */
template <class Show>
HRESULT joinDimensions(const JournalFrame& i_frame, const CATRawColldouble* ip_list,
                       const CATUnicodeString& i_current_value, Show&& show, CATUnicodeString& o_joined) {
    CATRawColldouble values;
    if (ip_list && ip_list->Size() == 0) i_frame.write("multiple physical values but empty list");
    double number = 0.0;
    const bool any = ip_list && ip_list->Size() > 0;
    if (any && readReal(i_current_value, number)) values.Append(number);
    for (int i = 1; any && i <= ip_list->Size(); ++i)
        values.Append(readReal(show((*ip_list)[i]), number) ? number : (*ip_list)[i]);
    if (values.Size() == 0) i_frame.write("Cannot get physical values list");
    if (values.Size() == 0) return E_FAIL;
    i_frame.write("multiple double values");
    return UTILString::concat(values, kValueSeparator, o_joined);
}

/** The name under which a set offers a parameter. */
CATUnicodeString nameInSet(CATICkeParm* ipi_parameter, const CATIParmPublisher_var& i_set) {
    const CATUnicodeString name = ipi_parameter->IsNamed() ? ipi_parameter->Name() : CATUnicodeString();
    return name.IsNull() ? ipi_parameter->RelativeName(i_set) : name;
}

using ParameterList = std::unique_ptr<CATListValCATBaseUnknown_var>;

/** Everything that stands in a set; null, and journalled, when the set does not tell. */
ParameterList membersOf(const JournalFrame& i_frame, CATICkeParameterSet* ipi_set) {
    ParameterList list(ipi_set->Parameters());
    if (!list)
        i_frame.write("no parameter collection\n");
    else if (list->Size() == 0)
        i_frame.write("0 parameter\n");
    return list;
}

/** Calls `take(parameter, name)` for every parameter among the members of a set. */
template <class Take>
void forEachParameter(CATICkeParameterSet* ipi_set, const CATListValCATBaseUnknown_var& i_members, Take&& i_take) {
    const CATIParmPublisher_var sp_set(static_cast<CATBaseUnknown*>(ipi_set));
    for (int i = 1; i <= i_members.Size(); ++i) {
        const auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>(i_members[i]));
        if (sp_parameter) i_take(sp_parameter.get(), nameInSet(sp_parameter.get(), sp_set));
    }
}

} // namespace

HRESULT VornToolsCADDOCProperties::getListOfParameters(
    CATICkeParameterSet* ipi_set, CATListValCATBaseUnknown_var*& op_parameters, CATListValCATUnicodeString& o_names,
    CATListValCATUnicodeString& o_values, CATListValCATUnicodeString& o_types, CATListValCATUnicodeString& o_flags) {
    JournalFrame frame(_CteCLASS_NAME, "getListOfParameters");
    op_parameters = nullptr;
    for (CATListValCATUnicodeString* const p_list : {&o_names, &o_values, &o_types, &o_flags}) p_list->RemoveAll();
    if (!ipi_set) return frame.endWith(E_FAIL);
    ParameterList members = membersOf(frame, ipi_set);
    if (!members) return frame.endWith(E_FAIL);
    forEachParameter(ipi_set, *members, [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
        o_names.Append(i_name);
        o_values.Append(ipi_parameter->Show());
        o_types.Append(typeNameOf(ipi_parameter));
        o_flags.Append(UTILConversion::booleanToString(ipi_parameter->IsReadOnly() ? 1 : 0));
    });
    op_parameters = members.release();
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::appendAttributesWithParamsList(CATICkeParameterSet* ipi_set,
                                                                  CATUnicodeString i_prefix,
                                                                  CATListValCATUnicodeString& io_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "appendAttributesWithParamsList");
    if (!ipi_set) return frame.endWith(E_FAIL);
    const ParameterList members = membersOf(frame, ipi_set);
    if (!members) return frame.endWith(E_FAIL);
    forEachParameter(ipi_set, *members, [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
        const CATUnicodeString shown = ipi_parameter->Show();
        const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
        const auto sp_key = sp_access ? keyOf(sp_access.get(), kListOfValues) : InterfacePtr<CATISpecAttrKey>();
        CATUnicodeString value;
        if (sp_key) {
            if (FAILED(
                    getParamMultipleValues(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(), shown, value)))
                frame.write("Multiple value but empty list\n");
        } else if (typeNameOf(ipi_parameter) == "Boolean") {
            value = shown == "true" ? "1" : "0";
        } else {
            value = shown;
        }
        io_pairs.Append(i_prefix + "." + i_name);
        io_pairs.Append(value);
    });
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::getParamMultipleValues(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                                                          const CATUnicodeString& i_parameter_name,
                                                          const CATICkeType_var& i_type,
                                                          const CATUnicodeString& i_current_value,
                                                          CATUnicodeString& o_joined) {
    JournalFrame frame(_CteCLASS_NAME, "getParamMultipleValues");
    o_joined = "";
    if (!ipi_access) return frame.endWith(frame.missing("ipi_access"));
    if (!ipi_key) return frame.endWith(frame.missing("ipi_key"));
    const CATUnicodeString type_name = i_type == nullptr ? CATUnicodeString() : i_type->Name();
    if (type_name.IsNull()) return frame.endWith(frame.missing("i_type"));
    HRESULT code = E_FAIL;
    if (const ListWords* const p_words = wordsFor(type_name)) {
        code = joinPlain(frame, ipi_access, ipi_key, *p_words, o_joined);
    } else {
        const auto sp_magnitude = queryInterface<CATICkeMagnitude>(static_cast<CATICkeType*>(i_type));
        const auto show = [&](double i_stored) {
            CATUnicodeString text;
            getParamValueInCurrentUnit(sp_magnitude.get(), i_stored, text);
            return text;
        };
        const std::unique_ptr<CATRawColldouble> list(ipi_access->GetListDouble(ipi_key));
        code = joinDimensions(frame, list.get(), i_current_value, show, o_joined);
    }
    if (SUCCEEDED(code) && !o_joined.IsNull()) return frame.endWith(S_OK);
    frame.write("Unable to concat values of parameter %s", i_parameter_name);
    o_joined = "";
    return frame.endWith(E_FAIL);
}

HRESULT VornToolsCADDOCProperties::getParamValueInCurrentUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                                              CATUnicodeString& o_text) {
    JournalFrame frame(_CteCLASS_NAME, "getParamValueInCurrentUnit");
    o_text = "";
    if (!ipi_magnitude) {
        frame.missing("pi_magnitude");
        o_text = inMksUnit(frame, i_value);
    } else {
        o_text = converted(i_value, storageUnitOf(ipi_magnitude), ipi_magnitude->CurrentUnit());
    }
    return frame.endWith(S_OK);
}

HRESULT VornToolsCADDOCProperties::getParamValueInStorageUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                                              CATUnicodeString& o_text) {
    JournalFrame frame(_CteCLASS_NAME, "getParamValueInStorageUnit");
    o_text = "";
    if (!ipi_magnitude) {
        frame.missing("ipi_magnitude");
        o_text = inMksUnit(frame, i_value);
        return frame.endWith(S_OK);
    }
    o_text = converted(i_value, ipi_magnitude->CurrentUnit(), storageUnitOf(ipi_magnitude));
    frame.write("    value applied : %s", o_text);
    return frame.endWith(S_OK);
}
