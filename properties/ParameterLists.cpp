#include "VornToolsCADDOCProperties.h"

#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterNames.h"
#include "properties/SpecAttributes.h"

#include "CATICkeParameterSet.h"
#include "CATISpecAttrKey.h"
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
    const auto clear = [&] {
        for (CATListValCATUnicodeString* const p_list : {&o_names, &o_values, &o_types, &o_flags}) p_list->RemoveAll();
    };
    clear();
    if (!ipi_set) return frame.endWith(E_FAIL);
    const auto take = [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
        o_names.Append(i_name);
        o_values.Append(ipi_parameter->Show());
        o_types.Append(typeNameOf(ipi_parameter->Type()));
        o_flags.Append(UTILConversion::booleanToString(ipi_parameter->IsReadOnly() ? 1 : 0));
    };
    const auto read = [&] {
        ParameterList members = membersOf(frame, ipi_set);
        const HRESULT code = members ? forEachParameter(frame, ipi_set, *members, take) : E_FAIL;
        if (SUCCEEDED(code)) op_parameters = members.release();
        return code;
    };
    const HRESULT code = guarded(read, E_FAIL);
    if (FAILED(code)) clear();
    return frame.endWith(code);
}

HRESULT VornToolsCADDOCProperties::appendAttributesWithParamsList(CATICkeParameterSet* ipi_set,
                                                                  CATUnicodeString i_prefix,
                                                                  CATListValCATUnicodeString& io_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "appendAttributesWithParamsList");
    if (!ipi_set) return frame.endWith(E_FAIL);
    const auto valueOf = [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
        const CATUnicodeString shown = ipi_parameter->Show();
        const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
        const auto sp_key = sp_access ? keyOf(sp_access.get(), kListOfValues) : InterfacePtr<CATISpecAttrKey>();
        if (!sp_key)
            return parameterKindOf(ipi_parameter) != ParameterKind::Truth ? shown
                   : shown == "true"                                      ? CATUnicodeString("1")
                                                                          : CATUnicodeString("0");
        CATUnicodeString value;
        if (FAILED(getParamMultipleValues(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(), shown, value)))
            frame.write("Multiple value but empty list\n");
        return value;
    };
    const auto append = [&] {
        CATListValCATUnicodeString pairs;
        const ParameterList members = membersOf(frame, ipi_set);
        if (!members) return E_FAIL;
        const auto take = [&](CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
            pairs.Append(i_prefix + "." + i_name);
            pairs.Append(valueOf(ipi_parameter, i_name));
        };
        const HRESULT code = forEachParameter(frame, ipi_set, *members, take);
        if (SUCCEEDED(code)) io_pairs.Append(pairs);
        return code;
    };
    return frame.endWith(guarded(append, E_FAIL));
}
