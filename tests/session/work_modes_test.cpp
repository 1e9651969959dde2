#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "embedded/Windows.h"
#include "embedded/WorkModes.h"

#include <functional>
#include <stdexcept>
#include <utility>

using embedded::SwitchOutcome;
using embedded::WorkMode;
using Modes = VornToolsWorkModeServices;

namespace {

/** An assembly with one part, the cache activated. */
class WorkModesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        Modes::setCatiaCacheActivated(1);
        bolt = session().product("/w/Root.CATProduct").root().add(partDocument("Bolt"), "Bolt.1");
        clearJournal();
    }
    void TearDown() override {
        Modes::setCatiaCacheActivated(0);
        PlatformTest::TearDown();
    }
    embedded::Document partDocument(const std::string& name) {
        embedded::Document document = session().part("/w/" + name + ".CATPart");
        document.root().masterShape("/w/" + name + ".CATPart").shape("Default " + name, "/w/" + name + ".CATPart");
        return document;
    }
    Modes::EnumWorkMode mode(const embedded::Product& product) {
        Modes::EnumWorkMode result = Modes::WorkModeUnknown;
        Modes::getWorkModeCAA(product.get(), result);
        return result;
    }
    embedded::Product bolt;
};

TEST_F(WorkModesTest, ReadsThePlatformsModeOrThePicturesName) {
    const std::pair<WorkMode, Modes::EnumWorkMode> modes[] = {{WorkMode::visualisation, Modes::WorkModeVisu},
                                                              {WorkMode::standard, Modes::WorkModeDefault},
                                                              {WorkMode::brep, Modes::WorkModeBrep},
                                                              {WorkMode::design, Modes::WorkModeDesign}};
    for (const auto& expected : modes) {
        embedded::setWorkMode(bolt, expected.first);
        EXPECT_EQ(mode(bolt), expected.second);
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

TEST_F(WorkModesTest, RemembersAPartAndPutsItBack) {
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

TEST_F(WorkModesTest, ADesignModeComesBackAsGeometry) {
    VornToolsSwitchMgt switcher{1};
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::visualisation);
    EXPECT_EQ(switcher.restore("Bolt.CATPart"), S_OK);
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::brep);
}

TEST_F(WorkModesTest, SwitchesPartsOnlyAndOnlyWhenItIsToSwitchBack) {
    VornToolsSwitchMgt idle{0};
    EXPECT_EQ(idle.switchVisu("Bolt.CATPart", bolt.get(), 1), S_OK);
    EXPECT_EQ(messages(), Texts{"_b_switch_back = 0"});
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

TEST_F(WorkModesTest, SetWorkModeFindsTheNameWhenTheReferenceIsLoaded) {
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

TEST_F(WorkModesTest, ARenamedPartLosesItsProduct) {
    VornToolsSwitchMgt switcher{1};
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(switcher.updateDocumentName("Nut.CATPart", "Screw.CATPart"), S_FALSE);
    EXPECT_EQ(switcher.updateDocumentName("Bolt.CATPart", "Screw.CATPart"), S_OK);
    clearJournal();
    EXPECT_EQ(switcher.restore("Screw.CATPart"), S_FALSE);
    EXPECT_EQ(messages(), (Texts{"restoring Screw.CATPart", "Unable to get Screw.CATPart product in session"}));
    EXPECT_EQ(switcher.restoreAll(0), S_FALSE);
}

TEST_F(WorkModesTest, AsksWhetherAPartIsShownByItsPicture) {
    VornToolsSwitchMgt switcher{1};
    unsigned char visu = 7;
    EXPECT_EQ(switcher.isInVisuMode("Root.CATProduct", visu), S_OK);
    EXPECT_EQ(visu, 0);
    EXPECT_EQ(switcher.isInVisuMode("Bolt.CATPart", visu), E_FAIL);
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(switcher.isInVisuMode("Bolt.CATPart", visu), S_OK);
    EXPECT_EQ(visu, 1); // now, though it was in design mode
    switcher.switchDesign("Bolt.CATPart", bolt.get(), 0);
    switcher.isInVisuMode("Bolt.CATPart", visu);
    EXPECT_EQ(visu, 0);
}

TEST_F(WorkModesTest, LoadsAPartForTheNameOfItsRepresentation) {
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

/** A thousand parts, a quarter in each work mode by turns. */
class ManyPartsTest : public WorkModesTest {
protected:
    void SetUp() override {
        WorkModesTest::SetUp();
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

TEST_F(WorkModesTest, QuestionsOfTheSession) {
    unsigned char answer = 7;
    EXPECT_EQ(VornToolsCommon::isCATPartInVisuModeAnActivateNode(bolt.get(), answer), S_OK);
    EXPECT_EQ(answer, 1);
    embedded::setUnknownWorkMode(bolt, 9);
    VornToolsCommon::isCATPartInVisuModeAnActivateNode(bolt.get(), answer);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(reports().size(), 1u);

    session().document("/c/Nut.CATPart.cgr");
    session().document("/c/Nut.CATPart");
    clearJournal();
    VornToolsCommon::isFileNameInVisu("Nut.CATPart", answer);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(messages(),
              (Texts{"input file name Nut.CATPart", "-->1: /w/Root.CATProduct\n", "-->2: /w/Bolt.CATPart\n",
                     "-->3: /c/Nut.CATPart.cgr\n", "file name match with input file name", "-->4: /c/Nut.CATPart\n",
                     "file name match with input file name", "file name does not contain cgr"}));
    VornToolsCommon::isFileNameInVisu("Absent", answer);
    EXPECT_EQ(answer, 1);
}

TEST_F(WorkModesTest, APartIsInVisualisationWhileNoPlaceLoadsIt) {
    const embedded::Product second = bolt.father().add(session().find("/w/Bolt.CATPart"), "Bolt.2");
    const auto isInVisu = [](const char* name) {
        unsigned char answer = 7;
        EXPECT_EQ(VornToolsCommon::isFileNameInVisu(name, answer), S_OK);
        return static_cast<int>(answer);
    };
    const auto references = embedded::Accounting::get().live().references;
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(isInVisu("Bolt.CATPart"), 0);
    switcher.switchVisu("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(isInVisu("Bolt.CATPart"), 0) << "the other place loads it";
    Modes::setWorkMode(second.get(), Modes::WorkModeVisu);
    clearJournal();
    EXPECT_EQ(isInVisu("Bolt.CATPart"), 1);
    EXPECT_EQ(messages(), (Texts{"input file name Bolt.CATPart", "-->1: /w/Root.CATProduct\n"}));
    // The cache's picture is a document of its own, and is passed over.
    session().document("/cache/Bolt.CATPart_7.cgr");
    EXPECT_EQ(isInVisu("Bolt.CATPart"), 1);
    EXPECT_EQ(isInVisu("bolt.CATPart"), 1) << "letter case counts: no document has the text";
    EXPECT_EQ(isInVisu("Root"), 0);
    switcher.switchDefault("Bolt.CATPart", bolt.get(), 0);
    EXPECT_EQ(isInVisu("Bolt.CATPart"), 0);
    switcher.restore("Bolt.CATPart");
    EXPECT_EQ(embedded::workMode(bolt), WorkMode::brep) << "as a part comes back that was found in design mode";
    switcher.switchVisu("Bolt.CATPart", nullptr, 0);
    EXPECT_EQ(isInVisu("Bolt.CATPart"), 1);
    EXPECT_EQ(embedded::Accounting::get().live().references, references);
}

TEST_F(WorkModesTest, WhatADocumentWasLoadedFor) {
    const std::string name = write("a.CATPart", "");
    VornToolsCommon::EnumLoadedFor loaded = VornToolsCommon::LoadedAsCgr;
    EXPECT_EQ(VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(name.c_str(), nullptr, loaded), 0);
    EXPECT_EQ(loaded, VornToolsCommon::LoadedForNothing);
    struct Case {
        const char* dat;
        int answer;
        int loaded;
    };
    const Case cases[] = {
        {"1\n2\n3\n4\n5\nconsult\n", 1, 2},
        {"1\n2\n", 1, 0},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nLFC\n</LoadType>\n", 1, 1},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nLFCCgr\n</LoadType>\n", 1, 3},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nconsultCgr\n</LoadType>\n", 1, 4},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nCgr\n</LoadType>\n", 1, 5},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nlfc\n</LoadType>\n", 1, 0},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n", 0, 0},
    };
    for (const Case& test : cases) {
        write("a.CATPart.dat", test.dat);
        EXPECT_EQ(VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(name.c_str(), nullptr, loaded), test.answer);
        EXPECT_EQ(loaded, test.loaded) << test.dat;
    }
}

TEST_F(WorkModesTest, TemporaryDirectoriesAndTheHostedClient) {
    environment().variables["TEMP"] = folder().u8string();
    environment().variables["TMP"] = folder().u8string();
    EXPECT_EQ(VornToolsCommon::checkTempDirectories(), 1);
    environment().variables["TMP"] = path("absent");
    EXPECT_EQ(VornToolsCommon::checkTempDirectories(), 0);
    environment().variables["TEMP"] = "";
    EXPECT_EQ(VornToolsCommon::checkTempDirectories(), environment().variables["TEMP"].empty() ? 0 : 1);
    EXPECT_EQ(embedded::Messages::get().take(), (Texts{"error 1 11181 TMP", "error 1 11181 TEMP"}));

    EXPECT_EQ(VornToolsCommon::startSkylane(), S_OK);
    EXPECT_TRUE(embedded::hostedClient().open);
    EXPECT_EQ(VornToolsCommon::startSkylane(), S_OK);
    EXPECT_EQ(embedded::hostedClient().broughtToFront, 1);
    embedded::hostedClient().installed = false;
    EXPECT_EQ(VornToolsCommon::startSkylane(), E_FAIL);
    EXPECT_EQ(embedded::Messages::get().take(),
              (Texts{"localized 0 11236 11548", "localized 0 11236 20039", "errors 11236 0"}));
}

TEST_F(WorkModesTest, Faults) {
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
                 return {code, found == Modes::WorkModeUnknown};
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
    put_back();
    // A part that is loaded may be overlooked; none is made up.
    const auto isInVisu = [](const char* name) {
        return [name]() -> SweepOutcome {
            unsigned char visu = 7;
            const HRESULT code = VornToolsCommon::isFileNameInVisu(name, visu);
            return {code, true, visu};
        };
    };
    sweepFailures({"VornToolsCommon::isFileNameInVisu", isInVisu("Bolt.CATPart"), {}, {}, {0, 1}});
    sweepFailures({"VornToolsCommon::isFileNameInVisu", isInVisu("Nut.CATPart"), {}, {}, {1}});
    sweepFailures({"VornToolsCommon::startSkylane", [&]() -> SweepOutcome { return {VornToolsCommon::startSkylane()}; },
                   [&] { embedded::hostedClient().open = false; }});
}

TEST_F(WorkModesTest, FaultsOfTheSwitches) {
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

TEST_F(WorkModesTest, FaultsOfTheQuestions) {
    sweepFailures({"VornToolsCommon::isCATPartInVisuModeAnActivateNode",
                   [&]() -> SweepOutcome {
                       unsigned char answer = 7;
                       const HRESULT code = VornToolsCommon::isCATPartInVisuModeAnActivateNode(bolt.get(), answer);
                       return {code, true, answer};
                   },
                   {},
                   {},
                   {0}});
    environment().variables["TEMP"] = environment().variables["TMP"] = folder().u8string();
    sweepFailures({"VornToolsCommon::checkTempDirectories",
                   []() -> SweepOutcome { return {VornToolsCommon::checkTempDirectories() ? S_OK : E_FAIL}; }});
    const std::string file = path("d.CATPart");
    write("d.CATPart.dat", "<DatFileVersion>\n3\n</DatFileVersion>\n<LoadType>\nLFC\n</LoadType>\n");
    CATDocument* const document = session().part(file).get();
    const auto ask = [&]() -> SweepOutcome {
        VornToolsCommon::EnumLoadedFor loaded = VornToolsCommon::LoadedAsCgr;
        const int answer = VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(file.c_str(), document, loaded);
        return {answer ? S_OK : E_FAIL, loaded == VornToolsCommon::LoadedForNothing, loaded};
    };
    sweepFailures({"VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR", ask, {}, {}, {0, 1}});
    write("d.CATPart.dat", "<DatFileVersion>\n3\n</DatFileVersion>\n<LoadType>\nlfc\n</LoadType>\n");
    sweepFailures({"VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR", ask, {}, {}, {0}});
}

TEST_F(WorkModesTest, NothingIsRememberedOfASwitchThatDidNotHappen) {
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

TEST_F(WorkModesTest, ProductsWithoutReferenceOrDocumentAndOddNames) {
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

    unsigned char answer = 7;
    EXPECT_EQ(VornToolsCommon::isCATPartInVisuModeAnActivateNode(nullptr, answer), S_OK);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(Modes::isVisualWorkMode(nullptr, answer), E_FAIL);
    EXPECT_EQ(answer, 0);
    Modes::EnumWorkMode found = Modes::WorkModeDesign;
    EXPECT_EQ(Modes::getWorkMode(nullptr, found), E_FAIL);
    EXPECT_EQ(found, Modes::WorkModeUnknown);
    EXPECT_EQ(reports(), (Texts{"VornToolsWorkModeServices::getWorkModeCAA 9001 ipi_catiproduct",
                                "VornToolsWorkModeServices::isVisualWorkMode 9004 isVisualWorkMode",
                                "VornToolsWorkModeServices::getWorkModeCAA 9001 ipi_catiproduct",
                                "VornToolsWorkModeServices::isVisualWorkMode 9004 isVisualWorkMode",
                                "VornToolsWorkModeServices::getWorkMode 9004 isVisualWorkMode"}));
    VornToolsCommon::isFileNameInVisu("", answer);
    EXPECT_EQ(answer, 1) << "no name is in none";
    session().part("/w/\xC3\x96l.CATPart");
    VornToolsCommon::isFileNameInVisu("\xC3\x96l", answer);
    EXPECT_EQ(answer, 0);
    VornToolsCommon::isFileNameInVisu("\xC3\xB6l", answer);
    EXPECT_EQ(answer, 1) << "letter case counts";
}

TEST_F(WorkModesTest, APartOfAnUnknownModeIsNotRemembered) {
    VornToolsSwitchMgt switcher{1};
    EXPECT_EQ(
        switcher.setWorkMode(bolt.get(), Modes::WorkModeVisu, static_cast<Modes::EnumWorkMode>(7), "Bolt.CATPart", 0),
        S_OK);
    CATIProduct* found = nullptr;
    EXPECT_EQ(switcher.getCATIProduct("Bolt.CATPart", found), E_FAIL);
}

} // namespace
