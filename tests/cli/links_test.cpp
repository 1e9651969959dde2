#include "tests/support/DocumentImage.h"
#include "tests/support/Program.h"

#include <algorithm>

namespace {

/** An assembly of two parts in a folder, one part missing, and a part that imports. */
class LinksCommandTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        const std::string identity(16, '\x07');
        DocumentImage product, part, importing;
        write("w/Root.CATProduct",
              product
                  .properties("D:\\old\\Root.CATProduct",
                              {ImageRecord::object("CATPart", "D:\\old\\Bolt.CATPart", identity),
                               ImageRecord::object("CATPart", "D:\\old\\Nut.CATPart", identity),
                               ImageRecord::object("CATPart", "D:\\old\\Gone.CATPart", identity, 0)})
                  .summary(5, 27, 1)
                  .bytes());
        write("w/sub/Bolt.CATPart",
              part.application().properties("D:\\old\\Bolt.CATPart", {}).summary(5, 27, 1).bytes());
        write("w/Pin.CATPart",
              importing.application()
                  .references({"..!Bolt.1!Axis"})
                  .imports({{1, {DocumentImage::firstImportText}}}, {"InputToDoc:Doc!Parameters:Length!"})
                  .properties("D:\\old\\Pin.CATPart", {ImageRecord::whole("CATPart", "D:\\old\\sub\\Bolt.CATPart")})
                  .summary(5, 24, 0)
                  .bytes());
        write("w/notes.txt", "no document");
    }
};

TEST_F(LinksCommandTest, GivesOneObjectADocument) {
    EXPECT_EQ(run("links --json --ghosts " + quoted("w")), 1);
    const auto rows = this->rows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(
        rows[0].dump(),
        "{\"document\":\"" + path("w/Pin.CATPart") +
            "\",\"condition\":\"intact\",\"version\":[5,24,0],\"part_files\":[{\"name\":\"" +
            path("w/sub/Bolt.CATPart") +
            "\",\"exists\":true}],\"context_products\":[],\"context_parts\":[],\"other_documents\":[],\"external_references\":"
            "[\"..!Bolt.1!Axis\"],\"links\":[{\"type\":\"MMLAssy_Ref\",\"name\":null,\"exists\":null,\"reference\":"
            "\"..!Bolt.1!Axis\",\"tag_found\":false},{\"type\":\"MML\",\"name\":\"" +
            path("w/sub/Bolt.CATPart") +
            "\",\"exists\":true,\"reference\":\"Length\",\"tag_found\":true}],\"targets\":[{\"name\":\"" +
            path("w/sub/Bolt.CATPart") +
            "\",\"exists\":true,\"stored\":\"D:\\\\old\\\\sub\\\\Bolt.CATPart\",\"rule\":\"moved along with the document\","
            "\"uses\":1,\"chosen_among\":0,\"kinds\":[\"part file\",\"MML\"],\"elements\":[{\"kind\":\"MML\","
            "\"reference\":\"Length\",\"tag_found\":true}]}],\"ghosts\":[],\"live_ghosts\":[]}");
    EXPECT_EQ(rows[1]["context_parts"].dump(),
              "[{\"name\":\"" + path("w/sub/Bolt.CATPart") +
                  "\",\"exists\":true},{\"name\":\"D:\\\\old\\\\Nut.CATPart\",\"exists\":false}]");
    EXPECT_EQ(rows[1]["ghosts"].dump(), R"(["D:\\old\\Gone.CATPart"])");
    EXPECT_EQ(rows[2]["document"], path("w/sub/Bolt.CATPart"));
}

TEST_F(LinksCommandTest, ADocumentIsTheSameByEveryNameAndEveryFileHasOneText) {
    const struct {
        const char *folder, *argument, *bolt;
    } cases[] = {{"w", "Root.CATProduct", "sub/Bolt.CATPart"},
                 {"w", "./Root.CATProduct", "./sub/Bolt.CATPart"},
                 {"w/sub", "../Root.CATProduct", "../sub/Bolt.CATPart"},
                 {".", "w/Root.CATProduct", "w/sub/Bolt.CATPart"},
                 {"w", "Pin.CATPart Root.CATProduct sub/../Root.CATProduct ./Root.CATProduct", "sub/Bolt.CATPart"},
                 {"w", ".", "./sub/Bolt.CATPart"},
                 {"w/sub", "..", "../sub/Bolt.CATPart"},
                 {".", "w", "w/sub/Bolt.CATPart"},
                 {".", "w/sub w", "w/sub/Bolt.CATPart"}};
    for (const auto& example : cases) {
        EXPECT_EQ(runIn(example.folder, std::string("links --json ") + example.argument), 1) << example.argument;
        const std::string bolt = example.bolt;
        const std::string prefix = bolt.substr(0, bolt.size() - std::string("sub/Bolt.CATPart").size());
        int products = 0;
        for (const auto& row : rows()) {
            const bool isBolt = row["document"].get<std::string>().find("Bolt") != std::string::npos;
            EXPECT_TRUE(!isBolt || row["document"] == bolt) << example.argument;
            if (row["document"] != prefix + "Root.CATProduct") continue;
            ++products;
            EXPECT_EQ(row["context_parts"].dump(), "[{\"name\":\"" + bolt +
                                                       "\",\"exists\":true},{\"name\":\"D:\\\\old\\\\Nut.CATPart\","
                                                       "\"exists\":false}]")
                << example.argument;
        }
        EXPECT_EQ(products, 1) << example.argument;
    }
}

TEST_F(LinksCommandTest, AFileThatIsLeftOutIsNamedBelowTheNearestFolderThatWasGiven) {
    for (const char* const folders : {".. ./sub", "./sub .."}) {
        runIn("w", std::string("links --json --exclude Bolt.CATPart ") + folders);
        for (const auto& row : rows()) EXPECT_EQ(row["targets"][0]["name"], "./sub/Bolt.CATPart") << folders;
        EXPECT_EQ(rows().size(), 2u) << folders;
    }
}

TEST_F(LinksCommandTest, NamesOfAnyBytesCanBePrintedAndReadBack) {
    const struct {
        const char *name, *shown;
    } cases[] = {{"\x1B[31m\x07.CATPart", "%1B[31m%07.CATPart"},
                 {"\x7F\xC2\x9B.CATPart", "%7F%C2%9B.CATPart"},
                 {"\xC3\xA9t\xE9.CATPart", "\xC3\xA9t%E9.CATPart"},
                 {"100%.CATPart", "100%.CATPart"},
                 {"%1B.CATPart", "%251B.CATPart"},
                 {"\xED\xA0\x80\xF5.CATPart", "%ED%A0%80%F5.CATPart"},
                 {"\xE0\x80\x80.CATPart", "%E0%80%80.CATPart"},
                 {"\xF0\x9F\x94\xA7.CATPart", "\xF0\x9F\x94\xA7.CATPart"}};
    for (const auto& example : cases) {
        const std::string folder = "odd", file = path("odd") + "/" + example.name,
                          shown = path("odd") + "/" + example.shown;
        std::filesystem::remove_all(path(folder));
        write("odd/plain.txt", "");
        std::filesystem::copy(path("w/Root.CATProduct"), std::filesystem::path(file));
        run("links --json " + quoted(folder));
        EXPECT_EQ(rows().at(0)["document"], shown);
        run("links " + quoted(folder));
        EXPECT_EQ(content("out").find(shown + "  V5 R27 SP1\n"), 0u) << shown;
        run("links --dot " + quoted(folder));
        EXPECT_NE(content("out").find("  \"" + shown + "\";\n"), std::string::npos) << shown;
        run("status --json " + quoted(folder));
        EXPECT_EQ(rows().at(0)["document"], shown);
        run("status " + quoted(folder));
        EXPECT_NE(content("out").find("  " + shown + "  "), std::string::npos) << shown;
        run("dat '" + file + "'");
        EXPECT_EQ(content("err"), "vorntools: no DAT file can be read for " + shown + "\n");
        run("report " + quoted(folder) + " -o " + quoted("report.html"));
        EXPECT_NE(content("report.html").find("\"name\":[\"" + shown.substr(shown.rfind('/') + 1) + "\"]"),
                  std::string::npos)
            << shown;
    }
}

TEST_F(LinksCommandTest, WhatJsonEscapesIsReadBackAsItWas) {
    const std::string file = path("odd") + "/%\"41\\\\\"%4\\1.CATPart";
    write("odd/plain.txt", "");
    std::filesystem::copy(path("w/Root.CATProduct"), std::filesystem::path(file));
    run("links --json " + quoted("odd"));
    EXPECT_EQ(rows().at(0)["document"], file);
}

TEST_F(LinksCommandTest, ProgressStandsOnALineOfItsOwnOfATerminal) {
    EXPECT_EQ(run("links " + quoted("w")), 1);
    EXPECT_EQ(content("err"), "3 documents, 3 links: 2 found, 1 missing; 0 damaged\n") << "nobody watches";
    EXPECT_EQ(runOnTerminal("links --json " + quoted("w")), 1);
    std::string shown = content("out");
    const std::string begin = "0 of 3 documents", wiped = "\r" + std::string(begin.size(), ' ') + "\r";
    EXPECT_EQ(shown.find(begin + wiped + "{\"document\":"), 0u) << shown;
    // A terminal that carries out what it was sent is left with the results alone.
    for (std::size_t at = shown.find(" documents\r"); at != std::string::npos; at = shown.find(" documents\r")) {
        const std::size_t line = shown.find_last_of("\n\r", at) + 1,
                          width = at + std::string(" documents").size() - line;
        EXPECT_EQ(shown.substr(line + width, width + 2), "\r" + std::string(width, ' ') + "\r");
        shown.erase(line, 2 * width + 2);
    }
    run("links --json " + quoted("w"));
    shown.erase(std::remove(shown.begin(), shown.end(), '\r'), shown.end());
    EXPECT_EQ(shown, content("out"));
    EXPECT_EQ(runOnTerminal("links --json " + quoted("w") + " > " + quoted("kept")), 1);
    EXPECT_EQ(content("out"), begin + wiped) << "results go elsewhere";
}

TEST_F(LinksCommandTest, ExitStatusTellsMissingFromUnreadable) {
    EXPECT_EQ(run("links " + quoted("w/Pin.CATPart")), 0);
    EXPECT_EQ(run("links " + quoted("w/Root.CATProduct")), 1);
    EXPECT_NE(content("out").find("missing"), std::string::npos);
    std::filesystem::create_directory(path("e"));
    std::filesystem::create_symlink("nothing", path("e/Gone.CATPart"));
    EXPECT_EQ(run("links --json " + quoted("e")), 2);
    EXPECT_EQ(rows()[0]["error"], "cannot be read");
    EXPECT_EQ(run("links " + quoted("absent")), 2);
    EXPECT_EQ(run("links --dot --json " + quoted("w")), 2);
}

TEST_F(LinksCommandTest, FiltersTypesAndDrawsAGraph) {
    EXPECT_EQ(run("links --json --type MML " + quoted("w/Pin.CATPart")), 0);
    EXPECT_EQ(rows()[0]["links"].size(), 1u);
    EXPECT_EQ(run("links --dot " + quoted("w/Root.CATProduct")), 1);
    EXPECT_EQ(content("out"), "digraph links {\n  rankdir=LR;\n  node [shape=box];\n  \"" + path("w/Root.CATProduct") +
                                  "\";\n  \"" + path("w/Root.CATProduct") + "\" -> \"" + path("w/sub/Bolt.CATPart") +
                                  "\";\n  \"D:\\\\old\\\\Nut.CATPart\" [color=red, style=dashed];\n  \"" +
                                  path("w/Root.CATProduct") +
                                  "\" -> \"D:\\\\old\\\\Nut.CATPart\" [color=red, style=dashed];\n}\n");
}

TEST_F(LinksCommandTest, StatusAndDatCountTheDocumentsOwnLinks) {
    write("w/Root.CATProduct.dat",
          "<DatFileVersion>\n2\n</DatFileVersion>\n<LinkedDocs>\nBolt.CATPart\n</LinkedDocs>\n");
    EXPECT_EQ(run("status --links --json " + quoted("w/Root.CATProduct")), 1);
    EXPECT_EQ(rows()[0]["linked"], 1);
    EXPECT_EQ(rows()[0]["document_links"], 2);
    EXPECT_EQ(run("dat --json " + quoted("w/Root.CATProduct")), 0);
    EXPECT_EQ(rows()[0]["document_links"], 2);
}

} // namespace
