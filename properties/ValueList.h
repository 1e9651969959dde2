#ifndef PROPERTIES_VALUE_LIST_H
#define PROPERTIES_VALUE_LIST_H

#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATISpecObject.h"
#include "CATListOfCATUnicodeString.h"
#include "CATListOfDouble.h"
#include "CATListOfInt.h"

namespace vorntools {

/** Several values of a parameter, each once. */
class ValueList {
public:
    enum Kind { Texts, Integers, Reals };

    /** The kind of list that a type letter asks for. */
    static Kind kindOf(const CATUnicodeString& i_type);

    /** @param i_separator the session's decimal separator. False when the text cannot be split into such values. */
    bool split(const CATUnicodeString& i_text, Kind i_kind, const CATUnicodeString& i_separator);
    /** A new parameter with the first value; null on failure. */
    CATICkeParm_var create(CATICkeParmFactory* ipi_factory, const CATUnicodeString& i_name) const;
    /** Writes the whole list to the object's attribute for it. */
    HRESULT store(CATISpecObject* ipi_object) const;

    bool isText() const { return m_kind == Texts; }
    const CATUnicodeString& firstText() const { return m_texts[1]; }
    /** The first value as a number; false when it is none. */
    bool readFirst(int& o_number) const;
    bool readFirst(double& o_number) const;

private:
    Kind m_kind = Texts;
    CATUnicodeString m_separator;
    CATListValCATUnicodeString m_texts;
    CATRawCollint m_integers;
    CATRawColldouble m_reals;
};

} // namespace vorntools

#endif
