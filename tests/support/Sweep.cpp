#include "tests/support/Sweep.h"

#include "embedded/Accounting.h"
#include "embedded/Failures.h"
#include "embedded/Records.h"
#include "embedded/Session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <vector>

namespace {

using embedded::FaultFlavour;

constexpr int kMostCalls = 5000;

const char* nameOf(FaultFlavour flavour) {
    switch (flavour) {
    case FaultFlavour::code: return "code";
    case FaultFlavour::codeWithOutput: return "code with output";
    case FaultFlavour::nullOutput: return "null output";
    case FaultFlavour::shortRead: return "short read";
    default: return "none";
    }
}

const std::set<std::string>& toleratedFaults() {
    static const std::set<std::string> lines = [] {
        std::set<std::string> result;
        std::ifstream file(VORNTOOLS_SOURCE_DIR "/tests/support/tolerated_faults.txt");
        for (std::string line; std::getline(file, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            const std::string entry = line.substr(0, line.find("  #"));
            if (!entry.empty() && entry[0] != '#') result.insert(entry);
        }
        return result;
    }();
    return lines;
}

/** Everything a run may leave behind, compared before and after. */
struct Surroundings {
    embedded::LiveCounts live;
    std::string state;
};

Surroundings look(const SweepCase& sweep) {
    return {embedded::Accounting::get().live(),
            embedded::Session::current().digest() + (sweep.state ? sweep.state() : std::string())};
}

/** Which documents hold changes. Putting something back is a change like any other, but not one of the sweep's. */
class HeldChanges {
public:
    HeldChanges() {
        const embedded::Session& session = embedded::Session::current();
        for (std::size_t i = 0; i < session.documentCount(); ++i) {
            const embedded::Document document = session.documentAt(i);
            m_states.push_back({document, document.saved(), document.upToDate()});
        }
    }
    void putBack() const {
        for (State state : m_states) state.document.saved(state.saved).upToDate(state.upToDate);
    }

private:
    struct State {
        embedded::Document document;
        bool saved, upToDate;
    };
    std::vector<State> m_states;
};

void restore(const SweepCase& sweep, const HeldChanges& changes) {
    if (sweep.restore) {
        sweep.restore();
        changes.putBack();
    }
    embedded::Journal::get().clear();
    embedded::ErrorReports::get().take();
    embedded::Messages::get().take();
}

void checkCleanliness(const Surroundings& before) {
    EXPECT_TRUE(before.live == embedded::Accounting::get().live()) << "references, lists, texts or files left alive";
    EXPECT_EQ(embedded::Journal::get().open(), 0) << "journal frames left open";
    EXPECT_EQ(embedded::Journal::get().mismatches(), 0) << "journal frames closed out of order";
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(), std::vector<std::string>());
}

void checkAnswer(const SweepCase& sweep, const SweepOutcome& outcome) {
    const std::vector<int>& allowed = sweep.answersUnderFault;
    if (allowed.empty()) return;
    EXPECT_NE(std::find(allowed.begin(), allowed.end(), outcome.answer), allowed.end())
        << "the fault led to the answer " << outcome.answer;
}

} // namespace

int sweepFailures(const SweepCase& sweep) {
    embedded::Failures& failures = embedded::Failures::get();
    const HeldChanges changes;
    restore(sweep, changes);
    const Surroundings before = look(sweep);
    failures.arm(0, false, FaultFlavour::none);
    const SweepOutcome undisturbed = sweep.operation();
    const int calls = failures.calls();
    failures.disarm();
    const Surroundings after = look(sweep);
    checkCleanliness(before);
    restore(sweep, changes);

    for (const FaultFlavour flavour :
         {FaultFlavour::code, FaultFlavour::codeWithOutput, FaultFlavour::nullOutput, FaultFlavour::shortRead}) {
        for (const bool persistent : {false, true}) {
            for (int nth = 1; nth <= kMostCalls; ++nth) {
                failures.arm(nth, persistent, flavour);
                const SweepOutcome outcome = sweep.operation();
                const bool fired = failures.fired();
                const std::string site = failures.firedAt();
                failures.disarm();
                SCOPED_TRACE(sweep.name + ", call " + std::to_string(nth) + (persistent ? " and on" : "") + " (" +
                             site + "), " + nameOf(flavour));
                checkCleanliness(before);
                if (!fired) {
                    EXPECT_EQ(outcome.code, undisturbed.code);
                    restore(sweep, changes);
                    break;
                }
                if (FAILED(outcome.code)) {
                    EXPECT_TRUE(outcome.outputsEmpty) << "a failing call left something in its outputs";
                } else {
                    EXPECT_TRUE(toleratedFaults().count(sweep.name + ": " + site))
                        << "fault met, success returned; not on the list: " << sweep.name << ": " << site;
                }
                checkAnswer(sweep, outcome);
                const std::string state = look(sweep).state;
                EXPECT_TRUE(state == before.state || state == after.state) << "stored state half changed";
                restore(sweep, changes);
                const SweepOutcome next = sweep.operation();
                EXPECT_EQ(next.code, undisturbed.code) << "the next call behaves differently";
                EXPECT_EQ(next.answer, undisturbed.answer) << "the next call answers differently";
                restore(sweep, changes);
                if (testing::Test::HasFatalFailure()) return calls;
            }
        }
    }
    return calls;
}
