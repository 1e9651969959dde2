#include "foundation/Guarded.h"

#include "CATError.h"
#include "CATErrorDef.h"
#include "embedded/Accounting.h"
#include "foundation/PlatformErrors.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <vector>

namespace {

using vorntools::guarded;

TEST(GuardedTest, WorkThatThrowsIsWorkUndone) {
    const auto held = std::make_shared<int>(1);
    std::vector<int> output = {7};
    EXPECT_FALSE(guarded([&] {
        const auto sp_copy = held;
        std::vector<int> found(held.use_count() == 2 ? 3 : 0);
        if (found.size() == 3) throw std::bad_alloc();
        output = found;
    }));
    EXPECT_EQ(held.use_count(), 1) << "what the work held is released";
    EXPECT_EQ(output, std::vector<int>({7}));
    EXPECT_FALSE(guarded([] { throw 5; })) << "whatever it is";
    EXPECT_TRUE(guarded([&] { output.clear(); }));
    EXPECT_TRUE(output.empty());
}

TEST(GuardedTest, AnAnswerIsThatOfTheWorkOrTheOther) {
    bool fails = false;
    const auto work = [&]() -> HRESULT {
        if (fails) throw std::bad_alloc();
        return S_FALSE;
    };
    EXPECT_EQ(guarded(work, E_FAIL), S_FALSE);
    fails = true;
    EXPECT_EQ(guarded(work, E_FAIL), E_FAIL);
    EXPECT_EQ(guarded([&] { return std::make_unique<int>(3); }, nullptr) != nullptr, true);
    EXPECT_EQ(guarded([&]() -> std::unique_ptr<int> { throw 1; }, nullptr), nullptr);
}

/** An error of the platform is released by whoever catches it. */
TEST(GuardedTest, AnErrorOfThePlatformIsAFailure) {
    const long before = embedded::Accounting::get().live().objects;
    bool is_foreign = false;
    const auto work = [&]() -> HRESULT {
        if (is_foreign) throw 5;
        throw static_cast<CATError*>(new CATInternalError("Fault", "CATFailures"));
    };
    EXPECT_EQ(guarded(work, E_FAIL), E_FAIL);
    EXPECT_EQ(vorntools::onPlatform(work, E_FAIL), E_FAIL);
    EXPECT_EQ(vorntools::guardedButForeign(work, E_FAIL), E_FAIL);
    EXPECT_EQ(vorntools::onPlatform([] { return S_FALSE; }, E_FAIL), S_FALSE);
    EXPECT_EQ(embedded::Accounting::get().live().objects, before);
    is_foreign = true;
    EXPECT_EQ(guarded(work, E_FAIL), E_FAIL);
    EXPECT_THROW(vorntools::onPlatform(work, E_FAIL), int) << "what is none passes";
    EXPECT_THROW(vorntools::guardedButForeign(work, E_FAIL), int);
    EXPECT_EQ(vorntools::guardedButForeign([]() -> HRESULT { throw std::bad_alloc(); }, E_FAIL), E_FAIL);
    EXPECT_EQ(vorntools::guardedButForeign([]() -> HRESULT { throw std::length_error("too long"); }, E_FAIL), E_FAIL);
}

} // namespace
