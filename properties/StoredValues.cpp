// Several values that a parameter keeps, read as one text.

#include "VornToolsCADDOCProperties.h"

#include "foundation/JournalFrame.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterTexts.h"
#include "properties/SpecAttributes.h"

#include "CATICkeMagnitude.h"
#include "CATISpecAttrKey.h"
#include "UTILString.h"

#include <memory>

using namespace vorntools;

namespace {

/** What the journal is told of a list of one kind. */
struct ListWords {
    CATAttrKind kind;
    const char* found;
    const char* empty;
    const char* failed;
};
constexpr ListWords kTexts = {tk_string, "multiple String values", "multiple String values but empty list",
                              "Cannot get String values list"};
constexpr ListWords kIntegers = {tk_integer, "multiple integer values", "multiple integer values but empty list",
                                 "Cannot get integer values list"};
constexpr ListWords kReals = {tk_double, "multiple double values", "multiple double values but empty list",
                              "Cannot get double values list"};

/** How a kept list is read: by its own kind, which need not be that of the parameter; a list that does not tell its
 * kind by that of the parameter. Null for the real numbers of a dimension. */
const ListWords* wordsFor(CATAttrKind i_list, ParameterKind i_parameter) {
    const ListWords* const p_reals = i_parameter == ParameterKind::Dimension ? nullptr : &kReals;
    switch (i_list) {
    case tk_string: return &kTexts;
    case tk_integer: return &kIntegers;
    case tk_double: return p_reals;
    default: break;
    }
    switch (i_parameter) {
    case ParameterKind::Text: return &kTexts;
    case ParameterKind::Integer: return &kIntegers;
    case ParameterKind::Real: return &kReals;
    default: return nullptr;
    }
}

template <class List>
HRESULT joinList(const JournalFrame& i_frame, List* ip_owned_list, const ListWords& i_words,
                 CATUnicodeString& o_joined) {
    const std::unique_ptr<List> list(ip_owned_list);
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
HRESULT joinDimensions(const JournalFrame& i_frame, CATRawColldouble* ip_list, const CATUnicodeString& i_current_value,
                       Show&& show, CATUnicodeString& o_joined) {
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

} // namespace

HRESULT VornToolsCADDOCProperties::getParamMultipleValues(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                                                          const CATUnicodeString& i_parameter_name,
                                                          const CATICkeType_var& i_type,
                                                          const CATUnicodeString& i_current_value,
                                                          CATUnicodeString& o_joined) {
    JournalFrame frame(_CteCLASS_NAME, "getParamMultipleValues");
    o_joined = "";
    if (!ipi_access) return frame.endWith(frame.missing("ipi_access"));
    if (!ipi_key) return frame.endWith(frame.missing("ipi_key"));
    const CATUnicodeString type_name = typeNameOf(i_type);
    if (type_name.IsNull()) return frame.endWith(frame.missing("i_type"));
    HRESULT code = E_FAIL;
    if (const ListWords* const p_words = wordsFor(ipi_key->GetListType(), parameterKindOf(type_name))) {
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
