#ifndef PROPERTIES_VALUE_LIST_H
#define PROPERTIES_VALUE_LIST_H

#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATISpecObject.h"
#include "CATListOfCATUnicodeString.h"
#include "CATListOfDouble.h"
#include "CATListOfInt.h"

namespace vorntools {

/** Several values of a parameter, each once, in the kind of list that their type letter asks for. */
class ValueList {
public:
    /** @param i_separator the session's decimal separator. False when the text cannot be split into such values. */
    bool split(const CATUnicodeString& i_text, const CATUnicodeString& i_type, const CATUnicodeString& i_separator);
    /** A new parameter with the first value; null on failure. */
    CATICkeParm_var create(CATICkeParmFactory* ipi_factory, const CATUnicodeString& i_name) const;
    /** Writes the whole list to the object's attribute for it. */
    HRESULT store(CATISpecObject* ipi_object) const;

    bool isReal() const { return m_kind == Reals; }
    bool isInteger() const { return m_kind == Integers; }
    double firstReal() const { return m_reals[1]; }
    int firstInteger() const { return m_integers[1]; }
    const CATUnicodeString& firstText() const { return m_texts[1]; }

private:
    enum Kind { Texts, Integers, Reals };

    Kind m_kind = Texts;
    CATListValCATUnicodeString m_texts;
    CATRawCollint m_integers;
    CATRawColldouble m_reals;
};

} // namespace vorntools

#endif
