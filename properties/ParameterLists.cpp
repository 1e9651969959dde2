#include "VornToolsCADDOCProperties.h"

#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterNames.h"
#include "properties/SpecAttributes.h"

#include "CATICkeParameterSet.h"
#include "UTILConversion.h"

#include <memory>

using namespace vorntools;

namespace {

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

/** Calls `take(parameter, name)` for every parameter among the members of a set. @return E_FAIL, reported, when the set
 * cannot be a root of names */
template <class Take>
HRESULT forEachParameter(const JournalFrame& i_frame, CATICkeParameterSet* ipi_set,
                         const CATListValCATBaseUnknown_var& i_members, Take&& i_take) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_set);
    if (!sp_publisher) return i_frame.missing("pi_parm_publisher");
    const CATIParmPublisher_var sp_set(sp_publisher.get());
    for (int i = 1; i <= i_members.Size(); ++i) {
        const auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>(i_members[i]));
        if (sp_parameter) i_take(sp_parameter.get(), nameInSet(sp_parameter.get(), sp_set));
    }
    return S_OK;
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
    const auto take = [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
        o_names.Append(i_name);
        o_values.Append(ipi_parameter->Show());
        o_types.Append(typeNameOf(ipi_parameter->Type()));
        o_flags.Append(UTILConversion::booleanToString(ipi_parameter->IsReadOnly() ? 1 : 0));
    };
    const HRESULT code = forEachParameter(frame, ipi_set, *members, take);
    if (SUCCEEDED(code)) op_parameters = members.release();
    return frame.endWith(code);
}

HRESULT VornToolsCADDOCProperties::appendAttributesWithParamsList(CATICkeParameterSet* ipi_set,
                                                                  CATUnicodeString i_prefix,
                                                                  CATListValCATUnicodeString& io_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "appendAttributesWithParamsList");
    if (!ipi_set) return frame.endWith(E_FAIL);
    const ParameterList members = membersOf(frame, ipi_set);
    if (!members) return frame.endWith(E_FAIL);
    const auto take = [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
        const CATUnicodeString shown = ipi_parameter->Show();
        const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
        const auto sp_key = sp_access ? keyOf(sp_access.get(), kListOfValues) : InterfacePtr<CATISpecAttrKey>();
        CATUnicodeString value;
        if (sp_key) {
            if (FAILED(
                    getParamMultipleValues(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(), shown, value)))
                frame.write("Multiple value but empty list\n");
        } else if (parameterKindOf(ipi_parameter) == ParameterKind::Truth) {
            value = shown == "true" ? "1" : "0";
        } else {
            value = shown;
        }
        io_pairs.Append(i_prefix + "." + i_name);
        io_pairs.Append(value);
    };
    return frame.endWith(forEachParameter(frame, ipi_set, *members, take));
}
