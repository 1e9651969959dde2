#ifndef TESTS_SESSION_FAILING_CALL_H
#define TESTS_SESSION_FAILING_CALL_H

#include "embedded/Failures.h"

#include <string>

/**
 * Runs an operation again and again, one platform call failing each time, and calls `met(n)` after the n-th run in
 * which that was the call of the given name. @return how often the undisturbed operation makes that call
 */
template <class Operation, class Met>
int whenFailing(const std::string& call, Operation&& operation, Met&& met) {
    embedded::Failures& failures = embedded::Failures::get();
    int count = 0;
    for (int nth = 1;; ++nth) {
        failures.arm(nth, false, embedded::FaultFlavour::code);
        operation();
        failures.disarm();
        if (!failures.fired()) return count;
        if (failures.firedAt() == call) met(++count);
    }
}

#endif
