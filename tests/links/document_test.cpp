#include "VornToolsDocument.h"

#include "CATDocument.h"
#include "UTILDLName.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

class DocumentTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        environment().separator = "/";
        environment().logicalNames = {{"LIB", "/data/lib"}, {"BOLTS", "/data/lib/bolts/"},
                                      {"DRIVE", "C:\\lib"}, {"NET", "\\\\srv\\lib"},
                                      {"REL", "LIB"},       {"SHELF", "store/shelf"}};
        environment().usesLogicalNames = true;
    }
    /** Storage name of the document found; "" when none. */
    static std::string find(const std::string& name) {
        CATDocument* document = reinterpret_cast<CATDocument*>(16);
        const HRESULT code = VornToolsDocument::getDocumentInSession(name.c_str(), document);
        EXPECT_EQ(code == S_OK, document != nullptr) << name;
        EXPECT_EQ(SUCCEEDED(code), document != nullptr) << name;
        return document ? document->StorageName().ConvertToChar() : "";
    }
};

TEST_F(DocumentTest, PathsAreLookedUpByLogicalDirectory) {
    const struct {
        const char *name, *logical;
        const char* path; ///< what the logical name stands for
    } cases[] = {
        {"/data/lib/p.CATPart", "\x01\x02\\LIB/p.CATPart", "/data/lib/p.CATPart"},
        {"/data/lib/sub/p.CATPart", "\x01\x02\\LIB/sub/p.CATPart", "/data/lib/sub/p.CATPart"},
        {"/data/lib/bolts/p.CATPart", "\x01\x02\\BOLTS/p.CATPart", "/data/lib/bolts/p.CATPart"},
        {"LIB\\q.CATPart", "\x01\x02\\LIB/q.CATPart", "/data/lib/q.CATPart"},
        {"store/shelf/s.CATPart", "\x01\x02\\SHELF/s.CATPart", "store/shelf/s.CATPart"},
    };
    for (const auto& c : cases) {
        session().part(c.logical);
        EXPECT_EQ(find(c.name), c.logical);
        EXPECT_EQ(find(c.logical), c.logical) << "already in that form";
        CATUnicodeString physical;
        EXPECT_EQ(UTILDLName::getPhysicalPathFromDLName(c.logical, physical), S_OK);
        EXPECT_STREQ(physical.ConvertToChar(), c.path);
    }
    EXPECT_EQ(find("/data/lib/absent.CATPart"), "");
}

TEST_F(DocumentTest, OtherNamesAreLookedUpAsTheyAre) {
    for (const char* name : {"/data/library/p.CATPart", "/data/lip/p.CATPart", "C:\\lib\\p.CATPart",
                             "\\\\srv\\lib\\p.CATPart", "p.CATPart", "LIB"}) {
        session().part(name);
        EXPECT_EQ(find(name), name);
    }
    session().part("/data/lib/plain.CATPart");
    EXPECT_EQ(find("/data/lib/plain.CATPart"), "");
    environment().usesLogicalNames = false;
    EXPECT_EQ(find("/data/lib/plain.CATPart"), "/data/lib/plain.CATPart");
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(find("/data/lib/plain.CATPart"), "/data/lib/plain.CATPart");
    EXPECT_EQ(find(""), "");
    EXPECT_EQ(reports(), Texts({"VornToolsDocument::getDocumentInSession 9001 name"}));
}

TEST_F(DocumentTest, APathThatCannotBePutIntoThatFormStays) {
    session().part("/data/lib/plain.CATPart");
    std::string found;
    const auto look = [&] { found = find("/data/lib/plain.CATPart"); };
    for (const auto flavour : {embedded::FaultFlavour::codeWithOutput, embedded::FaultFlavour::nullOutput}) {
        EXPECT_TRUE(failAt("CATMakeLogicalPath", 1, look, flavour));
        EXPECT_EQ(found, "/data/lib/plain.CATPart");
    }
}

TEST_F(DocumentTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    session().part("\x01\x02\\LIB/p.CATPart");
    sweepFailures({"VornToolsDocument::getDocumentInSession", [&] {
                       CATDocument* document = nullptr;
                       const HRESULT code = VornToolsDocument::getDocumentInSession("/data/lib/p.CATPart", document);
                       return outcomeOf(code, document);
                   }});
}

TEST_F(DocumentTest, WithoutMemoryACallFails) {
    const std::string rest = std::string(200000, 'n') + ".CATPart";
    session().part("\x01\x02\\LIB/" + rest);
    const CATUnicodeString name(("/data/lib/" + rest).c_str());
    sweepAllocations("getDocumentInSession", [&] {
        CATDocument* document = reinterpret_cast<CATDocument*>(16);
        const HRESULT code = VornToolsDocument::getDocumentInSession(name, document);
        return outcomeOf(code, document);
    });
}

} // namespace
