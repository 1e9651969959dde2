#include "tests/support/Sweep.h"

#include "CATError.h"
#include "CATErrorMacros.h"
#include "embedded/Accounting.h"
#include "embedded/Failures.h"
#include "embedded/Records.h"
#include "embedded/Session.h"
#include "tests/support/KnownWords.h"
#include "tests/support/LibraryAllocations.h"
#include "tests/support/ToleratedFaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <set>
#include <vector>

namespace {

using embedded::Failures;
using embedded::FaultFlavour;

struct Flavour {
    FaultFlavour flavour;
    const char* name;
};

constexpr Flavour kFlavours[] = {{FaultFlavour::code, "code"},         {FaultFlavour::codeWithOutput, "stale"},
                                 {FaultFlavour::nullOutput, "null"},   {FaultFlavour::shortRead, "short"},
                                 {FaultFlavour::falseAnswer, "false"}, {FaultFlavour::otherKind, "other"},
                                 {FaultFlavour::thrown, "thrown"}};

/** Whether a call can fail in a flavour in a way of its own. */
bool canFail(const char* site, FaultFlavour flavour) {
    switch (flavour) {
    case FaultFlavour::shortRead: return std::strncmp(site, "UTILFile::", 10) == 0;
    case FaultFlavour::thrown: return embedded::isOfPlatform(site);
    default: return true;
    }
}

/** Whether a call answered in the flavour, where only a run shows which calls can. */
bool answeredSo(FaultFlavour flavour) {
    const Failures& failures = Failures::get();
    switch (flavour) {
    case FaultFlavour::falseAnswer: return failures.answeredFalse();
    case FaultFlavour::otherKind: return failures.gaveOtherKind();
    default: return true;
    }
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

/** A run of the operation and what it wrote. */
struct Run {
    SweepOutcome outcome;
    std::vector<const char*> sites; ///< the calls it made
    std::vector<std::string> journal;
    std::vector<std::string> reports;
    std::string state; ///< afterwards
};

/** Runs the operation, out of which no want of memory may come. */
SweepOutcome operate(const SweepCase& sweep) {
    try {
        return sweep.operation();
    } catch (const std::bad_alloc&) {
        ADD_FAILURE() << sweep.name << " throws for want of memory";
        return {};
    }
}

/** @param refused the piece of memory that the library does not get; 0 for none */
Run runOnce(const SweepCase& sweep, int nth, bool persistent, FaultFlavour flavour, std::size_t refused = 0) {
    Failures& failures = Failures::get();
    failures.arm(nth, persistent, flavour);
    Run run;
    if (refused != 0) libraryAllocations::refuse(refused);
    CATTry { run.outcome = operate(sweep); }
    // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): the platform throws pointers
    CATCatch(CATError, error) {
        error->Release();
        ADD_FAILURE() << sweep.name << " lets an error of the platform pass";
    }
    CATEndTry;
    if (refused != 0) libraryAllocations::end();
    run.sites = failures.sites();
    failures.disarm();
    run.journal = embedded::Journal::get().lines();
    run.reports = embedded::ErrorReports::get().take();
    checkReports(run.reports);
    run.state = look(sweep).state;
    return run;
}

std::string differences(const Run& run, const Run& undisturbed) {
    const SweepOutcome& is = run.outcome;
    const SweepOutcome& was = undisturbed.outcome;
    std::string words;
    if (is.code != was.code) words += "code ";
    if (is.outputs != was.outputs || is.answer != was.answer) words += "outputs ";
    if (run.journal != undisturbed.journal) words += "journal ";
    if (run.reports != undisturbed.reports) words += "reports ";
    if (run.state != undisturbed.state) words += "state ";
    if (!words.empty()) words.pop_back();
    return words;
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

void checkFrame(const SweepCase& sweep, const std::vector<std::string>& journal) {
    const std::string frame = "> " + (sweep.journalName.empty() ? sweep.name : sweep.journalName);
    EXPECT_GT(std::count(journal.begin(), journal.end(), frame), 0) << "the journal has no " << frame;
}

/** The undisturbed run once more. */
void checkNext(const SweepCase& sweep, const HeldChanges& changes, const Run& undisturbed) {
    const Run next = runOnce(sweep, 0, false, FaultFlavour::none);
    EXPECT_EQ(next.outcome.code, undisturbed.outcome.code) << "the next call behaves differently";
    EXPECT_EQ(next.outcome.answer, undisturbed.outcome.answer) << "the next call answers differently";
    EXPECT_EQ(next.outcome.outputs, undisturbed.outcome.outputs) << "the next call hands out something else";
    EXPECT_EQ(next.sites, undisturbed.sites) << "the next call takes another way";
    restore(sweep, changes);
}

/** Refuses the library each piece of memory in turn, of many only some. */
void sweepMemory(const SweepCase& sweep, const HeldChanges& changes, const Surroundings& before,
                 const Run& undisturbed) {
    constexpr std::size_t kMostRuns = 200;
    libraryAllocations::count();
    operate(sweep);
    const std::size_t pieces = libraryAllocations::end();
    restore(sweep, changes);
    for (std::size_t nth = 1; nth <= pieces; nth += 1 + pieces / kMostRuns) {
        SCOPED_TRACE(sweep.name + ", without memory for piece " + std::to_string(nth));
        const Run run = runOnce(sweep, 0, false, FaultFlavour::none, nth);
        checkCleanliness(before);
        if (FAILED(run.outcome.code)) {
            EXPECT_TRUE(run.outcome.outputsEmpty) << "a failing call left something in its outputs";
        }
        EXPECT_TRUE(run.state == before.state || run.state == undisturbed.state) << "stored state half changed";
        restore(sweep, changes);
        checkNext(sweep, changes, undisturbed);
    }
}

} // namespace

int sweepFailures(const SweepCase& sweep) {
    const Failures& failures = Failures::get();
    const HeldChanges changes;
    recordSweepOf(sweep.name);
    expectReportsOf(sweep.name);
    restore(sweep, changes);
    const Surroundings before = look(sweep);
    const Run undisturbed = runOnce(sweep, 0, false, FaultFlavour::none);
    checkCleanliness(before);
    EXPECT_EQ(FAILED(undisturbed.outcome.code), !sweep.whyItFails.empty()) << "undisturbed: " << sweep.name;
    checkFrame(sweep, undisturbed.journal);
    restore(sweep, changes);
    checkNext(sweep, changes, undisturbed);
    if (sweep.whyMemorySuffices.empty()) sweepMemory(sweep, changes, before, undisturbed);
    for (const Flavour& flavour : kFlavours) {
        std::set<std::size_t> unable; // calls that cannot answer so
        for (const bool persistent : {false, true}) {
            for (std::size_t i = 0; i < undisturbed.sites.size(); ++i) {
                const char* const site = undisturbed.sites[i];
                if (!canFail(site, flavour.flavour) || unable.count(i) != 0) continue;
                const int nth = static_cast<int>(i) + 1;
                SCOPED_TRACE(sweep.name + ", call " + std::to_string(nth) + (persistent ? " and on" : "") + " (" +
                             site + "), " + flavour.name);
                const Run run = runOnce(sweep, nth, persistent, flavour.flavour);
                EXPECT_EQ(failures.firedAt(), site) << "this run takes another way than the undisturbed one";
                const bool didAnswerSo = answeredSo(flavour.flavour);
                if (!didAnswerSo) unable.insert(i);
                checkCleanliness(before);
                if (FAILED(run.outcome.code)) {
                    EXPECT_TRUE(run.outcome.outputsEmpty) << "a failing call left something in its outputs";
                } else if (didAnswerSo) {
                    EXPECT_EQ(run.outcome.outputs.find("null,"), std::string::npos) << "a list holds a null";
                    EXPECT_EQ(objectionTo({sweep.name, site, flavour.name, differences(run, undisturbed)}), "");
                }
                // What objects of another kind say may lead to the right answer all the same.
                const bool isOther = flavour.flavour == FaultFlavour::otherKind;
                if (!isOther || run.outcome.answer != undisturbed.outcome.answer) checkAnswer(sweep, run.outcome);
                EXPECT_TRUE(run.state == before.state || run.state == undisturbed.state) << "stored state half changed";
                restore(sweep, changes);
                checkNext(sweep, changes, undisturbed);
                if (testing::Test::HasFatalFailure()) return static_cast<int>(undisturbed.sites.size());
            }
        }
    }
    return static_cast<int>(undisturbed.sites.size());
}
