#include "foundation/JournalFrame.h"

#include "VornCache.h"
#include "VornToolsFolderMemory.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"
#include "tests/support/Allocations.h"
#include "tests/support/Fixture.h"

#include <functional>

namespace {

using embedded::Journal;
using vorntools::JournalFrame;

using JournalFrameTest = PlatformTest;

const CATUnicodeString kClass("JournalFrameTest::");
constexpr const char* kMethod = "aMethodWithANameThatIsNotShort";
const std::string kName = std::string("JournalFrameTest::") + kMethod;

/** Runs the work with its first allocation refused, with its second, ... until none is; how many were. */
int refuseEach(const std::function<void()>& work) {
    int refused = 0;
    for (bool more = true; more; refused += more) {
        SCOPED_TRACE("allocation " + std::to_string(refused + 1));
        allocations::refuse(static_cast<std::size_t>(refused) + 1, 1);
        EXPECT_NO_THROW(work());
        more = allocations::refuse(0, 0);
        EXPECT_EQ(Journal::get().open(), 0);
        EXPECT_EQ(Journal::get().mismatches(), 0);
        Journal::get().clear();
    }
    return refused;
}

TEST_F(JournalFrameTest, OnlyWhatWasOpenedIsClosed) {
    environment().missingManagers = {"JNLManager"};
    {
        JournalFrame frame(kClass, kMethod);
        environment().missingManagers.clear(); // the journal appears in the middle of a call
        frame.write("a line");
        frame.endWith(E_FAIL);
        frame.writeEnd();
        frame.missing("something");
    }
    EXPECT_EQ(Journal::get().lines(), Texts({"a line"}));
    EXPECT_EQ(reports(), Texts({kName + " 9002 something"}));
    Journal::get().clear();
    {
        const JournalFrame frame(kClass, kMethod);
        environment().missingManagers = {"JNLManager"};
    }
    EXPECT_EQ(Journal::get().lines(), Texts({"> " + kName})) << "one that went has no end";
    Journal::get().clear();
}

TEST_F(JournalFrameTest, WantOfMemoryCostsALineAndNothingElse) {
    if constexpr (!allocations::areAllSeen) GTEST_SKIP() << "libraries allocate by themselves";
    const CATUnicodeString text("a text that takes a piece of memory of its own");
    const int refused = refuseEach([&] {
        const JournalFrame frame(kClass, kMethod);
        frame.write("%s and a line that is longer than what the journal has kept", text);
        frame.writeReturn(5);
        frame.badInput("an argument with a name that is not short");
        frame.report(vorntools::ErrorCallFailed, text);
    });
    EXPECT_GT(refused, 0);
    reports();
}

/** There is nobody who could be told. */
TEST_F(JournalFrameTest, MakingAndEndingAnObjectThrowsNothing) {
    if constexpr (!allocations::areAllSeen) GTEST_SKIP() << "libraries allocate by themselves";
    refuseEach([] {
        VornCache cache;
        VornToolsSwitchMgt switcher{1};
        const VornToolsFolderMemory folders;
        unsigned char answer = 7;
        EXPECT_EQ(cache.fileHasCache("p", answer), S_OK);
        EXPECT_EQ(answer, 0);
        EXPECT_EQ(cache.isNew("p", answer), S_OK);
        EXPECT_EQ(answer, 1);
        CATIProduct* product = nullptr;
        EXPECT_EQ(switcher.getCATIProduct("p", product), E_FAIL);
        EXPECT_EQ(VornToolsWorkModeServices::setCatiaCacheActivated(0), S_OK);
    });
}

} // namespace
