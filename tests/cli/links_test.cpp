#include "tests/support/DocumentImage.h"
#include "tests/support/Program.h"

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
        "{\"document\":\"" + path("w/Pin.CATPart") + "\",\"version\":[5,24,0],\"part_files\":[{\"name\":\"" +
            path("w/sub/Bolt.CATPart") +
            "\",\"exists\":true}],\"context_products\":[],\"context_parts\":[],\"external_references\":"
            "[\"..!Bolt.1!Axis\"],\"links\":[{\"type\":\"MMLAssy_Ref\",\"name\":\"\",\"exists\":false,\"reference\":"
            "\"..!Bolt.1!Axis\",\"tag_found\":false},{\"type\":\"MML\",\"name\":\"" +
            path("w/sub/Bolt.CATPart") +
            "\",\"exists\":true,\"reference\":\"Length\",\"tag_found\":true}],\"ghosts\":[]}");
    EXPECT_EQ(rows[1]["context_parts"].dump(),
              "[{\"name\":\"" + path("w/sub/Bolt.CATPart") +
                  "\",\"exists\":true},{\"name\":\"D:\\\\old\\\\Nut.CATPart\",\"exists\":false}]");
    EXPECT_EQ(rows[1]["ghosts"].dump(), R"(["D:\\old\\Gone.CATPart"])");
    EXPECT_EQ(rows[2]["document"], path("w/sub/Bolt.CATPart"));
}

TEST_F(LinksCommandTest, ExitStatusTellsMissingFromUnreadable) {
    EXPECT_EQ(run("links " + quoted("w/Pin.CATPart")), 0);
    EXPECT_EQ(run("links " + quoted("w/Root.CATProduct")), 1);
    EXPECT_NE(content("out").find("missing"), std::string::npos);
    write("w/Empty.CATPart", "");
    EXPECT_EQ(run("links --json " + quoted("w/Empty.CATPart")), 2);
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
