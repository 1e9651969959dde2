#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATBaseUnknown.h"
#include "CATCSO.h"
#include "CATIProduct.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATPathElement.h"
#include "VornToolsCommon.h"
#include "embedded/Windows.h"

namespace {

using embedded::SelectionPath;
using embedded::Windows;

const std::string kCommon = "VornToolsCommon::";
/** Why a question counts as failing in a sweep. */
constexpr const char* kNoCode = "it has no code: what counts is the answer";

/** r.CATProduct, shown in a window, holds g.1 (g.CATProduct with the component c.1, which holds p.1) and v.1, which a
 * visualisation file shows. */
class SelectionTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        const auto group = session().product("/w/g.CATProduct").root();
        group.addComponent("comp", "c.1").add(session().part("/w/p.CATPart"), "p.1");
        root = session().product("/w/r.CATProduct").root();
        root.add(session().product("/w/g.CATProduct"), "g.1");
        component = root.at({"g.1", "c.1"});
        part = component.at({"p.1"});
        visual = root.add(session().document("/w/v.cgr"), "v.1");
        windows().open(session().find("/w/r.CATProduct"));
    }

    static Windows windows() { return Windows::current(); }
    static Texts shown() { return embedded::Messages::get().take(); }
    /** What a method hands out, null for nothing; its reference is given back. */
    template <class T>
    static T* reached(HRESULT (*method)(T*&), HRESULT expected) {
        T* found = reinterpret_cast<T*>(1); // is to be cleared
        EXPECT_EQ(method(found), expected);
        if (found) found->Release();
        return found;
    }
    static CATIProduct* element(HRESULT expected) { return reached(&VornToolsCommon::getSelectedElement, expected); }
    static CATIProduct* productOf(const SelectionPath& path) {
        windows().clearSelection();
        windows().select(path);
        CATIProduct* found = nullptr;
        const HRESULT code = VornToolsCommon::getSelectedProduct(windows().selected(0), found);
        EXPECT_EQ(code, found ? S_OK : E_FAIL);
        if (found) found->Release();
        return found;
    }
    static std::vector<CATBaseUnknown*> products(HRESULT expected) {
        CATListPtrCATBaseUnknown list;
        list.Append(nullptr);
        EXPECT_EQ(VornToolsCommon::getSelectedProducts(list), expected);
        std::vector<CATBaseUnknown*> result;
        for (int i = 1; i <= list.Size(); ++i) {
            result.push_back(list[i]);
            list[i]->Release();
        }
        return result;
    }
    static Texts names(HRESULT expected) {
        CATListValCATUnicodeString list;
        list.Append("before");
        EXPECT_EQ(VornToolsCommon::getAllDocNameFromSelection(list), expected);
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.push_back(list[i].ConvertToChar());
        return result;
    }

    embedded::Product root, component, part, visual;
};

TEST_F(SelectionTest, APathLeadsToItsProduct) {
    const auto viewer = session().document("/w/v.cgr");
    const auto world = session().document("/w/v.wrl");
    const auto other = session().document("/w/v.model");
    const struct {
        SelectionPath path;
        CATIProduct* expected;
    } cases[] = {
        {SelectionPath(part), part.get()},
        {SelectionPath(root), root.get()},
        {SelectionPath(part).feature("Pad"), part.get()},
        {SelectionPath(part).feature("Pad").object("Edge"), part.get()},
        {SelectionPath(visual).document(viewer).object("Face"), visual.get()},
        {SelectionPath(visual).document(world).object("Face"), visual.get()},
        {SelectionPath(visual).document(other).object("Face"), nullptr},
        {SelectionPath(visual).object("Face"), nullptr},
        {SelectionPath().feature("Pad"), nullptr},
        {SelectionPath().document(viewer), nullptr},
        {SelectionPath(), nullptr},
    };
    for (const auto& row : cases) EXPECT_EQ(productOf(row.path), row.expected) << &row - cases;
    CATIProduct* found = part.get();
    EXPECT_EQ(VornToolsCommon::getSelectedProduct(nullptr, found), E_FAIL);
    EXPECT_EQ(found, nullptr);
}

TEST_F(SelectionTest, ExactlyOneProductIsSelected) {
    EXPECT_EQ(element(E_FAIL), nullptr);
    EXPECT_EQ(messages(), Texts({"No object is selected. Stop process."}));
    EXPECT_EQ(shown(), Texts({"error 1 11133"}));

    windows().select(part);
    EXPECT_EQ(element(S_OK), part.get());
    EXPECT_EQ(shown(), Texts());
    clearJournal();
    windows().select(visual);
    EXPECT_EQ(element(E_FAIL), nullptr);
    EXPECT_EQ(messages(), Texts({"More than 1 object is selected. Stop process."}));
    EXPECT_EQ(shown(), Texts({"error 1 11134"}));

    windows().clearSelection();
    windows().select(SelectionPath(visual).object("Face"));
    EXPECT_EQ(element(E_FAIL), nullptr);
    EXPECT_EQ(shown(), Texts({"error 1 11133"}));
    windows().clearSelection();
    windows().select(SelectionPath());
    EXPECT_EQ(element(E_FAIL), nullptr);
    EXPECT_EQ(shown(), Texts());
    windows().withoutSelection();
    EXPECT_EQ(element(E_FAIL), nullptr);
    windows().withoutCurrentEditor();
    EXPECT_EQ(element(E_FAIL), nullptr);
    EXPECT_EQ(reports(),
              Texts({kCommon + "getSelectedElement 9002 opi_selected_catiproduct",
                     kCommon + "getSelectedElement 9003 p_path_element->GetSize",
                     kCommon + "getSelectedElement 9003 GetCSO", kCommon + "getSelectedElement 9002 p_form_editor"}));
}

TEST_F(SelectionTest, SelectedProductsAreListedOnceInTheirOrder) {
    EXPECT_EQ(products(S_OK), std::vector<CATBaseUnknown*>());
    windows().select(visual);
    windows().select(SelectionPath(part).feature("Pad"));
    windows().select(SelectionPath(visual).object("Face"));
    windows().select(part);
    windows().select(visual);
    EXPECT_EQ(products(S_OK), std::vector<CATBaseUnknown*>({visual.get(), part.get()}));
    root.add(session().product("/w/g.CATProduct"), "g.2");
    windows().select(root.at({"g.2", "c.1", "p.1"}));
    EXPECT_EQ(products(S_OK),
              std::vector<CATBaseUnknown*>({visual.get(), part.get(), root.at({"g.2", "c.1", "p.1"}).get()}))
        << "two places of one instance are two products";
    windows().withoutSelection();
    EXPECT_EQ(products(E_FAIL), std::vector<CATBaseUnknown*>());
    windows().withoutCurrentEditor();
    EXPECT_EQ(products(E_FAIL), std::vector<CATBaseUnknown*>());
}

TEST_F(SelectionTest, TheSelectedObjectNeedNotBeAProduct) {
    const auto object = [](HRESULT expected) {
        return reached(&VornToolsCommon::getSelectedObjectFromPathElement, expected);
    };
    EXPECT_EQ(object(E_FAIL), nullptr);
    EXPECT_EQ(shown(), Texts({"error 1 11133"}));
    windows().select(SelectionPath(part).feature("Pad"));
    CATPathElement& path = *windows().selected(0);
    EXPECT_EQ(object(S_OK), path[path.GetSize() - 1]);
    windows().select(part);
    EXPECT_EQ(object(E_FAIL), nullptr);
    EXPECT_EQ(shown(), Texts({"error 1 11134"}));
    windows().clearSelection();
    windows().select(SelectionPath());
    EXPECT_EQ(object(E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getSelectedObjectFromPathElement 9003 p_path_element->GetSize"}));
    windows().withoutSelection();
    EXPECT_EQ(object(S_OK), nullptr);
    CATCSO* selection = nullptr;
    EXPECT_EQ(VornToolsCommon::getCSO(selection), S_OK);
    EXPECT_EQ(selection, nullptr);
    windows().withoutCurrentEditor();
    EXPECT_EQ(object(E_FAIL), nullptr);
    EXPECT_EQ(VornToolsCommon::getCSO(selection), E_FAIL);
}

TEST_F(SelectionTest, DocumentNamesAreThoseOfTheFilesAndComponentsAreNamedByTheirPath) {
    EXPECT_EQ(names(S_OK), Texts());
    windows().select(SelectionPath(visual).object("Face"));
    EXPECT_EQ(names(E_FAIL), Texts());
    EXPECT_EQ(messages(), Texts({"ipi_the_product is NULL"})) << "the rest is for debugging";
    windows().clearSelection();
    clearJournal();
    environment().debugMode = true;
    windows().select(part);
    windows().select(component);
    windows().select(root.at({"g.1"}));
    windows().select(part);
    windows().select(SelectionPath(visual).object("Face"));
    windows().select(visual);
    EXPECT_EQ(names(S_OK), Texts({"p.CATPart", "c.1", "g.CATProduct", "p.CATPart", "v.cgr"}))
        << "a document selected twice stands twice";
    EXPECT_EQ(messages(), Texts({"ipi_the_product is NULL", "getDocumentFileName is failed"}));
    windows().select(SelectionPath(visual).object("Face"));
    EXPECT_EQ(names(E_FAIL), Texts({"p.CATPart", "c.1", "g.CATProduct", "p.CATPart", "v.cgr"}))
        << "the code is that of the last object";
    windows().clearSelection();
    const auto bare = root.add(session().part("New.CATPart"), "n.1");
    windows().select(bare);
    windows().select(root);
    windows().select(bare);
    // Only in an assembly's document is a component named by its path.
    windows().select(session().find("/w/p.CATPart").root().addComponent("body", "b.1"));
    EXPECT_EQ(names(S_OK), Texts({"New.CATPart", "r.CATProduct", "p.CATPart"}))
        << "a name without directory is in the list already";
    windows().withoutSelection();
    EXPECT_EQ(names(E_FAIL), Texts());
}

TEST_F(SelectionTest, AFileIsSelectedThroughItsProducts) {
    EXPECT_EQ(VornToolsCommon::isSelectedInCatia("p.CATPart"), 0);
    EXPECT_EQ(messages(), Texts({"No object is selected. Stop process."}));
    windows().select(visual);
    windows().select(part);
    clearJournal();
    EXPECT_EQ(VornToolsCommon::isSelectedInCatia("p.CATPart"), 1);
    EXPECT_EQ(messages(), Texts({"Number of selected objet(s) = 2"}));
    const std::pair<const char*, int> sought[] = {{"v.cgr", 1},        {"P.CATPART", 0}, {"/w/p.CATPart", 0},
                                                  {"r.CATProduct", 0}, {"", 0},          {"\xC3\xA4.CATPart", 0}};
    for (const auto& [name, expected] : sought) EXPECT_EQ(VornToolsCommon::isSelectedInCatia(name), expected) << name;
    int answer = 7;
    EXPECT_TRUE(failAt("UTILFile::splitPathAndFileName", 1,
                       [&answer] { answer = VornToolsCommon::isSelectedInCatia("v.cgr"); }));
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(messages(),
              Texts({"Number of selected objet(s) = 2", "splitPathAndFileName is Failed. goto NEXT_ELEMENT"}));
    reports();
    windows().withoutSelection();
    EXPECT_EQ(VornToolsCommon::isSelectedInCatia("p.CATPart"), 0);
    EXPECT_EQ(reports(), Texts({kCommon + "isSelectedInCatia 9003 getCSO"}));
}

TEST_F(SelectionTest, AskingForTheRootClearsTheSelection) {
    windows().select(part);
    windows().select(root);
    windows().select(SelectionPath());
    EXPECT_EQ(VornToolsCommon::isCatiaDocumentSelected(), 1);
    EXPECT_EQ(messages(), Texts({"p_current_path_element->GetSize() is : 4", "p_current_path_element->GetSize() is : 1",
                                 "the CATIA document is selected", "p_current_path_element->GetSize() is : 0"}));
    EXPECT_EQ(windows().selectedCount(), 0U);
    windows().select(part);
    EXPECT_EQ(VornToolsCommon::isCatiaDocumentSelected(), 0);
    EXPECT_EQ(windows().selectedCount(), 0U);
    windows().withoutCurrentEditor();
    EXPECT_EQ(VornToolsCommon::isCatiaDocumentSelected(), 0);
}

TEST_F(SelectionTest, ClassesCountWithThoseTheyDeriveFrom) {
    const auto isSelected = [](const char* name) { return VornToolsCommon::isElementSelectedInProcessDocument(name); };
    EXPECT_EQ(isSelected("PPRActivity"), 0);
    windows().select(part);
    windows().select(SelectionPath());
    windows().select(SelectionPath().object("Welding", "PPRActivity"));
    windows().select(SelectionPath());
    EXPECT_EQ(isSelected("PPRActivity"), 1);
    EXPECT_EQ(isSelected("Welding"), 1);
    EXPECT_EQ(reports(), Texts(2, kCommon + "isElementSelectedInProcessDocument 9001 p_path_element"));
    EXPECT_EQ(isSelected("pprActivity"), 0);
    EXPECT_EQ(reports(), Texts(2, kCommon + "isElementSelectedInProcessDocument 9001 p_path_element"))
        << "none was found, so the last path was looked at, too";
    EXPECT_EQ(isSelected(nullptr), 0);
    windows().withoutSelection();
    EXPECT_EQ(isSelected("Welding"), 0);
    EXPECT_EQ(reports(), Texts({kCommon + "isElementSelectedInProcessDocument 9001 i_class_name",
                                kCommon + "isElementSelectedInProcessDocument 9003 getCSO"}));
}

TEST_F(SelectionTest, TreesAreCentredInGraphicWindows) {
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(), S_OK);
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(windows().active().get()), S_OK);
    EXPECT_EQ(windows().centred(), Texts(2, "OnCSO /w/r.CATProduct"));
    clearJournal();
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(nullptr), E_FAIL);
    EXPECT_EQ(messages(), Texts({"ip_active_window is NULL."}));

    windows().active().withoutNavigationBox();
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(), E_FAIL);
    windows().open(session().document("/w/d.CATDrawing"), embedded::WindowKind::plain);
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(), E_FAIL);
    while (windows().count() > 0) windows().close(windows().at(0));
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(), E_FAIL);
    windows().withoutLayout();
    EXPECT_EQ(VornToolsCommon::centerGraphOnSelection(), E_FAIL);
    const std::string method = kCommon + "centerGraphOnSelection ";
    EXPECT_EQ(reports(),
              Texts({method + "9002 p_navig_box", method + "9002 p_graphic_window", method + "9003 GetCurrentWindow",
                     method + "9002 p_active_window", method + "9001 p_layout"}));
    EXPECT_EQ(windows().centred().size(), 2U);
}

TEST_F(SelectionTest, ANameThatCannotBeSplitIsReportedAndLeftOut) {
    windows().select(part);
    CATListValCATUnicodeString list;
    HRESULT code = S_OK;
    EXPECT_TRUE(
        failAt("UTILFile::splitPathAndFileName", 1, [&] { code = VornToolsCommon::getAllDocNameFromSelection(list); }));
    EXPECT_EQ(code, E_FAIL);
    EXPECT_EQ(list.Size(), 0);
    EXPECT_EQ(reports(), Texts({kCommon + "getAllDocNameFromSelection 9003 UTILFile::splitPathAndFileName"}));
}

TEST_F(SelectionTest, ReframingStartsTheCommandByItsTitle) {
    const char* const key = "CATFrmCmdHeader.ReframeOnHSO.Title";
    EXPECT_EQ(VornToolsCommon::reframeOn(), S_OK);
    const struct {
        const char *call, *report;
    } failures[] = {{"CATApplicationFrame::GetFrame", "9002 p_frame"},
                    {"QueryInterface(CATIAApplication)", "9002 pi_application"},
                    {"CATIAApplication::StartCommand", "9004 StartCommand"}};
    for (const auto& c : failures) {
        EXPECT_TRUE(failAt(c.call, 1, [] { VornToolsCommon::reframeOn(); })) << c.call;
        EXPECT_EQ(reports(), Texts({kCommon + "reframeOn " + c.report}));
    }
    windows().message("CATFrmCmdHeader", key,
                      "Zentrieren \xC3\xBC"
                      "ber");
    EXPECT_EQ(VornToolsCommon::reframeOn(), S_OK);
    windows().message("CATFrmCmdHeader", key, "");
    EXPECT_EQ(VornToolsCommon::reframeOn(), S_OK);
    EXPECT_EQ(windows().startedCommands(), Texts({"Reframe On", "Zentrieren \xC3\xBC"
                                                                "ber"}));
}

TEST_F(SelectionTest, WithoutMemoryNothingIsSelected) {
    const std::string name = std::string(kLargeAllocation, 'n') + ".CATPart";
    windows().select(root.add(session().part("/w/" + name), "n.1"));
    for (const std::string& sought : {name, name + "x"})
        sweepAllocations("isSelectedInCatia", [&] {
            const int is_selected = VornToolsCommon::isSelectedInCatia(sought.c_str());
            return SweepOutcome{is_selected ? S_OK : E_FAIL, true, is_selected};
        });
    sweepAllocations("getAllDocNameFromSelection", [] {
        CATListValCATUnicodeString names;
        const HRESULT code = VornToolsCommon::getAllDocNameFromSelection(names);
        return outcomeOf(code, names);
    });
}

TEST_F(SelectionTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    windows().select(SelectionPath(visual).document(session().find("/w/v.cgr")).object("Face"));
    CATPathElement* const path = windows().selected(0);
    const auto run = [](const char* name, std::function<SweepOutcome()> operation) {
        sweepFailures({kCommon + name, std::move(operation)});
    };
    const auto runForProduct = [&](const char* name, auto method) {
        run(name, [=] {
            CATIProduct* found = nullptr;
            const HRESULT code = method(found);
            const SweepOutcome outcome = outcomeOf(code, found);
            if (found) found->Release();
            return outcome;
        });
    };
    runForProduct("getSelectedProduct", [=](auto& out) { return VornToolsCommon::getSelectedProduct(path, out); });
    runForProduct("getSelectedElement", [](auto& out) { return VornToolsCommon::getSelectedElement(out); });
    run("getSelectedObjectFromPathElement", [] {
        CATBaseUnknown* found = nullptr;
        const HRESULT code = VornToolsCommon::getSelectedObjectFromPathElement(found);
        const SweepOutcome outcome = outcomeOf(code, found);
        if (found) found->Release();
        return outcome;
    });
    run("getCSO", [] {
        CATCSO* found = nullptr;
        const HRESULT code = VornToolsCommon::getCSO(found);
        return outcomeOf(code, found);
    });
    windows().select(component);
    run("getSelectedProducts", [] {
        CATListPtrCATBaseUnknown list;
        const HRESULT code = VornToolsCommon::getSelectedProducts(list);
        const SweepOutcome outcome = outcomeOf(code, list);
        for (int i = 1; i <= list.Size(); ++i) list[i]->Release();
        return outcome;
    });
    run("getAllDocNameFromSelection", [] {
        CATListValCATUnicodeString list;
        list.Append("before");
        const HRESULT code = VornToolsCommon::getAllDocNameFromSelection(list);
        return SweepOutcome{code, list.Locate("before") == 0, 0, textOfOutputs(list)};
    });
    const auto runQuestion = [](const char* name, auto question, std::function<void()> restore = {}) {
        sweepFailures({kCommon + name,
                       [=] {
                           return SweepOutcome{E_FAIL, true, question()};
                       },
                       restore,
                       {},
                       {0},
                       kNoCode});
    };
    const auto runYes = [](const char* name, std::function<int()> question) {
        sweepFailures({kCommon + name,
                       [=] {
                           return SweepOutcome{E_FAIL, true, question()};
                       },
                       {},
                       {},
                       {0, 1},
                       kNoCode});
    };
    runQuestion("isSelectedInCatia", [] { return VornToolsCommon::isSelectedInCatia("none.CATPart"); });
    runQuestion("isElementSelectedInProcessDocument",
                [] { return VornToolsCommon::isElementSelectedInProcessDocument("PPRActivity"); });
    runYes("isSelectedInCatia", [] { return VornToolsCommon::isSelectedInCatia("v.cgr"); });
    runYes("isElementSelectedInProcessDocument",
           [] { return VornToolsCommon::isElementSelectedInProcessDocument("Face"); });
    run("centerGraphOnSelection", [] { return SweepOutcome{VornToolsCommon::centerGraphOnSelection()}; });
    run("reframeOn", [] { return SweepOutcome{VornToolsCommon::reframeOn()}; });
    for (const embedded::Product& selected : {part, root})
        sweepFailures({kCommon + "isCatiaDocumentSelected",
                       [] {
                           return SweepOutcome{E_FAIL, true, VornToolsCommon::isCatiaDocumentSelected()};
                       },
                       [&selected] {
                           windows().clearSelection();
                           windows().select(selected);
                       },
                       {},
                       selected == root ? std::vector<int>{0, 1} : std::vector<int>{0},
                       kNoCode});
}

TEST_F(SelectionTest, WithoutMemoryNoProductIsLeftHeld) {
    windows().select(visual);
    windows().select(part);
    constexpr std::size_t kAny = 1;
    sweepAllocations(
        "getSelectedProducts",
        [] {
            CATListPtrCATBaseUnknown found;
            const HRESULT code = VornToolsCommon::getSelectedProducts(found);
            for (int i = 1; i <= found.Size(); ++i) found[i]->Release();
            return SweepOutcome{code, found.Size() == 0, found.Size()};
        },
        kAny);
    sweepAllocations(
        "isSelectedInCatia",
        [] {
            const bool is = VornToolsCommon::isSelectedInCatia("p.CATPart") != 0;
            embedded::ErrorReports::get().take();
            return SweepOutcome{is ? S_OK : E_FAIL};
        },
        kAny);
}

} // namespace
