#include "tests/session/WorkModesFixture.h"

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "embedded/Windows.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using embedded::SwitchOutcome;

namespace {

using SwitcherTest = WorkModesTest;

TEST_F(SwitcherTest, RemembersAPartAndPutsItBack) {
    embedded::setWorkMode(bolt, WorkMode::standard);
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(switcher.switchDesign("Bolt.CATPart", bolt.get(), 0), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::design);
    EXPECT_EQ(messages(), (Texts{"_b_switch_back = 1", "PERFX real switch DESIGN", "PERFX real switch",
                                 "Document Bolt.CATPart has been added, its original work mode is 2"}));
    // By way of visualisation: the platform goes to the default mode from there only.
    clearJournal();
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::standard);
    EXPECT_EQ(messages(),
              (Texts{"restoring Bolt.CATPart", "_b_switch_back = 1", "PERFX real switch VISU", "PERFX real switch",
                     "_b_switch_back = 1", "PERFX real switch DEFAULT", "PERFX real switch"}));
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_FALSE);
    EXPECT_EQ(switcher.restore("Nut.CATPart"), S_FALSE);
}

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

TEST_F(SwitcherTest, ADesignModeComesBackAsGeometry) {
    VornToolsSwitchMgt switcher{1};
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::brep);
}

TEST_F(SwitcherTest, SwitchesPartsOnlyAndOnlyWhenItIsToSwitchBack) {
    VornToolsSwitchMgt idle{0}, odd{2};
    EXPECT_EQ(idle.switchVisu("Bolt.CATPart", bolt.get(), 1), S_OK);
    EXPECT_EQ(odd.switchVisu("Bolt.CATPart", bolt.get(), 1), S_OK);
    EXPECT_EQ(messages(), (Texts{"_b_switch_back = 0", "_b_switch_back = 2"}));
    VornToolsSwitchMgt switcher{1};
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
    EXPECT_EQ(switcher.setWorkMode(nullptr, Modes::WorkModeDesign, Modes::WorkModeUnknown, "", 0), S_OK);
    embedded::setSwitchOutcome(SwitchOutcome::refused);
    EXPECT_EQ(switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, Modes::WorkModeUnknown, "", 0), E_FAIL);
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

TEST_F(SwitcherTest, ARenamedPartLosesItsProduct) {
    VornToolsSwitchMgt switcher{1};
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(switcher.updateDocumentName("Nut.CATPart", "Screw.CATPart"), S_FALSE);
    EXPECT_EQ(switcher.updateDocumentName("Bolt.CATPart", "Screw.CATPart"), S_OK);
    clearJournal();
    EXPECT_EQ(switcher.restore("Screw.CATPart"), S_FALSE);
    EXPECT_EQ(messages(), (Texts{"restoring Screw.CATPart", "Unable to get Screw.CATPart product in session"}));
    EXPECT_EQ(switcher.restoreAll(0), S_FALSE);
}

TEST_F(SwitcherTest, ANameInSeveralListsIsRestoredByTheFirst) {
    const embedded::Product root = bolt.father();
    const embedded::Product nut = root.add(partDocument("Nut"), "Nut.1");
    const embedded::Product pin = root.add(partDocument("Pin"), "Pin.1");
    embedded::setWorkMode(bolt, WorkMode::standard);
    embedded::setWorkMode(nut, WorkMode::visualisation);
    VornToolsSwitchMgt switcher{1};
    switcher.switchDesign("Bolt.CATPart", bolt.get(), 0);
    switcher.switchDesign("Nut.CATPart", nut.get(), 0);
    switcher.switchVisu("Pin.CATPart", pin.get(), 0);
    EXPECT_EQ(switcher.updateDocumentName("Nut.CATPart", "Bolt.CATPart"), S_OK);
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation) << "not the default mode that it was in";
    EXPECT_EQ(switcher.updateDocumentName("Pin.CATPart", "Bolt.CATPart"), S_OK);
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::brep) << "design comes before both";

    // Renaming takes the lists in another order: design, default, visualisation.
    const auto restored = [&] {
        clearJournal();
        switcher.restoreAll(0);
        Texts lines;
        for (const std::string& line : messages())
            if (line.rfind("restoring ", 0) == 0) lines.push_back(line.substr(10));
        return lines;
    };
    switcher.updateDocumentName("Bolt.CATPart", "A.CATPart");
    EXPECT_EQ(restored(), (Texts{"A.CATPart in design", "Bolt.CATPart in visu", "Bolt.CATPart in default/visu"}));
    switcher.updateDocumentName("Bolt.CATPart", "B.CATPart");
    EXPECT_EQ(restored(), (Texts{"A.CATPart in design", "Bolt.CATPart in visu", "B.CATPart in default/visu"}));
    // A part of the name that a list holds already stands there once.
    embedded::setWorkMode(pin, WorkMode::standard);
    switcher.switchDesign("B.CATPart", pin.get(), 0);
    EXPECT_EQ(restored(), (Texts{"A.CATPart in design", "Bolt.CATPart in visu", "B.CATPart in default/visu"}));
}

TEST_F(SwitcherTest, RestoringIsForcedAndMaySkipTheCheck) {
    embedded::setWorkMode(bolt, WorkMode::standard);
    VornToolsSwitchMgt switcher{1};
    switcher.switchDesign("Bolt.CATPart", bolt.get(), 0);
    switcher.setSwitchEnabled(0);
    EXPECT_EQ(switcher.restoreAll(0), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::standard);
    EXPECT_EQ(switcher.restoreAll(0), S_FALSE) << "it has its mode already";
    const std::size_t switches = embedded::workModeSwitches();
    EXPECT_EQ(switcher.restoreAll(1), S_OK) << "nobody looks";
    EXPECT_EQ(embedded::workModeSwitches(), switches + 2) << "to visualisation and back";
    embedded::setWorkMode(bolt, WorkMode::design);
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::standard);
}

TEST_F(SwitcherTest, OnlyWhatTheLibraryItselfSwitchesIsHeld) {
    embedded::Windows::current().open(session().find("/w/Root.CATProduct"));
    bolt.reference().shape("foreign", "/w/Bolt.stp");
    session().document("/w/Bolt.stp");
    const auto find = [](const char* file, const char* shape, VornToolsSwitchMgt& switcher) {
        CATDocument* document = nullptr;
        CATDocument* root = nullptr;
        CATIProduct* product = nullptr;
        unsigned char found = 0;
        VornToolsCommon::analyzeWindowsInSession(file, shape, &switcher, document, found, root, product);
        EXPECT_EQ(found, 1);
        if (product) product->Release();
    };
    CATDocument* const part = session().find("/w/Bolt.CATPart").get();
    const std::string place = "product Root/Bolt.1";
    const struct {
        std::string held;
        std::function<void(VornToolsSwitchMgt&)> call;
    } cases[] = {
        {"", [&](auto& s) { s.switchDesign("Bolt.CATPart", bolt.get(), 0); }},
        {"", [&](auto& s) { s.setWorkMode(bolt.get(), Modes::WorkModeBrep, Modes::WorkModeUnknown, "", 0); }},
        {"",
         [&](auto& s) {
             CATUnicodeString name;
             s.getDefaultRepName(bolt.get(), name);
         }},
        {place,
         [&](auto& s) {
             CATDocument* document = nullptr;
             VornToolsCommon::getAndSwitchdocument(bolt.get(), &s, document);
             EXPECT_EQ(document, part);
         }},
        {place, [&](auto& s) { find("Bolt.CATPart", "", s); }},
        {place, [&](auto& s) { find("Bolt.stp", "foreign", s); }},
        {"product Bolt",
         [&](auto& s) {
             CATListValCATISpecObject_var tables;
             VornToolsCommon::getDesignTableList(part, &s, 1, &tables);
         }},
    };
    for (const auto& row : cases) {
        embedded::setWorkMode(bolt, WorkMode::visualisation);
        embedded::setWorkMode(bolt.reference(), WorkMode::standard);
        {
            VornToolsSwitchMgt switcher{1};
            row.call(switcher);
            reports();
            const auto holders = [] { return embedded::Accounting::get().holders(); };
            const Texts held = row.held.empty() ? Texts() : Texts{row.held + ": 1"};
            EXPECT_EQ(holders(), held) << &row - cases;
            CATIProduct* product = nullptr;
            EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", product), S_OK) << &row - cases;
            EXPECT_EQ(product, row.held == "product Bolt" ? bolt.reference().get() : bolt.get());
            row.call(switcher);
            reports();
            EXPECT_EQ(holders(), held) << "it is remembered once";
        }
        EXPECT_EQ(embedded::Accounting::get().holders(), Texts()) << &row - cases;
    }
}

TEST_F(SwitcherTest, WhatItHoldsIsGivenBackAfterTheDocumentWasClosed) {
    const embedded::Document root = session().find("/w/Root.CATProduct");
    const embedded::Document part = session().find("/w/Bolt.CATPart");
    embedded::Windows windows = embedded::Windows::current();
    windows.open(root);
    embedded::setWorkMode(bolt, WorkMode::visualisation);
    VornToolsSwitchMgt switcher{1};
    CATDocument* document = nullptr;
    VornToolsCommon::getAndSwitchdocument(bolt.get(), &switcher, document);
    windows.close(windows.at(0));
    windows.close(windows.open(part));
    EXPECT_FALSE(session().find("/w/Bolt.CATPart"));
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(),
              Texts{"document /w/Bolt.CATPart is closed while somebody holds product Root/Bolt.1"});
    EXPECT_EQ(switcher.release(), S_OK);
    EXPECT_EQ(embedded::Accounting::get().holders(), Texts());
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

TEST_F(SwitcherTest, NothingIsRememberedOfASwitchThatDidNotHappen) {
    const auto isKnown = [](VornToolsSwitchMgt& switcher, const char* name) {
        CATIProduct* product = nullptr;
        return SUCCEEDED(switcher.getCATIProduct(name, product));
    };
    for (const SwitchOutcome outcome : {SwitchOutcome::ignored, SwitchOutcome::refused, SwitchOutcome::error}) {
        embedded::setSwitchOutcome(outcome);
        VornToolsSwitchMgt switcher{1};
        EXPECT_EQ(switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, Modes::WorkModeUnknown, "", 0), E_FAIL);
        EXPECT_EQ(switcher.switchVisu("Bolt.CATPart", bolt.get(), 0), S_OK);
        EXPECT_FALSE(isKnown(switcher, "Bolt.CATPart"));
        EXPECT_EQ(switcher.restoreAll(0), S_FALSE);
    }
    EXPECT_EQ(reports(), Texts(4, "VornToolsWorkModeServices::setWorkMode 9004 SetWorkMode"));
    embedded::setSwitchOutcome(SwitchOutcome::foreign);
    {
        VornToolsSwitchMgt switcher{1};
        EXPECT_THROW(switcher.switchVisu("Bolt.CATPart", bolt.get(), 0), std::runtime_error);
        EXPECT_FALSE(isKnown(switcher, "Bolt.CATPart"));
    }
    EXPECT_EQ(embedded::Journal::get().open(), 0);
    embedded::setSwitchOutcome(SwitchOutcome::switched);
    Modes::setCatiaCacheActivated(0);
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, Modes::WorkModeUnknown, "", 0), S_FALSE);
    EXPECT_FALSE(isKnown(switcher, "Bolt.CATPart"));
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::design);
}

TEST_F(SwitcherTest, APartOfAnUnknownModeIsNotRemembered) {
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(
        switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, static_cast<Modes::EnumWorkMode>(7), "Bolt.CATPart", 0),
        S_OK);
    CATIProduct* found = nullptr;
    EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", found), E_FAIL);
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

/** A thousand parts, a quarter in each work mode by turns. */
class ManyPartsTest : public SwitcherTest {
protected:
    void SetUp() override {
        SwitcherTest::SetUp();
        const embedded::Product root = bolt.father();
        for (std::size_t i = 0; i < 1000; ++i) {
            const std::string name = "P" + std::to_string(i);
            parts.push_back(root.add(partDocument(name), name + ".1"));
            embedded::setWorkMode(parts.back(), found[i % 4]);
        }
        embedded::Windows::current().lock(session().find("/w/P0.CATPart"));
        clearJournal();
    }
    /** Modes of the parts that were found in each mode; fails unless all of them agree. */
    std::vector<WorkMode> modes() {
        const std::vector<WorkMode> first = {workMode(parts[0]), workMode(parts[1]), workMode(parts[2]),
                                             workMode(parts[3])};
        for (std::size_t i = 0; i < parts.size(); ++i) EXPECT_EQ(workMode(parts[i]), first[i % 4]) << i;
        return first;
    }
    /** Messages of putting back every fourth part from one on, as the lists of the switch manager hold them. */
    static Texts remembered(std::size_t from, const std::string& mode) {
        Texts lines;
        for (std::size_t i = from; i < 1000; i += 4)
            lines.push_back("restoring P" + std::to_string(i) + ".CATPart in " + mode);
        return lines;
    }
    /** What restoreAll() says of the three lists, one after the other. */
    Texts lists(VornToolsSwitchMgt& switcher, HRESULT expected) {
        clearJournal();
        EXPECT_EQ(switcher.restoreAll(0), expected);
        Texts lines;
        for (const std::string& line : messages())
            if (line.rfind("restoring ", 0) == 0) lines.push_back(line);
        return lines;
    }

    const std::vector<WorkMode> found = {WorkMode::visualisation, WorkMode::standard, WorkMode::brep, WorkMode::design};
    std::vector<embedded::Product> parts;
};

TEST_F(ManyPartsTest, AreAsBeforeOnceTheyAreRestored) {
    const auto references = embedded::Accounting::get().live().references;
    const std::string before = session().digest();
    Texts expected = remembered(2, "design");
    for (const std::string& line : remembered(0, "visu")) expected.push_back(line);
    for (const std::string& line : remembered(1, "default/visu")) expected.push_back(line);
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(lists(switcher, S_FALSE), Texts()) << "nothing is remembered yet";
    for (std::size_t i = 0; i < parts.size(); ++i)
        EXPECT_EQ(switcher.switchDesign(("P" + std::to_string(i) + ".CATPart").c_str(), parts[i].get(), 0), S_OK);
    EXPECT_EQ(modes(), std::vector<WorkMode>(4, WorkMode::design));
    EXPECT_TRUE(session().find("/w/P4.CATPart").loaded());

    EXPECT_EQ(lists(switcher, S_OK), expected);
    // Geometry that was taken on to design stays there, as design counts for geometry.
    EXPECT_EQ(modes(),
              (std::vector<WorkMode>{WorkMode::visualisation, WorkMode::standard, WorkMode::design, WorkMode::design}));
    EXPECT_TRUE(session().find("/w/P0.CATPart").loaded()) << "it is locked";
    EXPECT_FALSE(session().find("/w/P4.CATPart").loaded());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        CATIProduct* product = nullptr;
        const bool known = i % 4 != 3;
        EXPECT_EQ(switcher.getCATIProduct(("P" + std::to_string(i) + ".CATPart").c_str(), product),
                  known ? S_OK : E_FAIL);
        EXPECT_EQ(product, known ? parts[i].get() : nullptr);
    }
    EXPECT_EQ(lists(switcher, S_OK), expected) << "restoring forgets nothing";
    EXPECT_EQ(embedded::Windows::current().locks(session().find("/w/P0.CATPart")), 1);
    EXPECT_EQ(embedded::Accounting::get().live().references, references);
    switcher.release();
    EXPECT_EQ(lists(switcher, S_FALSE), Texts());
    for (std::size_t i = 2; i < parts.size(); i += 4) embedded::setWorkMode(parts[i], WorkMode::brep);
    EXPECT_TRUE(session().digest() == before) << "nothing else has changed";
    EXPECT_EQ(reports(), Texts());
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
                       return {code, name.IsNull() != 0};
                   },
                   [&] { embedded::setWorkMode(bolt, WorkMode::visualisation); }});
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

} // namespace
