#include "properties/InstancePropertyValues.h"

#include "properties/ParameterKinds.h"
#include "properties/ParameterTexts.h"
#include "properties/SpecAttributes.h"

#include "CATICkeInst.h"
#include "CATISpecAttrKey.h"
#include "UTILString.h"

#include <memory>

namespace vorntools {

namespace {

VornToolsInstanceProperty::EnumPropertyType propertyTypeOf(ParameterKind i_kind) {
    switch (i_kind) {
    case ParameterKind::Text: return VornToolsInstanceProperty::PropertyString;
    case ParameterKind::Integer: return VornToolsInstanceProperty::PropertyInteger;
    case ParameterKind::Truth: return VornToolsInstanceProperty::PropertyBoolean;
    default: return VornToolsInstanceProperty::PropertyReal;
    }
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
HRESULT joinValues(List* ip_owned_list, const char* i_real_format, CATUnicodeString& o_text) {
    const std::unique_ptr<List> list(ip_owned_list);
    if (!list) return E_FAIL;
    if (list->Size() == 0) return S_FALSE;
    CATListValCATUnicodeString texts;
    for (int i = 1; i <= list->Size(); ++i) texts.Append(textOf((*list)[i], i_real_format));
    const HRESULT code = UTILString::concat(texts, kValueSeparator, o_text);
    const bool lost = FAILED(code) || (texts.Size() > 1 && o_text.IsNull());
    if (lost) o_text = "";
    return lost ? E_FAIL : S_OK;
}

/** The values of a parameter that keeps several, read by the kind of their list. @return S_FALSE when it keeps none */
HRESULT readSeveral(CATICkeParm* ipi_parameter, const char* i_real_format, CATUnicodeString& o_text) {
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
    if (!sp_access) return E_FAIL;
    const auto sp_key = keyOf(sp_access.get(), kListOfValues);
    if (!sp_key) return S_FALSE;
    switch (sp_key->GetListType()) {
    case tk_string: return joinValues(sp_access->GetListString(sp_key.get()), i_real_format, o_text);
    case tk_integer: return joinValues(sp_access->GetListInteger(sp_key.get()), i_real_format, o_text);
    case tk_double: return joinValues(sp_access->GetListDouble(sp_key.get()), i_real_format, o_text);
    default: return E_FAIL;
    }
}

} // namespace

HRESULT readProperty(CATICkeParm* ipi_parameter, const char* i_real_format,
                     VornToolsInstanceProperty::EnumPropertyType& o_type, CATUnicodeString& o_text) {
    const ParameterKind kind = parameterKindOf(ipi_parameter);
    if (kind == ParameterKind::Unknown) return E_FAIL;
    o_type = propertyTypeOf(kind);
    const HRESULT code = readSeveral(ipi_parameter, i_real_format, o_text);
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

} // namespace vorntools
