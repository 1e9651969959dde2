#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

using UuidsTest = PlatformTest;

TEST_F(UuidsTest, IdentifierOfADocument) {
    CATUnicodeString uuid("stale");
    EXPECT_EQ(VornToolsCommon::getDocUUID(nullptr, uuid), S_OK);
    EXPECT_STREQ(uuid.ConvertToChar(), "0_0_0_0");
    EXPECT_EQ(messages(), Texts());

    auto document = session().part("/w/p.CATPart").uuid("a_b_c_d");
    EXPECT_EQ(VornToolsCommon::getDocUUID(document.get(), uuid), S_OK);
    EXPECT_STREQ(uuid.ConvertToChar(), "a_b_c_d");
    EXPECT_EQ(messages(), (Texts{"Extracting CATIA UUID from document /w/p.CATPart", "The CATIA UUID is : a_b_c_d "}));

    document.withoutDescriptor();
    EXPECT_EQ(VornToolsCommon::getDocUUID(document.get(), uuid), E_FAIL);
    EXPECT_STREQ(uuid.ConvertToChar(), "0_0_0_0");
    EXPECT_EQ(reports(), Texts{"VornToolsCommon::getDocUUID 9003 GetDocumentDescriptor"});
}

TEST_F(UuidsTest, TheSessionKeepsItsIdentifier) {
    const std::string first = std::string(VornToolsCommon::getCATIA_UUID().ConvertToChar());
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(std::string(VornToolsCommon::getCATIA_UUID().ConvertToChar()), first);
    EXPECT_EQ(messages(), Texts(2, "CATIA session UUID = [" + first + "]"));
}

TEST_F(UuidsTest, Sweep) {
    auto document = session().part("p.CATPart").uuid("a_b_c_d");
    sweepFailures({"VornToolsCommon::getDocUUID",
                   [&] {
                       CATUnicodeString text;
                       const HRESULT code = VornToolsCommon::getDocUUID(document.get(), text);
                       return SweepOutcome{code, text.Compare("0_0_0_0") == 2, 0, textOfOutputs(text)};
                   },
                   {},
                   {}});
}

} // namespace
