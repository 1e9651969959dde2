#include "tests/session/WorkModesFixture.h"
#include "tests/support/Utf8.h"

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "embedded/Failures.h"

#include <set>

namespace {

using WorkModeQuestionsTest = WorkModesTest;

TEST_F(WorkModeQuestionsTest, QuestionsOfTheSession) {
    unsigned char answer = 7;
    EXPECT_EQ(VornToolsCommon::isCATPartInVisuModeAnActivateNode(bolt.get(), answer), S_OK);
    EXPECT_EQ(answer, 1);
    embedded::setUnknownWorkMode(bolt, 9);
    VornToolsCommon::isCATPartInVisuModeAnActivateNode(bolt.get(), answer);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(VornToolsCommon::isCATPartInVisuModeAnActivateNode(nullptr, answer), S_OK);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(reports(), (Texts{"VornToolsWorkModeServices::getWorkModeCAA 9006 9",
                                "VornToolsWorkModeServices::getWorkModeCAA 9001 ipi_catiproduct"}));

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
    VornToolsCommon::isFileNameInVisu("/w/Bolt", answer);
    EXPECT_EQ(answer, 0) << "a name begins with it";
    VornToolsCommon::isFileNameInVisu("", answer);
    EXPECT_EQ(answer, 1) << "no name is in none";
    session().part("/w/\xC3\x96l.CATPart");
    VornToolsCommon::isFileNameInVisu(utf8("\xC3\x96l"), answer);
    EXPECT_EQ(answer, 0);
    VornToolsCommon::isFileNameInVisu(utf8("\xC3\xB6l"), answer);
    EXPECT_EQ(answer, 1) << "letter case counts";
}

TEST_F(WorkModeQuestionsTest, APartIsInVisualisationWhileNoPlaceLoadsIt) {
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

TEST_F(WorkModeQuestionsTest, WhatADocumentWasLoadedFor) {
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
    const auto document = session().part(name);
    VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(name.c_str(), document.get(), loaded);
    EXPECT_EQ(reports(), Texts());
    embedded::Failures& failures = embedded::Failures::get();
    std::set<std::string> told;
    constexpr int kMoreThanItMakes = 50;
    for (int call = 1; call < kMoreThanItMakes; ++call) {
        failures.arm(call, false, embedded::FaultFlavour::code);
        VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(name.c_str(), document.get(), loaded);
        failures.disarm();
        for (const std::string& report : reports()) told.insert(report);
    }
    EXPECT_EQ(told.count("VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR 9003 getDocUUID"), 1U);
}

TEST_F(WorkModeQuestionsTest, NoFaultInventsAnAnswer) {
    sweepFailures({"VornToolsCommon::isCATPartInVisuModeAnActivateNode",
                   [&]() -> SweepOutcome {
                       unsigned char answer = 7;
                       const HRESULT code = VornToolsCommon::isCATPartInVisuModeAnActivateNode(bolt.get(), answer);
                       return {code, true, answer};
                   },
                   {},
                   {},
                   {0}});
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

} // namespace
