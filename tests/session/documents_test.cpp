#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATIADocument.h"
#include "CATIProduct.h"
#include "VornCache.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "embedded/Windows.h"

#include <map>

namespace {

using embedded::Windows;

const std::string kCommon = "VornToolsCommon::";

class DocumentsTest : public PlatformTest {
protected:
    /** Name of the document found, empty for none; checks that flag, pointer and code agree. */
    static std::string found(const std::string& name, HRESULT expected = S_OK) {
        CATDocument* document = embedded::Session::current().documentAt(0).get(); // is to be cleared
        unsigned char flag = 7;
        EXPECT_EQ(VornToolsCommon::getDocumentInSession(CATUnicodeString(name.data(), name.size()), document, flag),
                  expected)
            << name;
        EXPECT_EQ(flag, document ? 1 : 0);
        return document ? document->StorageName().ConvertToChar() : "";
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
        {"\xFF", ""},
    };
    for (const auto& [name, expected] : cases) EXPECT_EQ(found(name), expected) << name;
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(reports(), Texts({kCommon + "getDocumentInSession 9003 splitPathAndFileName"}));
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

/** What the PDM knows stands in DAT files. */
class PrimaryDocumentTest : public DocumentsTest {
protected:
    void SetUp() override {
        DocumentsTest::SetUp();
        for (const char* file : {"top.CATProduct", "mid.CATProduct", "low.CATPart"}) session().document(path(file));
        top = session().find(path("top.CATProduct")).root();
        auto mid = session().find(path("mid.CATProduct")).root();
        mid.addComponent("comp", "c.1").add(session().find(path("low.CATPart")), "l.1");
        group = top.add(session().find(path("mid.CATProduct")), "m.1");
        low = top.at({"m.1", "c.1", "l.1"});
    }
    void know(const char* file, const char* revision) {
        write(std::string(file) + ".dat",
              std::string("<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\n") + revision + "\n</ItemRevUID>\n");
    }
    /** The product found; `file` is the file name handed out with it. */
    CATIProduct* primary(const embedded::Product& product, VornCache* cache, std::string& file, HRESULT expected) {
        CATUnicodeString text("before");
        CATIProduct* result = DocumentsTest::product(
            [&](auto& out) { return VornToolsCommon::getPrimaryDocument(product.get(), cache, text, out); }, expected);
        file = text.ConvertToChar();
        return result;
    }

    embedded::Product top, group, low;
    std::string name;
};

TEST_F(PrimaryDocumentTest, TheNearestKnownProductAboveCounts) {
    know("mid.CATProduct", "rev1");
    know("top.CATProduct", "rev2");
    VornCache cache;
    EXPECT_EQ(primary(low, &cache, name, S_OK), group.get()) << "past the component";
    EXPECT_EQ(name, path("mid.CATProduct"));
    EXPECT_EQ(primary(group, &cache, name, S_OK), top.get());
    EXPECT_EQ(name, path("top.CATProduct"));
    EXPECT_EQ(primary(top, &cache, name, E_FAIL), nullptr);
    EXPECT_EQ(name, "");
    EXPECT_EQ(primary(low, nullptr, name, E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(primary(embedded::Product(), &cache, name, E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getPrimaryDocument 9001 ipi_product"}));
}

TEST_F(PrimaryDocumentTest, SecondaryPartsArePassedOver) {
    know("top.CATProduct", "rev2");
    {
        VornCache cache;
        EXPECT_EQ(primary(low, &cache, name, E_FAIL), nullptr) << "unknown, and no secondary part";
    }
    group.description("SecondaryPart\nuser's text");
    VornCache cache;
    EXPECT_EQ(primary(low, &cache, name, S_OK), top.get()) << "without a DAT file";
    know("mid.CATProduct", "");
    VornCache fresh;
    EXPECT_EQ(primary(low, &fresh, name, S_OK), top.get()) << "without an item revision";
}

TEST_F(PrimaryDocumentTest, ABareNameLiesInADirectoryOfTheEnvironment) {
    const std::string separator = path("").substr(path("").size() - 1);
    environment().filesDirectory = path("files") + separator;
    environment().referencePath = path("library") + separator;
    environment().referencePrefix = "REF_";
    auto bare = session().product("bare.CATProduct").root();
    auto library = session().product("REF_bare.CATProduct").root();
    write("files/bare.CATProduct.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nr\n</ItemRevUID>\n");
    write("library/REF_bare.CATProduct.dat",
          "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nr\n</ItemRevUID>\n");
    VornCache cache;
    const auto inBare = bare.add(session().find(path("low.CATPart")), "l.1");
    EXPECT_EQ(primary(inBare, &cache, name, S_OK), bare.get());
    EXPECT_EQ(name, path("files/bare.CATProduct"));
    EXPECT_EQ(primary(library.add(session().find(path("low.CATPart")), "l.1"), &cache, name, S_OK), library.get());
    EXPECT_EQ(name, path("library/REF_bare.CATProduct"));
}

TEST_F(DocumentsTest, ALoadedProductIsNotSwitched) {
    auto root = session().product("/w/a.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    EXPECT_EQ(switched(root.add(part, "p.1"), S_OK), part.get());
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
        EXPECT_EQ(VornToolsCommon::openDocument(file.c_str(), document), expected);
        return document;
    };
    CATDocument* const document = open(name, S_OK);
    EXPECT_EQ(document, session().find(name).get());
    EXPECT_EQ(Windows::current().active().document().get(), document);
    EXPECT_EQ(messages(), Texts({"Document opened : " + name + "."}));
    EXPECT_EQ(open(name, S_OK), document);
    EXPECT_EQ(session().documentCount(), 1U);
    for (const std::string& missing : {path("none.CATPart"), folder().u8string(), std::string()})
        EXPECT_EQ(open(missing, E_FAIL), nullptr);
    const std::string method = kCommon + "openDocument 9010 ";
    EXPECT_EQ(reports(), Texts({method + path("none.CATPart"), method + folder().u8string(), method}));

    Windows::current().withoutSession();
    environment().debugMode = true;
    clearJournal();
    EXPECT_EQ(open(name, S_OK), document);
    ASSERT_EQ(messages().size(), 3U);
    EXPECT_EQ(messages()[0], "GetPtrSession returns NULL, create CATSession");
    EXPECT_EQ(messages()[1].substr(0, 14), "p_cat_session=");
    EXPECT_EQ(messages()[1].substr(messages()[1].size() - 23), " with id=[test session]");
}

TEST_F(DocumentsTest, ProductsAreFoundByTheFileOfTheirDocument) {
    auto root = session().product("/w/a.CATProduct").root();
    auto group = session().product("/w/g.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    group.addComponent("comp", "c.1").add(part, "p.1");
    root.addUnresolved("p.CATPart");
    root.add(session().product("/w/g.CATProduct"), "g.1");
    root.add(session().product("/w/g.CATProduct"), "g.2");
    root.add(part, "p.9");
    const auto find = [&](const embedded::Product& from, const char* file, HRESULT expected = S_OK) {
        unsigned char flag = 7;
        CATIProduct* const result = product(
            [&](auto& out) { return VornToolsCommon::getProductInSession(from.get(), file, out, flag); }, expected);
        EXPECT_EQ(flag, result ? 1 : 0);
        return result;
    };
    CATIProduct* const first = root.at({"g.1", "c.1", "p.1"}).get();
    for (const char* name : {"p.CATPart", "P.catpart", "/w/p.CATPart", "/W/P.CATPart"})
        EXPECT_EQ(find(root, name), first) << name;
    EXPECT_EQ(find(root, "g.CATProduct"), root.at({"g.1"}).get());
    EXPECT_EQ(find(root, "a.CATProduct"), nullptr) << "only below the root";
    EXPECT_EQ(find(root, "/elsewhere/p.CATPart"), nullptr);
    EXPECT_EQ(find(part.root(), "p.CATPart"), nullptr);
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(find(embedded::Product(), "p.CATPart", E_FAIL), nullptr);
    EXPECT_EQ(find(root, "", E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getProductInSession 9001 ipi_root_product",
                                kCommon + "getProductInSession 9001 i_file_name"}));
}

TEST_F(DocumentsTest, ForeignFilesAreFoundByTheShapesOfTheirProducts) {
    auto root = session().product("/w/a.CATProduct").root();
    auto bolt = root.addComponent("bolt", "b.1");
    bolt.shape("low", "/w/low.cgr").shape("high", "/w/high.stp");
    const auto find = [&](CATIProduct* from, const char* file, const char* shape, VornToolsSwitchMgt* loader,
                          HRESULT expected = S_OK) {
        unsigned char flag = 7;
        return product(
            [&](auto& out) { return VornToolsCommon::getForeignFileInSession(from, file, shape, loader, out, flag); },
            expected);
    };
    EXPECT_EQ(find(root.get(), "LOW.CGR", "", &switcher), bolt.get());
    EXPECT_EQ(find(root.get(), "/w/low.cgr", "low", &switcher), bolt.get());
    EXPECT_EQ(find(root.get(), "high.stp", "", &switcher), nullptr);
    EXPECT_EQ(find(root.get(), "high.stp", "high", &switcher), bolt.get());
    EXPECT_EQ(find(root.get(), "high.stp", "none", &switcher), nullptr);
    EXPECT_EQ(reports(), Texts()) << "products without a shape are nothing to report";
    EXPECT_EQ(find(nullptr, "low.cgr", "", &switcher, E_FAIL), nullptr);
    EXPECT_EQ(find(root.get(), "", "", &switcher, E_FAIL), nullptr);
    EXPECT_EQ(find(root.get(), "low.cgr", "", nullptr, E_FAIL), nullptr);
    const std::string method = kCommon + "getForeignFileInSession 9001 ";
    EXPECT_EQ(reports(), Texts({method + "ipi_root_product", method + "i_file_name", method + "ip_switcher"}));
}

TEST_F(DocumentsTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    auto root = session().product("/w/a.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    const auto instance = root.add(part, "p.1");
    root.addComponent("bolt", "b.1").shape("low", "/w/low.cgr");
    Windows::current().open(part);
    const auto runForDocument = [](const char* name, auto question) {
        sweepFailures({kCommon + name, [=] {
                           CATDocument* document = nullptr;
                           const HRESULT code = question(document);
                           return SweepOutcome{code, document == nullptr};
                       }});
    };
    const auto runForProduct = [](const char* name, auto question) {
        sweepFailures({kCommon + name, [=] {
                           CATIProduct* found = nullptr;
                           const HRESULT code = question(found);
                           const SweepOutcome outcome{code, found == nullptr};
                           if (found) found->Release();
                           return outcome;
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
                       return SweepOutcome{VornToolsCommon::getDocumentsInSession(list, "")};
                   }});
    CATIProduct* const pi = instance.get();
    CATIProduct* const pr = root.get();
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
    runForProduct("getActiveCATIProduct", [=](auto& out) { return VornToolsCommon::getActiveCATIProduct(pd, out); });
    runForProduct("getProductInSession", [=](auto& out) {
        unsigned char flag = 7;
        return VornToolsCommon::getProductInSession(pr, "p.CATPart", out, flag);
    });
    runForProduct("getForeignFileInSession", [=](auto& out) {
        unsigned char flag = 7;
        return VornToolsCommon::getForeignFileInSession(pr, "low.cgr", "", &switcher, out, flag);
    });
}

TEST_F(DocumentsTest, NoFaultLeavesAnythingBehindWhenOpening) {
    environment().debugMode = true;
    Windows::current().lock(session().part("/w/p.CATPart")); // it would close with its last window
    const auto open = [] {
        CATDocument* document = nullptr;
        const HRESULT code = VornToolsCommon::openDocument("/w/p.CATPart", document);
        return SweepOutcome{code, document == nullptr};
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

TEST_F(PrimaryDocumentTest, NoFaultLeavesAnythingBehind) {
    know("top.CATProduct", "rev2");
    group.description("SecondaryPart");
    sweepFailures({kCommon + "getPrimaryDocument", [this] {
                       VornCache cache;
                       CATUnicodeString text("before");
                       CATIProduct* result = nullptr;
                       const HRESULT code = VornToolsCommon::getPrimaryDocument(low.get(), &cache, text, result);
                       const SweepOutcome outcome{code, !result && text.IsNull()};
                       if (result) result->Release();
                       return outcome;
                   }});
}

} // namespace
