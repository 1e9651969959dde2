#ifndef FOUNDATION_AUTOMATION_TEXT_H
#define FOUNDATION_AUTOMATION_TEXT_H

#include "CATBSTR.h"
#include "CATErrorDef.h"
#include "CATUnicodeString.h"

namespace vorntools {

/** Owns a text of an automation call. */
class AutomationText {
public:
    AutomationText() = default;
    explicit AutomationText(const CATUnicodeString& i_text) { i_text.ConvertToBSTR(&m_text); }
    ~AutomationText() { CATFreeString(m_text); }
    AutomationText(const AutomationText&) = delete;
    AutomationText& operator=(const AutomationText&) = delete;

    const CATBSTR& get() const { return m_text; }
    /**
     * Calls `call(CATBSTR& out)`. Only a successful call is believed: what a failing one leaves in its output is not
     * ours to free. @return the call's code, E_FAIL when it succeeded without a text
     */
    template <class Call>
    HRESULT receive(Call&& i_call) {
        CATBSTR received = nullptr;
        const HRESULT code = i_call(received);
        if (FAILED(code)) return code;
        CATFreeString(m_text);
        m_text = received;
        return m_text ? code : E_FAIL;
    }
    CATUnicodeString text() const {
        CATUnicodeString result;
        result.BuildFromBSTR(m_text);
        return result;
    }

private:
    CATBSTR m_text = nullptr;
};

} // namespace vorntools

#endif
