#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATFrmWindow.h"
#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"
#include "embedded/SessionFile.h"
#include "embedded/Windows.h"
#include "embedded/WorkModes.h"

namespace {

using embedded::SelectionPath;
using embedded::WindowKind;
using embedded::Windows;

const std::string kCommon = "VornToolsCommon::";

/** Two assemblies in windows: a.CATProduct holds s.1 (s.CATProduct with p.1) twice; b.CATProduct holds q.1 and v.1,
 * which v.cgr shows. */
class WindowsTest : public PlatformTest {
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
    static Texts rootNames(HRESULT expected = S_OK) {
        CATListValCATUnicodeString list;
        list.Append("before");
        EXPECT_EQ(VornToolsCommon::getAllRootDocNameFromWindows(list), expected);
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.push_back(list[i].ConvertToChar());
        return result;
    }
    Texts roots(const char* filter, bool duplicates, HRESULT expected = S_OK) {
        CATListPtrCATDocument list;
        list.Append(nullptr);
        EXPECT_EQ(VornToolsCommon::getAllRootDocuments(filter, list, duplicates ? 1 : 0), expected);
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.push_back(list[i]->StorageName().ConvertToChar());
        return result;
    }

    /** What a search through windows hands out. */
    struct Found {
        HRESULT code = S_OK;
        int found = 7;
        CATDocument* document = nullptr;
        CATDocument* root = nullptr;
        CATIProduct* product = nullptr;
    };
    Found search(const char* file, const char* shape = "", CATDocument* root = nullptr) {
        Found result;
        unsigned char found = 7;
        result.document = first.get();
        result.root = root;
        result.code = VornToolsCommon::analyzeWindowsInSession(file, shape, &switcher, result.document, found,
                                                               result.root, result.product);
        result.found = found;
        if (result.product) result.product->Release();
        return result;
    }

    VornToolsSwitchMgt switcher{1};
    embedded::Document first, second;
    embedded::Product visual;
};

TEST_F(WindowsTest, AWindowShowsTheDocumentOfItsEditor) {
    const auto drawing = session().document("New.CATDrawing");
    const struct {
        CATFrmWindow* window;
        CATDocument* document;
        const char* name;
    } cases[] = {
        {windows().open(first).get(), first.get(), "a.CATProduct"},
        {windows().open(drawing, WindowKind::plain).get(), drawing.get(), "New.CATDrawing"},
        {windows().openEmpty().get(), nullptr, ""},
        {windows().openWithoutEditor().get(), nullptr, ""},
        {windows().openDesk().get(), nullptr, ""},
        {nullptr, nullptr, ""},
    };
    for (const auto& row : cases) {
        const HRESULT expected = row.document ? S_OK : E_FAIL;
        CATDocument* document = second.get();
        EXPECT_EQ(VornToolsCommon::getDocumentFromWindow(row.window, document), expected);
        EXPECT_EQ(document, row.document);
        CATUnicodeString name("before");
        EXPECT_EQ(VornToolsCommon::getDocumentNameFromWindow(row.window, name), expected);
        EXPECT_STREQ(name.ConvertToChar(), row.name);
        name = "before";
        document = second.get();
        EXPECT_EQ(VornToolsCommon::getDocumentAndNameFromWindow(row.window, name, document), expected);
        EXPECT_STREQ(name.ConvertToChar(), row.name);
        EXPECT_EQ(document, row.document);
    }
    EXPECT_EQ(reports(), Texts({kCommon + "getDocumentFromWindow 9001 ip_window",
                                kCommon + "getDocumentNameFromWindow 9001 ip_window",
                                kCommon + "getDocumentAndNameFromWindow 9001 ip_window"}));
}

TEST_F(WindowsTest, RootDocumentsAreListedByTheirWindows) {
    EXPECT_EQ(rootNames(), Texts());
    EXPECT_EQ(roots("", false), Texts());
    windows().open(first);
    windows().open(session().document("/w/notes.txt"), WindowKind::plain);
    windows().open(second).minimised(true);
    windows().openDesk();
    windows().open(first);
    EXPECT_EQ(rootNames(), Texts({"a.CATProduct", "b.CATProduct", "notes.txt", "a.CATProduct"})) << "newest first";
    clearJournal();
    EXPECT_EQ(roots("", false), Texts({"/w/a.CATProduct", "/w/b.CATProduct"}));
    EXPECT_EQ(messages(), Texts({"[a.CATProduct] is a root document", "[b.CATProduct] is a root document"}));
    EXPECT_EQ(roots("", true), Texts({"/w/a.CATProduct", "/w/b.CATProduct", "/w/a.CATProduct"}));
    EXPECT_EQ(roots("B.catproduct", false), Texts({"/w/b.CATProduct"}));
    EXPECT_EQ(roots("/w/b.CATProduct", false), Texts()) << "names are those of the files";
    windows().openDesk();
    EXPECT_EQ(roots("none.CATPart", false, E_FAIL), Texts()) << "the code is that of the last window";
    EXPECT_EQ(VornToolsCommon::isADocumentWindowOpened(), 1);

    windows().withoutLayout();
    EXPECT_EQ(rootNames(), Texts());
    EXPECT_EQ(roots("", false, E_FAIL), Texts());
    EXPECT_EQ(VornToolsCommon::isADocumentWindowOpened(), 0);
    EXPECT_EQ(reports(), Texts({kCommon + "getAllRootDocNameFromWindows 9001 p_layout",
                                kCommon + "getAllRootDocuments 9001 p_layout"}));
}

TEST_F(WindowsTest, OnlyManagedDocumentsCountAsOpen) {
    EXPECT_EQ(VornToolsCommon::isADocumentWindowOpened(), 0);
    windows().openDesk();
    windows().openEmpty();
    windows().open(session().document("/w/notes.txt"));
    EXPECT_EQ(VornToolsCommon::isADocumentWindowOpened(), 0);
    windows().open(second);
    EXPECT_EQ(VornToolsCommon::isADocumentWindowOpened(), 1);
}

TEST_F(WindowsTest, TheDeskIsToldByItsClass) {
    const auto desk = [] {
        unsigned char answer = 7;
        EXPECT_EQ(VornToolsCommon::desktopIsActiveWindow(answer), S_OK);
        return static_cast<int>(answer);
    };
    EXPECT_EQ(desk(), 0);
    windows().openDesk();
    EXPECT_EQ(desk(), 1);
    windows().open(first);
    EXPECT_EQ(desk(), 0);
    windows().withoutLayout();
    EXPECT_EQ(desk(), 0);
}

TEST_F(WindowsTest, TheFirstWindowOfAFileComesToTheFront) {
    const auto bring = [](const char* name) { return VornToolsCommon::activateWindowInCATIA(name); };
    EXPECT_EQ(bring("a.CATProduct"), E_FAIL);
    const auto shown = windows().open(first);
    windows().openDesk();
    windows().open(second);
    const auto last = windows().open(first);
    clearJournal();
    EXPECT_EQ(bring("A.catproduct"), S_OK);
    EXPECT_TRUE(windows().active() == shown);
    EXPECT_EQ(messages(), Texts({"Activing [a.CATProduct]"}));
    EXPECT_EQ(bring("/elsewhere\\b.CATProduct"), S_OK);
    EXPECT_EQ(windows().active().document().name(), "/w/b.CATProduct");
    EXPECT_EQ(reports(), Texts({kCommon + "activateWindowInCATIA 9004 getDocumentNameFromWindow"}));
    windows().activate(last);
    for (const char* name : {"none.CATPart", "", "s.CATProduct"}) EXPECT_EQ(bring(name), E_FAIL) << name;
    EXPECT_EQ(reports(), Texts(3, kCommon + "activateWindowInCATIA 9004 getDocumentNameFromWindow"));
    EXPECT_TRUE(windows().active() == last);
    windows().withoutLayout();
    EXPECT_EQ(bring("a.CATProduct"), E_FAIL);
    EXPECT_EQ(reports(), Texts({kCommon + "activateWindowInCATIA 9001 p_layout"}));
}

TEST_F(WindowsTest, OneRootDocumentIsSearched) {
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

TEST_F(WindowsTest, AllWindowsAreSearchedInTheirOrder) {
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

TEST_F(WindowsTest, AGivenRootDocumentIsSearchedAlone) {
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

TEST_F(WindowsTest, AForeignFileIsFoundByItsShapeAndLoaded) {
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

TEST_F(WindowsTest, APartThatIsOnlySeenIsFoundAndLoaded) {
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
    switcher.restoreAll(0);
    EXPECT_FALSE(session().find("/w/q.CATPart").loaded());
    EXPECT_EQ(reports(), Texts());

    embedded::setSwitchOutcome(embedded::SwitchOutcome::refused);
    const Found refused = search("/w/q.CATPart");
    EXPECT_EQ(refused.code, S_OK);
    EXPECT_EQ(refused.found, 0);
    EXPECT_EQ(refused.product, nullptr);
    EXPECT_EQ(refused.document, nullptr);
    EXPECT_EQ(reports(), Texts({"VornToolsWorkModeServices::setWorkMode 9004 SetWorkMode",
                                kCommon + "getCATDocument 9002 sp_reference",
                                kCommon + "analyzeWindowsInSession 9003 VornToolsCommon::getCATDocument"}));
    const auto find = [this] {
        CATIProduct* product = nullptr;
        unsigned char answer = 7;
        const HRESULT code = VornToolsCommon::getProductInSession(second.root().get(), "q.CATPart", product, answer);
        const SweepOutcome outcome{code, !product && !answer, answer};
        if (product) product->Release();
        return outcome;
    };
    sweepFailures({kCommon + "getProductInSession", find});
    part.reference().masterShape("");
    sweepFailures({kCommon + "getProductInSession", find, {}, {}, {0}});
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
}

TEST_F(WindowsTest, EveryExaminedDocumentIsUnlockedOnce) {
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

TEST_F(WindowsTest, ASessionFileKeepsWindowsAndSelection) {
    windows().open(first);
    windows().select(SelectionPath(first.root().at({"s.1", "p.1"})).feature("Pad").object("Edge", "Topology"));
    windows().select(SelectionPath());
    windows().open(second).minimised(true).withoutHold().withoutNavigationBox();
    windows().select(SelectionPath(visual).document(session().document("/w/low.cgr")));
    windows().openEmpty();
    windows().withoutSelection();
    windows().openDesk();
    windows().activate(windows().at(1));
    windows().message("CATFrmCmdHeader", "CATFrmCmdHeader.ReframeOnHSO.Title", "Recadrer sur");
    windows().lock(second);
    windows().lock(second);
    const std::string digest = session().digest();
    ASSERT_EQ(embedded::saveSession(path("s.json")).error, "");
    EXPECT_EQ(session().digest(), digest);
    ASSERT_EQ(embedded::loadSession(path("s.json")).error, "");
    EXPECT_EQ(session().digest(), digest);
    windows().withoutLayout().withoutCurrentEditor().withoutSession();
    const std::string bare = session().digest();
    EXPECT_NE(bare, digest);
    ASSERT_EQ(embedded::saveSession(path("s.json")).error, "");
    ASSERT_EQ(embedded::loadSession(path("s.json")).error, "");
    EXPECT_EQ(session().digest(), bare);

    const std::pair<const char*, const char*> faults[] = {
        {"{\"windows\": [{\"kind\": \"round\"}]}",
         "s.json:1: windows[0].kind: \"graphic\", \"plain\" or \"desk\" is expected"},
        {"{\"windows\": [{\"active\": true}, {\"active\": true}]}",
         "s.json:1: windows[1].active: a second active window"},
        {"{\"windows\": [{\"document\": \"x\"}]}", "s.json:1: windows[0].document: no document named 'x'"},
        {"{\"windows\": [{\"document\": \"x\", \"without\": [\"editor\"]}]}",
         "s.json:1: windows[0].document: a window without editor shows no document"},
        {"{\"frame\": {\"without\": [\"roof\"]}}",
         "s.json:1: frame.without[0]: nothing named 'roof' can be missing here"},
        {"{\"selection\": [{\"elements\": [[{}]]}]}",
         "s.json:1: selection[0].elements[0][0]: one of \"product\", \"document\", \"feature\" and \"object\" is "
         "expected"},
    };
    for (const auto& [text, error] : faults) EXPECT_EQ(embedded::loadSessionText("s.json", text).error, error);
}

TEST_F(WindowsTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    windows().open(first);
    CATFrmWindow* const window = windows().open(second).get();
    const auto run = [](const char* name, std::function<SweepOutcome()> operation) {
        sweepFailures({kCommon + name, std::move(operation)});
    };
    run("getDocumentFromWindow", [=] {
        CATDocument* document = nullptr;
        const HRESULT code = VornToolsCommon::getDocumentFromWindow(window, document);
        return SweepOutcome{code, document == nullptr};
    });
    run("getDocumentNameFromWindow", [=] {
        CATUnicodeString name("before");
        const HRESULT code = VornToolsCommon::getDocumentNameFromWindow(window, name);
        return SweepOutcome{code, name.IsNull() != 0};
    });
    run("getDocumentAndNameFromWindow", [=] {
        CATUnicodeString name("before");
        CATDocument* document = nullptr;
        const HRESULT code = VornToolsCommon::getDocumentAndNameFromWindow(window, name, document);
        return SweepOutcome{code, name.IsNull() && !document};
    });
    run("getAllRootDocuments", [] {
        CATListPtrCATDocument list;
        list.Append(nullptr);
        const HRESULT code = VornToolsCommon::getAllRootDocuments("", list, 0);
        return SweepOutcome{code, list.Size() == 0};
    });
    run("isADocumentWindowOpened", [] {
        return SweepOutcome{E_FAIL, true, VornToolsCommon::isADocumentWindowOpened()};
    });
    run("getAllRootDocNameFromWindows", [] {
        CATListValCATUnicodeString list;
        return SweepOutcome{VornToolsCommon::getAllRootDocNameFromWindows(list)};
    });
    run("activateWindowInCATIA", [] { return SweepOutcome{VornToolsCommon::activateWindowInCATIA("b.CATProduct")}; });
    run("analyzeSingleWindow", [this] {
        CATIProduct* product = nullptr;
        unsigned char found = 7;
        const HRESULT code =
            VornToolsCommon::analyzeSingleWindow(second.get(), "low.cgr", "", &switcher, product, found);
        const SweepOutcome outcome{code, !product && !found};
        if (product) product->Release();
        return outcome;
    });
    const auto analyze = [this](const char* file) {
        return [this, file] {
            const Found result = search(file);
            return SweepOutcome{result.code, !result.document && !result.product && !result.root && !result.found};
        };
    };
    run("analyzeWindowsInSession", analyze("q.CATPart"));
    run("analyzeWindowsInSession", analyze("low.cgr"));
}

TEST_F(WindowsTest, NoFaultInventsAnAnswer) {
    const auto desk = [] {
        unsigned char answer = 7;
        const HRESULT code = VornToolsCommon::desktopIsActiveWindow(answer);
        return SweepOutcome{code, true, answer};
    };
    windows().openDesk();
    sweepFailures({kCommon + "desktopIsActiveWindow", desk, {}, {}, {0}});
    windows().open(session().document("/w/notes.txt"), WindowKind::plain);
    sweepFailures({kCommon + "desktopIsActiveWindow", desk, {}, {}, {0}});
    sweepFailures({kCommon + "isADocumentWindowOpened",
                   [] {
                       return SweepOutcome{E_FAIL, true, VornToolsCommon::isADocumentWindowOpened()};
                   },
                   {},
                   {},
                   {0}});
}

} // namespace
