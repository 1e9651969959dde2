#include "tests/session/FailingCall.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATIADocument.h"
#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "embedded/Windows.h"

namespace {

using embedded::Windows;

const std::string kCommon = "VornToolsCommon::";

class DocumentsTest : public PlatformTest {
protected:
    /** Name of the document found, empty for none; checks that flag, pointer and code agree. */
    static std::string found(const std::string& name, HRESULT expected = S_OK) {
        CATDocument* document = embedded::Session::current().documentAt(0).get(); // is to be cleared
        unsigned char flag = 7;
        EXPECT_EQ(VornToolsCommon::getDocumentInSession(utf8(name), document, flag), expected) << name;
        EXPECT_EQ(flag, document ? 1 : 0);
        return document ? toUtf8(document->StorageName()) : "";
    }
    static Texts listed(const char* type) {
        CATListPtrCATDocument list;
        list.Append(nullptr);
        EXPECT_EQ(VornToolsCommon::getDocumentsInSession(list, type), S_OK);
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.push_back(list[i]->StorageName().ConvertToChar());
        return result;
    }
    /** The product that a call hands out, null for none; its reference is given back. */
    template <class Call>
    static CATIProduct* product(Call call, HRESULT expected) {
        CATIProduct* result = embedded::Session::current().documentAt(0).root().get(); // is to be cleared
        EXPECT_EQ(call(result), expected);
        if (result) result->Release();
        return result;
    }
    CATDocument* switched(const embedded::Product& product, HRESULT expected) {
        CATDocument* document = session().documentAt(0).get();
        EXPECT_EQ(VornToolsCommon::getAndSwitchdocument(product.get(), &switcher, document), expected);
        return document;
    }

    VornToolsSwitchMgt switcher{1};
};

TEST_F(DocumentsTest, NamesAreComparedWholeOrWithoutDirectory) {
    session().document("/w/notes.txt");
    session().part("/w/one/Part.CATPart");
    session().part("/w/two/part.CATPart");
    session().part("C:\\data\\Drive.CATPart");
    session().part("New.CATPart");
    session().part("/w/B\xC3\xB6lt.CATPart");
    const std::pair<const char*, const char*> cases[] = {
        {"PART.catpart", "/w/one/Part.CATPart"}, // the first in session order
        {"/W/TWO/PART.CATPART", "/w/two/part.CATPart"},
        {"/w/three/Part.CATPart", ""},
        {"/w/one\\Part.CATPart", ""}, // separators count in whole names
        {"drive.CATPart", "C:\\data\\Drive.CATPart"},
        {"c:\\data\\drive.CATPart", "C:\\data\\Drive.CATPart"},
        {"New.CATPart", "New.CATPart"},
        {"/w/New.CATPart", ""},
        {"b\xC3\x96LT.CATPart", "/w/B\xC3\xB6lt.CATPart"},
        {"notes.txt", ""}, // not managed
        {"/w/notes.txt", ""},
        {"/w/one/", ""},
        {"Part", ""},
        {"\xC3\xBF", ""},
    };
    for (const auto& [name, expected] : cases) EXPECT_EQ(found(name), expected) << name;
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(reports(), Texts({kCommon + "getDocumentInSession 9003 splitPathAndFileName"}));
}

TEST_F(DocumentsTest, ASearchWithoutHitGivesTheCodeOfItsLastStep) {
    session().part("/w/a.CATPart");
    session().part("/w/b.CATPart");
    HRESULT code = S_OK;
    const auto search = [&code] {
        CATDocument* document = nullptr;
        unsigned char flag = 7;
        embedded::ErrorReports::get().take();
        code = VornToolsCommon::getDocumentInSession("none.CATPart", document, flag);
    };
    const auto check = [&](int which) { // the name looked for, the first document's, the second's
        EXPECT_EQ(code, which == 3 ? E_FAIL : S_OK) << which;
        EXPECT_EQ(reports(), Texts({kCommon + "getDocumentInSession 9003 splitPathAndFileName"}));
    };
    EXPECT_EQ(whenFailing("UTILFile::splitPathAndFileName", search, check), 3);
    reports();
}

TEST_F(DocumentsTest, TheJournalTellsHowADocumentWasFound) {
    session().part("/w/p.CATPart");
    found("P.CATPart");
    found("/w/p.CATPart");
    EXPECT_EQ(messages(),
              Texts({"searching in session the document : P.CATPart", "Document is found in session : /w/p.CATPart",
                     "searching in session the document : /w/p.CATPart",
                     "Document is found in session (with VornToolsDocument::getDocumentInSession)"}));
}

TEST_F(DocumentsTest, LogicalNamesAreComparedInTheirPlainForm) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = "/lib";
    environment().separator = "/";
    session().part("\x01\x02\\LIB/p.CATPart");
    session().document("\x01\x02\\LIB/n.txt");
    for (const char* name :
         {"\x01\x02\\LIB/p.CATPart", "LIB/p.CATPart", "lib/P.CATPart", "/lib/p.CATPart", "p.CATPart"})
        EXPECT_EQ(found(name), "\x01\x02\\LIB/p.CATPart") << name;
    EXPECT_TRUE(embedded::Journal::get().contains("Document is found in session"));
    EXPECT_EQ(found("LIB/q.CATPart"), "");
    // The platform's own table is of no help: the walk through the documents compares plain forms, too.
    CATDocument* document = nullptr;
    const auto search = [&document] {
        unsigned char flag = 7;
        VornToolsCommon::getDocumentInSession("\x01\x02\\lib/P.CATPART", document, flag);
    };
    const auto check = [&](int) { EXPECT_EQ(document, session().documentAt(0).get()); };
    EXPECT_EQ(whenFailing("CATDocumentServices::GetDocumentInSession", search, check), 1);
    reports();
}

TEST_F(DocumentsTest, DocumentsAreListedByManagementOrType) {
    EXPECT_EQ(listed(""), Texts());
    EXPECT_EQ(messages(), Texts({"Retrieve only documents managed by Maro", "There is not document in session"}));
    session().document("/w/notes.txt");
    clearJournal();
    EXPECT_EQ(listed(""), Texts());
    EXPECT_EQ(messages(), Texts({"Retrieve only documents managed by Maro", "There is not valid document in session"}));
    session().part("/w/p.CATPart");
    session().product("/w/a.CATProduct");
    clearJournal();
    EXPECT_EQ(listed(""), Texts({"/w/p.CATPart", "/w/a.CATProduct"}));
    EXPECT_EQ(listed("CATPart"), Texts({"/w/p.CATPart"}));
    EXPECT_EQ(listed("txt"), Texts({"/w/notes.txt"})) << "by type, management does not count";
    EXPECT_EQ(listed("catpart"), Texts());
    EXPECT_EQ(messages(), Texts({"Retrieve only documents managed by Maro", "Retrieve only documents of type : CATPart",
                                 "Retrieve only documents of type : txt", "Retrieve only documents of type : catpart",
                                 "There is not valid document in session"}));
}

TEST_F(DocumentsTest, AProductLeadsToItsDocument) {
    auto root = session().product("/w/a.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    const auto instance = root.add(part, "p.1");
    const auto document = [&](const embedded::Product& product, HRESULT expected) {
        CATDocument* result = part.get();
        EXPECT_EQ(VornToolsCommon::getCATDocument(product.get(), result), expected);
        return result;
    };
    EXPECT_EQ(document(instance, S_OK), part.get());
    EXPECT_EQ(document(root.addUnresolved("x.1"), E_FAIL), nullptr);
    EXPECT_EQ(document(embedded::Product(), E_FAIL), nullptr);
    root.withoutLinkableObject();
    EXPECT_EQ(document(root, E_FAIL), nullptr);
    EXPECT_EQ(reports(),
              Texts({kCommon + "getCATDocument 9002 sp_reference", kCommon + "getCATDocument 9001 ipi_the_product",
                     kCommon + "getCATDocument 9002 pi_linkable_object"}));

    CATIADocument_var automation(part.get());
    EXPECT_EQ(VornToolsCommon::getCATDocument(static_cast<CATIADocument*>(automation)), part.get());
    EXPECT_EQ(VornToolsCommon::getCATDocument(static_cast<CATIADocument*>(nullptr)), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getCATDocument 9001 ipi_document"}));
}

TEST_F(DocumentsTest, TheActiveDocumentIsThatOfTheCurrentEditor) {
    const auto active = [](bool tell, HRESULT expected) {
        CATDocument* document = embedded::Session::current().documentAt(0).get();
        EXPECT_EQ(VornToolsCommon::getActiveCATDocument(document, tell ? 1 : 0), expected);
        return document;
    };
    const auto shown = [] { return embedded::Messages::get().take(); };
    const Texts told = {"localized 0 11221 11137", "localized 0 11221 11507", "information 11221 0"};
    const auto part = session().part("/w/p.CATPart");
    EXPECT_EQ(active(false, E_FAIL), nullptr);
    EXPECT_EQ(shown(), Texts());
    EXPECT_EQ(active(true, E_FAIL), nullptr);
    EXPECT_EQ(shown(), told);
    Windows::current().openEmpty();
    EXPECT_EQ(active(true, S_OK), nullptr);
    EXPECT_EQ(shown(), told);
    Windows::current().open(part);
    EXPECT_EQ(active(true, S_OK), part.get());
    EXPECT_EQ(shown(), Texts());
}

TEST_F(DocumentsTest, TheFirstRootIsTheProduct) {
    const auto root = [](const embedded::Document& document, HRESULT expected) {
        return product([&](auto& out) { return VornToolsCommon::getActiveCATIProduct(document.get(), out); }, expected);
    };
    auto part = session().part("/w/p.CATPart");
    EXPECT_EQ(root(part, S_OK), part.root().get());
    EXPECT_EQ(root(part.withoutRoots(), S_OK), nullptr);
    EXPECT_EQ(root(session().document("/w/d.CATDrawing"), E_FAIL), nullptr);
    EXPECT_EQ(root(embedded::Document(), E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getActiveCATIProduct 9002 opi_active_product",
                                kCommon + "getActiveCATIProduct 9001 ip_active_document"}));
}

TEST_F(DocumentsTest, ALoadedProductIsNotSwitched) {
    auto root = session().product("/w/a.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    const auto instance = root.add(part, "p.1");
    EXPECT_EQ(switched(instance, S_OK), part.get());
    // Its reference comes only when asked again; it is in design mode already.
    clearJournal();
    embedded::Failures::get().arm(1, false, embedded::FaultFlavour::code);
    EXPECT_EQ(switched(instance, S_OK), part.get());
    EXPECT_EQ(embedded::Failures::get().firedAt(), "CATIProduct::GetReferenceProduct");
    embedded::Failures::get().disarm();
    EXPECT_EQ(messages(), Texts());
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(switched(embedded::Product(), E_FAIL), nullptr);
    CATDocument* document = part.get();
    EXPECT_EQ(VornToolsCommon::getAndSwitchdocument(root.get(), nullptr, document), E_FAIL);
    EXPECT_EQ(document, nullptr);
    root.withoutLinkableObject();
    EXPECT_EQ(switched(root, E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getAndSwitchdocument 9001 ipi_the_product",
                                kCommon + "getAndSwitchdocument 9001 ip_switcher",
                                kCommon + "getAndSwitchdocument 9002 pi_linkable_object"}));
}

TEST_F(DocumentsTest, AProductThatCannotBeLoadedHasNoDocument) {
    const auto broken = session().product("/w/a.CATProduct").root().addUnresolved("x.1");
    EXPECT_EQ(switched(broken, S_OK), nullptr) << "lenient on purpose";
    const Texts told = reports();
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.back(), kCommon + "getAndSwitchdocument 9002 pi_reference");
}

TEST_F(DocumentsTest, FilesAreOpenedInAWindow) {
    const std::string name = write("n\xC3\xA4h.CATPart", "x");
    const auto open = [](const std::string& file, HRESULT expected) {
        CATDocument* document = embedded::Session::current().documentAt(0).get();
        EXPECT_EQ(VornToolsCommon::openDocument(utf8(file), document), expected);
        return document;
    };
    CATDocument* const document = open(name, S_OK);
    EXPECT_EQ(document, session().find(name).get());
    EXPECT_EQ(Windows::current().active().document().get(), document);
    EXPECT_FALSE(Windows::current().openedReadOnly(session().find(name)));
    EXPECT_EQ(messages(), Texts({"Document opened : " + eightBit(name) + "."}));
    EXPECT_EQ(open(name, S_OK), document);
    EXPECT_EQ(session().documentCount(), 1U);
    for (const std::string& missing : {path("none.CATPart"), folder().u8string(), std::string()})
        EXPECT_EQ(open(missing, E_FAIL), nullptr);
    const std::string method = kCommon + "openDocument 9010 ";
    EXPECT_EQ(reports(), Texts({method + path("none.CATPart"), method + folder().u8string(), method}));

    Windows::current().withoutSession();
    clearJournal();
    EXPECT_EQ(open(name, S_OK), document);
    EXPECT_EQ(messages(), Texts({"Document opened : " + eightBit(name) + "."})) << "the rest is for debugging";
    Windows::current().withoutSession();
    environment().debugMode = true;
    clearJournal();
    EXPECT_EQ(open(name, S_OK), document);
    ASSERT_EQ(messages().size(), 3U);
    EXPECT_EQ(messages()[0], "GetPtrSession returns NULL, create CATSession");
    EXPECT_EQ(messages()[1].substr(0, 14), "p_cat_session=");
    EXPECT_EQ(messages()[1].substr(messages()[1].size() - 23), " with id=[test session]");
}

TEST_F(DocumentsTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    const auto root = session().product("/w/a.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    const auto instance = root.add(part, "p.1");
    Windows::current().open(part);
    const auto runForDocument = [](const char* name, auto question) {
        sweepFailures({kCommon + name, [=] {
                           CATDocument* document = nullptr;
                           const HRESULT code = question(document);
                           return outcomeOf(code, document);
                       }});
    };
    const auto search = [](const char* name) {
        return [name](auto& out) {
            unsigned char flag = 7;
            return VornToolsCommon::getDocumentInSession(name, out, flag);
        };
    };
    runForDocument("getDocumentInSession", search("p.CATPart"));
    runForDocument("getDocumentInSession", search("/w/p.CATPart"));
    sweepFailures({kCommon + "getDocumentsInSession", [] {
                       CATListPtrCATDocument list;
                       const HRESULT code = VornToolsCommon::getDocumentsInSession(list, "");
                       return outcomeOf(code, list);
                   }});
    CATIProduct* const pi = instance.get();
    CATDocument* const pd = part.get();
    runForDocument("getCATDocument", [=](auto& out) { return VornToolsCommon::getCATDocument(pi, out); });
    const CATIADocument_var automation(pd);
    CATIADocument* const pa = automation;
    runForDocument("getCATDocument", [=](auto& out) {
        out = VornToolsCommon::getCATDocument(pa);
        return out ? S_OK : E_FAIL;
    });
    runForDocument("getActiveCATDocument", [](auto& out) { return VornToolsCommon::getActiveCATDocument(out, 1); });
    runForDocument("getAndSwitchdocument",
                   [=](auto& out) { return VornToolsCommon::getAndSwitchdocument(pi, &switcher, out); });
    sweepFailures({kCommon + "getActiveCATIProduct", [=] {
                       CATIProduct* found = nullptr;
                       const HRESULT code = VornToolsCommon::getActiveCATIProduct(pd, found);
                       const SweepOutcome outcome = outcomeOf(code, found);
                       if (found) found->Release();
                       return outcome;
                   }});
}

TEST_F(DocumentsTest, NoFaultLeavesAnythingBehindWhenOpening) {
    environment().debugMode = true;
    Windows::current().lock(session().part("/w/p.CATPart")); // it would close with its last window
    const auto open = [] {
        CATDocument* document = nullptr;
        const HRESULT code = VornToolsCommon::openDocument("/w/p.CATPart", document);
        return outcomeOf(code, document);
    };
    const auto closeWindows = [] {
        Windows windows = Windows::current();
        while (windows.count() > 0) windows.close(windows.at(0));
    };
    sweepFailures({kCommon + "openDocument", open, closeWindows});
    for (const auto flavour : {embedded::FaultFlavour::code, embedded::FaultFlavour::codeWithOutput}) {
        Windows::current().withoutSession();
        embedded::Failures::get().arm(2, false, flavour);
        EXPECT_EQ(open().code, E_FAIL);
        EXPECT_EQ(embedded::Failures::get().firedAt(), "Create_Session");
        embedded::Failures::get().disarm();
    }
    EXPECT_EQ(reports(), Texts(2, kCommon + "openDocument 9010 /w/p.CATPart"));
}

} // namespace
