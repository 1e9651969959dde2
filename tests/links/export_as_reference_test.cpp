#include "VornToolsExportAsReference.h"

#include "CATIProduct.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

namespace {

class ExportAsReferenceTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        environment().referencePrefix = "REF_";
    }
    static int is(VornToolsExportAsReference& references, const CATUnicodeString& name) {
        unsigned char result = 7;
        EXPECT_EQ(references.isAnExportAsReference(name, result), S_OK);
        return result;
    }
    static int has(const embedded::Product& product) {
        VornToolsExportAsReference references;
        unsigned char result = 7;
        EXPECT_EQ(references.hasAnEAR(product.get(), result), S_OK);
        return result;
    }
};

TEST_F(ExportAsReferenceTest, TheFileNameBeginsWithThePrefix) {
    VornToolsExportAsReference references;
    for (const char* name : {"REF_", "REF_a.CATPart", "/lib/REF_a.CATPart", "C:\\lib\\REF_a.CATPart"})
        EXPECT_EQ(is(references, name), 1) << name;
    for (const char* name : {"", "REF", "ref_a.CATPart", "aREF_.CATPart", "REF_/a.CATPart"})
        EXPECT_EQ(is(references, name), 0) << name;
    clearJournal();
    is(references, "/lib/REF_a.CATPart");
    EXPECT_EQ(
        embedded::Journal::get().lines(),
        Texts({"> VornToolsExportAsReference:: isAnExportAsReference", "test for component : /lib/REF_a.CATPart",
               " the Component is a REFERENCE by file_name", "< VornToolsExportAsReference:: isAnExportAsReference"}));

    environment().referencePrefix = "R\xC5\x81";
    VornToolsExportAsReference others;
    EXPECT_EQ(is(others, utf8("R\xC5\x81-.CATPart")), 1);
    EXPECT_EQ(is(others, utf8("R\xC4\x86-.CATPart")), 0) << "another letter that an 8-bit encoding may lack";

    environment().referencePrefix = "";
    EXPECT_EQ(is(references, "REF_a.CATPart"), 1) << "read once";
    references.initClassVariables();
    EXPECT_EQ(is(references, "REF_a.CATPart"), 0) << "an empty prefix begins no name";
    environment().missingManagers = {"ENVManager"};
    VornToolsExportAsReference unset;
    EXPECT_EQ(is(unset, "REF_a.CATPart"), 0);
}

TEST_F(ExportAsReferenceTest, AncestorsAreTestedUpToTheRoot) {
    auto reference = session().product("/lib/REF_g.CATProduct");
    reference.root().add(session().part("/lib/p.CATPart"), "p.1");
    auto root = session().product("/w/r.CATProduct").root();
    root.add(reference, "g.1");
    EXPECT_EQ(has(root.at({"g.1", "p.1"})), 1);
    clearJournal();
    EXPECT_EQ(has(root.at({"g.1"})), 0) << "the product itself does not count";
    EXPECT_EQ(messages().back(), "the element is NOT a child of an EAR");
    EXPECT_EQ(has(reference.root()), 0);
    VornToolsExportAsReference references;
    unsigned char result = 7;
    EXPECT_EQ(references.hasAnEAR(nullptr, result), E_FAIL);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(reports(), Texts({"VornToolsExportAsReference::hasAnEAR 9001 ip_product"}));

    HRESULT code = S_OK;
    EXPECT_TRUE(failAt("UTILFile::splitPathAndFileName", 1, [&] {
        code = references.hasAnEAR(root.at({"g.1", "p.1"}).get(), result);
    }));
    EXPECT_EQ(code, E_FAIL);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(reports(), Texts({"VornToolsExportAsReference::hasAnEAR 9004 splitPathAndFileName"}));
    EXPECT_FALSE(embedded::Journal::get().contains("the element is NOT a child of an EAR"));

    sweepFailures({"VornToolsExportAsReference::hasAnEAR", [&] {
                       unsigned char answer = 7;
                       const HRESULT found = references.hasAnEAR(root.at({"g.1", "p.1"}).get(), answer);
                       return outcomeOf(found, answer);
                   }});
    sweepFailures({"VornToolsExportAsReference::isAnExportAsReference",
                   [&] {
                       unsigned char answer = 7;
                       const HRESULT found = references.isAnExportAsReference("REF_a", answer);
                       return outcomeOf(found, answer);
                   },
                   {},
                   {},
                   {},
                   {},
                   "VornToolsExportAsReference:: isAnExportAsReference"});
    const auto start = [&] { return references.initClassVariables(); };
    sweepFailures({"VornToolsExportAsReference::initClassVariables", [&] { return SweepOutcome{start()}; }, start});
}

TEST_F(ExportAsReferenceTest, WithoutMemoryACallFails) {
    const std::string name = "/lib/REF_" + std::string(200000, 'n') + ".CATProduct";
    auto root = session().product(name).root();
    auto part = root.add(session().part("/w/p.CATPart"), "p.1");
    VornToolsExportAsReference references;
    const CATUnicodeString text(name.c_str());
    sweepAllocations("isAnExportAsReference", [&] {
        unsigned char result = 7;
        const HRESULT code = references.isAnExportAsReference(text, result);
        return SweepOutcome{code, result == 0};
    });
    sweepAllocations("hasAnEAR", [&] {
        unsigned char result = 7;
        const HRESULT code = references.hasAnEAR(part.get(), result);
        return SweepOutcome{code, result == 0};
    });
    environment().referencePrefix = std::string(kLargeAllocation, 'n');
    sweepAllocations("initClassVariables", [&] { return SweepOutcome{references.initClassVariables()}; });
}

} // namespace
