#include "properties/ValueList.h"

#include "properties/ParameterTexts.h"
#include "properties/SpecAttributes.h"

#include "CATISpecAttrKey.h"
#include "UTILString.h"

#include <cmath>

namespace vorntools {

ValueList::Kind ValueList::kindOf(const CATUnicodeString& i_type) {
    return i_type == "i" ? Integers : i_type == "d" ? Reals : Texts;
}

bool ValueList::split(const CATUnicodeString& i_text, Kind i_kind, const CATUnicodeString& i_separator) {
    m_kind = i_kind;
    m_separator = i_separator;
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
    switch (m_kind) {
    case Integers: return ipi_factory->CreateInteger(i_name, m_integers[1]);
    case Reals: return ipi_factory->CreateReal(i_name, m_reals[1]);
    default: return ipi_factory->CreateString(i_name, m_texts[1]);
    }
}

HRESULT ValueList::store(CATISpecObject* ipi_object) const {
    switch (m_kind) {
    case Integers: return writeListAttribute(ipi_object, kListOfValues, m_integers);
    case Reals: return writeListAttribute(ipi_object, kListOfValues, m_reals);
    default: return writeListAttribute(ipi_object, kListOfValues, m_texts);
    }
}

bool ValueList::readFirst(int& o_number) const {
    if (m_kind == Integers) o_number = m_integers[1];
    return m_kind == Integers || (m_kind == Texts && readInteger(m_texts[1], o_number));
}

bool ValueList::readFirst(double& o_number) const {
    if (m_kind == Texts) return readReal(inSessionNotation(m_texts[1], m_separator), o_number);
    o_number = m_kind == Reals ? m_reals[1] : m_integers[1];
    return true;
}

} // namespace vorntools
