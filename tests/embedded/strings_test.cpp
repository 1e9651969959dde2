#include "CATUnicodeString.h"
#include "CATUuid.h"
#include "UTILString.h"
#include "embedded/Profile.h"
#include "tests/support/Fixture.h"

#include <set>

namespace {

constexpr auto kForward = CATUnicodeString::CATSearchModeForward;
constexpr auto kBackward = CATUnicodeString::CATSearchModeBackward;

std::string bytes(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

/** Texts of bytes are UTF-8 here, of which every byte survives. */
class StringsTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        embedded::setSwitches({});
    }
};

TEST_F(StringsTest, SearchCountsCharactersAndMeasuresBackwardFromTheEnd) {
    const struct {
        const char* text;
        const char* pattern;
        int beginning;
        CATUnicodeString::CATSearchMode mode;
        int expected;
    } cases[] = {
        {"012345678901test6789", "test", 4, kBackward, 12},
        {"012345678901test6789", "test", 5, kBackward, -1},
        {"a.b.CATPart", ".", 0, kBackward, 3},
        {"a.b.CATPart", ".", 8, kBackward, 1},
        {"abcabc", "abc", 0, kForward, 0},
        {"abcabc", "abc", 1, kForward, 3},
        {"abcabc", "abc", 4, kForward, -1},
        {"abc", "abc", 99, kForward, -1},
        {"abc", "abc", 99, kBackward, -1},
        {"abc", "a", -7, kForward, 0},
        {"abc", "", 0, kForward, -1},
        {"", "a", 0, kForward, -1},
        {"\xC3\xA4\xE2\x82\xACx\xC3\xA4", "\xC3\xA4", 1, kForward, 3},
        {"\xC3\xA4\xE2\x82\xACx\xC3\xA4", "\xC3\xA4", 1, kBackward, 0},
        {"\xC3\xA4\xE2\x82\xACx", "x", 0, kBackward, 2},
        // Half a character is no match, a byte of its own is.
        {"\xC3\xA4", "\xA4", 0, kForward, -1},
        {"\xC3\xA4", "\xC3", 0, kForward, -1},
        {"\xC3\xA4\xA4", "\xA4", 0, kForward, 1},
        {"\xC3\xA4\xA4", "\xA4", 0, kBackward, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CATUnicodeString(c.text).SearchSubString(c.pattern, c.beginning, c.mode), c.expected)
            << c.text << " / " << c.pattern << " / " << c.beginning;
}

TEST_F(StringsTest, CompareTellsIdenticalFromEqualButForCase) {
    const struct {
        const char* left;
        const char* right;
        int expected;
    } cases[] = {
        {"CATPart", "CATPart", 2},
        {"CATPart", "catpart", 1},
        {"CATPart", "CATPar", 0},
        {"[", "{", 0},
        {"@", "`", 0},
        {"", "", 2},
        {"\xC3\xA4", "\xC3\x84", 1},
        {"\xC3\x97", "\xC3\xB7", 0},
        {"\xC5\x99", "\xC5\x98", 1},
        {"\xC5\xB8", "\xC3\xBF", 1},
        {"\xCE\xA3", "\xCF\x82", 1},
        {"\xD0\xAF", "\xD1\x8F", 1},
        {"\xC4", "\xE4", 0},
        {"\xE2\x82\xAC", "\xE2\x82\xAC", 2},
        {"\xC3\xA4", "\xC3\xB6", 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(CATUnicodeString(c.left).Compare(c.right), c.expected) << c.left << " / " << c.right;
        EXPECT_EQ(CATUnicodeString(c.right).Compare(c.left), c.expected) << c.right << " / " << c.left;
    }
    EXPECT_EQ(CATUnicodeString("a\0b", 3).Compare("a"), 0);
}

TEST_F(StringsTest, LetterCaseFollowsTheAlphabetAndSparesOtherBytes) {
    const struct {
        const char* upper;
        const char* lower;
    } cases[] = {
        {"AZ[", "az["},
        {"\xC3\x80\xC3\x9E", "\xC3\xA0\xC3\xBE"},
        {"\xC5\x81\xC5\xBD", "\xC5\x82\xC5\xBE"},
        {"\xCE\x91\xCE\xA9\xCE\x8C", "\xCE\xB1\xCF\x89\xCF\x8C"},
        {"\xD0\x81\xD0\x96\xD0\xAF", "\xD1\x91\xD0\xB6\xD1\x8F"},
        {"\xFF\xC3\xE2\x82", "\xFF\xC3\xE2\x82"},
    };
    for (const auto& c : cases) {
        CATUnicodeString text(c.lower);
        text.ToUpper();
        EXPECT_EQ(bytes(text), c.upper);
    }
}

TEST_F(StringsTest, UndecodableBytesCountOneEachAndSurvive) {
    const struct {
        const char* text;
        int characters;
    } cases[] = {
        {"\xFF\xFE", 2},
        {"\xC3", 1},
        {"\xE2\x82", 2},
        {"\xC0\xAF", 2},
        {"\xED\xA0\x80", 3},
        {"\xF5\x80", 2},
        {"\xE2\xE2\x82\xAC", 2},
        {"\xF0\x9F\x98\x80", 1},
        {"12345678\xC3\xA4 12", 12},
        {"\xE0\x80\x80", 3},
        {"\xF4\x90\x80\x80", 4},
        {"", 0},
    };
    for (const auto& c : cases) {
        CATUnicodeString text(c.text);
        EXPECT_EQ(text.GetLengthInChar(), c.characters) << c.text;
        CATBSTR automation = nullptr;
        text.ConvertToBSTR(&automation);
        CATUnicodeString back;
        EXPECT_EQ(back.BuildFromBSTR(automation), 0);
        CATFreeString(automation);
        EXPECT_EQ(bytes(back), c.text);
        CATUnicodeString rebuilt;
        for (int i = 0; i < text.GetLengthInChar(); ++i) rebuilt += text.SubString(i, 1);
        EXPECT_EQ(bytes(rebuilt), c.text);
    }
    CATUnicodeString text("old");
    EXPECT_LT(text.BuildFromUTF8("a\xFF", 2), 0);
    EXPECT_TRUE(text.IsNull());
    EXPECT_EQ(text.BuildFromUTF8("\xC3\xA4\0b", 4), 0);
    EXPECT_EQ(text.GetLengthInChar(), 3);
    EXPECT_EQ(text[9].GetCode(), 0U);
}

TEST_F(StringsTest, EditingTakesPositionsInCharactersAndStaysInside) {
    CATUnicodeString text("\xC3\xA4"
                          "bc\xE2\x82\xAC");
    EXPECT_EQ(bytes(text.SubString(1, 2)), "bc");
    EXPECT_EQ(bytes(text.SubString(3, 99)), "\xE2\x82\xAC");
    EXPECT_EQ(bytes(text.SubString(7, 1)), "");
    EXPECT_EQ(bytes(text.SubString(0, -1)), "");
    text = "aXbXc";
    EXPECT_EQ(text.ReplaceSubString("X", "-X-"), 1);
    text.ReplaceAll("X", "XX");
    EXPECT_EQ(bytes(text), "a-XX-bXXc");
    text.ReplaceAll("", "y");
    EXPECT_EQ(bytes(text), "a-XX-bXXc");
}

TEST_F(StringsTest, NumbersAreReadAndWrittenWithinTheirRange) {
    CATUnicodeString text;
    EXPECT_EQ(text.BuildFromNum(-42), 3);
    EXPECT_EQ(bytes(text), "-42");
    EXPECT_EQ(text.BuildFromNum(7, "<%0200d>"), 202);
    EXPECT_EQ(text.BuildFromNum(7, "%s"), 0);
    EXPECT_TRUE(text.IsNull());
    EXPECT_EQ(text.BuildFromNum(7, "%d%d"), 0);
    const struct {
        const char* text;
        int expected; ///< 77: no number
    } cases[] = {{"12", 12},
                 {" -5x", -5},
                 {"", 77},
                 {"x", 77},
                 {"2147483647", 2147483647},
                 {"2147483648", 77},
                 {"99999999999999999999", 77}};
    for (const auto& c : cases) {
        int value = 77;
        EXPECT_EQ(CATUnicodeString(c.text).ConvertToNum(&value), c.expected == 77 ? 0 : 1) << c.text;
        EXPECT_EQ(value, c.expected) << c.text;
    }
}

TEST_F(StringsTest, IdentifiersHaveOneTextForm) {
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"1a_0_ffffffff_7", "1a_0_ffffffff_7"},
        {"00FF_0_0_1", "ff_0_0_1"},
        {"", "0_0_0_0"},
        {"1_2_3", "0_0_0_0"},
        {"1_2_3_4_5", "0_0_0_0"},
        {"1_2_3_4x", "0_0_0_0"},
        {"1__3_4", "0_0_0_0"},
        {"123456789_0_0_0", "0_0_0_0"},
    };
    for (const auto& c : cases) {
        std::string copy(c.text);
        char text[256];
        CATUuid(&copy[0]).UUID_to_chaine(text);
        EXPECT_STREQ(text, c.expected) << c.text;
    }
    std::set<std::string> made;
    for (int i = 0; i < 1000; ++i) made.insert(bytes(UTILString::genUuid()));
    EXPECT_EQ(made.size(), 1000U);
}

TEST_F(StringsTest, SplitAndContextKeyWord) {
    CATListValCATUnicodeString parts;
    parts.Append("old");
    UTILString::split("@=@a@=@@=@b", "@=@", parts);
    ASSERT_EQ(parts.Size(), 4);
    EXPECT_EQ(bytes(parts[1]) + "|" + bytes(parts[2]) + "|" + bytes(parts[3]) + "|" + bytes(parts[4]), "|a||b");
    UTILString::split("a b", "", parts);
    EXPECT_EQ(parts.Size(), 1);
    UTILString::split("", ";", parts);
    EXPECT_EQ(parts.Size(), 1);
    CATUnicodeString text("Context KETO_ID_1\nx Context KETO_ID_2\nContext KETO_ID_3\nContext other");
    UTILString::removeContextKeyWord(text);
    EXPECT_EQ(bytes(text), "KETO_ID_1\nx Context KETO_ID_2\nKETO_ID_3\nContext other");
}

} // namespace
