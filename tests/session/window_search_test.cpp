#include "tests/support/AllocationSweep.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Switches.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"
#include "embedded/Windows.h"
#include "embedded/WorkModes.h"

#include <set>

namespace {

using embedded::Windows;

const std::string kCommon = "VornToolsCommon::";

/** Two assemblies in windows: a.CATProduct holds s.1 (s.CATProduct with p.1) twice; b.CATProduct holds q.1 and v.1,
 * which v.cgr shows. */
class WindowSearchTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        first = session().product("/w/a.CATProduct");
        second = session().product("/w/b.CATProduct");
        session().product("/w/s.CATProduct").root().add(session().part("/w/P.CATPart"), "p.1");
        first.root().add(session().product("/w/s.CATProduct"), "s.1");
        first.root().add(session().product("/w/s.CATProduct"), "s.2");
        second.root().add(session().part("/w/q.CATPart"), "q.1");
        visual = second.root().addComponent("visual", "v.1");
        visual.shape("low", "/w/low.cgr").shape("high", "/w/high.cgr");
    }

    static Windows windows() { return Windows::current(); }
    /** What a search through windows hands out. */
    struct Found {
        HRESULT code = S_OK;
        int found = 7;
        CATDocument* document = nullptr;
        CATDocument* root = nullptr;
        CATIProduct* product = nullptr;
        SweepOutcome outcome;
    };
    Found search(const char* file, const char* shape = "", CATDocument* root = nullptr) {
        Found result;
        unsigned char found = 7;
        result.document = first.get();
        result.root = root;
        result.code = VornToolsCommon::analyzeWindowsInSession(file, shape, &switcher, result.document, found,
                                                               result.root, result.product);
        result.found = found;
        result.outcome = outcomeOf(result.code, result.document, result.product, result.root, found);
        if (result.product) result.product->Release();
        return result;
    }

    VornToolsSwitchMgt switcher{1};
    embedded::Document first, second;
    embedded::Product visual;
};

TEST_F(WindowSearchTest, OneRootDocumentIsSearched) {
    const auto look = [this](CATDocument* root, const char* file, CATIProduct* expected, HRESULT code = S_OK) {
        CATIProduct* product = first.root().get();
        unsigned char found = 7;
        EXPECT_EQ(VornToolsCommon::analyzeSingleWindow(root, file, "", &switcher, product, found), code) << file;
        EXPECT_EQ(product, expected) << file;
        EXPECT_EQ(found, expected ? 1 : 0) << file;
        if (product) product->Release();
    };
    look(first.get(), "A.catproduct", first.root().get());
    EXPECT_EQ(messages(), Texts({"-->document in session [/w/a.CATProduct]\n"}));
    look(first.get(), "p.CATPART", first.root().at({"s.1", "p.1"}).get());
    look(first.get(), "q.CATPart", nullptr);
    look(second.get(), "low.cgr", visual.get());
    look(second.get(), "high.cgr", nullptr);
    clearJournal();
    look(session().document("/w/d.CATDrawing").get(), "a.CATProduct", nullptr);
    EXPECT_EQ(messages(), Texts({"Unable to get CATIProduct for a.CATProduct"}));
    look(nullptr, "a.CATProduct", nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getActiveCATIProduct 9002 opi_active_product",
                                kCommon + "getActiveCATIProduct 9001 ip_active_document"}));
    look(session().part("/w/e.CATPart").withoutRoots().get(), "e.CATPart", nullptr);
    look(first.get(), "", nullptr, E_FAIL);
    EXPECT_EQ(reports(), Texts({kCommon + "getForeignFileInSession 9001 i_file_name",
                                kCommon + "analyzeSingleWindow 9003 VornToolsCommon::getForeignFileInSession"}));
}

TEST_F(WindowSearchTest, AllWindowsAreSearchedInTheirOrder) {
    windows().openDesk();
    windows().openEmpty();
    windows().open(first);
    windows().open(second);
    const Found result = search("Q.CATPart");
    EXPECT_EQ(result.code, S_OK);
    EXPECT_EQ(result.found, 1);
    EXPECT_EQ(result.document, session().find("/w/q.CATPart").get());
    EXPECT_EQ(result.root, second.get());
    EXPECT_EQ(result.product, second.root().at({"q.1"}).get());
    Texts told = messages();
    told.resize(5); // the switcher's own lines follow
    EXPECT_EQ(told, Texts({"looking for document in session [Q.CATPart]", "looking in all CATIA windows",
                           "-->document in session [/w/a.CATProduct]\n", "-->document in session [/w/b.CATProduct]\n",
                           "add file to switcher [Q.CATPart]"}));
    EXPECT_EQ(reports(), Texts({kCommon + "analyzeWindowsInSession 9003 CATFrmLayout::GetCurrentLayout"}))
        << "the window whose editor has no document";

    const Found none = search("none.CATPart");
    EXPECT_EQ(none.code, S_OK);
    EXPECT_EQ(none.found, 0);
    EXPECT_EQ(none.document, nullptr);
    EXPECT_EQ(none.root, nullptr);
    EXPECT_EQ(none.product, nullptr);
    windows().withoutLayout();
    EXPECT_EQ(search("q.CATPart").code, E_FAIL);
    EXPECT_EQ(reports(), Texts(2, kCommon + "analyzeWindowsInSession 9003 CATFrmLayout::GetCurrentLayout"));
}

TEST_F(WindowSearchTest, TheFirstWindowWithTheFileEndsTheSearch) {
    first.root().add(session().find("/w/q.CATPart"), "q.9");
    windows().open(second);
    windows().open(first);
    clearJournal();
    const Found result = search("q.CATPart");
    EXPECT_EQ(result.root, second.get());
    EXPECT_EQ(result.product, second.root().at({"q.1"}).get());
    EXPECT_FALSE(embedded::Journal::get().contains("-->document in session [/w/a.CATProduct]\n"));
}

TEST_F(WindowSearchTest, AGivenRootDocumentIsSearchedAlone) {
    windows().open(first);
    clearJournal();
    const Found other = search("P.CATPart", "", second.get());
    EXPECT_EQ(other.found, 0);
    EXPECT_EQ(other.root, second.get());
    EXPECT_EQ(messages(), Texts({"looking for document in session [P.CATPart]",
                                 "-->looking in CATIA windows identified by root document /w/b.CATProduct",
                                 "-->document in session [/w/b.CATProduct]\n"}));
    EXPECT_EQ(search("P.CATPart", "", first.get()).product, first.root().at({"s.1", "p.1"}).get());

    CATDocument* document = first.get();
    CATDocument* root = nullptr;
    CATIProduct* product = first.root().get();
    unsigned char found = 7;
    EXPECT_EQ(VornToolsCommon::analyzeWindowsInSession("P.CATPart", "", nullptr, document, found, root, product), S_OK);
    EXPECT_EQ(document, nullptr);
    EXPECT_EQ(product, nullptr);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(reports(), Texts({kCommon + "analyzeWindowsInSession 9002 ip_switcher"}));
}

TEST_F(WindowSearchTest, AForeignFileIsFoundByItsShapeAndLoaded) {
    windows().open(first);
    windows().open(second);
    const Found missing = search("LOW.cgr");
    EXPECT_EQ(missing.code, S_OK);
    EXPECT_EQ(missing.found, 1);
    EXPECT_EQ(missing.document, nullptr) << "nobody has loaded it";
    EXPECT_EQ(missing.product, visual.get());
    EXPECT_EQ(missing.root, second.get());
    EXPECT_TRUE(embedded::Journal::get().contains("Document is not found in session"));
    EXPECT_EQ(reports(), Texts({kCommon + "analyzeWindowsInSession 9002 VornToolsCommon::getDocumentInSession"}));
    EXPECT_EQ(search("high.cgr").found, 0) << "it is not the default representation";

    const auto low = session().document("/w/low.cgr");
    EXPECT_EQ(search("low.cgr").document, low.get());
    const Found named = search("high.cgr", "high");
    EXPECT_EQ(named.product, visual.get());
    EXPECT_EQ(named.document, low.get()) << "what is loaded is the default representation";
}

TEST_F(WindowSearchTest, WhatAForeignFileIsNotLoadedForIsReported) {
    windows().open(second);
    session().document("/w/low.cgr");
    embedded::Failures& failures = embedded::Failures::get();
    std::set<std::string> told;
    for (const auto flavour : {embedded::FaultFlavour::code, embedded::FaultFlavour::thrown}) {
        constexpr int kMoreThanItMakes = 100;
        for (int call = 1; call < kMoreThanItMakes; ++call) {
            failures.arm(call, false, flavour);
            search("low.cgr");
            failures.disarm();
            for (const std::string& report : reports()) told.insert(report);
        }
        EXPECT_FALSE(failures.fired());
    }
    for (const char* const call : {"getDefaultRepName", "VornToolsCommon::getShapePathName"})
        EXPECT_EQ(told.count(kCommon + "analyzeWindowsInSession 9003 " + call), 1U) << call;
}

TEST_F(WindowSearchTest, APartThatShowsAForeignFileIsLoadedForAMoment) {
    choose(&embedded::Switches::picturesAreSilent, false);
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    windows().open(second);
    const embedded::Product part = second.root().at({"q.1"});
    part.reference().shape("foreign", "/w/q.cgr");
    embedded::setWorkMode(part, embedded::WorkMode::visualisation);
    clearJournal();
    const Found missing = search("q.cgr");
    EXPECT_EQ(missing.found, 1);
    EXPECT_EQ(missing.product, part.get());
    EXPECT_EQ(missing.document, nullptr);
    EXPECT_EQ(embedded::workMode(part), embedded::WorkMode::visualisation);
    const Texts expected = {"looking for document in session [q.cgr]",
                            "looking in all CATIA windows",
                            "-->document in session [/w/b.CATProduct]\n",
                            "PERFX real switch DEFAULT",
                            "PERFX real switch",
                            "Document q.CATPart has been added, its original work mode is 1",
                            "o_default_shape_name : foreign",
                            "searching in session the document : /w/q.cgr",
                            "Document is not found in session",
                            "PERFX real switch DESIGN",
                            "PERFX real switch",
                            "searching in session the document : /w/q.cgr",
                            "PERFX real switch VISU",
                            "PERFX real switch"};
    EXPECT_EQ(messages(), expected);
    EXPECT_EQ(reports(), Texts({kCommon + "analyzeWindowsInSession 9002 VornToolsCommon::getDocumentInSession"}));

    const auto shown = session().document("/w/q.cgr");
    EXPECT_EQ(search("q.cgr").document, shown.get());
    EXPECT_EQ(embedded::workMode(part), embedded::WorkMode::standard) << "the switcher is to put it back";
    EXPECT_EQ(switcher.restoreAll(0), S_OK);
    EXPECT_EQ(embedded::workMode(part), embedded::WorkMode::visualisation);
    switcher.release();
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
}

TEST_F(WindowSearchTest, APartThatIsOnlySeenIsFoundAndLoaded) {
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    windows().open(second);
    const embedded::Product part = second.root().at({"q.1"});
    part.reference().masterShape("/w/q.CATPart");
    embedded::setWorkMode(part, embedded::WorkMode::visualisation);
    ASSERT_FALSE(session().find("/w/q.CATPart").loaded());
    const Found found = search("Q.CATPart");
    EXPECT_EQ(found.code, S_OK);
    EXPECT_EQ(found.found, 1);
    EXPECT_EQ(found.product, part.get());
    EXPECT_EQ(found.document, session().find("/w/q.CATPart").get());
    EXPECT_EQ(embedded::workMode(part), embedded::WorkMode::standard);
    EXPECT_EQ(embedded::Accounting::get().holders(), Texts({"product b/q.1: 1"})) << "the switcher puts it back";
    switcher.restoreAll(0);
    EXPECT_FALSE(session().find("/w/q.CATPart").loaded());
    switcher.release();
    EXPECT_EQ(embedded::Accounting::get().holders(), Texts());
    EXPECT_EQ(reports(), Texts());

    embedded::setSwitchOutcome(embedded::SwitchOutcome::refused);
    const Found refused = search("q.CATPart");
    EXPECT_EQ(refused.code, S_OK);
    EXPECT_EQ(refused.found, 0);
    EXPECT_EQ(refused.document, nullptr);
    EXPECT_EQ(refused.product, part.get()) << "where it was found is handed back all the same";
    EXPECT_EQ(refused.root, second.get());
    EXPECT_EQ(reports(), Texts({"VornToolsWorkModeServices::setWorkMode 9004 SetWorkMode",
                                kCommon + "getCATDocument 9002 sp_reference",
                                kCommon + "analyzeWindowsInSession 9003 VornToolsCommon::getCATDocument"}));
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
}

TEST_F(WindowSearchTest, EveryExaminedDocumentIsUnlockedOnce) {
    windows().open(first);
    windows().open(second);
    windows().lock(first);
    windows().lock(first);
    windows().lock(second);
    windows().lock(second);
    search("q.CATPart");
    EXPECT_EQ(windows().locks(first), 1);
    EXPECT_EQ(windows().locks(second), 1);
    EXPECT_EQ(search("P.CATPart", "", first.get()).found, 1);
    EXPECT_EQ(windows().locks(first), 1) << "a given root document is no window's";
    search("a.CATProduct");
    EXPECT_EQ(windows().locks(first), 0);
    EXPECT_TRUE(session().find("/w/a.CATProduct")) << "its window holds it";
    // One that nobody holds closes; no product of it may be held then, which the platform watches.
    windows().at(0).withoutHold();
    EXPECT_EQ(search("none.CATPart").found, 0);
    EXPECT_FALSE(session().find("/w/a.CATProduct"));
    EXPECT_TRUE(session().find("/w/s.CATProduct"));
    EXPECT_TRUE(session().find("/w/b.CATProduct"));
}

TEST_F(WindowSearchTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    chooseForProducts(false);
    windows().open(first);
    windows().open(second);
    const auto run = [](const char* name, std::function<SweepOutcome()> operation) {
        sweepFailures({kCommon + name, std::move(operation)});
    };
    run("analyzeSingleWindow", [this] {
        CATIProduct* product = nullptr;
        unsigned char found = 7;
        const HRESULT code =
            VornToolsCommon::analyzeSingleWindow(second.get(), "low.cgr", "", &switcher, product, found);
        const SweepOutcome outcome = outcomeOf(code, product, found);
        if (product) product->Release();
        return outcome;
    });
    const auto analyze = [this](const char* file) { return [this, file] { return search(file).outcome; }; };
    run("analyzeWindowsInSession", analyze("q.CATPart"));
    run("analyzeWindowsInSession", analyze("low.cgr"));

    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    const embedded::Product part = second.root().at({"q.1"});
    part.reference().masterShape("/w/q.CATPart").shape("foreign", "/w/q.cgr");
    session().document("/w/q.cgr");
    for (const char* const file : {"q.CATPart", "q.cgr"})
        run("analyzeWindowsInSession", [this, file, part, &analyze] {
            embedded::setWorkMode(part, embedded::WorkMode::visualisation);
            const SweepOutcome outcome = analyze(file)();
            switcher.release();
            embedded::setWorkMode(part, embedded::WorkMode::design);
            return outcome;
        });
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
}

TEST_F(WindowSearchTest, ASwitcherThatIsOffLoadsNothing) {
    choose(&embedded::Switches::picturesAreSilent, false);
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    const embedded::Product part = second.root().at({"q.1"});
    part.reference().masterShape("/w/q.CATPart").shape("foreign", "/w/q.cgr");
    windows().open(second);
    switcher.setSwitchEnabled(0);
    embedded::setWorkMode(part, embedded::WorkMode::visualisation);
    const std::size_t switches = embedded::workModeSwitches();
    for (const char* const file : {"q.CATPart", "q.cgr"}) {
        clearJournal();
        search(file);
        EXPECT_TRUE(embedded::Journal::get().contains("Switch desabled")) << file;
        EXPECT_EQ(embedded::workModeSwitches(), switches) << file;
    }
    EXPECT_EQ(embedded::workMode(part), embedded::WorkMode::visualisation);
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
    reports();
}

TEST_F(WindowSearchTest, WithoutMemoryACallFailsAndWhatItSwitchedCanBePutBack) {
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    const std::string name = "/w/" + std::string(200000, 'n') + "/n";
    const embedded::Product part = second.root().add(session().part(name + ".CATPart"), "n.1");
    part.reference().masterShape(name + ".CATPart").shape("foreign", name + ".cgr");
    windows().open(second);
    // The document of what was found is loaded, be it that it does not tell the name to remember it by.
    bool loadsDocument = false;
    const auto sweep = [&](const char* method, const std::function<HRESULT(CATIProduct*&)>& search) {
        sweepAllocations(method, [&]() -> SweepOutcome {
            embedded::setWorkMode(part, embedded::WorkMode::visualisation);
            CATIProduct* product = nullptr;
            const HRESULT code = search(product);
            if (product) product->Release();
            switcher.restoreAll(0);
            EXPECT_TRUE(loadsDocument || embedded::workMode(part) == embedded::WorkMode::visualisation);
            switcher.release();
            return {code, !product};
        });
    };
    unsigned char found = 7;
    CATDocument* document = nullptr;
    for (const CATUnicodeString& file :
         {CATUnicodeString((name + ".CATPart").c_str()), CATUnicodeString((name + ".cgr").c_str())}) {
        sweep("getProductInSession", [&](auto& product) {
            return VornToolsCommon::getProductInSession(second.root().get(), file, product, found);
        });
        sweep("getForeignFileInSession", [&](auto& product) {
            return VornToolsCommon::getForeignFileInSession(second.root().get(), file, "foreign", &switcher, product,
                                                            found);
        });
        sweep("analyzeSingleWindow", [&](auto& product) {
            return VornToolsCommon::analyzeSingleWindow(second.get(), file, "", &switcher, product, found);
        });
        loadsDocument = true;
        sweep("analyzeWindowsInSession", [&](auto& product) {
            CATDocument* root = nullptr;
            return VornToolsCommon::analyzeWindowsInSession(file, "", &switcher, document, found, root, product);
        });
        loadsDocument = false;
    }
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
}

} // namespace
