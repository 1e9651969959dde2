#include "tests/support/AllocationSweep.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATFrmWindow.h"
#include "VornToolsCommon.h"
#include "embedded/SessionFile.h"
#include "embedded/Windows.h"

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

TEST_F(WindowsTest, ADocumentWithoutFileNameHasNoName) {
    const auto folder = session().document("/w/folder/");
    CATFrmWindow* const window = windows().open(folder).get();
    CATUnicodeString name("before");
    CATDocument* document = nullptr;
    EXPECT_EQ(VornToolsCommon::getDocumentFromWindow(window, document), S_OK);
    EXPECT_EQ(document, folder.get());
    EXPECT_EQ(VornToolsCommon::getDocumentAndNameFromWindow(window, name, document), E_FAIL);
    EXPECT_EQ(name, "");
    EXPECT_EQ(document, nullptr);
    EXPECT_EQ(rootNames(), Texts());
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
        return outcomeOf(code, document);
    });
    run("getDocumentNameFromWindow", [=] {
        CATUnicodeString name("before");
        const HRESULT code = VornToolsCommon::getDocumentNameFromWindow(window, name);
        return outcomeOf(code, name);
    });
    run("getDocumentAndNameFromWindow", [=] {
        CATUnicodeString name("before");
        CATDocument* document = nullptr;
        const HRESULT code = VornToolsCommon::getDocumentAndNameFromWindow(window, name, document);
        return outcomeOf(code, name, document);
    });
    run("getAllRootDocuments", [] {
        CATListPtrCATDocument list;
        list.Append(nullptr);
        const HRESULT code = VornToolsCommon::getAllRootDocuments("", list, 0);
        return outcomeOf(code, list);
    });
    sweepFailures({kCommon + "isADocumentWindowOpened",
                   [] {
                       return SweepOutcome{E_FAIL, true, VornToolsCommon::isADocumentWindowOpened()};
                   },
                   {},
                   {},
                   {0, 1},
                   "it has no code: what counts is the answer"});
    run("getAllRootDocNameFromWindows", [] {
        CATListValCATUnicodeString list;
        const HRESULT code = VornToolsCommon::getAllRootDocNameFromWindows(list);
        return outcomeOf(code, list);
    });
    run("activateWindowInCATIA", [] { return SweepOutcome{VornToolsCommon::activateWindowInCATIA("b.CATProduct")}; });
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
                   {0},
                   "it has no code: what counts is the answer"});
}

TEST_F(WindowsTest, WithoutMemoryThereIsNoList) {
    windows().open(session().product("/w/" + std::string(kLargeAllocation, 'n') + ".CATProduct"));
    windows().open(first); // is listed in front of it
    sweepAllocations("getAllRootDocNameFromWindows", [] {
        CATListValCATUnicodeString names;
        const HRESULT code = VornToolsCommon::getAllRootDocNameFromWindows(names);
        return SweepOutcome{code, names.Size() == 0};
    });
}

} // namespace
