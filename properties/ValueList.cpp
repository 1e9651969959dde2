#include "properties/ValueList.h"

#include "properties/ParameterTexts.h"
#include "properties/SpecAttributes.h"

#include "UTILString.h"

namespace vorntools {

bool ValueList::split(const CATUnicodeString& i_text, const CATUnicodeString& i_type,
                      const CATUnicodeString& i_separator) {
    m_kind = i_type == "i" ? Integers : i_type == "d" ? Reals : Texts;
    switch (m_kind) {
    case Integers:
        if (FAILED(UTILString::split(i_text, kValueSeparator, m_integers))) return false;
        m_integers.RemoveDuplicates();
        return m_integers.Size() > 0;
    case Reals:
        if (FAILED(UTILString::split(inSessionNotation(i_text, i_separator), kValueSeparator, m_reals))) return false;
        for (int i = 1; i <= m_reals.Size(); ++i)
            if (!std::isfinite(m_reals[i])) return false;
        m_reals.RemoveDuplicates();
        return m_reals.Size() > 0;
    default:
        UTILString::split(i_text, kValueSeparator, m_texts);
        m_texts.RemoveDuplicates();
        return m_texts.Size() > 0;
    }
}

CATICkeParm_var ValueList::create(CATICkeParmFactory* ipi_factory, const CATUnicodeString& i_name) const {
    if (isInteger()) return ipi_factory->CreateInteger(i_name, firstInteger());
    if (isReal()) return ipi_factory->CreateReal(i_name, firstReal());
    return ipi_factory->CreateString(i_name, firstText());
}

HRESULT ValueList::store(CATISpecObject* ipi_object) const {
    if (isInteger()) return writeListAttribute(ipi_object, kListOfValues, m_integers);
    if (isReal()) return writeListAttribute(ipi_object, kListOfValues, m_reals);
    return writeListAttribute(ipi_object, kListOfValues, m_texts);
}

} // namespace vorntools
