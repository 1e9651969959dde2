#include "CATDocumentDescriptor.h"
#include "CATDocumentServices.h"
#include "CATIADocument.h"
#include "CATIAProduct.h"
#include "CATIDocId.h"
#include "CATIDocRoots.h"
#include "CATILinkableObject.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "CATSessionServices.h"
#include "embedded/Windows.h"
#include "embedded/WorkModes.h"
#include "tests/support/Fixture.h"
#include "tests/support/Switches.h"
#include "tests/support/Utf8.h"

#include <memory>

using embedded::Document;
using embedded::FaultFlavour;
using embedded::Product;
using embedded::WorkMode;

namespace {

/** What a text call gives, "(code)" when it fails. */
template <class Call>
std::string textOf(Call call) {
    CATUnicodeString text("before");
    return FAILED(call(text)) ? "(failed)" + std::string(text.ConvertToChar()) : text.ConvertToChar();
}

template <class Call>
std::string automationTextOf(Call call) {
    CATBSTR text = nullptr;
    if (FAILED(call(text))) return text ? "(failed with text)" : "(failed)";
    CATUnicodeString result;
    result.BuildFromBSTR(text);
    CATFreeString(text);
    return result.ConvertToChar();
}

/** Root -> Sub.1, Sub.2 (Sub -> Bolt.1, Bolt.2), Group.1 (component -> Sub.3), Lost.1 (unresolved). */
class SessionTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        bolt = session().part("/w/Bolt.CATPart");
        sub = session().product("/w/Sub.CATProduct");
        root = session().product("/w/Root.CATProduct").root();
        sub.root().add(bolt, "Bolt.1");
        root.add(sub, "Sub.1");
        root.add(sub, "Sub.2");
        sub.root().add(bolt, "Bolt.2");
        component = root.addComponent("Group", "Group.1").reference();
        component.add(sub, "Sub.3");
        root.addUnresolved("Lost.1");
    }

    /** Products by a short text: "Root", "Sub", "Bolt", "Group" for references, "Root/Sub.1/Bolt.2" for places. */
    Product place(const std::string& text) {
        const std::size_t slash = text.find('/');
        const std::string first = text.substr(0, slash);
        Product product = first == "Root"    ? root
                          : first == "Sub"   ? sub.root()
                          : first == "Bolt"  ? bolt.root()
                          : first == "Group" ? component
                                             : Product();
        for (std::size_t begin = slash; begin != std::string::npos;) {
            const std::size_t end = text.find('/', begin + 1);
            product = product.at({text.substr(begin + 1, end == std::string::npos ? end : end - begin - 1)});
            begin = end;
        }
        return product;
    }

    Document bolt;
    Document sub;
    Product root;
    Product component;
};

CATBaseUnknown* pointerTo(const Product& product) { return product.get(); }

TEST_F(SessionTest, ProductsLeadToTheirFatherAndReference) {
    const struct {
        const char* product;
        const char* father;
        const char* reference;
        const char* instanceName;
        const char* partNumber;
        int children;
    } cases[] = {
        {"Root", "", "Root", "", "Root", 4},
        {"Root/Sub.1", "Root", "Sub", "Sub.1", "Sub", 2},
        {"Root/Sub.1/Bolt.2", "Root/Sub.1", "Bolt", "Bolt.2", "Bolt", 0},
        {"Sub/Bolt.2", "Sub", "Bolt", "Bolt.2", "Bolt", 0},
        {"Root/Group.1", "Root", "Group", "Group.1", "Group", 1},
        {"Root/Group.1/Sub.3/Bolt.1", "Root/Group.1/Sub.3", "Bolt", "Bolt.1", "Bolt", 0},
        {"Group/Sub.3", "Group", "Sub", "Sub.3", "Sub", 2},
        {"Root/Lost.1", "Root", "", "Lost.1", "", 0},
    };
    choose(&embedded::Switches::rootsRefuseInstanceName, false);
    for (const auto& test : cases) {
        SCOPED_TRACE(test.product);
        CATIProduct* const product = place(test.product).get();
        EXPECT_TRUE(product->GetFatherProduct() == pointerTo(place(test.father)));
        EXPECT_TRUE(product->GetReferenceProduct() == pointerTo(place(test.reference)));
        EXPECT_EQ(SUCCEEDED(product->IsReference()), std::string(test.product) == test.reference);
        EXPECT_EQ(textOf([&](auto& text) { return product->GetPrdInstanceName(text); }), test.instanceName);
        EXPECT_STREQ(product->GetPartNumber().ConvertToChar(), test.partNumber);
        EXPECT_EQ(product->GetChildrenCount(), test.children);
    }
}

TEST_F(SessionTest, APlaceIsAlwaysTheSameObject) {
    for (const char* text : {"Root", "Root/Sub.1", "Root/Group.1/Sub.3"}) {
        const Product product = place(text);
        const std::unique_ptr<CATListValCATBaseUnknown_var> children(product.get()->GetChildren());
        ASSERT_NE(children, nullptr);
        const std::vector<Product> expected = product.children();
        ASSERT_EQ(children->Size(), static_cast<int>(expected.size()));
        for (int i = 1; i <= children->Size(); ++i)
            EXPECT_TRUE(CATIProduct_var((*children)[i]) == pointerTo(expected[static_cast<std::size_t>(i - 1)]))
                << text;
    }
    EXPECT_FALSE(place("Root/Sub.1/Bolt.1") == place("Root/Sub.2/Bolt.1"));
    const std::unique_ptr<CATListValCATBaseUnknown_var> unknown(root.get()->GetChildren("CATINoSuchThing"));
    ASSERT_NE(unknown, nullptr);
    EXPECT_EQ(unknown->Size(), 0);
    const std::unique_ptr<CATListValCATBaseUnknown_var> resolved(root.get()->GetChildren("CATISpecObject"));
    EXPECT_EQ(resolved->Size(), 3) << "an unresolved instance is no specification object";
}

TEST_F(SessionTest, FindInstanceFollowsTheWayBelowTheContext) {
    const struct {
        const char* product;
        const char* context;
        const char* found;
    } cases[] = {
        {"Root/Sub.1/Bolt.2", "Sub", "Sub/Bolt.2"},
        {"Root/Sub.1/Bolt.2", "Root", "Root/Sub.1/Bolt.2"},
        {"Root/Sub.1/Bolt.2", "Root/Sub.2", "Root/Sub.2/Bolt.2"},
        {"Root/Group.1/Sub.3/Bolt.1", "Group", "Group/Sub.3/Bolt.1"},
        {"Root/Group.1/Sub.3/Bolt.1", "Sub", "Sub/Bolt.1"},
        {"Sub/Bolt.1", "Root/Group.1/Sub.3", "Root/Group.1/Sub.3/Bolt.1"},
        {"Group/Sub.3", "Root/Group.1", "Root/Group.1/Sub.3"},
        {"Root/Lost.1", "Root", "Root/Lost.1"},
        {"Sub/Bolt.1", "Root", ""},
        {"Root/Sub.1/Bolt.1", "Group", ""},
        {"Bolt", "Sub", ""},
        {"Root", "Root", ""},
        {"Root/Sub.1", "Root/Lost.1", ""},
        {"Root/Sub.1", "", ""},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(std::string(test.product) + " in " + test.context);
        const CATIProduct_var context(pointerTo(place(test.context)));
        EXPECT_TRUE(place(test.product).get()->FindInstance(context) == pointerTo(place(test.found)));
    }
}

TEST_F(SessionTest, DescriptionsBelongToTheInstanceUntilAnOccurrenceHasItsOwn) {
    place("Sub/Bolt.1").description("from Sub");
    place("Root/Sub.2/Bolt.1").description("own");
    const auto read = [&](const char* product) {
        const CATIPrdProperties_var properties(place(product).get());
        return textOf([&](auto& text) { return properties->GetDescriptionInst(text); });
    };
    const std::string before = session().digest();
    EXPECT_EQ(read("Root/Sub.1/Bolt.1"), "from Sub");
    EXPECT_EQ(read("Root/Sub.2/Bolt.1"), "own");
    EXPECT_EQ(read("Root/Group.1/Sub.3/Bolt.1"), "from Sub");
    EXPECT_EQ(read("Root"), "");
    EXPECT_EQ(session().digest(), before) << "looking changes nothing";
    const CATIPrdProperties_var occurrence(place("Root/Sub.1/Bolt.1").get());
    EXPECT_EQ(occurrence->SetDescriptionInst(""), S_OK);
    EXPECT_NE(session().digest(), before) << "its own empty text is not the instance's";
    EXPECT_EQ(read("Root/Sub.1/Bolt.1"), "");
    EXPECT_EQ(read("Sub/Bolt.1"), "from Sub");
    EXPECT_EQ(CATIPrdProperties_var(root.get())->SetDescriptionInst("x"), E_FAIL);
    EXPECT_EQ(occurrence->SetDescriptionRef("steel"), S_OK);
    EXPECT_EQ(bolt.root().referenceDescription(), "steel");
    place("Root/Sub.1").withoutProperties();
    EXPECT_TRUE(CATIPrdProperties_var(place("Root/Sub.1").get()) == NULL_var);
    EXPECT_FALSE(CATIPrdProperties_var(place("Root/Sub.2").get()) == NULL_var);
}

TEST_F(SessionTest, AReferenceLivesInItsDocumentAndAnInstanceInTheAssembly) {
    EXPECT_EQ(CATILinkableObject_var(sub.root().get())->GetDocument(), sub.get());
    EXPECT_EQ(CATILinkableObject_var(component.get())->GetDocument(), session().find("/w/root.catproduct").get());
    EXPECT_EQ(CATILinkableObject_var(place("Root/Sub.1").get())->GetDocument(),
              session().find("/w/root.catproduct").get());
    EXPECT_EQ(CATILinkableObject_var(place("Root/Sub.1/Bolt.1").get())->GetDocument(), sub.get());
    EXPECT_TRUE(CATILinkableObject_var(bolt.root().withoutLinkableObject().get()) == NULL_var);
}

TEST_F(SessionTest, AutomationShowsShapesOfTheReference) {
    bolt.root().masterShape("/w/Bolt.cgr").shape("Default", "/w/a.cgr").shape("Simple", "/w/b.cgr");
    const CATIAProduct_var product(place("Root/Sub.1/Bolt.1").get());
    const CATIAProduct_var lost(place("Root/Lost.1").get());
    CAT_VARIANT_BOOL has = 0;
    EXPECT_EQ(product->HasAMasterShapeRepresentation(has), S_OK);
    EXPECT_EQ(has, -1);
    EXPECT_EQ(lost->HasAMasterShapeRepresentation(has), S_OK);
    EXPECT_EQ(has, 0);
    EXPECT_EQ(automationTextOf([&](auto& text) { return product->get_Name(text); }), "Bolt.1");
    EXPECT_EQ(automationTextOf([&](auto& text) { return product->GetDefaultShapeName(text); }), "Default");
    EXPECT_EQ(automationTextOf([&](auto& text) { return product->GetMasterShapeRepresentationPathName(text); }),
              "/w/Bolt.cgr");
    for (const auto& shape : {std::make_pair("Simple", "/w/b.cgr"), std::make_pair("simple", "(failed)")}) {
        CATBSTR name = nullptr;
        CATUnicodeString(shape.first).ConvertToBSTR(&name);
        EXPECT_EQ(automationTextOf([&](auto& text) { return product->GetShapePathName(name, text); }), shape.second);
        CATFreeString(name);
    }
    EXPECT_EQ(automationTextOf([&](auto& text) { return lost->GetDefaultShapeName(text); }), "(failed)");
}

TEST_F(SessionTest, TheBuilderRefusesWhatNoAssemblyCanBe) {
    const std::string before = session().digest();
    EXPECT_FALSE(root.add(bolt, "Sub.1")) << "a brother has the name";
    EXPECT_FALSE(root.addComponent("x", "Sub.1"));
    EXPECT_FALSE(sub.root().add(root, "Root.1")) << "a product inside itself";
    EXPECT_FALSE(component.add(component, "Group.2"));
    EXPECT_FALSE(bolt.root().add(component, "Group.2")) << "a component of another document";
    EXPECT_FALSE(place("Root/Lost.1").add(bolt, "Bolt.1"));
    EXPECT_FALSE(root.at({"Sub.1", "Sub.1"}));
    EXPECT_FALSE(Product().add(bolt, "Bolt.1"));
    EXPECT_EQ(place("Root/Sub.1").instanceName("Sub.2").instanceName(), "Sub.1");
    EXPECT_EQ(session().digest(), before);
    EXPECT_EQ(place("Root/Sub.1").instanceName("Sub.9").instanceName(), "Sub.9");
    EXPECT_TRUE(place("Root/Sub.9") && !place("Root/Sub.1"));
    const Product nut = place("Root/Sub.2").add(session().part("Nut.CATPart"), "Nut.1");
    EXPECT_TRUE(nut && nut == place("Root/Sub.2/Nut.1"));
}

TEST_F(SessionTest, DocumentsAnswerWhoTheyAre) {
    bolt.uuid("1_a0_0B_ffffffff");
    EXPECT_EQ(bolt.uuid(), "1_a0_b_ffffffff");
    CATDocument* const document = bolt.get();
    EXPECT_STREQ(document->IsA(), "CATPart");
    EXPECT_NE(document->IsAKindOf("CATDocument"), 0);
    EXPECT_EQ(document->IsAKindOf("CATProduct"), 0);
    EXPECT_STREQ(document->StorageName().ConvertToChar(), "/w/Bolt.CATPart");
    EXPECT_EQ(document->IsSaved(), TRUE);
    EXPECT_EQ(session().part("Part1.CATPart").get()->IsSaved(), FALSE);
    char uuid[256];
    document->GetDocumentDescriptor()->GetUuid().UUID_to_chaine(uuid);
    EXPECT_STREQ(uuid, "1_a0_b_ffffffff");
    EXPECT_NE(sub.uuid(), session().find("/w/Root.CATProduct").uuid());
    CATIDocId* id = nullptr;
    ASSERT_EQ(document->GetDocId(&id), S_OK);
    EXPECT_EQ(textOf([&](auto& text) { return id->GetType(text); }), "CATPart");
    id->Release();
    bolt.saved(false);
    const CATIADocument_var automation(document);
    CAT_VARIANT_BOOL saved = -1;
    EXPECT_EQ(automation->get_Saved(saved), S_OK);
    EXPECT_EQ(saved, 0);
    EXPECT_EQ(CATILinkableObject_var(document)->GetDocument(), document);
    bolt.withoutDescriptor().withoutAutomation().withoutRoots();
    EXPECT_EQ(document->GetDocumentDescriptor(), nullptr);
    EXPECT_TRUE(CATIADocument_var(document) == NULL_var);
    EXPECT_EQ(CATIDocRoots_var(document)->GiveDocRoots(), nullptr);
}

TEST_F(SessionTest, RootsFollowTheKindOfDocument) {
    const struct {
        const char* name;
        bool product;
    } cases[] = {{"/w/Root.CATProduct", true}, {"/w/x.MODEL", true},    {"/w/x.cgr", true},
                 {"/w/x.CATDrawing", false},   {"/w/x.catalog", false}, {"/w/noSuffix", false}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        Document document = session().document(test.name);
        document.upToDate(false);
        const std::unique_ptr<CATListValCATBaseUnknown_var> roots(CATIDocRoots_var(document.get())->GiveDocRoots());
        ASSERT_NE(roots, nullptr);
        ASSERT_EQ(roots->Size(), 1);
        EXPECT_EQ(CATIProduct_var((*roots)[1]) == NULL_var, !test.product);
        const CATISpecObject_var specification((*roots)[1]);
        EXPECT_EQ(specification->IsUpToDate(), FALSE);
        document.upToDate(true);
        EXPECT_EQ(specification->IsUpToDate(), TRUE);
    }
}

TEST_F(SessionTest, DocumentsAreFoundByTheirWholeName) {
    const Document accented = session().part("/w/\xC3\x84nderung.CATPart");
    const struct {
        const char* name;
        CATDocument* document;
    } cases[] = {{"/w/Bolt.CATPart", bolt.get()},
                 {"/W/BOLT.catpart", bolt.get()},
                 {"/w/\xC3\xA4nderung.CATPart", accented.get()},
                 {"Bolt.CATPart", nullptr},
                 {"", nullptr}};
    for (const auto& test : cases) {
        CATDocument* found = sub.get();
        EXPECT_EQ(CATDocumentServices::GetDocumentInSession(utf8(test.name), found), test.document ? S_OK : E_FAIL);
        EXPECT_EQ(found, test.document) << test.name;
    }
    EXPECT_EQ(session().part("/W/bolt.CATPART").get(), bolt.get());
    EXPECT_EQ(session().documentCount(), 4U);
}

TEST_F(SessionTest, FailingCallsHandOutNoReference) {
    CATIProduct* const product = place("Root/Sub.1").get();
    const CATIPrdProperties_var properties(product);
    const std::string before = session().digest();
    for (const auto flavour : {FaultFlavour::code, FaultFlavour::codeWithOutput, FaultFlavour::nullOutput}) {
        const long references = embedded::Accounting::get().live().references;
        embedded::Failures::get().arm(1, true, flavour);
        EXPECT_TRUE(product->GetFatherProduct() == NULL_var);
        EXPECT_TRUE(product->GetReferenceProduct() == NULL_var);
        EXPECT_TRUE(product->FindInstance(product) == NULL_var);
        EXPECT_EQ(product->GetChildren(), nullptr);
        EXPECT_EQ(product->IsReference(), E_FAIL);
        EXPECT_TRUE(product->GetPartNumber().IsNull());
        CATIDocId* id = nullptr;
        EXPECT_EQ(SUCCEEDED(bolt.get()->GetDocId(&id)), flavour == FaultFlavour::nullOutput);
        EXPECT_EQ(id != nullptr, flavour == FaultFlavour::codeWithOutput);
        CATDocument* found = nullptr;
        EXPECT_EQ(SUCCEEDED(CATDocumentServices::GetDocumentInSession("/w/Bolt.CATPart", found)),
                  flavour == FaultFlavour::nullOutput);
        EXPECT_EQ(found != nullptr, flavour == FaultFlavour::codeWithOutput);
        EXPECT_EQ(properties->SetDescriptionInst("half"), E_FAIL);
        embedded::Failures::get().disarm();
        EXPECT_EQ(embedded::Failures::get().firedAt(), "CATIProduct::GetFatherProduct");
        EXPECT_EQ(embedded::Accounting::get().live().references, references);
        EXPECT_EQ(session().digest(), before);
    }
}

TEST_F(SessionTest, ADocumentIsLoadedUnlessItsPlacesAllShowItsPicture) {
    const auto listed = [] {
        const CATListPtrCATDocument& list = *ListDocuments();
        Texts names;
        for (int i = 1; i <= list.Size(); ++i) names.push_back(list[i]->StorageName().ConvertToChar());
        return names;
    };
    const Texts all = {"/w/Bolt.CATPart", "/w/Sub.CATProduct", "/w/Root.CATProduct"};
    const Texts others = {"/w/Sub.CATProduct", "/w/Root.CATProduct"};
    std::vector<Product> places;
    for (const char* way : {"Root/Sub.1/Bolt.1", "Root/Sub.1/Bolt.2", "Root/Sub.2/Bolt.1", "Root/Sub.2/Bolt.2",
                            "Root/Group.1/Sub.3/Bolt.1", "Root/Group.1/Sub.3/Bolt.2"})
        places.push_back(place(way));
    for (const Product& seen : places) {
        EXPECT_EQ(listed(), all);
        embedded::setWorkMode(seen, WorkMode::visualisation);
    }
    EXPECT_EQ(listed(), others);
    EXPECT_FALSE(bolt.loaded());
    CATDocument* document = bolt.get();
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("/w/Bolt.CATPart", document), E_FAIL);
    EXPECT_EQ(document, nullptr);
    for (const WorkMode mode : {WorkMode::standard, WorkMode::brep, WorkMode::design}) {
        embedded::setWorkMode(places[4], mode);
        EXPECT_EQ(listed(), all);
        embedded::setWorkMode(places[4], WorkMode::visualisation);
        EXPECT_EQ(listed(), others);
    }
    // Places of a structure that is not open hold nothing, until its own window opens it.
    EXPECT_EQ(embedded::workMode(place("Sub/Bolt.1")), WorkMode::design);
    auto window = embedded::Windows::current().open(sub);
    EXPECT_EQ(listed(), all);
    for (const char* way : {"Sub/Bolt.1", "Sub/Bolt.2"}) embedded::setWorkMode(place(way), WorkMode::visualisation);
    EXPECT_EQ(listed(), others);
    embedded::Windows::current().close(window);
    EXPECT_EQ(listed(), others);
}

TEST_F(SessionTest, WhoeverKeepsADocumentKeepsItLoaded) {
    const Document nut = session().part("/w/Nut.CATPart");
    EXPECT_TRUE(nut.loaded()) << "used nowhere, so it was opened for itself";
    const Product seen = root.add(nut, "Nut.1");
    embedded::setWorkMode(seen, WorkMode::visualisation);
    EXPECT_FALSE(nut.loaded());
    auto window = embedded::Windows::current().open(nut);
    EXPECT_TRUE(nut.loaded());
    embedded::Windows::current().close(window);
    EXPECT_FALSE(nut.loaded());
    ASSERT_TRUE(session().find("/w/Nut.CATPart")) << "its assembly uses it";
    embedded::Windows::current().lock(nut);
    EXPECT_TRUE(nut.loaded());
    CATUnLockDocument(*nut.get());
    EXPECT_FALSE(nut.loaded());
    // A representation that is loaded on request loads the part.
    seen.reference().masterShape("/w/Nut.CATPart");
    CATBaseDispatch* representation = nullptr;
    ASSERT_EQ(CATIAProduct_var(seen.get())->GetMasterShapeRepresentation(-1, representation), S_OK);
    representation->Release();
    EXPECT_EQ(embedded::workMode(seen), WorkMode::standard);
    EXPECT_TRUE(nut.loaded());
    EXPECT_FALSE(Document().loaded());
}

TEST_F(SessionTest, InVisualisationAProductTellsNothingOfItsReference) {
    const Product seen = place("Root/Sub.1/Bolt.1");
    seen.reference().referenceDescription("steel").masterShape("/w/Bolt.cgr").shape("Default", "/w/a.cgr");
    embedded::setWorkMode(seen, WorkMode::visualisation);
    CATIProduct* const product = seen.get();
    const CATIPrdProperties_var properties(product);
    const CATIAProduct_var automation(product);
    EXPECT_TRUE(product->GetReferenceProduct() == NULL_var);
    EXPECT_TRUE(product->GetPartNumber().IsNull());
    EXPECT_EQ(properties->SetDescriptionRef("other"), E_FAIL);
    EXPECT_EQ(properties->SetDefinition("other"), E_FAIL);
    EXPECT_EQ(properties->SetRevision("other"), E_FAIL);
    EXPECT_EQ(properties->SetNomenclature("other"), E_FAIL);
    EXPECT_EQ(seen.referenceDescription(), "steel");
    EXPECT_EQ(textOf([&](auto& text) { return product->GetPrdInstanceName(text); }), "Bolt.1");
    CATBSTR text = nullptr;
    for (const bool silent : {false, true}) {
        choose(&embedded::Switches::picturesAreSilent, silent);
        const HRESULT expected = silent ? E_FAIL : S_OK;
        EXPECT_EQ(automation->GetMasterShapeRepresentationPathName(text), expected);
        CATFreeString(text);
        EXPECT_EQ(automation->GetDefaultShapeName(text), expected);
        CATBSTR path = nullptr;
        EXPECT_EQ(automation->GetShapePathName(text, path), expected);
        CATFreeString(path);
        CATFreeString(text);
    }
    EXPECT_EQ(CATIAProduct_var(seen.reference().get())->GetMasterShapeRepresentationPathName(text), S_OK);
    CATFreeString(text);
}

TEST_F(SessionTest, ProductsRefuseWhatOnlySomePlatformsGive) {
    CATIProduct* const product = place("Root/Sub.1/Bolt.1").get();
    CATUnicodeString text;
    chooseForProducts(false);
    EXPECT_EQ(root.get()->GetPrdInstanceName(text), S_OK);
    EXPECT_EQ(product->SetPrdInstanceName("a:b"), S_OK);
    const std::unique_ptr<CATListValCATBaseUnknown_var> none(product->GetChildren());
    ASSERT_TRUE(none);
    EXPECT_EQ(none->Size(), 0);
    chooseForProducts(true);
    EXPECT_EQ(root.get()->GetPrdInstanceName(text), E_FAIL);
    EXPECT_EQ(product->GetChildren(), nullptr);
    EXPECT_EQ(product->GetChildrenCount(), 0);
    for (const char* const name : {"", "a!", "a:b", "a "}) {
        EXPECT_EQ(product->SetPrdInstanceName(name), E_FAIL) << name;
        bolt.root().get()->SetPartNumber(name);
        EXPECT_EQ(bolt.root().partNumber(), "Bolt") << name;
    }
    EXPECT_EQ(product->SetPrdInstanceName(" a b"), S_OK);
}

TEST_F(SessionTest, AnUnloadedDocumentTakesItsPointersWithIt) {
    const Document nut = session().part("/w/Nut.CATPart");
    const Product seen = root.add(nut, "Nut.1");
    CATDocument* const document = nut.get();
    const CATIADocument_var automation(document);
    const CATIProduct_var reference = seen.get()->GetReferenceProduct();
    embedded::setWorkMode(seen, WorkMode::visualisation);
    EXPECT_FALSE(nut.loaded()) << "whoever holds it";
    EXPECT_TRUE(seen.get()->GetReferenceProduct() == NULL_var);
    document->StorageName();
    reference->GetPartNumber();
    { const CATIADocument_var another(automation); }
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(),
              Texts({"use after release of document /w/Nut.CATPart in CATDocument::StorageName",
                     "use after release of product Nut in CATIProduct::GetPartNumber",
                     "use after release of document /w/Nut.CATPart in AddRef"}));
    embedded::setWorkMode(seen, WorkMode::design);
    nut.get()->StorageName();
    EXPECT_EQ(seen.get()->GetReferenceProduct()->GetPartNumber(), CATUnicodeString("Nut"));
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(), Texts());
    reference->GetPartNumber();
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(),
              Texts({"use after release of product Nut in CATIProduct::GetPartNumber"}));
}

TEST_F(SessionTest, APointerIsOnlyUsedWhileItsOwnInterfaceIsHeld) {
    const std::unique_ptr<CATListValCATBaseUnknown_var> children(root.get()->GetChildren());
    const CATIPrdProperties_var properties((*children)[1]);
    CATIProduct* product = nullptr;
    {
        const CATIProduct_var handle((*children)[1]);
        product = handle;
        EXPECT_EQ(product->GetChildrenCount(), 2);
        EXPECT_EQ(properties->IsEqual(product), 1);
    }
    const std::string name = "use after release of product Root/Sub.1 in ";
    const auto breach = [] { return embedded::Accounting::get().takeBreaches(); };
    EXPECT_EQ(breach(), Texts());
    // The list and the other handle hold the object, but not by this pointer.
    EXPECT_EQ(product->GetChildrenCount(), 2);
    EXPECT_EQ(breach(), Texts({name + "CATIProduct::GetChildrenCount"}));
    EXPECT_EQ(product->IsAKindOf("ProductInstance"), 1);
    EXPECT_EQ(breach(), Texts({name + "IsAKindOf"}));
    { const CATIAProduct_var query(product); }
    EXPECT_EQ(breach(), Texts({name + "QueryInterface(CATIAProduct)"}));
    product->AddRef();
    EXPECT_EQ(breach(), Texts({name + "AddRef"}));
    product->Release();
    { const CATIProduct_var handle(product); }
    EXPECT_EQ(breach(), Texts({name + "AddRef"}));
    EXPECT_EQ(properties->IsEqual(product), 1);
    EXPECT_EQ(breach(), Texts({name + "GetImpl"}));
    CATUnicodeString text;
    EXPECT_EQ(properties->GetDescriptionInst(text), S_OK);
    EXPECT_EQ(breach(), Texts());
}

/** Identity is that of the base interface; each interface is another pointer. */
TEST_F(SessionTest, InterfacesOfOneObjectAreDifferentPointers) {
    const CATIProduct_var product(root.get());
    const CATIPrdProperties_var properties(product);
    const CATBaseUnknown_var identity = [&] {
        void* found = nullptr;
        EXPECT_EQ(product->QueryInterface(IID_IUnknown, &found), S_OK);
        CATBaseUnknown* const unknown = static_cast<CATBaseUnknown*>(found);
        const CATBaseUnknown_var handle(unknown);
        unknown->Release();
        return handle;
    }();
    const auto* const pointer = static_cast<CATBaseUnknown*>(static_cast<CATIProduct*>(product));
    EXPECT_NE(pointer, static_cast<CATBaseUnknown*>(static_cast<CATIPrdProperties*>(properties)));
    EXPECT_NE(pointer, static_cast<CATBaseUnknown*>(identity));
    EXPECT_EQ(product->GetImpl(), static_cast<CATBaseUnknown*>(identity));
    EXPECT_EQ(properties->GetImpl(), static_cast<CATBaseUnknown*>(identity));
    EXPECT_EQ(identity->IsEqual(pointer), 1);
    EXPECT_EQ(identity->IsEqual(CATIProduct_var(bolt.root().get())), 0);
}

TEST_F(SessionTest, LargeStructuresStayFast) {
    // Quadratic work of any kind would take minutes here.
    Product father = session().product("/big/0.CATProduct").root();
    Product deepest = father;
    for (int i = 1; i < 20000; ++i) {
        const Document child = session().product("/big/" + std::to_string(i) + ".CATProduct");
        deepest = deepest.add(child, "I." + std::to_string(i));
        for (int brother = 0; i == 1 && brother < 5000; ++brother) father.add(bolt, std::to_string(brother));
    }
    ASSERT_TRUE(deepest);
    EXPECT_EQ(father.children().size(), 5001U);
    EXPECT_FALSE(deepest.add(father, "cycle"));
    EXPECT_TRUE(deepest.description("far down").get()->FindInstance(father.get()) == pointerTo(deepest));
    EXPECT_NE(session().digest().find("far down"), std::string::npos);
    embedded::setWorkMode(deepest, WorkMode::visualisation);
    EXPECT_TRUE(session().find("/big/19999.CATProduct").loaded()) << "a product stays";
    // More places than anybody can count: two of each at every level.
    Document below = bolt;
    for (int i = 0; i < 200; ++i) {
        const Document above = session().product("/many/" + std::to_string(i) + ".CATProduct");
        above.root().add(below, "left");
        deepest = above.root().add(below, "right");
        below = above;
    }
    for (int i = 0; i < 199; ++i) deepest = deepest.children().front();
    embedded::setWorkMode(deepest.children().empty() ? deepest : deepest.children().front(), WorkMode::visualisation);
    EXPECT_TRUE(bolt.loaded());
}

} // namespace
