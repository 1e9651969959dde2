#ifndef PROPERTIES_VALUATION_H
#define PROPERTIES_VALUATION_H

#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterKinds.h"
#include "properties/ValueList.h"

#include "CATICkeMagnitude.h"
#include "CATICkeParm.h"

namespace vorntools {

/** Gives a number of the unit that users see as text in the unit that numbers are kept in. */
using ToStorageUnit = HRESULT (*)(CATICkeMagnitude*, const double&, CATUnicodeString&);

/**
 * Gives values to a parameter. The platform's setters have no result: a parameter of another kind, one that a relation
 * drives and a value out of range leave everything as it was. So the value is read back, and E_FAIL, journalled and
 * reported under the setter's name, stands for one that was not taken.
 */
class Valuation {
public:
    /** @param i_name, i_value for the journal. All arguments outlive the object. */
    Valuation(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
              const CATUnicodeString& i_value);

    /** One value by its type letter. E_FAIL, unreported, for a text that is no such value. */
    HRESULT setSingle(const CATUnicodeString& i_value, const CATUnicodeString& i_type) const;
    /** The first of several values. @param i_type their letter, which must fit the parameter; null when texts that the
     * parameter keeps already are read as what it holds */
    HRESULT setFirst(const ValueList& i_values, const CATUnicodeString* ip_type, ToStorageUnit i_to_storage_unit) const;

    /** The value as text in the unit that users see: what is shown, but a dimension with all its digits. */
    CATUnicodeString present() const;

private:
    HRESULT setText(const CATUnicodeString& i_text) const;
    HRESULT setInteger(int i_number) const;
    HRESULT setTruth(bool i_truth) const;
    HRESULT setReal(double i_number) const;
    HRESULT setRealFrom(const CATUnicodeString& i_value) const;
    HRESULT setDimensionFrom(const CATUnicodeString& i_value) const;
    HRESULT setDimensionWithoutMagnitude(const CATUnicodeString& i_text) const;
    HRESULT setFirstDimension(double i_number, ToStorageUnit i_to_storage_unit) const;
    /** @param ip_mks what the text has to mean; null: whatever it means */
    HRESULT setDimension(CATICkeMagnitude* ipi_magnitude, const CATUnicodeString& i_text, const double* ip_mks) const;

    template <class IsTaken>
    HRESULT readBack(const char* i_setter, IsTaken&& i_is_taken) const;
    HRESULT refused(const char* i_setter) const;
    InterfacePtr<CATICkeMagnitude> magnitude() const;

    const JournalFrame& m_frame;
    CATICkeParm* const m_parameter;
    const CATUnicodeString& m_name;
    const CATUnicodeString& m_value;
    const CATICkeType_var m_type;
    const CATUnicodeString m_type_name;
    const ParameterKind m_kind;
};

} // namespace vorntools

#endif
