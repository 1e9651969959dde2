#include "foundation/FileNames.h"
#include "foundation/Utf8.h"

#include "embedded/Profile.h"
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

TEST_F(FileNamesTest, NamesKeepEveryByte) {
    embedded::setSwitches({}); // whose texts may hold what is no character
    for (const char* const bytes : {"", "a", "\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC",
                                    "\xF0\x9F\x98\x80\xF0\x9F\x98\x80", "\x80\x80\x80\x80\x80"})
        EXPECT_EQ(utf8Of(bytes), bytes);
}

} // namespace
