#include "session/Shapes.h"

#include "foundation/AutomationText.h"

namespace vorntools {

namespace {

/** Calls `call(CATBSTR& out)`. @param o_text empty on failure */
template <class Call>
HRESULT readText(Call&& i_call, CATUnicodeString& o_text) {
    AutomationText text;
    const HRESULT code = text.receive(i_call);
    o_text = SUCCEEDED(code) ? text.text() : CATUnicodeString();
    return SUCCEEDED(code) && o_text.IsNull() ? E_FAIL : code;
}

} // namespace

HRESULT readDefaultShapeName(CATIAProduct& i_product, CATUnicodeString& o_name) {
    return readText([&](CATBSTR& o_text) { return i_product.GetDefaultShapeName(o_text); }, o_name);
}

HRESULT readShapePath(CATIAProduct& i_product, const CATUnicodeString& i_shape_name, CATUnicodeString& o_path) {
    const AutomationText asked(i_shape_name);
    return readText([&](CATBSTR& o_text) { return i_product.GetShapePathName(asked.get(), o_text); }, o_path);
}

HRESULT readMasterShapePath(CATIAProduct& i_product, CATUnicodeString& o_path) {
    return readText([&](CATBSTR& o_text) { return i_product.GetMasterShapeRepresentationPathName(o_text); }, o_path);
}

} // namespace vorntools
