#include "tests/support/Program.h"

#include "embedded/DesignTables.h"

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

// The program loads what reads workbooks; tables with the same cells have the same checksum.
TEST_F(DesignTablesRunTest, TablesMayBeWorkbooks) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    write("bolts.txt", "Length\tName\n0.25\tM8\n30\tM10\n");
    const std::string part = R"({"document": "P.CATPart", "feature": "MechanicalPart")";
    std::string tables;
    for (const auto& file :
         {path("bolts.txt"), VORNTOOLS_SOURCE_DIR + std::string("/tests/embedded/sheets/bolts.xlsx")})
        tables += (tables.empty() ? "" : ",") + (R"({"name": "T", "configuration": 2, "file": ")" + file) +
                  R"(", "below": )" + part + R"(}, "associations": [{"title": "Name", "parameter": )" + part +
                  R"(, "path": ["S", "N"]}}]})";
    write("s.json", R"({"documents": [{"name": "P.CATPart"}],
        "parameters": {"features": [{"document": "P.CATPart", "type": "MechanicalPart", "name": "P", "attributes": [
            {"name": "UserParameters", "objects": [{"set": "S", "attributes": [{"name": "Parameters", "objects": [
                {"parameter": "N", "type": "String", "value": "x"}]}]}]}]}]},
        "design_tables": [)" +
                        tables + "]}");
    EXPECT_EQ(run("run " + quoted("s.json") + " design-tables --json"), 0) << content("err");
    const auto checked = rows();
    ASSERT_EQ(checked.size(), 2U);
    EXPECT_NE(checked[0]["checksum"].dump(), NOTHING);
    EXPECT_EQ(checked[0]["checksum"], checked[1]["checksum"]);
}

} // namespace
