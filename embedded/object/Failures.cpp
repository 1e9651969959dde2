#include "embedded/Failures.h"

#include "CATError.h"
#include "CATErrorMacros.h"

#include <cstring>

namespace embedded {

bool isOfPlatform(const char* site) {
    for (const char* const maker : {"UTIL", "JNL", "EMH", "ENV", "PROC", "SK", "Vorn", "API"})
        if (std::strncmp(site, maker, std::strlen(maker)) == 0) return false;
    return true;
}

Failures& Failures::get() {
    static Failures& failures = *new Failures;
    return failures;
}

void Failures::arm(int nth, bool persistent, FaultFlavour flavour) {
    m_armed = true;
    m_persistent = persistent;
    m_fired = false;
    m_answeredFalse = false;
    m_isOtherKind = m_gaveOtherKind = false;
    m_nth = nth;
    m_flavour = flavour;
    m_firedAt.clear();
    m_sites.clear();
}

HRESULT Failures::codeOf(FaultFlavour flavour) {
    m_answeredFalse = m_answeredFalse || flavour == FaultFlavour::falseAnswer;
    return flavour == FaultFlavour::nullOutput ? S_OK : flavour == FaultFlavour::falseAnswer ? S_FALSE : E_FAIL;
}

FaultFlavour Failures::answer(const char* site) {
    m_sites.push_back(site);
    const bool chosen = calls() == m_nth || (m_persistent && m_fired);
    const bool thrown = m_flavour == FaultFlavour::thrown;
    m_isOtherKind = false;
    if (!chosen || m_flavour == FaultFlavour::none || (thrown && !isOfPlatform(site))) return FaultFlavour::none;
    if (!m_fired) m_firedAt = site;
    m_fired = true;
    m_isOtherKind = m_flavour == FaultFlavour::otherKind;
    if (m_isOtherKind) return FaultFlavour::none;
    if (thrown) CATThrow(new CATInternalError("Fault", "CATFailures"));
    return m_flavour;
}

} // namespace embedded
