#include "tests/support/Fixture.h"
#include "tests/support/Workbook.h"

#include "CATIADesignTable.h"
#include "CATICkeOleSheet.h"
#include "CATICkeRelation.h"
#include "CATIDesignTable.h"
#include "embedded/DesignTables.h"
#include "embedded/SessionFile.h"

#include <fstream>

namespace {

class DesignTableObjectsTest : public PlatformTest {
protected:
    embedded::Publisher part(const std::string& name) {
        return embedded::parametersOf(session().part(path(name + ".CATPart")), "MechanicalPart", name);
    }
    embedded::DesignTable table(const std::string& file) {
        return embedded::addDesignTable(part("Bolt"), "DesignTable.1", file);
    }
    static std::string sharedSpreadsheet(const std::string& name) {
        return std::string(VORNTOOLS_SOURCE_DIR) + "/tests/embedded/sheets/" + name;
    }
};

std::string cells(const embedded::DesignTable& table) {
    std::string text;
    for (int row = 1; row <= table.rows(); ++row) {
        for (int column = 1; column <= table.columns(); ++column) text += table.cell(row, column) + "|";
        text += "\n";
    }
    return text;
}

TEST_F(DesignTableObjectsTest, TextSheetsAreReadByLinesAndTabulators) {
    const struct {
        const char* bytes;
        const char* cells;
    } cases[] = {
        {"L\tN\n0.1\tM8\n0.2\tM10\n", "L|N|\n0.1|M8|\n0.2|M10|\n"},
        {"L\tN\r\n0.1\tM8", "L|N|\n0.1|M8|\n"},
        {"L\rx\r\ry", "L|\nx|\n|\ny|\n"},
        {"\tN\n\n1\t\t\n\t\n", "|N|\n||\n1||\n"},
        {"\xEF\xBB\xBFL\n\xC3\xA9\n", "L|\n\xC3\xA9|\n"},
        {"L\n\xE9\n", "L|\n\xC3\xA9|\n"},
        {"", ""},
        {"\n\t\n\n", ""},
    };
    int number = 0;
    for (const auto& one : cases)
        EXPECT_EQ(cells(table(write("t" + std::to_string(++number) + ".txt", one.bytes))), one.cells) << one.bytes;
    EXPECT_EQ(table(write("binary.txt", std::string("L\0N\n1", 5))).rows(), 0);
    EXPECT_EQ(table(path("missing.txt")).rows(), 0);
    EXPECT_EQ(table(folder().u8string()).rows(), 0);
    EXPECT_EQ(table(write("wide.txt", std::string((std::size_t(4) << 20U) + 1, '\t') + "x")).rows(), 0);
}

TEST_F(DesignTableObjectsTest, SpreadsheetsAreReadBySheet) {
    for (const char* suffix : {"xls", "xlsx"}) {
        if (!embedded::readsSpreadsheets(suffix)) continue;
        auto found = table(sharedSpreadsheet(std::string("bolts.") + suffix));
        EXPECT_EQ(cells(found), "Length|Name|\n0.25|M8|\n30|M10|\n") << suffix;
        EXPECT_EQ(cells(found.sheet(2)), "Other|\n\xC3\xA9|\n") << suffix;
        EXPECT_EQ(found.sheet(3).sheet(), 2) << suffix;
        EXPECT_EQ(found.rows(), 2) << suffix;
        const std::string damaged = write(std::string("damaged.") + suffix, "L\tN\n1\t2\n");
        EXPECT_EQ(table(damaged).rows(), 0) << "of another kind";
        std::ifstream whole(sharedSpreadsheet(std::string("bolts.") + suffix), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
        ASSERT_GT(bytes.size(), 100U);
        auto cut = table(path(std::string("cut.") + suffix));
        for (std::size_t size = 0; size < bytes.size() / 2; size += 61) {
            write(std::string("cut.") + suffix, bytes.substr(0, size));
            EXPECT_FALSE(cut.update()) << size;
        }
    }
}

TEST_F(DesignTableObjectsTest, CellsOfWorkbooksAreReadAsTheyAreShown) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    const auto cellsOf = [&](const std::string& data, const std::string& behind = "") {
        const std::string sheet = "<worksheet><sheetData>" + data + "</sheetData>" + behind + "</worksheet>";
        return cells(table(write("w.xlsx", workbookOfParts({sheet}))));
    };
    EXPECT_EQ(cellsOf("<row><c><f>A1+1</f></c><c t=\"str\"><f>B1</f></c><c><f>1+1</f><v>2</v></c></row>"), "||2|\n")
        << "formulas without values";
    EXPECT_EQ(
        cellsOf("<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\"/></row><row r=\"2\"><c r=\"C2\"><v>x</v></c></row>",
                "<mergeCells><mergeCell ref=\"A1:B2\"/></mergeCells>"),
        "1|||\n||x|\n")
        << "merged cells show their first one only";
    EXPECT_EQ(cellsOf("<row><c t=\"s\"><v>0</v></c><c t=\"s\"><v>-1</v></c><c t=\"b\"><v>1</v></c></row>"), "||TRUE|\n")
        << "shared texts that are not there";
    for (const char* const far : {"<c r=\"A4194305\"><v>1</v></c>", "<c r=\"A18446744073709551615\"><v>1</v></c>",
                                  "<c r=\"ZZZZZZZZZZZZZZZZ1\"><v>1</v></c>"})
        EXPECT_EQ(cellsOf("<row>" + std::string(far) + "</row>"), "") << far;
    std::string many;
    for (int i = 0; i < 300; ++i) many += "<c t=\"s\"><v>0</v></c>";
    const auto shared = archiveOf(
        {{"xl/workbook.xml", "<workbook><sheets><sheet r:id=\"a\"/></sheets></workbook>"},
         {"xl/_rels/workbook.xml.rels", "<Relationships><Relationship Id=\"a\" Target=\"s.xml\"/></Relationships>"},
         {"xl/s.xml", "<worksheet><sheetData><row>" + many + "</row></sheetData></worksheet>"},
         {"xl/sharedStrings.xml", "<sst><si><t>" + std::string(std::size_t(1) << 20U, 'x') + "</t></si></sst>"}});
    EXPECT_EQ(table(write("shared.xlsx", shared)).rows(), 0) << "one long text in too many cells";
}

TEST_F(DesignTableObjectsTest, ColumnsAndConfigurationsFollowTheTitles) {
    const std::string file = write("bolts.txt", "Name\tLength\nM8\t0.1\nM10\t0.2\n");
    const auto bolt = part("Bolt");
    auto length = bolt.add("Length", "L", 0.25);
    auto name = bolt.add("N", "M8");
    auto lost = bolt.add("Lost", 1);
    auto made = embedded::addDesignTable(bolt, "DesignTable.1", file);
    made.associate("Length", length).associate("Gone", lost).associate("Name", name).associate("Name", lost);
    EXPECT_EQ(made.associations(), Texts({"Length", "Gone", "Name"}));
    CATIDesignTable* const table = made.get();
    EXPECT_EQ(table->ParameterColumn(CATICkeParm_var(length.get())), 2);
    EXPECT_EQ(table->ParameterColumn(CATICkeParm_var(name.get())), 1);
    EXPECT_EQ(table->ParameterColumn(CATICkeParm_var(lost.get())), 0);
    const CATICkeRelation_var relation(table);
    EXPECT_EQ(relation->OutParameters()->Size(), 3);
    EXPECT_EQ(table->ConfigurationRow(), 1);
    EXPECT_EQ(table->SetCurrentConfiguration(2), CATIDesignTable::NoError);
    EXPECT_EQ(table->SetCurrentConfiguration(3), CATIDesignTable::BadConfiguration);
    EXPECT_EQ(table->SetCurrentConfiguration(0), CATIDesignTable::BadConfiguration);
    EXPECT_EQ(table->ConfigurationRow(), 2);
    EXPECT_FALSE(!table->Sheet());
    EXPECT_TRUE(!CATICkeOleSheet_var(table->Sheet())) << "a text";
    EXPECT_STREQ(table->Sheet()->Cell(3, 2).ConvertToChar(), "0.2");
    EXPECT_STREQ(table->Sheet()->Cell(4, 1).ConvertToChar(), "");
    EXPECT_STREQ(table->Sheet()->Cell(0, 1).ConvertToChar(), "");
}

TEST_F(DesignTableObjectsTest, AChangedFileIsReadOnDemand) {
    const std::string file = write("bolts.txt", "L\n1\n");
    touch("bolts.txt", 1000);
    auto made = table(file);
    const CATICkeSheet_var sheet = made.get()->Sheet();
    CATUnicodeString before;
    CATUnicodeString after;
    EXPECT_EQ(sheet->IsFileModified(before, after), 0);
    write("bolts.txt", "L\n2\n");
    touch("bolts.txt", 2000);
    EXPECT_EQ(sheet->IsFileModified(before, after), 1);
    EXPECT_STREQ(sheet->Cell(2, 1).ConvertToChar(), "1");
    EXPECT_EQ(int(sheet->UpdateLocalCopy()), 1);
    EXPECT_STREQ(sheet->Cell(2, 1).ConvertToChar(), "2");
    EXPECT_EQ(sheet->IsFileModified(before, after), 0);
    write("bolts.txt", "");
    EXPECT_EQ(int(sheet->UpdateLocalCopy()), 0);
    EXPECT_STREQ(sheet->Cell(2, 1).ConvertToChar(), "2") << "what cannot be read leaves the cells";
}

TEST_F(DesignTableObjectsTest, SessionFilesKeepTables) {
    const std::string file = write("bolts.txt", "L\tN\n1\tx\n2\ty\n");
    auto bolt = part("Bolt");
    auto relations = bolt.addSet("Relations");
    auto length = bolt.addSet("Sizes").add("Length", "L", 0.25);
    embedded::addDesignTable(relations, "DesignTable.1", file).associate("L", length).configuration(2);
    embedded::addDesignTable(embedded::parametersOf(session().product(path("R.CATProduct")).root()), "Top",
                             write("old.txt", "A\n1\n"))
        .storedConfiguration(7)
        .withoutAutomation();
    embedded::userProperties(session().find(path("R.CATProduct")).root()).add("P", 1);
    write("old.txt", "A\n2\n");
    touch("old.txt", 5000);
    const std::string digest = session().digest();
    const auto saved = embedded::saveSession(path("s.json"));
    ASSERT_TRUE(saved.ok) << saved.error;
    session().reset();
    const auto loaded = embedded::loadSession(path("s.json"));
    ASSERT_TRUE(loaded.ok) << loaded.error;
    EXPECT_EQ(session().digest(), digest);
    const auto tables = embedded::designTablesOf(session().find(path("Bolt.CATPart")));
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0].associations(), Texts({"L"}));
    EXPECT_EQ(tables[0].configuration(), 2);
    EXPECT_EQ(embedded::designTablesOf(session().find(path("R.CATProduct")))[0].cell(2, 1), "1");
}

TEST_F(DesignTableObjectsTest, NamesThatTellNothingAreRefused) {
    const auto bolt = part("Bolt");
    embedded::addDesignTable(bolt.addSet("Same"), "A", path("a.txt"));
    embedded::addDesignTable(bolt.addSet("Same"), "B", path("b.txt"));
    EXPECT_FALSE(embedded::saveSession(path("s.json")).ok);
    const char* const wrong[] = {
        R"([{"name": "T", "file": "t.txt"}])",
        R"([{"name": "T", "file": "t.txt", "below": {"document": "/w/a.CATPart", "feature": "Gone"}}])",
        R"([{"name": "T", "file": "t.txt", "below": {"product": {"document": "/w/a.CATPart"}, "path": ["Gone"]}}])",
        R"([{"name": "T", "file": "t.txt", "below": {"product": {"document": "/w/a.CATPart"}}, "rows": []}])",
        R"([{"name": "T", "file": "t.txt", "below": {"user_properties": {"document": "/w/a.CATPart"}}}])",
    };
    for (const char* const tables : wrong) {
        session().reset();
        const std::string text =
            std::string(R"({"documents": [{"name": "/w/a.CATPart"}], "design_tables": )") + tables + "}";
        EXPECT_FALSE(embedded::loadSessionText(path("s.json"), text).ok) << tables;
    }
}

} // namespace
