#include "tests/support/Program.h"

namespace {

/** A part with three tables: one is fine, one has lost its file, and one does not show its sheet. */
class DesignTablesRunTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        write("a.txt", "L\n1\n2\n");
        write("c.txt", "L\n1\n");
        const std::string below = R"("below": {"document": "P.CATPart", "feature": "MechanicalPart"}})";
        write("s.json", R"({"documents": [{"name": "P.CATPart"}],
            "parameters": {"features": [{"document": "P.CATPart", "type": "MechanicalPart", "name": "P",
                "attributes": []}]},
            "design_tables": [
                {"name": "Same", "file": "./lost.txt", )" +
                            below + R"(, {"name": "Same", "file": "./a.txt", "configuration": 2, )" + below +
                            R"(, {"name": "Other", "file": "./c.txt", "without": ["sheet"], )" + below + "]}");
    }
    Texts rowsWithoutDocument() {
        Texts result;
        for (auto row : rows()) {
            row.erase("document");
            row["file"] = row["file"].get<std::string>().substr(folder().u8string().size() + 1);
            result.push_back(row.dump());
        }
        return result;
    }
};

// The checksum of no text: no parameter is associated.
#define NOTHING R"("d41d8cd98f00b204e9800998ecf8427e")"

TEST_F(DesignTablesRunTest, TablesThatCannotBeReadAreFindings) {
    EXPECT_EQ(run("run " + quoted("s.json") + " design-tables --json"), 1) << content("err");
    EXPECT_EQ(rowsWithoutDocument(),
              Texts({R"({"table":"Same","file":"lost.txt","sheet":null,"configuration":null,"checksum":null,)"
                     R"("associated_files":[],"problem":"missing file"})",
                     R"({"table":"Same","file":"a.txt","sheet":1,"configuration":2,"checksum":)" NOTHING
                     R"(,"associated_files":[],"problem":null})",
                     R"({"table":"Other","file":"c.txt","sheet":null,"configuration":null,"checksum":null,)"
                     R"("associated_files":[],"problem":"not readable"})"}));
    EXPECT_EQ(run("run " + quoted("s.json") + " checksums --json 1:1"), 1);
    EXPECT_EQ(
        rowsWithoutDocument(),
        Texts({R"({"file":"lost.txt","sheet":null,"configuration":null,"checksum":null,"recorded":null,"changed":null,)"
               R"("problem":"missing file"})",
               R"({"file":"a.txt","sheet":1,"configuration":1,"checksum":)" NOTHING
               R"(,"recorded":null,"changed":null,"problem":null})",
               R"({"file":"c.txt","sheet":null,"configuration":null,"checksum":null,"recorded":null,"changed":null,)"
               R"("problem":"not readable"})"}));
    write("lost.txt", "L\n1\n");
    EXPECT_EQ(run("run " + quoted("s.json") + " design-tables"), 1);
    EXPECT_NE(content("out").find("not readable"), std::string::npos);
    EXPECT_EQ(content("out").find("missing file"), std::string::npos);
}

} // namespace
