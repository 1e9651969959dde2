#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentFolders.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <numeric>
#include <random>
#include <set>

namespace {

/** Folders of documents that were renamed, moved and copied. */
class ArchiveTest : public DocumentFoldersTest {
protected:
    /** Files of a folder and below. */
    std::string files(const std::string& name) {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path(name)))
            if (!entry.is_directory()) names.insert(std::filesystem::relative(entry.path(), path(name)).string() + " ");
        return std::accumulate(names.begin(), names.end(), std::string());
    }
    /** Bytes that cannot be made fewer. */
    static std::string noise(std::size_t size) {
        std::mt19937 random(7);
        std::string bytes(size, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random() & 0xFFU);
        return bytes;
    }
    /** The lines of a table or tree, its branches in ASCII, without the test's own folder. */
    std::string shown() {
        std::string text = content("out");
        const std::pair<std::string, std::string> inOtherWords[] = {{path(""), ""},
                                                                    {"\xE2\x94\x9C\xE2\x94\x80", "|-"},
                                                                    {"\xE2\x94\x94\xE2\x94\x80", "'-"},
                                                                    {"\xE2\x94\x82", "|"}};
        for (const auto& [from, to] : inOtherWords)
            for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at))
                text.replace(at, from.size(), to);
        return text;
    }
    /** Name, folders that agree and distance of each candidate of a row. */
    std::string candidatesOf(const nlohmann::ordered_json& row) {
        std::string text;
        for (const auto& candidate : row["candidates"])
            text += candidate["document"].get<std::string>().substr(path("").size()) + " " +
                    candidate["agreeing_folders"].dump() + " " + candidate["distance"].dump() + "\n";
        return text;
    }
    /** The same, with the columns of its tables two blanks apart. */
    std::string squeezed() {
        std::string text = shown();
        for (std::size_t at = text.find("   "); at != std::string::npos; at = text.find("   ", at)) text.erase(at, 1);
        return text;
    }
};

TEST_F(ArchiveTest, EachRuleThatFindsANameIsTold) {
    document("w/now/Top.CATProduct", "D:\\old\\proj\\Top.CATProduct",
             {part(path("w/far/Stored.CATPart"), 3), part("Bare.CATPart"), part(".\\sub\\Relative.CATPart"),
              part("D:\\old\\proj\\sub\\Moved.CATPart"), part("E:\\other\\ByName.CATPart"),
              part("D:\\old\\proj\\Gone.CATPart")});
    document("w/tree/std/asm/Asm.CATProduct", "D:\\old\\std\\asm\\Asm.CATProduct",
             {part("D:\\old\\parts\\Above.CATPart")});
    for (const char* const name :
         {"w/far/Stored.CATPart", "w/now/Bare.CATPart", "w/now/sub/Relative.CATPart", "w/now/sub/Moved.CATPart",
          "w/now/sub/ByName.CATPart", "w/x/ByName.CATPart", "w/tree/parts/Above.CATPart", "w/a/Gone.CATPart",
          "w/else/proj/GONE.catpart", "w/proj/Gone.CATPart", "w/now/sub/gone.CATPart"})
        document(name, "", {});
    EXPECT_EQ(run("uses --json " + quoted("w/now/Top.CATProduct") + " " + quoted("w")), 1);
    const struct {
        const char *document, *rule;
        int uses, chosenAmong;
    } expected[] = {{"w/far/Stored.CATPart", "as stored", 3, 0},
                    {"w/now/Bare.CATPart", "relative", 1, 0},
                    {"w/now/sub/Relative.CATPart", "relative", 1, 0},
                    {"w/now/sub/Moved.CATPart", "moved along with the document", 1, 0},
                    {"w/now/sub/ByName.CATPart", "by name", 1, 2}};
    auto rows = this->rows();
    ASSERT_EQ(rows.size(), 7u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(rows[i + 1]["document"], path(expected[i].document));
        EXPECT_EQ(rows[i + 1]["rule"], expected[i].rule) << expected[i].document;
        EXPECT_EQ(rows[i + 1]["uses"], expected[i].uses) << expected[i].document;
        EXPECT_EQ(rows[i + 1]["chosen_among"], expected[i].chosenAmong) << expected[i].document;
    }
    EXPECT_EQ(rows[6]["document"], "D:\\old\\proj\\Gone.CATPart");
    EXPECT_EQ(rows[6]["exists"], false);
    EXPECT_EQ(candidatesOf(rows[6]), "w/now/sub/gone.CATPart 0 1\n"
                                     "w/proj/Gone.CATPart 1 2\n"
                                     "w/a/Gone.CATPart 0 2\n"
                                     "w/else/proj/GONE.catpart 1 3\n");
    EXPECT_EQ(run("uses --json " + quoted("w/tree/std/asm/Asm.CATProduct")), 0);
    EXPECT_EQ(this->rows().at(1)["rule"], "tree above");
}

TEST_F(ArchiveTest, LinksHaveARowATargetAndASummary) {
    document("w/Top.CATProduct", "D:\\o\\Top.CATProduct",
             {part("D:\\o\\sub\\Bolt.CATPart", 2), product("D:\\o\\Asm.CATProduct"),
              part("D:\\o\\sub\\Bolt.CATPart", 3), ImageRecord::unloadable("D:\\t\\Sizes.xls", 4),
              part("E:\\x\\BOLT.catpart", 0), part("E:\\x\\Away.CATPart", 0)});
    document("w/sub/Bolt.CATPart", "", {});
    document("w/sub/deep/Asm.CATProduct", "", {});
    document("w/Asm/asm.CATProduct", "", {});
    write("w/tables/t/sizes.xls", "");
    write("w/tables/Sizes.XLS", "");
    EXPECT_EQ(run("links --ghosts " + quoted("w/Top.CATProduct") + " " + quoted("w/sub") + " " + quoted("w/tables")),
              1);
    EXPECT_EQ(squeezed(), "w/Top.CATProduct  V5 R27 SP1\n"
                          "  LINK  USES  DOCUMENT  FOUND  STORED AS\n"
                          "  context product  1  w/sub/deep/Asm.CATProduct  by name  D:\\o\\Asm.CATProduct\n"
                          "  context part  5  w/sub/Bolt.CATPart  moved along with the document  "
                          "D:\\o\\sub\\Bolt.CATPart\n"
                          "missing  CATUnloadable  4  D:\\t\\Sizes.xls\n"
                          "  perhaps  w/tables/Sizes.XLS\n"
                          "  perhaps  w/tables/t/sizes.xls  agrees in 1 folder\n"
                          "unused  ghost  0  E:\\x\\BOLT.catpart  name in use\n"
                          "unused  ghost  0  E:\\x\\Away.CATPart\n\n"
                          "w/sub/Bolt.CATPart  V5 R27 SP1\n\n"
                          "w/sub/deep/Asm.CATProduct  V5 R27 SP1\n\n");
    EXPECT_EQ(content("err"), "3 documents, 3 links: 2 found, 1 missing; 0 damaged\n");
}

TEST_F(ArchiveTest, WhatIsMissingIsToldWithThoseThatWantIt) {
    document("w/a/A.CATProduct", "D:\\o\\A.CATProduct",
             {part(".\\s\\Nut.CATPart"), part("D:\\p\\q\\Pin.CATPart", 2), part("D:\\o\\Gone.CATPart")});
    document("w/b/B.CATProduct", "D:\\o\\B.CATProduct", {part(".\\s\\Nut.CATPart"), part("D:\\p\\q\\Pin.CATPart")});
    document("w/c/q/pin.catpart", "", {});
    document("w/c/PIN.CATPart", "", {});
    EXPECT_EQ(run("links --missing " + quoted("w")), 1);
    EXPECT_EQ(shown(), "D:\\p\\q\\Pin.CATPart\n"
                       "  wanted by  w/a/A.CATProduct\n"
                       "  wanted by  w/b/B.CATProduct\n"
                       "  perhaps    w/c/PIN.CATPart\n"
                       "  perhaps    w/c/q/pin.catpart  (agrees in 1 folder)\n"
                       ".\\s\\Nut.CATPart\n"
                       "  wanted by  w/a/A.CATProduct\n"
                       "D:\\o\\Gone.CATPart\n"
                       "  wanted by  w/a/A.CATProduct\n"
                       ".\\s\\Nut.CATPart\n"
                       "  wanted by  w/b/B.CATProduct\n");
    EXPECT_EQ(content("err"), "4 documents, 5 links: 0 found, 5 missing; 0 damaged\n");
    EXPECT_EQ(run("links --missing --json " + quoted("w")), 1);
    EXPECT_EQ(rows().at(0).dump(),
              "{\"missing\":\"D:\\\\p\\\\q\\\\Pin.CATPart\",\"wanted_by\":[{\"document\":\"" +
                  path("w/a/A.CATProduct") + "\",\"uses\":2,\"kinds\":[\"context part\"]},{\"document\":\"" +
                  path("w/b/B.CATProduct") +
                  "\",\"uses\":1,\"kinds\":[\"context part\"]}],\"candidates\":[{\"document\":\"" +
                  path("w/c/PIN.CATPart") + "\",\"agreeing_folders\":0,\"distance\":2},{\"document\":\"" +
                  path("w/c/q/pin.catpart") + "\",\"agreeing_folders\":1,\"distance\":3}],\"candidate_count\":2}");
}

TEST_F(ArchiveTest, OfManyCandidatesTheNearestAreTold) {
    for (int i = 10; i < 90; ++i) document("w/f" + std::to_string(i) + "/n/Lost.CATPart", "", {});
    const struct {
        const char *folder, *first;
    } examples[] = {{"f00", "w/f10/n/Lost.CATPart 1 3\n"},
                    {"f70", "w/f70/n/Lost.CATPart 1 1\n"},
                    {"f99", "w/f26/n/Lost.CATPart 1 3\n"}};
    for (const auto& example : examples) {
        const std::string wanting = "w/" + std::string(example.folder) + "/Top.CATProduct";
        document(wanting, "D:\\o\\Top.CATProduct", {part("E:\\n\\lost.CATPart")});
        EXPECT_EQ(run("uses --json " + quoted(wanting) + " " + quoted("w")), 1);
        const auto missing = rows().at(1);
        EXPECT_EQ(missing["candidate_count"], 80);
        EXPECT_EQ(missing["candidates"].size(), 10u);
        EXPECT_EQ(candidatesOf(missing).find(example.first), 0u) << candidatesOf(missing);
    }
}

TEST_F(ArchiveTest, TreesOpenEachDocumentOnce) {
    document("w/Top.CATProduct", "D:\\o\\Top.CATProduct",
             {product("D:\\o\\A.CATProduct"), product("D:\\o\\B.CATProduct")});
    document("w/A.CATProduct", "D:\\o\\A.CATProduct", {product("D:\\o\\B.CATProduct"), part("D:\\o\\Self.CATPart")});
    document("w/B.CATProduct", "D:\\o\\B.CATProduct", {product("D:\\o\\Top.CATProduct"), part("D:\\p\\Lost.CATPart")});
    document("w/Self.CATPart", "D:\\o\\Self.CATPart", {part("D:\\o\\Self.CATPart")});
    document("w/q/lost.CATPart", "", {});
    EXPECT_EQ(run("uses " + quoted("w/Top.CATProduct") + " " + quoted("w")), 1);
    EXPECT_EQ(shown(), "w/Top.CATProduct\n"
                       "|- w/A.CATProduct\n"
                       "|  |- w/B.CATProduct\n"
                       "|  |  |- w/Top.CATProduct  (cycle)\n"
                       "|  |  '- D:\\p\\Lost.CATPart  (missing; perhaps w/q/lost.CATPart)\n"
                       "|  '- w/Self.CATPart\n"
                       "|     '- w/Self.CATPart  (cycle)\n"
                       "'- w/B.CATProduct  (see above)\n");
    EXPECT_EQ(run("uses --depth 1 " + quoted("w/Top.CATProduct")), 0);
    EXPECT_EQ(shown(), "w/Top.CATProduct\n|- w/A.CATProduct  (more below)\n'- w/B.CATProduct  (more below)\n");
    EXPECT_EQ(run("uses --depth 2 " + quoted("w/Top.CATProduct")), 1);
    EXPECT_EQ(shown(), "w/Top.CATProduct\n"
                       "|- w/A.CATProduct\n"
                       "|  |- w/B.CATProduct  (see below)\n"
                       "|  '- w/Self.CATPart  (more below)\n"
                       "'- w/B.CATProduct\n"
                       "   |- w/Top.CATProduct  (cycle)\n"
                       "   '- D:\\p\\Lost.CATPart  (missing)\n");
    EXPECT_EQ(run("used-by " + quoted("w/Self.CATPart") + " " + quoted("w")), 0);
    EXPECT_EQ(shown(), "w/Self.CATPart\n"
                       "|- w/A.CATProduct\n"
                       "|  '- w/Top.CATProduct\n"
                       "|     '- w/B.CATProduct\n"
                       "|        |- w/A.CATProduct  (cycle)\n"
                       "|        '- w/Top.CATProduct  (cycle)\n"
                       "'- w/Self.CATPart  (cycle)\n");
}

TEST_F(ArchiveTest, ATreeOfAnyDepthAndNamesOfAnyBytesCanBeShown) {
    const int levels = 40;
    const std::string odd = "<b>\"'&\n\xE9";
    const auto name = [&](int level) { return (level == levels ? odd : "c" + std::to_string(level)) + ".CATProduct"; };
    for (int i = 0; i < levels; ++i) document("w/" + name(i), "", {product(name(i + 1))});
    document("w/" + name(levels), "", {part("D:\\<i>\x01\\gone.CATPart")});
    EXPECT_EQ(run("uses " + quoted("w/c0.CATProduct")), 1);
    const std::string text = shown();
    const auto stem = [](int levelsAbove) {
        return std::string(3 * static_cast<std::size_t>(levelsAbove), ' ') + "'- ";
    };
    EXPECT_NE(text.find("\n" + stem(30) + "w/c31.CATProduct\n" + stem(31) + "w/c32.CATProduct\n" + stem(31) +
                        "[33] w/c33.CATProduct\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(stem(31) + "[40] w/<b>\"'&%0A%E9.CATProduct\n" + stem(31) +
                        "[41] D:\\<i>%01\\gone.CATPart  (missing)\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(run("uses --flat --depth 2 " + quoted("w/c0.CATProduct")), 0) << "what is missing is not shown";
    EXPECT_EQ(squeezed(), "LEVEL  DOCUMENT\n  1  w/c1.CATProduct\n  2  w/c2.CATProduct\n");
    EXPECT_EQ(run("uses --dot " + quoted("w/c38.CATProduct")), 1);
    EXPECT_EQ(shown(),
              "digraph links {\n  rankdir=LR;\n  node [shape=box];\n  \"w/c38.CATProduct\" [style=bold];\n"
              "  \"w/c38.CATProduct\" -> \"w/c39.CATProduct\";\n"
              "  \"w/c39.CATProduct\" -> \"w/<b>\\\"'&%0A%E9.CATProduct\";\n"
              "  \"D:\\\\<i>%01\\\\gone.CATPart\" [color=red, style=dashed];\n"
              "  \"w/<b>\\\"'&%0A%E9.CATProduct\" -> \"D:\\\\<i>%01\\\\gone.CATPart\" [color=red, style=dashed];\n"
              "}\n");
    for (const char* const arguments : {"uses absent.CATPart", "used-by w", "uses --depth -1 w"})
        EXPECT_EQ(run(arguments), 2) << arguments;
}

/** A part as a container, with an identity that it keeps, and something that tells it apart. */
std::string savedPart(const std::string& identity, const std::string& geometry, bool isOld = false) {
    std::string properties = isOld ? std::string() : "\x3B\x10" + identity;
    for (std::size_t i = 0; isOld && i < identity.size(); ++i) properties += std::string("\x3B\x01") + identity[i];
    DocumentImage image;
    return DocumentContainer("")
        .stream("\x03"
                "CATStorageProperty",
                properties + "\x9F\x36\x08\x46INJPL  ")
        .stream("CATDocumentProperty", image.properties("D:\\o\\Part.CATPart", {}).bytes())
        .stream("Geometry", geometry)
        .bytes();
}

/** Other bytes of the length and, as the comparison sums them up, the number of sixteen bytes. */
std::string collidingWith(const std::string& bytes) {
    const auto word = [](const std::string& text, std::size_t at) {
        std::uint64_t value = 0;
        std::memcpy(&value, text.data() + at, sizeof value);
        return value;
    };
    const auto behind = [](std::uint64_t first) {
        const std::uint64_t product = (0xCBF29CE484222325U ^ first) * 0x100000001B3U;
        return product ^ product >> 32U;
    };
    std::string other = "another.", rest(8, '\0');
    const std::uint64_t second = word(bytes, 8) ^ behind(word(bytes, 0)) ^ behind(word(other, 0));
    std::memcpy(&rest[0], &second, sizeof second);
    return other + rest;
}

TEST_F(ArchiveTest, DocumentsOfOneNameAreCompared) {
    const std::string one = "\xD5\x53\x20\xD9" + std::string(11, '\x01') + "\x85", other(16, '\x02'), none(16, '\0');
    const struct {
        const char *name, *relation;
        std::vector<std::pair<const char*, std::string>> files; ///< contents, "content origin" in the answer behind it
    } groups[] = {
        {"Copy.CATPart", "same bytes", {{"1 1", savedPart(one, "a")}, {"1 1", savedPart(one, "a")}}},
        {"Apart.CATPart",
         "saved apart",
         {{"1 1", savedPart(one, "a")},
          {"2 1", savedPart(one, "b")},
          {"1 1", savedPart(one, "a")},
          {"3 1", savedPart(one, "longer")},
          {"4 1", savedPart(one, "old", true)}}},
        {"Strange.CATPart", "strangers", {{"1 1", savedPart(one, "a")}, {"2 2", savedPart(other, "a")}}},
        {"Unknown.CATPart", "strangers", {{"1 1", savedPart(none, "a")}, {"2 2", savedPart(none, "b")}}},
        {"Plain.CATPart", "same bytes", {{"1 1", "no document"}, {"1 1", "no document"}}},
        {"Collide.CATPart",
         "mixed",
         {{"1 1", "sixteen letters."},
          {"2 2", collidingWith("sixteen letters.")},
          {"3 3", "and sixteen more"},
          {"2 2", collidingWith("sixteen letters.")}}},
        {"Mixed.CATPart",
         "mixed",
         {{"1 1", savedPart(one, "a")}, {"2 2", savedPart(other, "a")}, {"3 1", savedPart(one, "b")}}},
    };
    for (const auto& group : groups) {
        std::filesystem::remove_all(path("w"));
        for (std::size_t i = 0; i < group.files.size(); ++i)
            write("w/" + std::to_string(i) + "/" + (i == 1 ? "COPY" : "Copy") + ".CATPart", group.files[i].second);
        write("w/Alone.CATPart", group.files[0].second);
        EXPECT_EQ(run("duplicates --json " + quoted("w")), 1);
        ASSERT_EQ(rows().size(), 1u) << group.name;
        const auto row = rows()[0];
        EXPECT_EQ(row["relation"], group.relation) << group.name;
        ASSERT_EQ(row["documents"].size(), group.files.size()) << group.name;
        for (std::size_t i = 0; i < group.files.size(); ++i) {
            const auto& document = row["documents"][i];
            EXPECT_EQ(document["content"].dump() + " " + document["origin"].dump(), group.files[i].first)
                << group.name << " " << i;
        }
    }
    EXPECT_EQ(rows()[0]["documents"][0].dump(),
              "{\"document\":\"" + path("w/0/Copy.CATPart") +
                  "\",\"size\":" + std::to_string(savedPart(one, "a").size()) +
                  ",\"identity\":\"d55320d9_1010101_1010101_1010185\",\"saved\":\"2021-04-22 13:07:23\",\"content\":1,"
                  "\"origin\":1}");
    EXPECT_EQ(run("duplicates " + quoted("w/0")), 0);
    EXPECT_EQ(content("err"), "0 names, 0 documents\n");
}

TEST_F(ArchiveTest, LargeFilesAndThoseThatCannotBeReadAreCompared) {
    constexpr std::uintmax_t kMoreThanIsKept = 65U << 20U;
    for (const char* const name :
         {"w/1/Large.CATPart", "w/2/Large.CATPart", "w/3/Large.CATPart", "w/4/Large.CATPart"}) {
        write(name, "begins alike");
        std::filesystem::resize_file(path(name), kMoreThanIsKept);
    }
    std::ofstream(path("w/2/Large.CATPart"), std::ios::in | std::ios::ate).seekp(-1, std::ios::end).put('x');
    std::filesystem::create_directory(path("w/5"));
    std::filesystem::create_symlink("nothing", path("w/5/Large.CATPart"));
    std::filesystem::create_symlink("nothing", path("w/4/Gone.CATPart"));
    std::filesystem::create_symlink("nothing", path("w/5/Gone.CATPart"));
    EXPECT_EQ(run("duplicates --json " + quoted("w")), 2);
    EXPECT_EQ(content("err"), "vorntools: " + path("w/4/Gone.CATPart") +
                                  " cannot be read\nvorntools: " + path("w/5/Gone.CATPart") + " cannot be read\n");
    std::string contents;
    for (const auto& group : rows())
        for (const auto& file : group["documents"]) contents += file["content"].dump();
    EXPECT_EQ(contents, "1211312");
}

TEST_F(ArchiveTest, OrphansArePartsApartFromTops) {
    document("w/Top.CATProduct", "", {product("Sub.CATProduct"), part("Used.CATPart")});
    document("w/Sub.CATProduct", "", {});
    document("w/Used.CATPart", "", {});
    document("w/Self.CATPart", "", {part("Self.CATPart"), part("Used.CATPart")});
    document("w/Sheet.CATDrawing", "", {product("Top.CATProduct")});
    write("w/Sizes.xls", "");
    write("w/Gone.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n");
    EXPECT_EQ(run("orphans " + quoted("w")), 1);
    EXPECT_EQ(squeezed(), "KIND  LINKS  DOCUMENT\npart  2  w/Self.CATPart\ndrawing  1  w/Sheet.CATDrawing\n");
    EXPECT_EQ(content("err"), "1 part and 1 other that nobody points to\n");
    std::filesystem::remove(path("w/Self.CATPart"));
    EXPECT_EQ(run("orphans --json " + quoted("w")), 0);
    EXPECT_EQ(rows().at(0)["kind"], "drawing");
}

TEST_F(ArchiveTest, StatusTellsWhereTheDatFileDiffers) {
    document("w/Top.CATProduct", "D:\\o\\Top.CATProduct",
             {part("D:\\o\\Bolt.CATPart"), part("D:\\o\\Nut.CATPart"), part("D:\\o\\MMLpin.CATPart"),
              product("D:\\o\\Frame.CATProduct"), part("D:\\o\\Back.CATPart"), part("D:\\o\\Lost.CATPart"),
              ImageRecord::unloadable("D:\\o\\Sizes.xls")});
    document("w/Back.CATPart", "", {});
    const auto dat = [](const std::string& blocks) { return "<DatFileVersion>\n2\n</DatFileVersion>\n" + blocks; };
    const struct {
        std::string dat;
        const char* differences;
    } cases[] = {
        {dat("<LinkedDocs>\nBOLT.CATPart\nMML|Nut.CATPart\nMMLpin.CATPart\nMMLAssy|Frame.CATProduct\nUNRESOLVED|Lost\n"
             "Back.CATPart\n</LinkedDocs>\n<DT_Files>\nSizes.xls\n</DT_Files>\n"),
         "[]"},
        {dat("<LinkedDocs>\nBolt.CATPart\nNut.CATPart\nMMLpin.CATPart\nAway.CATPart\nUNRESOLVED|Back\nLost.CATPart\n"
             "</LinkedDocs>\n<DT_Files>\nOther.xls\n</DT_Files>\n"),
         R"([{"name":"Away.CATPart","difference":"only recorded"},{"name":"Back","difference":"found meanwhile"},)"
         R"({"name":"Other.xls","difference":"only recorded"},)"
         R"({"name":"D:\\o\\Frame.CATProduct","difference":"only in the document"}])"},
        {dat("<LoadType>\nFull\n</LoadType>\n"), "[]"},
        {"", "null"}};
    for (const auto& example : cases) {
        std::filesystem::remove(path("w/Top.CATProduct.dat"));
        if (!example.dat.empty()) write("w/Top.CATProduct.dat", example.dat);
        EXPECT_EQ(run("status --links --json " + quoted("w/Top.CATProduct")), 1);
        EXPECT_EQ(rows().at(0)["link_differences"].dump(), example.differences) << example.dat;
    }
    write("w/Top.CATProduct.dat", cases[1].dat);
    run("status --links " + quoted("w/Top.CATProduct"));
    EXPECT_NE(shown().find("  only recorded: Away.CATPart, Other.xls; only in the document: "
                           "D:\\o\\Frame.CATProduct; found meanwhile: Back\n"),
              std::string::npos)
        << content("out");
}

TEST_F(ArchiveTest, PackTakesAllThatIsNeeded) {
    document("w/a/Top.CATProduct", "D:\\o\\a\\Top.CATProduct",
             {part("D:\\o\\b\\Bolt.CATPart"), part("D:\\o\\c\\BOLT.CATPart"), part("D:\\o\\Lost.CATPart"),
              ImageRecord::unloadable("D:\\o\\a\\Sizes.xls")});
    document("w/b/Bolt.CATPart", "D:\\o\\b\\Bolt.CATPart", {part("D:\\o\\b\\Deep.CATPart")});
    document("w/b/Deep.CATPart", "", {});
    document("w/b/Unwanted.CATPart", "", {});
    document("w/c/BOLT.CATPart", "", {});
    write("w/a/Sizes.xls", "12;13");
    const std::string top = quoted("w/a/Top.CATProduct");
    EXPECT_EQ(run("pack " + top + " -o " + quoted("new/pack")), 1);
    EXPECT_EQ(squeezed(), "STATE  PACKED AS  DOCUMENT\n"
                          "packed  a/Top.CATProduct  w/a/Top.CATProduct\n"
                          "packed  b/Bolt.CATPart  w/b/Bolt.CATPart\n"
                          "packed  c/BOLT.CATPart  w/c/BOLT.CATPart\n"
                          "packed  a/Sizes.xls  w/a/Sizes.xls\n"
                          "packed  b/Deep.CATPart  w/b/Deep.CATPart\n"
                          "missing  D:\\o\\Lost.CATPart  (wanted by w/a/Top.CATProduct)\n");
    EXPECT_EQ(files("new/pack"), "a/Sizes.xls a/Top.CATProduct b/Bolt.CATPart b/Deep.CATPart c/BOLT.CATPart ");
    EXPECT_EQ(content("new/pack/b/Bolt.CATPart"), content("w/b/Bolt.CATPart"));
    EXPECT_EQ(std::filesystem::last_write_time(path("new/pack/a/Sizes.xls")),
              std::filesystem::last_write_time(path("w/a/Sizes.xls")));
    EXPECT_EQ(run("uses --flat " + quoted("new/pack/a/Top.CATProduct")), 1) << "all found but what was missing";

    EXPECT_EQ(run("pack --json --flat " + top + " -o " + quoted("flat")), 1);
    EXPECT_EQ(files("flat"), "BOLT (2).CATPart Bolt.CATPart Deep.CATPart Sizes.xls Top.CATProduct ");
    EXPECT_EQ(rows().at(2).dump(), "{\"document\":\"" + path("w/c/BOLT.CATPart") +
                                       "\",\"state\":\"renamed\",\"packed_as\":\"BOLT (2).CATPart\",\"size\":" +
                                       std::to_string(content("w/c/BOLT.CATPart").size()) + "}");
    EXPECT_EQ(rows().at(5)["state"], "missing");
    EXPECT_EQ(run("pack " + quoted("w/b/Deep.CATPart") + " -o " + quoted("one")), 0);
    EXPECT_EQ(files("one"), "Deep.CATPart ");

    EXPECT_EQ(run("pack " + top + " -o " + quoted("p.zip")), 1);
    EXPECT_EQ(content("p.zip").substr(0, 2), "PK");
    EXPECT_NE(content("p.zip").find("b/Deep.CATPart"), std::string::npos);
}

TEST_F(ArchiveTest, PackOverwritesNothingAndLeavesNothingHalf) {
    document("w/Top.CATProduct", "D:\\o\\Top.CATProduct", {part("D:\\o\\s\\Bolt.CATPart")});
    write("w/s/Bolt.CATPart", std::string(100000, 'x'));
    const std::string top = quoted("w/Top.CATProduct");
    write("there/s/Bolt.CATPart", "mine");
    write("there.zip", "mine");
    const struct {
        const char *output, *message;
    } taken[] = {{"there", "there/s/Bolt.CATPart exists already"},
                 {"there.zip", "there.zip exists already"},
                 {"w/Top.CATProduct", "w/Top.CATProduct cannot be made"},
                 {"there.zip/x.zip", "there.zip/x.zip cannot be written"}};
    for (const auto& example : taken) {
        EXPECT_EQ(run("pack " + top + " -o " + quoted(example.output)), 2) << example.output;
        EXPECT_EQ(content("err").find("vorntools: " + path(example.message)), 0u) << content("err");
        EXPECT_EQ(content("out"), "") << example.output;
    }
    EXPECT_EQ(files("there"), "s/Bolt.CATPart ");
    EXPECT_EQ(content("there/s/Bolt.CATPart"), "mine");
    EXPECT_EQ(content("there.zip"), "mine");
    const std::string limited = "ulimit -f 16; trap '' XFSZ; ";
    for (const char* const output : {"full/pack", "there/new", "full/pack.zip"}) {
        std::filesystem::create_directory(path("full"));
        const std::string before = files("full") + files("there");
        write("w/s/Bolt.CATPart", noise(100000));
        EXPECT_EQ(runAfter(limited, "pack " + top + " -o " + quoted(output)), 2) << output;
        EXPECT_NE(content("err").find(" cannot be written: "), std::string::npos) << content("err");
        EXPECT_EQ(files("full") + files("there"), before) << output;
        EXPECT_FALSE(std::filesystem::exists(path("full/pack"))) << output;
    }
}

} // namespace
