#include "tests/support/Allocations.h"

#include "embedded/Accounting.h"
#include "embedded/Records.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#ifdef _WIN32

void sweepAllocations(const std::string&, const std::function<SweepOutcome()>&) {}

#else

namespace {

constexpr int kMostAllocations = 1000;

int s_allocations_to_failure = 0; ///< 0: none fails
bool s_failed = false;

bool failsNow(std::size_t size) {
    if (s_allocations_to_failure == 0 || size < kLargeAllocation || embedded::Journal::get().open() == 0) return false;
    if (--s_allocations_to_failure > 0) return false;
    s_failed = true;
    return true;
}

} // namespace

void* operator new(std::size_t size) {
    if (!failsNow(size))
        if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

void sweepAllocations(const std::string& name, const std::function<SweepOutcome()>& operation) {
    operation(); // what is made on first use, and room in the journal
    int failed = 0;
    for (int nth = 1; nth <= kMostAllocations; ++nth) {
        SCOPED_TRACE(name + ", large allocation " + std::to_string(nth));
        embedded::Journal::get().clear();
        embedded::ErrorReports::get().take();
        const embedded::LiveCounts before = embedded::Accounting::get().live();
        SweepOutcome outcome;
        s_failed = false;
        s_allocations_to_failure = nth;
        EXPECT_NO_THROW(outcome = operation());
        s_allocations_to_failure = 0;
        EXPECT_TRUE(before == embedded::Accounting::get().live()) << "references, lists, texts or files left alive";
        EXPECT_EQ(embedded::Journal::get().open(), 0) << "journal frames left open";
        if (!s_failed) break;
        if (SUCCEEDED(outcome.code)) continue;
        ++failed;
        EXPECT_TRUE(outcome.outputsEmpty) << "a failing call left something in its outputs";
    }
    EXPECT_GT(failed, 0) << name << " met no failing allocation";
    embedded::ErrorReports::get().take();
}

#endif
