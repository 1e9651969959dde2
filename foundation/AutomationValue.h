#ifndef FOUNDATION_AUTOMATION_VALUE_H
#define FOUNDATION_AUTOMATION_VALUE_H

#include "CATAutoConversions.h"

namespace vorntools {

/** Owns an automation value and what it holds. */
class AutomationValue {
public:
    AutomationValue() : m_value() {}
    ~AutomationValue() { CATVariantClear(&m_value); }
    AutomationValue(const AutomationValue&) = delete;
    AutomationValue& operator=(const AutomationValue&) = delete;

    /** The object that the value holds, null for none. No reference is added. */
    CATBaseDispatch* object() const {
        CATBaseDispatch* p_object = nullptr;
        return SUCCEEDED(ConvertVariant(m_value, p_object)) ? p_object : nullptr;
    }
    /**
     * Calls `call(CATVariant& out)`, which answers S_OK when it filled the value. Only then is it believed: what any
     * other answer leaves behind is not ours to give back. @return the call's code
     */
    template <class Call>
    HRESULT receive(Call&& i_call) {
        CATVariant received = CATVariant();
        const HRESULT code = i_call(received);
        if (code != S_OK) return code;
        CATVariantClear(&m_value);
        m_value = received;
        return code;
    }

private:
    CATVariant m_value;
};

/** Owns an array of numbers for the automation calls that fill one. */
class AutomationNumbers {
public:
    AutomationNumbers(const double* ip_values, long i_size) : m_array(BuildSafeArrayVariant(ip_values, i_size)) {}
    ~AutomationNumbers() {
        if (m_array) FreeVariantSafeArray(m_array);
    }
    AutomationNumbers(const AutomationNumbers&) = delete;
    AutomationNumbers& operator=(const AutomationNumbers&) = delete;

    explicit operator bool() const { return m_array != nullptr; }
    CATSafeArrayVariant& get() { return *m_array; }
    /** Copies exactly so many numbers. False when the array holds fewer. */
    bool read(double* op_values, long i_size) const {
        return ConvertSafeArrayVariant(m_array, op_values, i_size) == i_size;
    }

private:
    CATSafeArrayVariant* m_array;
};

} // namespace vorntools

#endif
