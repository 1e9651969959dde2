#include "tests/session/WorkModesFixture.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"

#include "VornToolsSwitchMgt.h"

#include "CATIProduct.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

using embedded::SwitchOutcome;

namespace {

using SwitcherTest = WorkModesTest;

TEST_F(SwitcherTest, EachSwitchActsFromItsModes) {
    using Switch = HRESULT (VornToolsSwitchMgt::*)(CATUnicodeString, CATIProduct*, unsigned char);
    constexpr int kOutOfOrder = 9; // tells no mode
    const struct {
        Switch operation;
        WorkMode target;
        std::vector<int> acts; ///< from these modes of the platform
    } cases[] = {
        {&VornToolsSwitchMgt::switchVisu, WorkMode::visualisation, {1, 2, 3}},
        {&VornToolsSwitchMgt::switchDefault, WorkMode::standard, {0}},
        {&VornToolsSwitchMgt::switchBREP, WorkMode::brep, {0, 1, kOutOfOrder}},
        {&VornToolsSwitchMgt::switchDesign, WorkMode::design, {0, 1, 2, kOutOfOrder}},
    };
    for (const auto& row : cases) {
        for (const int from : {0, 1, 2, 3, kOutOfOrder}) {
            SCOPED_TRACE(std::to_string(&row - cases) + " from " + std::to_string(from));
            embedded::setUnknownWorkMode(bolt, from);
            clearJournal();
            VornToolsSwitchMgt switcher{1};
            EXPECT_EQ((switcher.*row.operation)("Bolt.CATPart", bolt.get(), 0), S_OK);
            reports();
            const bool acts = std::count(row.acts.begin(), row.acts.end(), from) != 0;
            EXPECT_EQ(static_cast<int>(embedded::workMode(bolt)), acts ? static_cast<int>(row.target) : from);
            CATIProduct* product = nullptr;
            const bool remembered = acts && from != kOutOfOrder;
            EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", product), remembered ? S_OK : E_FAIL);
            EXPECT_EQ(embedded::Journal::get().contains("Document Bolt.CATPart has been added, its original work mode "
                                                        "is " +
                                                        std::to_string(from + 1)),
                      remembered);
        }
    }
}

TEST_F(SwitcherTest, ASwitchReadsTheModeOnceAndChecksIt) {
    embedded::setWorkMode(bolt, WorkMode::visualisation);
    clearJournal();
    VornToolsSwitchMgt switcher{1};
    switcher.switchDefault("Bolt.CATPart", bolt.get(), 0);
    const std::string readsDefault = "VornToolsWorkModeServices::getWorkMode";
    const auto reading = [&](int code) {
        const std::string tail = " " + std::to_string(code);
        return Texts{"> " + readsDefault, "> " + readsDefault + "CAA", "< " + readsDefault + "CAA" + tail,
                     "< " + readsDefault + tail};
    };
    Texts expected = {"> VornToolsSwitchMgt::switchDefault", "_b_switch_back = 1"};
    const auto add = [&](const Texts& lines) { expected.insert(expected.end(), lines.begin(), lines.end()); };
    add(reading(0));
    add({"> VornToolsSwitchMgt::setWorkMode", "> VornToolsWorkModeServices::setWorkMode", "PERFX real switch DEFAULT"});
    add(reading(0));
    add({"PERFX real switch", "< VornToolsWorkModeServices::setWorkMode", "> VornToolsSwitchMgt::add",
         "Document Bolt.CATPart has been added, its original work mode is 1", "< VornToolsSwitchMgt::add",
         "< VornToolsSwitchMgt::setWorkMode", "< VornToolsSwitchMgt::switchDefault"});
    EXPECT_EQ(embedded::Journal::get().lines(), expected);
}

TEST_F(SwitcherTest, SwitchesPartsOnlyAndOnlyWhenItIsToSwitchBack) {
    VornToolsSwitchMgt idle{0}, odd{27};
    EXPECT_EQ(idle.switchVisu("Bolt.CATPart", bolt.get(), 1), S_OK);
    EXPECT_EQ(odd.switchVisu("Bolt.CATPart", bolt.get(), 1), S_OK);
    EXPECT_EQ(messages(), (Texts{"_b_switch_back = 0", "_b_switch_back = 27"}));
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(switcher.isSwitchEnabled(), 1);
    clearJournal();
    EXPECT_EQ(switcher.switchVisu("Root.CATProduct", bolt.father().get(), 0), E_FAIL);
    EXPECT_EQ(switcher.switchVisu("Bolt.CATPart", nullptr, 0), E_FAIL);
    EXPECT_EQ(messages(), (Texts{"_b_switch_back = 1", "It is not a part", "_b_switch_back = 1",
                                 "Filename Bolt.CATPart not found"}));
    switcher.setSwitchEnabled(0);
    EXPECT_EQ(switcher.isSwitchEnabled(), 0);
    clearJournal();
    EXPECT_EQ(switcher.switchVisu("Bolt.CATPart", bolt.get(), 0), S_OK);
    EXPECT_EQ(messages(), (Texts{"_b_switch_back = 1", "Switch desabled"}));
    EXPECT_EQ(switcher.switchVisu("Bolt.CATPart", bolt.get(), 1), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    EXPECT_EQ(switcher.switchDefault("Bolt.CATPart", nullptr, 1), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::standard);
}

TEST_F(SwitcherTest, SetWorkModeFindsTheNameWhenTheReferenceIsLoaded) {
    embedded::setWorkMode(bolt, WorkMode::visualisation);
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(switcher.setWorkMode(bolt.get(), Modes::WorkModeDesign, Modes::WorkModeUnknown, "", 0), S_OK);
    CATIProduct* found = nullptr;
    EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", found), S_OK);
    EXPECT_EQ(found, bolt.get());
    EXPECT_TRUE(failAt("CATPrsWorkModeServices::GetWorkMode", 1, [&] {
        switcher.setWorkMode(bolt.get(), Modes::WorkModeDesign, Modes::WorkModeUnknown, "Bolt.CATPart", 0);
    }));
    EXPECT_EQ(messages().front(), "VornToolsWorkModeServices::getWorkMode has failed");
    reports();
    clearJournal();
    EXPECT_EQ(switcher.setWorkMode(nullptr, Modes::WorkModeDesign, Modes::WorkModeUnknown, "", 0), S_OK);
    EXPECT_EQ(messages(), Texts({"ipi_catiproduct is NULL"}));
    embedded::setSwitchOutcome(SwitchOutcome::refused);
    EXPECT_EQ(switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, Modes::WorkModeUnknown, "", 0), E_FAIL);
    EXPECT_EQ(messages().back(), "VornToolsWorkModeServices::setWorkMode has failed");
    EXPECT_EQ(reports().size(), 1u);
    embedded::setSwitchOutcome(SwitchOutcome::switched);
    switcher.release();
    EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", found), E_FAIL);
    EXPECT_EQ(found, nullptr);
    // A reference is remembered too, with a warning.
    clearJournal();
    switcher.setWorkMode(bolt.reference().get(), Modes::WorkModeBrep, Modes::WorkModeDesign, "", 0);
    EXPECT_TRUE(
        embedded::Journal::get().contains("WARNING : the product added to the switcher is a reference product"));
}

TEST_F(SwitcherTest, EachMethodHasItsEntryInTheJournal) {
    VornToolsSwitchMgt switcher{1};
    const auto entry = [](const std::function<void()>& call) {
        embedded::Journal::get().clear();
        call();
        return embedded::Journal::get().lines().front();
    };
    CATIProduct* product = nullptr;
    CATUnicodeString name;
    unsigned char visu = 0;
    const std::pair<const char*, std::function<void()>> methods[] = {
        {"release", [&] { switcher.release(); }},
        {"restore", [&] { switcher.restore(""); }},
        {"restoreAll", [&] { switcher.restoreAll(0); }},
        {"switchDesign", [&] { switcher.switchDesign("", nullptr, 0); }},
        {"switchVisu", [&] { switcher.switchVisu("", nullptr, 0); }},
        {"switchBREP", [&] { switcher.switchBREP("", nullptr, 0); }},
        {"switchDefault", [&] { switcher.switchDefault("", nullptr, 0); }},
        {"setWorkMode", [&] { switcher.setWorkMode(nullptr, Modes::WorkModeVisu, Modes::WorkModeVisu, "", 0); }},
        {"isInVisuMode", [&] { switcher.isInVisuMode("", visu); }},
        {"isSwitchEnabled", [&] { switcher.isSwitchEnabled(); }},
        {"setSwitchEnabled", [&] { switcher.setSwitchEnabled(1); }},
        {"getDefaultRepName", [&] { switcher.getDefaultRepName(nullptr, name); }},
        {"updateDocumentName", [&] { switcher.updateDocumentName("", ""); }},
        {"getCATIProduct", [&] { switcher.getCATIProduct("", product); }}};
    for (const auto& [method, call] : methods) EXPECT_EQ(entry(call), std::string("> VornToolsSwitchMgt::") + method);
    reports();
}

TEST_F(SwitcherTest, AsksWhetherAPartIsShownByItsPicture) {
    VornToolsSwitchMgt switcher{1};
    unsigned char visu = 7;
    EXPECT_EQ(switcher.isInVisuMode("Root.CATProduct", visu), S_OK);
    EXPECT_EQ(visu, 0);
    EXPECT_EQ(switcher.isInVisuMode("Bolt.CATPart", visu), E_FAIL);
    EXPECT_EQ(messages(), Texts{"Filename Bolt.CATPart not found for SwitchDefault"});
    // For a part found in design mode the mode that it has now counts, for any other the one that it had.
    const struct {
        WorkMode found, now;
        int answer;
    } cases[] = {{WorkMode::design, WorkMode::visualisation, 1}, {WorkMode::design, WorkMode::standard, 1},
                 {WorkMode::design, WorkMode::brep, 0},          {WorkMode::design, WorkMode::design, 0},
                 {WorkMode::standard, WorkMode::design, 1},      {WorkMode::visualisation, WorkMode::design, 1}};
    for (const auto& row : cases) {
        switcher.release();
        embedded::setWorkMode(bolt, row.found);
        switcher.setWorkMode(bolt.get(), Modes::WorkModeBrep, Modes::WorkModeUnknown, "Bolt.CATPart", 0);
        embedded::setWorkMode(bolt, row.now);
        EXPECT_EQ(switcher.isInVisuMode("Bolt.CATPart", visu), S_OK);
        EXPECT_EQ(visu, row.answer) << &row - cases;
    }
}

TEST_F(SwitcherTest, LoadsAPartForTheNameOfItsRepresentation) {
    VornToolsSwitchMgt switcher{1};
    embedded::setWorkMode(bolt, WorkMode::visualisation);
    CATUnicodeString name("stale");
    switcher.setSwitchEnabled(0);
    EXPECT_EQ(switcher.getDefaultRepName(bolt.get(), name), S_OK);
    EXPECT_EQ(name, "");
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    switcher.setSwitchEnabled(1);
    EXPECT_EQ(switcher.getDefaultRepName(bolt.get(), name), S_OK);
    EXPECT_EQ(name, "Default Bolt");
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::standard);
    EXPECT_TRUE(embedded::Journal::get().contains("o_default_shape_name : Default Bolt"));
    EXPECT_EQ(switcher.getDefaultRepName(bolt.father().get(), name), S_OK);
    EXPECT_TRUE(embedded::Journal::get().contains("GetDefaultRepName failed."));
    EXPECT_EQ(switcher.getDefaultRepName(nullptr, name), E_FAIL);
    EXPECT_EQ(reports(), Texts{"VornToolsSwitchMgt::getDefaultRepName 9001 ipi_catiproduct"});
}

TEST_F(SwitcherTest, ProductsWithoutReferenceOrDocumentAndOddNames) {
    VornToolsSwitchMgt switcher{1};
    const embedded::Product broken = bolt.father().addUnresolved("x.1");
    EXPECT_EQ(switcher.setWorkMode(broken.get(), Modes::WorkModeDesign, Modes::WorkModeUnknown, "", 0), E_FAIL);
    EXPECT_EQ(switcher.switchDesign("x.CATPart", broken.get(), 0), S_OK);
    CATUnicodeString name("stale");
    EXPECT_EQ(switcher.getDefaultRepName(broken.get(), name), S_OK);
    EXPECT_EQ(name, "");
    EXPECT_EQ(switcher.switchDesign("x.CATPart", nullptr, 0), E_FAIL) << "it was not remembered";
    EXPECT_FALSE(reports().empty());

    bolt.reference().withoutLinkableObject();
    EXPECT_EQ(switcher.setWorkMode(bolt.get(), Modes::WorkModeBrep, Modes::WorkModeUnknown, "", 0), S_OK);
    EXPECT_EQ(switcher.restoreAll(0), S_FALSE) << "without a document there is no name to remember it by";
    const struct {
        const char* name;
        HRESULT code;
    } cases[] = {
        {"B\xC3\xB6lt.CATPart", S_OK}, {"/w\\Bolt.CATPart", S_OK}, {"", E_FAIL}, {".CATPart", S_OK}, {"Bolt", E_FAIL},
        {"Bolt.CATPart.cgr", E_FAIL}};
    for (const auto& row : cases) {
        VornToolsSwitchMgt fresh{1};
        embedded::setWorkMode(bolt, WorkMode::standard);
        EXPECT_EQ(fresh.switchDesign(row.name, bolt.get(), 0), row.code) << row.name;
        EXPECT_EQ(fresh.restore(row.name), row.code == S_OK ? S_OK : S_FALSE) << row.name;
        EXPECT_EQ(embedded::workMode(bolt), WorkMode::standard) << row.name;
    }
}

TEST_F(SwitcherTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    const auto put_back = [&] { embedded::setWorkMode(bolt, WorkMode::standard); };
    put_back();
    sweepFailures({"VornToolsSwitchMgt::setWorkMode",
                   [&]() -> SweepOutcome {
                       VornToolsSwitchMgt switcher{1};
                       return {switcher.setWorkMode(bolt.get(), Modes::WorkModeDesign, Modes::WorkModeUnknown, "", 0)};
                   },
                   put_back});
    VornToolsSwitchMgt used{1};
    embedded::setWorkMode(bolt, WorkMode::design);
    used.switchVisu("Bolt.CATPart", bolt.get(), 0);
    sweepFailures({"VornToolsSwitchMgt::restore", [&]() -> SweepOutcome { return {used.restore("Bolt.CATPart")}; },
                   [&] { embedded::setWorkMode(bolt, WorkMode::visualisation); }});
    sweepFailures({"VornToolsSwitchMgt::getDefaultRepName",
                   [&]() -> SweepOutcome {
                       VornToolsSwitchMgt switcher{1};
                       CATUnicodeString name("stale");
                       const HRESULT code = switcher.getDefaultRepName(bolt.get(), name);
                       return outcomeOf(code, name);
                   },
                   [&] { embedded::setWorkMode(bolt, WorkMode::visualisation); }});
}

TEST_F(SwitcherTest, WhatWasSwitchedIsPutBackWhateverThePlatformThrowsThen) {
    WorkMode there = WorkMode::visualisation;
    const auto there_and_back = [&] {
        embedded::setWorkMode(bolt, WorkMode::visualisation);
        VornToolsSwitchMgt switcher{1};
        switcher.switchDesign("Bolt.CATPart", bolt.get(), 0);
        there = embedded::workMode(bolt);
        switcher.restoreAll(0);
    };
    EXPECT_TRUE(failAt("CATIProduct::IsReference", 1, there_and_back, embedded::FaultFlavour::thrown));
    EXPECT_EQ(there, WorkMode::design);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    reports();
}

TEST_F(SwitcherTest, NoFaultLeavesAnythingBehindWhenSwitching) {
    using Operation = std::function<HRESULT(VornToolsSwitchMgt&)>;
    const auto sweep = [&](const std::string& name, WorkMode from, const Operation& operation) {
        sweepFailures({"VornToolsSwitchMgt::" + name,
                       [&, operation]() -> SweepOutcome {
                           VornToolsSwitchMgt switcher{1};
                           return {operation(switcher)};
                       },
                       [&, from] { embedded::setWorkMode(bolt, from); }});
    };
    const char* const name = "Bolt.CATPart";
    sweep("switchVisu", WorkMode::design, [&](auto& switcher) { return switcher.switchVisu(name, bolt.get(), 0); });
    sweep("switchDefault", WorkMode::visualisation,
          [&](auto& switcher) { return switcher.switchDefault(name, bolt.get(), 0); });
    sweep("switchBREP", WorkMode::standard, [&](auto& switcher) { return switcher.switchBREP(name, bolt.get(), 0); });
    sweep("switchDesign", WorkMode::brep, [&](auto& switcher) { return switcher.switchDesign(name, bolt.get(), 0); });

    VornToolsSwitchMgt used{1};
    embedded::setWorkMode(bolt, WorkMode::design);
    used.switchVisu(name, bolt.get(), 0);
    sweepFailures({"VornToolsSwitchMgt::restoreAll", [&]() -> SweepOutcome { return {used.restoreAll(0)}; },
                   [&] { embedded::setWorkMode(bolt, WorkMode::visualisation); }});
    // Whether a design part is in visualisation now, its mode tells alone; the picture's name when that is not to be
    // had.
    const auto ask = [&]() -> SweepOutcome {
        unsigned char visu = 7;
        const HRESULT code = used.isInVisuMode(name, visu);
        return {code, visu == 0, visu};
    };
    for (const WorkMode mode : {WorkMode::brep, WorkMode::design}) {
        embedded::setWorkMode(bolt, mode);
        sweepFailures({"VornToolsSwitchMgt::isInVisuMode", ask, {}, {}, {0}});
    }
}

TEST_F(SwitcherTest, WithoutMemoryNothingIsKnownByHalves) {
    const CATUnicodeString large((std::string(kLargeAllocation, 'n') + ".CATPart").c_str());
    VornToolsSwitchMgt switcher{1};
    unsigned char visual = 7;
    sweepAllocations("setWorkMode", [&] {
        embedded::setWorkMode(bolt, WorkMode::visualisation);
        const HRESULT code = switcher.setWorkMode(bolt.get(), Modes::WorkModeDesign, Modes::WorkModeVisu, large, 1);
        const bool isUnknown = switcher.isInVisuMode(large, visual) == E_FAIL;
        switcher.release();
        return SweepOutcome{code, isUnknown && embedded::workMode(bolt) == WorkMode::visualisation};
    });
    const CATUnicodeString name("Bolt.CATPart");
    embedded::setWorkMode(bolt, WorkMode::visualisation);
    switcher.switchDesign(name, bolt.get(), 1);
    sweepAllocations("updateDocumentName", [&] {
        const HRESULT code = switcher.updateDocumentName(name, large);
        const bool isAsBefore = switcher.updateDocumentName(name, name) == S_OK;
        switcher.updateDocumentName(large, name);
        return SweepOutcome{code, isAsBefore};
    });
}

} // namespace
