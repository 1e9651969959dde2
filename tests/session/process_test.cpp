#include "tests/session/FailingCall.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "VornToolsCommon.h"

#include "embedded/WorkModes.h"

namespace {

using ProcessTest = PlatformTest;

TEST_F(ProcessTest, BothTemporaryDirectoriesExist) {
    environment().variables["TEMP"] = folder().u8string();
    environment().variables["TMP"] = folder().u8string();
    EXPECT_EQ(VornToolsCommon::checkTempDirectories(), 1);
    environment().variables["TMP"] = path("absent");
    EXPECT_EQ(VornToolsCommon::checkTempDirectories(), 0);
    environment().variables["TEMP"] = "";
    EXPECT_EQ(VornToolsCommon::checkTempDirectories(), environment().variables["TEMP"].empty() ? 0 : 1);
    EXPECT_EQ(embedded::Messages::get().take(), (Texts{"error 1 11181 TMP", "error 1 11181 TEMP"}));
}

TEST_F(ProcessTest, TheHostedClientIsOpenedOrBroughtToTheFront) {
    const auto lastLine = [] { return embedded::Journal::get().lines().back(); };
    EXPECT_EQ(VornToolsCommon::startSkylane(), S_OK);
    EXPECT_TRUE(embedded::hostedClient().open);
    EXPECT_EQ(lastLine(), "< VornToolsCommon::startSkylane 0");
    clearJournal();
    EXPECT_EQ(VornToolsCommon::startSkylane(), S_OK);
    EXPECT_EQ(lastLine(), "< VornToolsCommon::startSkylane 0");
    EXPECT_EQ(embedded::hostedClient().broughtToFront, 1);
    HRESULT code = S_OK;
    const auto open = [&] {
        embedded::hostedClient().open = false;
        code = VornToolsCommon::startSkylane();
    };
    const auto check = [&](int) {
        EXPECT_EQ(code, E_FAIL);
        EXPECT_EQ(reports(), Texts{"VornToolsCommon::startSkylane 9003 SKManager::openWindow()"});
        EXPECT_EQ(lastLine(), "< VornToolsCommon::startSkylane -2147467259");
    };
    EXPECT_EQ(whenFailing("SKManager::openWindow", open, check), 1);
    embedded::Messages::get().take();
    embedded::hostedClient().installed = false;
    EXPECT_EQ(VornToolsCommon::startSkylane(), E_FAIL);
    EXPECT_EQ(embedded::Messages::get().take(),
              (Texts{"localized 0 11236 11548", "localized 0 11236 20039", "errors 11236 0"}));
}

TEST_F(ProcessTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    environment().variables["TEMP"] = environment().variables["TMP"] = folder().u8string();
    sweepFailures({"VornToolsCommon::checkTempDirectories",
                   []() -> SweepOutcome { return {VornToolsCommon::checkTempDirectories() ? S_OK : E_FAIL}; }});
    sweepFailures({"VornToolsCommon::startSkylane", [&]() -> SweepOutcome { return {VornToolsCommon::startSkylane()}; },
                   [&] { embedded::hostedClient().open = false; }});
}

} // namespace
