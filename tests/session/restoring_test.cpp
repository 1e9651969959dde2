#include "tests/session/WorkModesFixture.h"

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "embedded/Windows.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using embedded::SwitchOutcome;

namespace {

using RestoringTest = WorkModesTest;

TEST_F(RestoringTest, RemembersAPartAndPutsItBack) {
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
    clearJournal();
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_FALSE);
    EXPECT_EQ(switcher.restore("Nut.CATPart"), S_FALSE);
    EXPECT_EQ(messages(), (Texts{"restoring Bolt.CATPart", "restoring Nut.CATPart"}));
}

TEST_F(RestoringTest, ADesignModeComesBackAsGeometry) {
    VornToolsSwitchMgt switcher{1};
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::brep);
}

TEST_F(RestoringTest, RestoringIsForcedAndMaySkipTheCheck) {
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

TEST_F(RestoringTest, ARenamedPartLosesItsProduct) {
    VornToolsSwitchMgt switcher{1};
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(switcher.updateDocumentName("Nut.CATPart", "Screw.CATPart"), S_FALSE);
    EXPECT_EQ(switcher.updateDocumentName("Bolt.CATPart", "Screw.CATPart"), S_OK);
    clearJournal();
    EXPECT_EQ(switcher.restore("Screw.CATPart"), S_FALSE);
    EXPECT_EQ(messages(), (Texts{"restoring Screw.CATPart", "Unable to get Screw.CATPart product in session"}));
    EXPECT_EQ(switcher.restoreAll(0), S_FALSE);
}

TEST_F(RestoringTest, ANameInSeveralListsIsRestoredByTheFirst) {
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

TEST_F(RestoringTest, OnlyWhatTheLibraryItselfSwitchesIsHeld) {
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
    const embedded::Document part = session().find("/w/Bolt.CATPart");
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
             EXPECT_EQ(document, part.get());
         }},
        {place, [&](auto& s) { find("Bolt.CATPart", "", s); }},
        {place, [&](auto& s) { find("Bolt.stp", "foreign", s); }},
        {"product Bolt",
         [&](auto& s) {
             CATListValCATISpecObject_var tables;
             embedded::setWorkMode(bolt, WorkMode::standard);
             VornToolsCommon::getDesignTableList(part.get(), &s, 1, &tables);
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

TEST_F(RestoringTest, WhatItHoldsIsGivenBackAfterTheDocumentWasClosed) {
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

TEST_F(RestoringTest, NothingIsRememberedOfASwitchThatDidNotHappen) {
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

TEST_F(RestoringTest, APartOfAnUnknownModeIsNotRemembered) {
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(
        switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, static_cast<Modes::EnumWorkMode>(7), "Bolt.CATPart", 0),
        S_OK);
    CATIProduct* found = nullptr;
    EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", found), E_FAIL);
}

/** A thousand parts, a quarter in each work mode by turns. */
class ManyPartsTest : public RestoringTest {
protected:
    void SetUp() override {
        RestoringTest::SetUp();
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

} // namespace
