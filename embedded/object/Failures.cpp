#include "embedded/Failures.h"

namespace embedded {

Failures& Failures::get() {
    static Failures& failures = *new Failures;
    return failures;
}

void Failures::arm(int nth, bool persistent, FaultFlavour flavour) {
    m_armed = true;
    m_persistent = persistent;
    m_fired = false;
    m_nth = nth;
    m_calls = 0;
    m_flavour = flavour;
    m_firedAt.clear();
}

FaultFlavour Failures::answer(const char* site) {
    ++m_calls;
    const bool chosen = m_calls == m_nth || (m_persistent && m_fired);
    if (!chosen || m_flavour == FaultFlavour::none) return FaultFlavour::none;
    if (!m_fired) m_firedAt = site;
    m_fired = true;
    return m_flavour;
}

} // namespace embedded
