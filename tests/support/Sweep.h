#ifndef TESTS_SUPPORT_SWEEP_H
#define TESTS_SUPPORT_SWEEP_H

#include "CATErrorDef.h"
#include "embedded/Failures.h"
#include "tests/support/Outputs.h"

#include <functional>
#include <string>
#include <vector>

/** One run of the operation under the sweep. */
struct SweepOutcome {
    HRESULT code = S_OK;
    /** Whether every output is as a failure leaves it (empty, null, 0). Only asked when the code is negative. */
    bool outputsEmpty = true;
    /** Of a question: what it answers. */
    int answer = 0;
    /** Text of the outputs, for comparing what a run hands out in spite of a fault. */
    std::string outputs = {};
};

/** How a run ended whose outputs a failure leaves empty. Whoever asks it first needs no more faults: what the test does
 * with the outputs from then on meets none. */
template <class... Outputs>
SweepOutcome outcomeOf(HRESULT code, const Outputs&... outputs) {
    embedded::Failures::get().disarm();
    return {code, (isEmptyOutput(outputs) && ...), 0, textOfOutputs(outputs...)};
}

/** What the sweep runs. */
struct SweepCase {
    /** Name of the exported method, as the list of tolerated faults writes it. */
    std::string name;
    /** Runs the method once, with outputs that held something before. */
    std::function<SweepOutcome()> operation;
    /** Puts the session and the files back to what they were before the operation; may be empty. */
    std::function<void()> restore = {};
    /** Text of everything the operation may change, besides the session's own digest; may be empty. */
    std::function<std::string()> state = {};
    /** Of a question: the answers it may give when it met a fault. With the right answer "no" and only that allowed, no
     * fault may invent a yes. Empty: nobody looks at the answer. */
    std::vector<int> answersUnderFault = {};
    /** Why the undisturbed operation fails; empty: it does not. */
    std::string whyItFails = {};
    /** By which the journal calls the method; empty: by its name. */
    std::string journalName = {};
    /** Why the library is not refused memory here; empty: it is. */
    std::string whyMemorySuffices = {};
};

/**
 * Runs the operation with the n-th platform call failing, n = 1, 2, ... until none fires: once only and from n on, in
 * every flavour that the call can have. Before that the library is refused each piece of memory that it asks for, where
 * that can be told. The undisturbed run has to name the method in the journal. After each run: references and lists as
 * before, journal frames closed, no rule broken, outputs empty when the code is negative, answers those that are
 * allowed, stored state unchanged or completely changed, and the next undisturbed call makes the first one's calls and
 * gives its code and answer again.
 *
 * "Fault met, success returned" must stand on tests/support/tolerated_faults.txt, which also says what may then differ
 * from the undisturbed run; a word there that a run of the whole suite does not need fails it. Sets googletest
 * failures. @return the number of platform calls that the undisturbed operation makes
 */
int sweepFailures(const SweepCase& sweep);

#endif
