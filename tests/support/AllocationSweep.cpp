#include "tests/support/AllocationSweep.h"

#include "tests/support/Allocations.h"

#include "embedded/Accounting.h"
#include "embedded/Records.h"

#include <gtest/gtest.h>

#ifdef _WIN32

void sweepAllocations(const std::string&, const std::function<SweepOutcome()>&, std::size_t) {}

#else

namespace {

constexpr int kMostAllocations = 1000;

bool isInsideMethod() { return embedded::Journal::get().open() != 0; }

/** Runs the operation with its n-th allocation of that size refused. @return whether there was one */
bool runRefusing(int nth, std::size_t smallest, const std::function<SweepOutcome()>& operation, SweepOutcome& outcome) {
    allocations::refuse(static_cast<std::size_t>(nth), smallest, isInsideMethod);
    EXPECT_NO_THROW(outcome = operation());
    return allocations::refuse(0, 0);
}

} // namespace

void sweepAllocations(const std::string& name, const std::function<SweepOutcome()>& operation, std::size_t smallest) {
    const SweepOutcome undisturbed = operation(); // makes what is made on first use, and room in the journal
    int failed = 0;
    for (int nth = 1; nth <= kMostAllocations; ++nth) {
        SCOPED_TRACE(name + ", allocation " + std::to_string(nth));
        embedded::Journal::get().clear();
        embedded::ErrorReports::get().take();
        const embedded::LiveCounts before = embedded::Accounting::get().live();
        SweepOutcome outcome;
        const bool refused = runRefusing(nth, smallest, operation, outcome);
        EXPECT_TRUE(before == embedded::Accounting::get().live()) << "references, lists, texts or files left alive";
        EXPECT_EQ(embedded::Journal::get().open(), 0) << "journal frames left open";
        if (!refused) break;
        if (FAILED(outcome.code)) {
            ++failed;
            EXPECT_TRUE(outcome.outputsEmpty) << "a failing call left something in its outputs";
        } else {
            EXPECT_EQ(outcome.answer, undisturbed.answer) << "success with another answer";
            EXPECT_EQ(outcome.outputs, undisturbed.outputs) << "success with other outputs";
        }
    }
    EXPECT_GT(failed, 0) << name << " met no failing allocation";
    embedded::ErrorReports::get().take();
}

#endif
