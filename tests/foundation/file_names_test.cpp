#include "foundation/FileNames.h"

#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"

using namespace vorntools;

namespace {

using FileNamesTest = PlatformTest;

TEST_F(FileNamesTest, AFailedSplitGivesNeitherPart) {
    CATUnicodeString directory, name;
    EXPECT_EQ(splitFullName("/w/p.CATPart", directory, name), S_OK);
    EXPECT_STREQ(directory.ConvertToChar(), "/w");
    EXPECT_STREQ(name.ConvertToChar(), "p.CATPart");
    EXPECT_EQ(fileNameOf("p.CATPart", name), S_OK);
    EXPECT_STREQ(name.ConvertToChar(), "p.CATPart");
    for (const auto flavour : {embedded::FaultFlavour::codeWithOutput, embedded::FaultFlavour::nullOutput}) {
        HRESULT code = S_OK;
        const auto split = [&] { code = splitFullName("/w/p.CATPart", directory, name); };
        EXPECT_TRUE(failAt("UTILFile::splitPathAndFileName", 1, split, flavour));
        EXPECT_EQ(code, E_FAIL);
        EXPECT_TRUE(directory.IsNull() && name.IsNull());
    }
}

} // namespace
