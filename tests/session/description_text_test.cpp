#include "tests/support/AllocationSweep.h"
#include "tests/support/Fixture.h"

#include "CATUnicodeString.h"
#include "VornToolsCommon.h"

struct VornToolsCommonTestAccess {
    static HRESULT process(const char* value, CATUnicodeString& description, unsigned char mode) {
        return VornToolsCommon::processInstanceDescription(value, description, mode);
    }
    static std::string processed(const std::string& value, const std::string& description, int mode) {
        CATUnicodeString text(description.data(), description.size());
        EXPECT_EQ(VornToolsCommon::processInstanceDescription(CATUnicodeString(value.data(), value.size()), text,
                                                              static_cast<unsigned char>(mode)),
                  S_OK);
        return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
    }
};

namespace {

using Access = VornToolsCommonTestAccess;
using namespace std::string_literals;

class DescriptionTextTest : public PlatformTest {
protected:
    static std::string cleaned(const std::string& description) {
        CATUnicodeString text(description.data(), description.size());
        EXPECT_EQ(VornToolsCommon::cleanInstanceDescription(text), S_OK);
        return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
    }
};

struct Change {
    std::string before, after;
};

TEST_F(DescriptionTextTest, ABrokenLinkIsMarked) {
    const Change cases[] = {
        {"", "BrokenIcon"},
        {"my text", "BrokenIcon\nmy text"},
        {"brokenicon", "BrokenIcon\nbrokenicon"},
        {"IgnoreNode\nmy text", "BrokenIcon\nIgnoreNode\nmy text"},
        {"KETO_ID_7\nmy text", "BrokenIcon\nmy text"},
        {"Context KETO_ID_7\nmy text", "BrokenIcon\nmy text"},
        {"KETO_ID_7", "BrokenIcon"},
        {"my KETO_ID_7 text", "BrokenIcon"},
        {"my text\nKETO_ID_7", "BrokenIcon\nKETO_ID_7"},
        {"KETO_ID_7\na\nKETO_ID_7\nxKETO_ID_7\nb", "BrokenIcon\na\nxb"},
        {"\na\n\nKETO_ID_7", "BrokenIcon\naKETO_ID_7"},
        {"BrokenIconX\nKETO_ID_7", "BrokenIconX\nKETO_ID_7"},
        {"SecondaryPart\nKETO_ID_7\na", "SecondaryPart\nKETO_ID_7\na"},
        {"KETO_ID_7\0\na\0b"s, "BrokenIcon\na\0b"s},
        {"KETO_ID_\xFF\n\xC3\xA4\xFF", "BrokenIcon\n\xC3\xA4\xFF"},
    };
    for (const Change& c : cases) {
        SCOPED_TRACE(c.before);
        for (const int mode : {0, 1}) EXPECT_EQ(Access::processed("BrokenIcon", c.before, mode), c.after);
        EXPECT_EQ(Access::processed("BrokenIcon", c.after, 0), c.after) << "a second time changes nothing";
    }
}

TEST_F(DescriptionTextTest, AnIdentityIsRemoved) {
    const Change cases[] = {
        {"", ""},
        {"my text", "my text"},
        {"KETO_ID_7\nmy text", "my text"},
        {"KETO_ID_7", "KETO_ID_7"},
        {"Context KETO_ID_7", "KETO_ID_7"},
        {"BrokenIcon\nKETO_ID_7\nmy text", "KETO_ID_7\nmy text"},
        {"KETO_ID_7\nBrokenIcon", "KETO_ID_7\nBrokenIcon"},
        {"IgnoreNode\nKETO_ID_7\nmy text", "IgnoreNode\nmy text"},
        {"my KETO_ID_7\ntext\nKETO_ID_7\n", "my text\n"},
        {"KETO_ID_7\r\nmy text\nKETO_ID_7\n", "my text\nKETO_ID_7\n"},
    };
    for (const Change& c : cases)
        for (const int mode : {0, 1}) EXPECT_EQ(Access::processed("", c.before, mode), c.after) << c.before;
}

TEST_F(DescriptionTextTest, AnIdentityIsSet) {
    const Change cases[] = {
        {"", "KETO_ID_42"},
        {"my text", "KETO_ID_42\nmy text"},
        {"KETO_ID_7\nmy text", "KETO_ID_42\nmy text"},
        {"Context KETO_ID_7\nmy text", "KETO_ID_42\nmy text"},
        {"KETO_ID_7", "KETO_ID_42"},
        {"keto_id_42", "keto_id_42"},
        {"keto_id_42\n", "KETO_ID_42\nketo_id_42\n"},
        {"KETO_ID_42\n", "KETO_ID_42\n"},
        {"KETO_ID_7\r\nmy text\r\nKETO_ID_7", "KETO_ID_42\nmy text\r\nKETO_ID_7"},
        {"BrokenIcon\nKETO_ID_7", "KETO_ID_42\nBrokenIcon\nKETO_ID_7"},
        {"\n", "KETO_ID_42\n\n"},
    };
    for (const Change& c : cases) EXPECT_EQ(Access::processed("42", c.before, 0), c.after) << c.before;
    EXPECT_EQ(Access::processed("KETO_ID_42", "", 0), "KETO_ID_KETO_ID_42") << "only the other mode knows the keyword";
    EXPECT_EQ(Access::processed("brokenicon", "", 0), "KETO_ID_brokenicon");
}

TEST_F(DescriptionTextTest, AnIdentityReplacesTheMarkers) {
    const Change cases[] = {
        {"", "KETO_ID_42"},
        {"my text", "KETO_ID_42\nmy text"},
        {"KETO_ID_7", "KETO_ID_42"},
        {"KETO_ID_7\nxKETO_ID_7\nKETO_ID_71", "KETO_ID_42\nxKETO_ID_42\nKETO_ID_421"},
        {"KETO_ID_7\r\nKETO_ID_7\n", "KETO_ID_42\nKETO_ID_7\n"},
        {"BrokenIcon", "KETO_ID_42"},
        {"BrokenIconX", "KETO_ID_42\nX"},
        {"BrokenIcon\nKETO_ID_7\na", "KETO_ID_42\na"},
        {"BrokenIcon\nBrokenIcon\na", "KETO_ID_42\nBrokenIcon\na"},
        {"BrokenIconX\nBrokenIcon\na", "KETO_ID_42\nBrokenIconX\na"},
        {"BrokenIcon\nIgnoreNode\na", "KETO_ID_42\na"},
        {"IgnoreNode\nBrokenIcon\na", "KETO_ID_42\nBrokenIcon\na"},
        {"SecondaryPart\na", "KETO_ID_42\nSecondaryPart\na"},
    };
    for (const Change& c : cases)
        for (const char* value : {"42", "KETO_ID_42"})
            EXPECT_EQ(Access::processed(value, c.before, 1), c.after) << c.before;
    EXPECT_EQ(Access::processed("xKETO_ID_", "a", 255), "xKETO_ID_\na");
}

TEST_F(DescriptionTextTest, TheJournalTellsAPlainUpdate) {
    const std::string before = "Old instance description = [";
    const std::string after = "New instance description is = [KETO_ID_42";
    const struct {
        std::string description;
        Texts lines;
    } cases[] = {
        {"", {"Old instance description was empty", after + "]"}},
        {"KETO_ID_7", {before + "KETO_ID_7]", after + "]"}},
        {"KETO_ID_42\n", {before + "KETO_ID_42\n]", after + "\n]"}},
        {"KETO_ID_42", {after + "]"}},
    };
    for (const auto& c : cases) {
        clearJournal();
        Access::processed("42", c.description, 0);
        EXPECT_EQ(messages(), c.lines) << c.description;
    }
    clearJournal();
    Access::processed("42", "a", 1);
    Access::processed("BrokenIcon", "a", 0);
    EXPECT_EQ(messages(), Texts());
}

TEST_F(DescriptionTextTest, CleaningLeavesTheUsersText) {
    const Change cases[] = {
        {"", ""},
        {"my text\r\nmore\r\n", "my text\nmore\n"},
        {"KETO_ID_7\r\nBBPC_ID_3\r\nmy text\r\nmore", "my text\nmore"},
        {"Context KETO_ID_7\nBBPC_ID_3\nmy text", "my text"},
        {"BBPC_ID_3\nBBPC_ID_4\nmy text", "BBPC_ID_4\nmy text"},
        {"KETO_ID_7\nBBPC_ID_3\nBBPC_ID_4", "BBPC_ID_4"},
        {"KETO_ID_7", ""},
        {"KETO_ID_7\nBBPC_ID_3", ""},
        {"KETO_ID_7\nKETO_ID_8", "KETO_ID_8"},
        {"KETO_ID_7\nBBPC_IDS", "BBPC_IDS"},
        {"BrokenIcon\nKETO_ID_7\nmy text", "KETO_ID_7\nmy text"},
        {"SecondaryPart\r\nBBPC_ID_3", "BBPC_ID_3"},
        {"IgnoreNode", ""},
        {"IgnoreNodes\na", "IgnoreNodes\na"},
        {"Context  KETO_ID_7", "Context  KETO_ID_7"},
        {"ketO_ID_7\r\r\n\r", "ketO_ID_7\r\n"},
        {"\nKETO_ID_7", "\nKETO_ID_7"},
        {"KETO_ID_7\n\0\xFF\r\n\xC3"s, "\0\xFF\n\xC3"s},
    };
    for (const Change& c : cases) EXPECT_EQ(cleaned(c.before), c.after) << c.before;
}

TEST_F(DescriptionTextTest, HugeTextsAreWorkedThroughOnce) {
    std::string text = "KETO_ID_7\n";
    while (text.size() < (10U << 20)) text += "some text\r\n";
    const std::string user = text.substr(10);
    EXPECT_EQ(Access::processed("42", text, 1), "KETO_ID_42\n" + user);
    EXPECT_EQ(Access::processed("BrokenIcon", text, 0), "BrokenIcon\n" + user);
    EXPECT_EQ(Access::processed("", text, 0), user);
    EXPECT_EQ(cleaned(text).size(), user.size() - user.size() / 11);
    const std::string lines(10U << 20, '\n');
    EXPECT_EQ(Access::processed("BrokenIcon", lines + "KETO_ID_7", 0), "BrokenIcon\nKETO_ID_7");
}

TEST_F(DescriptionTextTest, WithoutMemoryTheDescriptionStays) {
    const std::string text = "Context KETO_ID_7\r\n" + std::string(200000, 'x');
    const auto sweep = [&](const char* name, const auto& change) {
        sweepAllocations(name, [&] {
            CATUnicodeString description(text.data(), text.size());
            const HRESULT code = change(description);
            return SweepOutcome{code, description.ConvertToChar() == text};
        });
    };
    sweep("cleanInstanceDescription",
          [](auto& description) { return VornToolsCommon::cleanInstanceDescription(description); });
    for (const char* value : {"", "BrokenIcon", "42"})
        for (const bool replaces : {false, true})
            sweep(value, [=](auto& description) { return Access::process(value, description, replaces); });
}

} // namespace
