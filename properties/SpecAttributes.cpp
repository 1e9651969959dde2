#include "properties/SpecAttributes.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATISpecAttrKey.h"
#include "CATISpecAttribute.h"
#include "CATISpecObject.h"
#include "VornToolsCADDOCProperties.h"

namespace vorntools {

namespace {

CATAttrKind kindOfList(const CATListValCATUnicodeString&) { return tk_string; }
CATAttrKind kindOfList(const CATRawColldouble&) { return tk_double; }
CATAttrKind kindOfList(const CATRawCollint&) { return tk_integer; }

HRESULT setList(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, const CATListValCATUnicodeString& i_values) {
    return ipi_access->SetListString(ipi_key, i_values);
}
HRESULT setList(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, const CATRawColldouble& i_values) {
    return ipi_access->SetListDouble(ipi_key, i_values);
}
HRESULT setList(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, const CATRawCollint& i_values) {
    return ipi_access->SetListInteger(ipi_key, i_values);
}

template <class List>
HRESULT writeList(const JournalFrame& i_frame, CATISpecObject* ipi_object, const CATUnicodeString& i_key,
                  const List& i_values) {
    if (!ipi_object) return i_frame.missing("ipi_spec_object");
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_object);
    if (!sp_access) return E_FAIL;
    i_frame.write("get spec attr access successfull");
    auto sp_key = keyOf(sp_access.get(), i_key.ConvertToChar());
    if (!sp_key) {
        i_frame.write("key %s not found", i_key);
        const auto sp_attribute =
            InterfacePtr<CATISpecAttribute>::adopt(ipi_object->AddAttribute(i_key, tk_list, kindOfList(i_values)));
        if (!sp_attribute) return E_FAIL;
        i_frame.write("key %s successfully added", i_key);
        sp_key = keyOf(sp_access.get(), i_key.ConvertToChar());
    }
    if (!sp_key) return E_FAIL;
    i_frame.write("key update");
    return setList(sp_access.get(), sp_key.get(), i_values);
}

template <class List>
HRESULT writeInFrame(CATISpecObject* ipi_object, const CATUnicodeString& i_key, const List& i_values) {
    const JournalFrame frame(VornToolsCADDOCProperties::_CteCLASS_NAME, "setAttributeOnCATISpecObject");
    return guarded([&] { return writeList(frame, ipi_object, i_key, i_values); }, E_FAIL);
}

} // namespace

HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key,
                           const CATListValCATUnicodeString& i_values) {
    return writeInFrame(ipi_object, i_key, i_values);
}

HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key,
                           const CATRawColldouble& i_values) {
    return writeInFrame(ipi_object, i_key, i_values);
}

HRESULT writeListAttribute(CATISpecObject* ipi_object, const CATUnicodeString& i_key, const CATRawCollint& i_values) {
    return writeInFrame(ipi_object, i_key, i_values);
}

} // namespace vorntools

void VornToolsCADDOCProperties::setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                                             CATListValCATUnicodeString i_values) {
    vorntools::writeListAttribute(ipi_spec_object, i_key, i_values);
}

void VornToolsCADDOCProperties::setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                                             CATRawColldouble i_values) {
    vorntools::writeListAttribute(ipi_spec_object, i_key, i_values);
}

void VornToolsCADDOCProperties::setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                                             CATRawCollint i_values) {
    vorntools::writeListAttribute(ipi_spec_object, i_key, i_values);
}
