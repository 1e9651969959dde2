#include "cache/DatLines.h"

#include "tests/support/Fixture.h"

using vorntools::DatLines;
using vorntools::DatRange;
using vorntools::DatTag;

namespace {

class DatLinesTest : public PlatformTest {
protected:
    static CATListValCATUnicodeString list(const Texts& texts) {
        CATListValCATUnicodeString result;
        for (const std::string& text : texts) result.Append(CATUnicodeString(text.data(), text.size()));
        return result;
    }
    static Texts texts(const CATListValCATUnicodeString& list) {
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.emplace_back(list[i].ConvertToChar());
        return result;
    }
};

TEST_F(DatLinesTest, FirstOccurrenceOfATagCounts) {
    const auto lines = list({"<ItemRevUID>", "one", "</ItemRevUID>", "<ItemRevUID>", "two"});
    const DatLines dat(lines);
    EXPECT_STREQ(dat.valueOf(DatTag::ItemRevUID).ConvertToChar(), "one");
    EXPECT_STREQ(dat.valueOf("<ItemRevUID>").ConvertToChar(), "one");
    EXPECT_TRUE(dat.valueOf("<Unknown>").IsNull());
    EXPECT_TRUE(dat.valueOf("").IsNull());
}

TEST_F(DatLinesTest, TagMustBeTheWholeLine) {
    const auto lines = list({" <ItemRevUID>", "a", "<ItemRevUID> ", "b", "<itemrevuid>", "c", "ItemRevUID>", "d",
                             std::string("<ItemRevUID>\0", 13), "e", "<", ">", "<>", "</", "</>", ""});
    EXPECT_FALSE(DatLines(lines).has(DatTag::ItemRevUID));
}

TEST_F(DatLinesTest, TagInTheLastLineHasNoValue) {
    const auto lines = list({"x", "<DatFileVersion>"});
    const DatLines dat(lines);
    EXPECT_TRUE(dat.has(DatTag::DatFileVersion));
    EXPECT_TRUE(dat.valueOf(DatTag::DatFileVersion).IsNull());
    EXPECT_FALSE(dat.isPositional());
}

TEST_F(DatLinesTest, BlockEndsAtTheFirstClosingTagBehindItsOpeningTag) {
    struct Case {
        Texts lines;
        int first, size;
    };
    const Case cases[] = {
        {{"<DT_Cfgs>", "a", "b", "</DT_Cfgs>", "c", "</DT_Cfgs>"}, 2, 2},
        {{"</DT_Cfgs>", "<DT_Cfgs>", "a", "</DT_Cfgs>"}, 3, 1},
        {{"<DT_Cfgs>", "</DT_Cfgs>"}, 2, 0},
        {{"<DT_Cfgs>", "a", "b"}, 1, 0},
        {{"a", "</DT_Cfgs>"}, 1, 0},
        {{"<DT_Cfgs>", "<DT_Sheets>", "</DT_Sheets>", "<DT_Cfgs>", "</DT_Cfgs>"}, 2, 3},
        {{}, 1, 0},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.lines));
        const auto lines = list(test.lines);
        const DatRange range = DatLines(lines).block(DatTag::DesignTableConfigs);
        EXPECT_EQ(range.first, test.first);
        EXPECT_EQ(range.size(), test.size);
    }
}

TEST_F(DatLinesTest, LinesAppendedByTheReaderAreNotLinesOfTheFile) {
    const auto empty = list({"<DatFileVersion>", "0", "</DatFileVersion>"});
    EXPECT_TRUE(DatLines(empty).isPositional());
    EXPECT_TRUE(DatLines(empty).fileLine(1).IsNull());

    const auto two = list({"item", "rev", "<DatFileVersion>", "0", "</DatFileVersion>"});
    const DatLines dat(two);
    EXPECT_STREQ(dat.fileLine(1).ConvertToChar(), "item");
    EXPECT_STREQ(dat.fileLine(2).ConvertToChar(), "rev");
    for (const int outside : {-1, 0, 3, 4, 5, 6}) EXPECT_TRUE(dat.fileLine(outside).IsNull()) << outside;

    const auto unclosed = list({"item", "<DatFileVersion>", "0", "last"});
    EXPECT_STREQ(DatLines(unclosed).fileLine(4).ConvertToChar(), "last");
    const auto inFront = list({"<DatFileVersion>", "0", "</DatFileVersion>", "item"});
    EXPECT_STREQ(DatLines(inFront).fileLine(4).ConvertToChar(), "item");
}

TEST_F(DatLinesTest, DateComesFromTheLayoutsOwnPlace) {
    const auto positional =
        list({"1", "2", "3", "4", "5", "6", "7", "1700", "9", "<DatFileVersion>", "0", "</DatFileVersion>"});
    EXPECT_STREQ(DatLines(positional).localLastModDate().ConvertToChar(), "1700");
    const auto tagged = list({"<DatFileVersion>", "2", "</DatFileVersion>", "<LocalLastModDate>", "1800"});
    EXPECT_STREQ(DatLines(tagged).localLastModDate().ConvertToChar(), "1800");
}

TEST_F(DatLinesTest, DesignTableMapsAreJoinedLineByLine) {
    struct Case {
        Texts lines;
        bool found;
        Texts maps;
    };
    const Case cases[] = {
        {{"<DT_Maps>", "<DT_Map>", "x", "y", "</DT_Map>", "</DT_Maps>"}, true, {"!!!x!!!y"}},
        {{"<DT_Maps>", "<DT_Map>", "</DT_Map>", "<DT_Map>", "", "</DT_Map>", "</DT_Maps>"}, true, {"", "!!!"}},
        {{"<DT_Maps>", "lost", "</DT_Map>", "<DT_Map>", "<DT_Map>", "</DT_Map>", "lost", "</DT_Maps>"},
         true,
         {"!!!<DT_Map>"}},
        {{"<DT_Maps>", "<DT_Map>", "open", "</DT_Maps>", "</DT_Map>"}, true, {}},
        {{"<DT_Maps>", "</DT_Maps>"}, false, {}},
        {{"<DT_Maps>", "<DT_Map>", "x", "</DT_Map>"}, false, {}},
        {{"<DT_Map>", "x", "</DT_Map>", "</DT_Maps>"}, false, {}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.lines));
        const auto lines = list(test.lines);
        auto maps = list({"stale"});
        EXPECT_EQ(DatLines(lines).designTableMaps(maps), test.found);
        EXPECT_EQ(texts(maps), test.maps);
    }
}

} // namespace
