#include "tests/session/WorkModesFixture.h"
#include "tests/support/AllocationSweep.h"

#include "CATIProduct.h"

#include <stdexcept>
#include <string>
#include <utility>

using embedded::SwitchOutcome;

namespace {

TEST_F(WorkModesTest, ReadsThePlatformsModeOrThePicturesName) {
    const std::pair<WorkMode, Modes::EnumWorkMode> modes[] = {{WorkMode::visualisation, Modes::WorkModeVisu},
                                                              {WorkMode::standard, Modes::WorkModeDefault},
                                                              {WorkMode::brep, Modes::WorkModeBrep},
                                                              {WorkMode::design, Modes::WorkModeDesign}};
    for (const auto& expected : modes) {
        embedded::setWorkMode(bolt, expected.first);
        Modes::EnumWorkMode mode = Modes::WorkModeUnknown;
        EXPECT_EQ(Modes::getWorkModeCAA(bolt.get(), mode), S_OK);
        EXPECT_EQ(mode, expected.second);
    }
    Modes::EnumWorkMode found = Modes::WorkModeDesign;
    EXPECT_EQ(Modes::getWorkModeCAA(nullptr, found), E_FAIL);
    EXPECT_EQ(found, Modes::WorkModeUnknown);
    embedded::setUnknownWorkMode(bolt, 4);
    EXPECT_EQ(Modes::getWorkModeCAA(bolt.get(), found), E_FAIL);
    // The platform's answer is of no use, and the name says that the part itself is shown.
    EXPECT_EQ(Modes::getWorkMode(bolt.get(), found), E_FAIL);
    EXPECT_EQ(found, Modes::WorkModeUnknown);
    EXPECT_EQ(reports(), (Texts{"VornToolsWorkModeServices::getWorkModeCAA 9001 ipi_catiproduct",
                                "VornToolsWorkModeServices::getWorkModeCAA 9006 4",
                                "VornToolsWorkModeServices::getWorkModeCAA 9006 4"}));
}

TEST_F(WorkModesTest, TellsAPictureByItsName) {
    struct Case {
        const char* shape;
        HRESULT code;
        unsigned char visual;
    };
    const Case cases[] = {{"/w/Part1.CATPart", S_OK, 0},
                          {"/w/PART1.CATPART.cgr", S_OK, 1},
                          {"/w/PART1.CATPART.CGR", S_OK, 0},
                          {"/w/Part1.model", E_FAIL, 0},
                          {"/w/cgr", E_FAIL, 0},
                          {"", E_FAIL, 0}};
    for (const Case& test : cases) {
        bolt.reference().masterShape(test.shape);
        unsigned char visual = 7;
        EXPECT_EQ(Modes::isVisualWorkMode(bolt.get(), visual), test.code) << test.shape;
        EXPECT_EQ(visual, test.visual) << test.shape;
    }
    EXPECT_EQ(reports(), Texts{"VornToolsWorkModeServices::isVisualWorkMode 9004 isVisualWorkMode"});
    embedded::setWorkMode(bolt, WorkMode::visualisation);
    bolt.masterShape("/w/Bolt.CATPart");
    unsigned char visual = 0;
    Modes::isVisualWorkMode(bolt.get(), visual);
    EXPECT_EQ(visual, 1);
}

TEST_F(WorkModesTest, WhereThePlatformDoesNotTellThePicturesNameDoes) {
    const struct {
        WorkMode mode;
        const char* shape;
        HRESULT code;
        Modes::EnumWorkMode found;
    } cases[] = {{WorkMode::visualisation, "/w/Bolt.CATPart", S_OK, Modes::WorkModeVisu},
                 {WorkMode::standard, "/w/Bolt.CATPart", E_FAIL, Modes::WorkModeUnknown},
                 {WorkMode::visualisation, "", E_FAIL, Modes::WorkModeUnknown}};
    for (const auto& row : cases) {
        bolt.reference().masterShape(row.shape);
        embedded::setWorkMode(bolt, row.mode);
        clearJournal();
        embedded::Failures::get().arm(1, false, embedded::FaultFlavour::code);
        Modes::EnumWorkMode found = Modes::WorkModeDesign;
        EXPECT_EQ(Modes::getWorkMode(bolt.get(), found), row.code);
        embedded::Failures::get().disarm();
        EXPECT_EQ(found, row.found);
        EXPECT_EQ(
            embedded::Journal::get().lines(),
            (Texts{"> VornToolsWorkModeServices::getWorkMode", "> VornToolsWorkModeServices::getWorkModeCAA",
                   "< VornToolsWorkModeServices::getWorkModeCAA -2147467259",
                   "> VornToolsWorkModeServices::isVisualWorkMode", "< VornToolsWorkModeServices::isVisualWorkMode",
                   "< VornToolsWorkModeServices::getWorkMode " + std::to_string(row.code)}));
    }
    EXPECT_EQ(reports(), (Texts{"VornToolsWorkModeServices::getWorkModeCAA 9004 GetWorkMode",
                                "VornToolsWorkModeServices::getWorkModeCAA 9004 GetWorkMode",
                                "VornToolsWorkModeServices::getWorkModeCAA 9004 GetWorkMode",
                                "VornToolsWorkModeServices::isVisualWorkMode 9004 isVisualWorkMode",
                                "VornToolsWorkModeServices::getWorkMode 9004 isVisualWorkMode"}));
}

TEST_F(WorkModesTest, SwitchesOnlyWithTheCacheActivated) {
    Modes::setCatiaCacheActivated(0);
    EXPECT_EQ(Modes::setWorkMode(nullptr, Modes::WorkModeVisu), S_FALSE);
    EXPECT_EQ(messages(), Texts{"CATIA cache is not activated, switch is not allowed"});
    Modes::setCatiaCacheActivated(1);

    clearJournal();
    EXPECT_EQ(Modes::setWorkMode(bolt.get(), Modes::WorkModeVisu), S_OK);
    EXPECT_EQ(messages(), (Texts{"PERFX real switch VISU", "PERFX real switch"}));
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    clearJournal();
    EXPECT_EQ(Modes::setWorkMode(nullptr, Modes::WorkModeVisu), E_FAIL);
    EXPECT_EQ(Modes::setWorkMode(bolt.get(), Modes::WorkModeUnknown), E_FAIL);
    EXPECT_EQ(Modes::setWorkMode(bolt.get(), static_cast<Modes::EnumWorkMode>(5)), E_FAIL);
    EXPECT_EQ(messages(), Texts{});
    EXPECT_EQ(reports(), (Texts{"VornToolsWorkModeServices::setWorkMode 9001 ipi_catiproduct",
                                "VornToolsWorkModeServices::setWorkMode 9006 0",
                                "VornToolsWorkModeServices::setWorkMode 9006 5"}));
}

TEST_F(WorkModesTest, LooksWhetherTheProductFollowed) {
    embedded::setSwitchOutcome(SwitchOutcome::ignored);
    EXPECT_EQ(Modes::setWorkMode(bolt.get(), Modes::WorkModeBrep), E_FAIL);
    EXPECT_EQ(reports(), Texts{});
    for (const SwitchOutcome outcome : {SwitchOutcome::refused, SwitchOutcome::error}) {
        embedded::setSwitchOutcome(outcome);
        EXPECT_EQ(Modes::setWorkMode(bolt.get(), Modes::WorkModeBrep), E_FAIL);
        EXPECT_EQ(reports(), Texts{"VornToolsWorkModeServices::setWorkMode 9004 SetWorkMode"});
    }
    embedded::setSwitchOutcome(SwitchOutcome::foreign);
    EXPECT_THROW(Modes::setWorkMode(bolt.get(), Modes::WorkModeBrep), std::runtime_error);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::design);
}

TEST_F(WorkModesTest, APlatformThatTellsNoModeIsReported) {
    const embedded::Product broken = bolt.father().addUnresolved("x.1");
    Modes::EnumWorkMode found = Modes::WorkModeDesign;
    EXPECT_EQ(Modes::getWorkModeCAA(broken.get(), found), E_FAIL);
    EXPECT_EQ(found, Modes::WorkModeUnknown);
    // Neither code nor mode.
    embedded::Failures::get().arm(1, false, embedded::FaultFlavour::nullOutput);
    EXPECT_EQ(Modes::getWorkModeCAA(bolt.get(), found), E_FAIL);
    embedded::Failures::get().disarm();
    EXPECT_EQ(reports(), Texts(2, "VornToolsWorkModeServices::getWorkModeCAA 9004 GetWorkMode"));
    embedded::setUnknownWorkMode(bolt, -1);
    EXPECT_EQ(Modes::getWorkModeCAA(bolt.get(), found), E_FAIL);
    EXPECT_EQ(reports(), Texts{"VornToolsWorkModeServices::getWorkModeCAA 9006 -1"});
}

TEST_F(WorkModesTest, NoProductHasNoMode) {
    unsigned char visual = 7;
    EXPECT_EQ(Modes::isVisualWorkMode(nullptr, visual), E_FAIL);
    EXPECT_EQ(visual, 0);
    Modes::EnumWorkMode found = Modes::WorkModeDesign;
    EXPECT_EQ(Modes::getWorkMode(nullptr, found), E_FAIL);
    EXPECT_EQ(found, Modes::WorkModeUnknown);
    EXPECT_EQ(reports(), (Texts{"VornToolsWorkModeServices::isVisualWorkMode 9004 isVisualWorkMode",
                                "VornToolsWorkModeServices::getWorkModeCAA 9001 ipi_catiproduct",
                                "VornToolsWorkModeServices::isVisualWorkMode 9004 isVisualWorkMode",
                                "VornToolsWorkModeServices::getWorkMode 9004 isVisualWorkMode"}));
}

TEST_F(WorkModesTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    const auto put_back = [&] { embedded::setWorkMode(bolt, WorkMode::standard); };
    put_back();
    Modes::EnumWorkMode found = Modes::WorkModeUnknown;
    for (const bool platformOnly : {true, false})
        sweepFailures(
            {platformOnly ? "VornToolsWorkModeServices::getWorkModeCAA" : "VornToolsWorkModeServices::getWorkMode",
             [&]() -> SweepOutcome {
                 found = Modes::WorkModeDesign;
                 const HRESULT code =
                     platformOnly ? Modes::getWorkModeCAA(bolt.get(), found) : Modes::getWorkMode(bolt.get(), found);
                 return {code, found == Modes::WorkModeUnknown, found};
             }});
    for (const WorkMode mode : {WorkMode::visualisation, WorkMode::standard}) {
        embedded::setWorkMode(bolt, mode);
        sweepFailures({"VornToolsWorkModeServices::isVisualWorkMode",
                       [&]() -> SweepOutcome {
                           unsigned char visual = 1;
                           const HRESULT code = Modes::isVisualWorkMode(bolt.get(), visual);
                           return {code, visual == 0, visual};
                       },
                       {},
                       {},
                       {0}});
    }
    sweepFailures({"VornToolsWorkModeServices::setWorkMode",
                   [&]() -> SweepOutcome { return {Modes::setWorkMode(bolt.get(), Modes::WorkModeBrep)}; }, put_back});
}

TEST_F(WorkModesTest, WithoutMemoryThereIsNoAnswer) {
    const embedded::Product pictured = bolt.reference().add(session().part("/w/Nut.CATPart"), "Nut.1");
    pictured.reference().masterShape("/w/" + std::string(kLargeAllocation, 'n') + ".CATPart.cgr");
    sweepAllocations("isVisualWorkMode", [&] {
        unsigned char visual = 7;
        const HRESULT code = Modes::isVisualWorkMode(pictured.get(), visual);
        reports();
        return outcomeOf(code, visual);
    });
}

} // namespace
