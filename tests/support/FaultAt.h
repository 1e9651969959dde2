#ifndef TESTS_SUPPORT_FAULT_AT_H
#define TESTS_SUPPORT_FAULT_AT_H

#include "embedded/Failures.h"
#include "embedded/Records.h"

#include <string>

/**
 * Runs an operation, again and again, until a run in which the `nth` call named `site` and no other failed; journal and
 * error reports are then of that run alone. False when the operation makes fewer such calls.
 */
template <class Operation>
bool failAt(const std::string& site, int nth, Operation&& operation,
            embedded::FaultFlavour flavour = embedded::FaultFlavour::codeWithOutput) {
    embedded::Failures& failures = embedded::Failures::get();
    int met = 0;
    for (int call = 1; met < nth; ++call) {
        embedded::Journal::get().clear();
        embedded::ErrorReports::get().take();
        failures.arm(call, false, flavour);
        operation();
        failures.disarm();
        if (!failures.fired()) return false;
        if (failures.firedAt() == site) ++met;
    }
    return true;
}

#endif
