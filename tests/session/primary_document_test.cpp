#include "tests/session/FailingCall.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATIProduct.h"
#include "VornCache.h"
#include "VornToolsCommon.h"

namespace {

const std::string kCommon = "VornToolsCommon::";

/** What the PDM knows stands in DAT files. */
class PrimaryDocumentTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
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
        CATIProduct* result = top.get(); // is to be cleared
        EXPECT_EQ(VornToolsCommon::getPrimaryDocument(product.get(), cache, text, result), expected);
        if (result) result->Release();
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
    clearJournal();
    EXPECT_EQ(primary(low, &fresh, name, S_OK), top.get()) << "without an item revision";
    EXPECT_TRUE(embedded::Journal::get().contains("Product is a secondary part: itemRevUID field is empty"));
}

TEST_F(PrimaryDocumentTest, ARootWithoutItemRevisionEndsTheSearch) {
    VornCache cache;
    EXPECT_EQ(primary(group, &cache, name, E_FAIL), nullptr);
    EXPECT_EQ(name, "");
    EXPECT_EQ(reports(), Texts({kCommon + "isElementSecondaryPart 9003 VornToolsCommon::getInstanceDescription"}))
        << "a root has no description; that is no failure of the search";
}

TEST_F(PrimaryDocumentTest, ADescriptionThatCannotBeReadIsAFailure) {
    VornCache cache;
    const auto search = [&] {
        reports();
        primary(low, &cache, name, E_FAIL);
    };
    const auto check = [&](int) {
        EXPECT_EQ(reports(), Texts({kCommon + "isElementSecondaryPart 9003 VornToolsCommon::getInstanceDescription",
                                    kCommon + "getPrimaryDocument 9003 isElementSecondaryPart"}));
    };
    EXPECT_EQ(whenFailing("CATIPrdProperties::GetDescriptionInst", search, check), 1);
    reports();
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

TEST_F(PrimaryDocumentTest, ALogicalNameIsHandedOutAsThePathOnDisk) {
    const std::string separator = path("").substr(path("").size() - 1);
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    auto logical = session().product("\x01\x02\\LIB" + separator + "l.CATProduct").root();
    know("l.CATProduct", "r");
    VornCache cache;
    EXPECT_EQ(primary(logical.add(session().find(path("low.CATPart")), "l.1"), &cache, name, S_OK), logical.get());
    EXPECT_EQ(name, path("l.CATProduct"));
}

TEST_F(PrimaryDocumentTest, NoFaultLeavesAnythingBehind) {
    know("top.CATProduct", "rev2");
    group.description("SecondaryPart");
    sweepFailures({kCommon + "getPrimaryDocument", [this] {
                       VornCache cache;
                       CATUnicodeString text("before");
                       CATIProduct* result = nullptr;
                       const HRESULT code = VornToolsCommon::getPrimaryDocument(low.get(), &cache, text, result);
                       const SweepOutcome outcome = outcomeOf(code, result, text);
                       if (result) result->Release();
                       return outcome;
                   }});
}

} // namespace
