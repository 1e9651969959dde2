// Windows, what is selected in them, and the documents that they keep open.
#include "tests/support/Fixture.h"

#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIProduct.h"
#include "CATMsgCatalog.h"
#include "CATPathElement.h"
#include "CATSessionServices.h"
#include "embedded/SessionFile.h"
#include "embedded/Windows.h"

namespace {

using embedded::Windows;

class WindowObjectsTest : public PlatformTest {
protected:
    static Windows windows() { return Windows::current(); }
    static Texts breaches() { return embedded::Accounting::get().takeBreaches(); }
};

TEST_F(WindowObjectsTest, TheLayoutListsWindowsByTypeAndTimeOfActivation) {
    const auto first = windows().open(session().part("/w/a.CATPart")).minimised(true);
    const auto second = windows().open(session().part("/w/b.CATPart"));
    const auto third = windows().open(session().part("/w/c.CATPart"));
    const auto list = [](int type, int sort) {
        const CATListPtrCATFrmWindow found = CATFrmLayout::GetCurrentLayout()->GetWindowList(type, sort);
        std::vector<CATFrmWindow*> result;
        for (int i = 1; i <= found.Size(); ++i) result.push_back(found[i]);
        return result;
    };
    using List = std::vector<CATFrmWindow*>;
    EXPECT_EQ(list(0, 0), List({first.get(), second.get(), third.get()}));
    EXPECT_EQ(list(0, 2), List({third.get(), second.get(), first.get()}));
    EXPECT_EQ(list(1, 0), List({second.get(), third.get()}));
    EXPECT_EQ(list(2, 0), List({first.get()}));
    CATFrmLayout::GetCurrentLayout()->SetCurrentWindow(first.get());
    windows().activate(second);
    EXPECT_EQ(list(0, 1), List({third.get(), first.get(), second.get()}));
    std::string text;
    ASSERT_TRUE(embedded::sessionText(text).ok);
    ASSERT_TRUE(embedded::loadSessionText("s", text).ok);
    const Texts newestFirst = {"/w/b.CATPart", "/w/a.CATPart", "/w/c.CATPart"};
    Texts loaded;
    for (CATFrmWindow* const window : list(0, 2))
        loaded.emplace_back(window->GetEditor()->GetDocument()->StorageName().ConvertToChar());
    EXPECT_EQ(loaded, newestFirst);
    windows().close(windows().active());
    EXPECT_EQ(windows().active().document().name(), "/w/a.CATPart") << "the one that was active before";
}

TEST_F(WindowObjectsTest, WindowsOfADocumentShareItsEditor) {
    const auto part = session().part("/w/a.CATPart");
    CATFrmEditor* const editor = windows().open(part).get()->GetEditor();
    windows().openDesk();
    EXPECT_EQ(CATFrmEditor::GetCurrentEditor(), nullptr);
    EXPECT_EQ(windows().open(part).get()->GetEditor(), editor);
    EXPECT_EQ(CATFrmEditor::GetCurrentEditor(), editor);
}

TEST_F(WindowObjectsTest, ADocumentClosesWithItsLastHolder) {
    const auto part = session().part("/w/a.CATPart");
    const auto used = session().part("/w/used.CATPart");
    session().product("/w/r.CATProduct").root().add(used, "u.1");
    CATDocument& document = *part.get();
    windows().lock(part);
    windows().close(windows().open(part));
    EXPECT_TRUE(session().find("/w/a.CATPart")) << "locked";
    windows().lock(part);
    EXPECT_EQ(CATUnLockDocument(document), S_OK);
    EXPECT_TRUE(session().find("/w/a.CATPart"));
    EXPECT_EQ(CATUnLockDocument(*used.get()), S_OK);
    EXPECT_TRUE(session().find("/w/used.CATPart")) << "an assembly uses it";
    EXPECT_EQ(breaches(), Texts());

    CATIProduct* const held = part.root().get();
    held->AddRef();
    EXPECT_EQ(CATUnLockDocument(document), S_OK);
    EXPECT_FALSE(session().find("/w/a.CATPart"));
    EXPECT_EQ(breaches(), Texts({"document /w/a.CATPart is closed while somebody holds product a"}));
    held->Release();
    document.StorageName();
    CATUnLockDocument(document);
    EXPECT_EQ(breaches(), Texts({"use after release of document /w/a.CATPart in CATDocument::StorageName",
                                 "a document that is not in session is unlocked"}));
}

TEST_F(WindowObjectsTest, WhatIsNoLongerSelectedMustNotBeUsed) {
    windows().open(session().part("/w/a.CATPart"));
    windows().select(session().find("/w/a.CATPart").root());
    CATPathElement* const element = windows().selected(0);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(windows().selected(1), nullptr);
    windows().clearSelection();
    EXPECT_EQ(windows().selectedCount(), 0U);
    element->GetSize();
    EXPECT_EQ(breaches(), Texts({"use after release of CATPathElement in CATPathElement::GetSize"}));
}

TEST_F(WindowObjectsTest, MessagesComeFromTheCatalogueWithTheirParameters) {
    windows().message("Cat", "Key", "/P1 of /P2");
    CATUnicodeString parameters[] = {"1", "2"};
    EXPECT_STREQ(CATMsgCatalog::BuildMessage("Cat", "Key", parameters, 2).ConvertToChar(), "1 of 2");
    EXPECT_STREQ(CATMsgCatalog::BuildMessage("Cat", "None", nullptr, 0, "usual").ConvertToChar(), "usual");
}

} // namespace
