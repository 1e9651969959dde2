// What the program tells of the files themselves: whether they are whole, what they are made of, their pictures.

#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentImage.h"
#include "tests/support/Program.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

using namespace std::string_literals;

namespace {

const std::string kProperty = "\x03"
                              "CATDocumentProperty";
const std::string kSets = "\x03"
                          "CATPropertySets";
const std::string kPreview = "\x05"
                             "CATPreview";
const std::string kPicture = "\xFF\xD8\xFF\xE0 picture \xFF\xD9";

class DocumentFilesTest : public ProgramTest {
protected:
    /** A part that points to nothing, with its picture. */
    static DocumentContainer part() {
        DocumentContainer file;
        file.stream("Data", DocumentImage().application().bytes());
        file.stream(kProperty, DocumentImage().properties("D:\\old\\a.CATPart", {}).bytes());
        file.stream(kSets, DocumentImage().summary(5, 27, 3).bytes());
        file.stream(kPreview, "\0\0\0\0"s + kPicture);
        return file;
    }
};

TEST_F(DocumentFilesTest, DamageIsTold) {
    const std::string whole = part().bytes();
    const std::string cutStream = DocumentImage().properties("D:\\old\\a.CATPart", {}).bytes();
    const struct {
        const char* name;
        std::string bytes;
        nlohmann::ordered_json condition;
        int code;
    } cases[] = {
        {"whole.CATPart", whole, "intact", 0},
        {"cut.CATPart", whole.substr(0, whole.size() - 1), "cut off", 1},
        {"head.CATProduct", whole.substr(0, 12), "cut off", 1},
        {"longer.CATDrawing", whole + "more", "damaged", 1},
        {"closing.CATPart", "V5_CFV4\0"s + std::string(8, '\0') + cutStream.substr(0, cutStream.size() - 9), "damaged",
         1},
        {"text.catpart", "<<<<<<< HEAD", "not a CATIA document", 1},
        {"empty.CATPart", "", "empty", 1},
        {"dummy.CATPart", "", "empty", 0},
        {"layout.CATAnalysis", "V5_CFV4\0 something else"s, "intact", 0},
        {"model.model", "no container", nullptr, 0},
        {"shape.cgr", whole.substr(0, 90), nullptr, 0},
    };
    write("d/dummy.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nDummyPart\n</LoadType>\n");
    for (const auto& example : cases) {
        const std::string name = "d/"s + example.name;
        write(name, example.bytes);
        EXPECT_EQ(run("links --json " + quoted(name)), example.code) << name;
        EXPECT_EQ(rows().at(0)["condition"], example.condition) << name;
        const bool told = example.condition.is_string() && example.condition.get<std::string>() != "intact";
        const std::string words = told ? example.condition.get<std::string>() : "";
        run("links " + quoted(name));
        EXPECT_EQ(content("out").find(told ? "  " + words + "\n" : "intact") != std::string::npos, told) << name;
        run("status --links --json " + quoted(name));
        EXPECT_EQ(rows().at(0)["condition"], example.condition) << name;
        run("status --links " + quoted(name));
        EXPECT_EQ(told, told && content("out").find(", " + words + " ") != std::string::npos) << name;
    }
    EXPECT_EQ(run("report " + quoted("d") + " -o " + quoted("report.html")), 1);
    const std::string page = content("report.html");
    const std::size_t findings = page.find("\"condition_finding\":[");
    ASSERT_NE(findings, std::string::npos);
    EXPECT_EQ(std::count(page.begin() + static_cast<std::ptrdiff_t>(findings),
                         page.begin() + static_cast<std::ptrdiff_t>(page.find(']', findings)), '1'),
              6);
    EXPECT_NE(page.find("\"cut off\""), std::string::npos);
}

/** A document that nothing but its damage is wrong with is a finding all the same. */
TEST_F(DocumentFilesTest, DamageAloneIsAFinding) {
    const std::string whole = part().bytes(), dat = "item\nA\n\n\n\n\n\n1700000000\n";
    for (const bool isCut : {false, true}) {
        write("d/a.CATPart", isCut ? whole.substr(0, whole.size() - 1) : whole);
        write("d/a.CATPart.dat", dat);
        touch("d/a.CATPart", 1700000000);
        EXPECT_EQ(run("status " + quoted("d")), 0);
        EXPECT_EQ(run("status --links " + quoted("d")), isCut ? 1 : 0);
        EXPECT_EQ(run("report " + quoted("d") + " -o " + quoted("report.html")), isCut ? 1 : 0);
    }
}

/** Its streams in the order of the directory; the tree puts each below its storage. */
TEST_F(DocumentFilesTest, ContentsShowStoragesAndStreams) {
    DocumentContainer file = part();
    const std::uint32_t inner = file.storage("inner", file.root());
    file.stream("last", "four", file.root());
    file.stream("Cont_inner", "one two three", inner, 3);
    write("a.CATPart", file.bytes());
    EXPECT_EQ(runIn(".", "contents --json a.CATPart"), 0);
    const auto rows = this->rows();
    ASSERT_EQ(rows.size(), 1u);
    auto entries = rows[0]["entries"];
    EXPECT_EQ(rows[0].dump().substr(0, rows[0].dump().find("\"entries\"")),
              R"({"document":"a.CATPart","condition":"intact","version":[5,27,3],"size":)" +
                  std::to_string(file.bytes().size()) + ",");
    ASSERT_EQ(entries.size(), 10u);
    EXPECT_EQ(entries[0]["parent"], nullptr);
    EXPECT_EQ(entries[1].dump(), R"({"name":"CATIA1","parent":1,"kind":"storage","size":null,"pieces":0,)"
                                 R"("dates":["2021-04-22 13:07:23",null,"2021-04-22 13:07:23"]})");
    EXPECT_EQ(entries[6]["name"], "%05CATPreview");
    EXPECT_EQ(entries[9].dump(), R"({"name":"Cont_inner","parent":8,"kind":"stream","size":13,"pieces":3,)"
                                 R"("dates":["2021-04-22 13:07:23",null,"2021-04-22 13:07:23"]})");

    EXPECT_EQ(runIn(".", "contents a.CATPart"), 0);
    const std::string shown = content("out");
    EXPECT_EQ(shown.find("a.CATPart  V5 R27 SP3  " + std::to_string(file.bytes().size()) + " bytes  intact\n"), 0u);
    const std::size_t below = shown.find("\n    inner ");
    EXPECT_NE(below, std::string::npos) << shown;
    EXPECT_EQ(shown.find("\n      Cont_inner "), shown.find('\n', below + 1)) << shown;
    EXPECT_NE(shown.find(" 13       3  2021-04-22 13:07:23\n    last "), std::string::npos) << shown;
}

TEST_F(DocumentFilesTest, ContentsTakeAnything) {
    const std::string whole = part().bytes();
    write("cut.CATPart", whole.substr(0, whole.size() - 1));
    write("none.model", "no container");
    write("empty.CATPart", "");
    EXPECT_EQ(run("contents --json " + quoted("cut.CATPart")), 1);
    EXPECT_EQ(rows().at(0)["condition"], "cut off");
    EXPECT_EQ(rows().at(0)["entries"].size(), 0u);
    EXPECT_EQ(run("contents " + quoted("none.model")), 0);
    EXPECT_EQ(content("out"), path("none.model") + "  V0 R0 SP0  12 bytes\n\n");
    EXPECT_EQ(run("contents " + quoted("empty.CATPart")), 1);
    EXPECT_EQ(run("contents " + quoted("absent")), 2);

    // Two storages that hold each other.
    DocumentContainer circle("");
    const std::uint32_t last = circle.root();
    const std::uint32_t first = circle.storage("first", last + 2), second = circle.storage("second", last + 1);
    circle.stream("Format", "x", second);
    EXPECT_EQ(first, last + 1);
    write("circle.CATPart", circle.bytes());
    run("contents " + quoted("circle.CATPart"));
    const std::string shown = content("out");
    EXPECT_NE(shown.find("\nfirst "), std::string::npos) << shown;
    EXPECT_NE(shown.find("\n  second "), std::string::npos) << shown;
    EXPECT_NE(shown.find("\n    Format "), std::string::npos) << shown;
    EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), 2 + 5 + 1) << "each entry once: " << shown;
}

TEST_F(DocumentFilesTest, PreviewsAreSavedUnderTheDocumentsName) {
    const std::string whole = part().bytes();
    write("d/a.CATPart", whole);
    write("d/b.CATProduct", whole);
    write("out-folder/kept", "");
    EXPECT_EQ(runIn("out-folder", "preview --json ../d/a.CATPart"), 0);
    EXPECT_EQ(content("out"), R"({"document":"../d/a.CATPart","preview":"a.CATPart.jpg","size":)" +
                                  std::to_string(kPicture.size()) + ",\"problem\":null}\n");
    EXPECT_EQ(content("out-folder/a.CATPart.jpg"), kPicture);

    EXPECT_EQ(run("preview " + quoted("d") + " -o " + quoted("d")), 0);
    EXPECT_EQ(content("d/a.CATPart.jpg") + content("d/b.CATProduct.jpg"), kPicture + kPicture);
    EXPECT_EQ(run("preview " + quoted("d/a.CATPart") + " -o " + quoted("picture")), 0);
    EXPECT_EQ(content("picture"), kPicture);
    EXPECT_EQ(run("preview " + quoted("d") + " -o " + quoted("picture") + " --force"), 2) << "one file for two";
}

TEST_F(DocumentFilesTest, ADocumentWithoutPreviewIsAFinding) {
    DocumentContainer none, empty, other;
    write("d/none.CATPart", none.bytes());
    write("d/empty.CATPart", empty.stream(kPreview, "").bytes());
    write("d/other.CATPart", other.stream(kPreview, "\0\0\0\0no picture"s).bytes());
    write("d/text.CATPart", "text");
    EXPECT_EQ(run("preview --json " + quoted("d") + " -o " + quoted("d")), 1);
    ASSERT_EQ(rows().size(), 4u);
    for (const auto& row : rows()) {
        EXPECT_EQ(row["problem"], "no preview");
        EXPECT_EQ(row["preview"], nullptr);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("d")), {}), 4);
}

TEST_F(DocumentFilesTest, APreviewReplacesNothingUnasked) {
    write("d/a.CATPart", part().bytes());
    write("there.jpg", "mine");
    const std::string document = quoted("d/a.CATPart");
    EXPECT_EQ(run("preview " + document + " -o " + quoted("there.jpg")), 2);
    EXPECT_EQ(content("there.jpg"), "mine");
    EXPECT_EQ(content("err"), "vorntools: " + path("d/a.CATPart") + ": " + path("there.jpg") +
                                  " exists already; --force replaces it\n");
    EXPECT_EQ(run("preview --force " + document + " -o " + quoted("there.jpg")), 0);
    EXPECT_EQ(content("there.jpg"), kPicture);
    // Neither a document nor what is no file is ever replaced.
    EXPECT_EQ(run("preview --force " + document + " -o " + document), 2);
    EXPECT_EQ(content("d/a.CATPart"), part().bytes());
    EXPECT_EQ(run("preview --force " + document + " -o /dev/null"), 2);
    EXPECT_EQ(run("preview " + document + " -o " + quoted("absent/a.jpg")), 2);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("d")), {}), 1);
}

/** A disk that is full: what was there stays, and nothing is left beside it. */
TEST_F(DocumentFilesTest, ARefusedWriteLeavesNoHalfFile) {
    DocumentContainer file;
    write("d/a.CATPart", file.stream(kPreview, "\0\0\0\0"s + kPicture + std::string(100000, 'p')).bytes());
    write("there/a.jpg", "mine");
    const std::string limited = "ulimit -f 16; trap '' XFSZ; ";
    EXPECT_EQ(runAfter(limited, "preview --force " + quoted("d/a.CATPart") + " -o " + quoted("there/a.jpg")), 2);
    EXPECT_EQ(content("there/a.jpg"), "mine");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("there")), {}), 1);
    EXPECT_EQ(run("preview --force " + quoted("d/a.CATPart") + " -o " + quoted("there/a.jpg")), 0);
    EXPECT_EQ(content("there/a.jpg").size(), kPicture.size() + 100000);
}

/** Design tables, materials and the like. */
TEST_F(DocumentFilesTest, LinksListWhateverElseADocumentNames) {
    DocumentContainer file("CATProduct");
    file.stream(kProperty,
                DocumentImage()
                    .properties("D:\\old\\a.CATProduct", {ImageRecord::unloadable("D:\\old\\sizes.xls", 2),
                                                          ImageRecord::unloadable("D:\\old\\sizes.xls", 1),
                                                          ImageRecord::whole("feat", "Literals.feat", 4),
                                                          ImageRecord::whole("model", "D:\\old\\old.model", 3)})
                    .bytes());
    write("d/a.CATProduct", file.bytes());
    write("d/sizes.xls", "sheet");
    EXPECT_EQ(runIn("d", "links --json a.CATProduct"), 1);
    EXPECT_EQ(rows().at(0)["other_documents"].dump(),
              R"([{"kind":"CATUnloadable","name":"sizes.xls","exists":true,"uses":2},)"
              R"({"kind":"CATUnloadable","name":"sizes.xls","exists":true,"uses":1},)"
              R"({"kind":"model","name":"D:\\old\\old.model","exists":false,"uses":3}])");
    EXPECT_EQ(runIn("d", "links a.CATProduct"), 1);
    EXPECT_EQ(content("out"),
              "a.CATProduct  V0 R0 SP0\n"
              "         LINK           USES  DOCUMENT          FOUND                          STORED AS\n"
              "         CATUnloadable     3  sizes.xls         moved along with the document  D:\\old\\sizes.xls\n"
              "missing  model             3  D:\\old\\old.model\n\n");
    EXPECT_EQ(runIn("d", "links --dot a.CATProduct"), 1);
    EXPECT_NE(content("out").find("  \"a.CATProduct\" -> \"sizes.xls\";\n"), std::string::npos);
    EXPECT_EQ(runIn("d", "report a.CATProduct -o " + quoted("report.html")), 1);
    EXPECT_NE(content("report.html").find(R"("others":{"name":["sizes.xls","D:\\old\\old.model"],"there":[0])"),
              std::string::npos);
    write("d/old.model", "model");
    EXPECT_EQ(runIn("d", "links a.CATProduct"), 0);
}

} // namespace
