#include "tests/support/Allocations.h"
#include "tests/support/Fixture.h"
#include "tests/support/Workbook.h"

#include "CATIADesignTable.h"
#include "CATICkeOleSheet.h"
#include "CATICkeRelation.h"
#include "CATIDesignTable.h"
#include "embedded/DesignTables.h"
#include "embedded/Profile.h"
#include "embedded/SessionFile.h"

#include <cstring>
#include <fstream>
#include <iomanip>
#include <sstream>

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
        {"L\tN\n\n1\t\t\n\t\n  \t ", "L|N|\n||\n1||\n||\n  | |\n"},
        {"L\tN\t\n1\t2\t3\n1", "L|N|\n1|2|\n1||\n"},
        {"\tN\n1\t2\n", ""},
        {"L\t\tN\n1\t2\t3\n", ""},
        {"\nL\n1\n", ""},
        {"", ""},
        {"\n\t\n\n", ""},
    };
    int number = 0;
    for (const auto& one : cases)
        EXPECT_EQ(cells(table(write("t" + std::to_string(++number) + ".txt", one.bytes))), one.cells) << one.bytes;
    EXPECT_EQ(table(path("missing.txt")).rows(), 0);
    EXPECT_EQ(table(folder().u8string()).rows(), 0);
    const std::string wide = "L" + std::string((std::size_t(4) << 20U) + 1, '\t') + "x";
    EXPECT_EQ(table(write("wide.txt", wide)).rows(), 0);
}

TEST_F(DesignTableObjectsTest, TextSheetsAreReadInEveryEncoding) {
    const struct {
        const char* name;
        std::string bytes;
        const char* cells;
    } cases[] = {
        {"UTF-8", "L\n\xC3\xA9\xF0\x9F\x94\xA9\n", "L|\n\xC3\xA9\xF0\x9F\x94\xA9|\n"},
        {"UTF-8, marked", "\xEF\xBB\xBFL\n\xC3\xA9\n", "L|\n\xC3\xA9|\n"},
        {"Latin-1", "L\n\xE9\n", "L|\n\xC3\xA9|\n"},
        {"UTF-16, low byte first",
         {"\xFF\xFEL\0\n\0\xE9\0\x3D\xD8\x29\xDD\n\0\x41", 15},
         "L|\n\xC3\xA9\xF0\x9F\x94\xA9|\n"},
        {"UTF-16, high byte first",
         {"\xFE\xFF\0L\0\n\0\xE9\xD8\x3D\xDD\x29\0\n", 14},
         "L|\n\xC3\xA9\xF0\x9F\x94\xA9|\n"},
        {"UTF-16 without a mark", {"L\0\n\0", 4}, ""},
        {"binary", {"L\0N\n1", 5}, ""},
        {"a NUL in UTF-16", {"\xFF\xFEL\0\0\0", 6}, ""},
    };
    for (const auto& one : cases) EXPECT_EQ(cells(table(write("t.txt", one.bytes))), one.cells) << one.name;
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
    EXPECT_EQ(cellsOf("<row><c t=\"s\"><v>0</v></c><c t=\"b\"><v>1</v></c></row>"), "")
        << "a shared text that is not there";
    EXPECT_EQ(cellsOf("<row><other><v>1</v></other><c><v>2</v></c></row>"), "2|\n");
    EXPECT_EQ(cellsOf("<row><c t=\"d\"><v>2026-11-21T10:20:30.000Z</v></c><c t=\"d\"><v>2026-11-21</v></c></row>"),
              "2026-11-21 10:20:30|2026-11-21|\n");
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

TEST_F(DesignTableObjectsTest, LackOfMemoryIsNoUnreadableWorkbook) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto bolts = table(sharedSpreadsheet("bolts.xlsx"));
    std::size_t nth = 0;
    for (bool refused = true; refused;) {
        allocations::refuse(++nth, 1);
        bool failed = false;
        bool isRead = false;
        try {
            isRead = bolts.update();
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        refused = allocations::refuse(0, 0);
        EXPECT_NE(failed, isRead) << "allocation " << nth;
    }
    EXPECT_GT(nth, 10U);
    EXPECT_EQ(cells(bolts), "Length|Name|\n0.25|M8|\n30|M10|\n");
}

// The formats of the cells' styles: none, day, day and time, hours, then those that the file spells out.
constexpr int kBuiltInFormats[] = {0, 14, 22, 20};
constexpr const char* kFormats[] = {
    "dd\\/mm\\/yyyy", "[Red]hh:mm:ss AM/PM;@", "[h]:mm", "0.00\" days\"", "h:mm", "mm:ss.0", "0.0;dd"};
constexpr int kFirstFormat = 164;

/** One cell in both kinds of spreadsheets. */
struct TestCell {
    std::string record; ///< row and column left out
    unsigned type;
    std::string element;
    const char* text;
};

std::string real(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return littleEndian(bits, 8);
}

TestCell numberCell(double value, int style, const char* text) {
    std::ostringstream digits;
    digits << std::setprecision(17) << value;
    return {littleEndian(static_cast<std::uint64_t>(style), 2) + real(value), 0x203,
            "<c s=\"" + std::to_string(style) + "\"><v>" + digits.str() + "</v></c>", text};
}

/** A cell of the first style. */
TestCell cell(unsigned type, const std::string& data, const std::string& element, const char* text) {
    return {littleEndian(0, 2) + data, type, element, text};
}

std::string formulaResult(int kind, int value) {
    return littleEndian(static_cast<std::uint64_t>(kind), 2) + littleEndian(static_cast<std::uint64_t>(value), 4) +
           "\xFF\xFF" + std::string(8, '\0');
}

std::string xlsOf(const std::vector<TestCell>& all, bool since1904) {
    std::string book = xlsRecord(0x22, littleEndian(since1904 ? 1 : 0, 2));
    std::string styles;
    for (const int format : kBuiltInFormats) styles += xlsRecord(0xE0, littleEndian(std::uint64_t(format) << 16, 20));
    int number = kFirstFormat;
    for (const std::string format : kFormats) {
        book +=
            xlsRecord(0x41E, littleEndian(std::uint64_t(number), 2) + littleEndian(format.size(), 2) + '\0' + format);
        styles += xlsRecord(0xE0, littleEndian(std::uint64_t(number++) << 16, 20));
    }
    // Two shared texts: one of two bytes a character with a font run and three bytes of a reading, and one that another
    // record continues in two bytes.
    const std::string shared = littleEndian(2, 4) + littleEndian(2, 4) +
                               std::string("\2\0\xD\1\0\3\0\0\0\xE9\0\xB1\3", 13) + std::string(4 + 3, '\0') +
                               std::string("\4\0\0  ", 5);
    book += styles + xlsRecord(0xFC, shared) + xlsRecord(0x3C, std::string("\1x\0y\0", 5));
    std::string rows;
    for (std::size_t i = 0; i < all.size(); ++i) {
        rows += xlsRecord(all[i].type, littleEndian(i, 2) + littleEndian(0, 2) + all[i].record);
        if (all[i].type == 0x06 && all[i].text == std::string("made"))
            rows += xlsRecord(0x207, littleEndian(4, 2) + '\0' + "made");
    }
    return compoundFile("Workbook", xlsStream(book, {rows}));
}

std::string xlsxOf(const std::vector<TestCell>& all, bool since1904) {
    std::string rows;
    for (const TestCell& one : all) rows += "<row>" + one.element + "</row>";
    std::string formats;
    std::string styles;
    for (const int format : kBuiltInFormats) styles += "<xf numFmtId=\"" + std::to_string(format) + "\"/>";
    int number = kFirstFormat;
    for (const std::string format : kFormats) {
        std::string escaped = format;
        for (std::size_t at = 0; (at = escaped.find('"', at)) != std::string::npos;) escaped.replace(at, 1, "&quot;");
        formats += "<numFmt numFmtId=\"" + std::to_string(number) + "\" formatCode=\"" + escaped + "\"/>";
        styles += "<xf numFmtId=\"" + std::to_string(number++) + "\"/>";
    }
    return archiveOf(
        {{"xl/workbook.xml", std::string("<workbook><workbookPr date1904=\"") + (since1904 ? "1" : "0") +
                                 "\"/><sheets><sheet r:id=\"a\"/></sheets></workbook>"},
         {"xl/_rels/workbook.xml.rels", "<Relationships><Relationship Id=\"a\" Target=\"s.xml\"/></Relationships>"},
         {"xl/styles.xml",
          "<styleSheet><numFmts>" + formats + "</numFmts><cellXfs>" + styles + "</cellXfs></styleSheet>"},
         {"xl/sharedStrings.xml", "<sst><si><r><t>\xC3\xA9</t></r><r><t>\xCE\xB1</t></r></si>\n"
                                  "<si><t xml:space=\"preserve\">  xy</t></si></sst>"},
         {"xl/s.xml", "<worksheet><sheetData>\n" + rows + "</sheetData></worksheet>"}});
}

std::vector<TestCell> testCells(bool since1904, bool withComma) {
    const double day = since1904 ? 44885 : 46347;
    return {
        cell(0xFD, littleEndian(0, 4), "<c t=\"s\"><v>0</v></c>", "\xC3\xA9\xCE\xB1"),
        cell(0xFD, littleEndian(1, 4), "<c t=\"s\"><v>1</v></c>", "  xy"),
        cell(0x204, std::string("\2\0\0  ", 5), "<c t=\"inlineStr\"><is><t>  </t></is></c>", "  "),
        numberCell(0.25, 0, withComma ? "0,25" : "0.25"),
        numberCell(-1e300, 0, "-1e+300"),
        numberCell(0.1 + 0.2, 0, withComma ? "0,3" : "0.3"),
        cell(0x27E, littleEndian(30 << 2 | 2, 4), "<c><v>30</v></c>", "30"),
        cell(0x27E, littleEndian(static_cast<std::uint32_t>(-5) << 2 | 3, 4), "<c><v>-0.05</v></c>",
             withComma ? "-0,05" : "-0.05"),
        cell(0x27E, littleEndian(0x40090000, 4), "<c><v>3.125</v></c>", withComma ? "3,125" : "3.125"),
        cell(0xBD, littleEndian(7 << 2 | 2, 4) + littleEndian(0, 2), "<c><v>7</v></c>", "7"),
        cell(0x205, std::string("\1\0", 2), "<c t=\"b\"><v>1</v></c>", "TRUE"),
        cell(0x205, std::string("\0\0", 2), "<c t=\"b\"><v>0</v></c>", "FALSE"),
        cell(0x205, "\x7\1", "<c t=\"e\"><v>#DIV/0!</v></c>", "#DIV/0!"),
        cell(0x205, "\x2A\1", "<c t=\"e\"><v>#N/A</v></c>", "#N/A"),
        cell(0x06, real(2.5) + std::string(8, '\0'), "<c><f>A1</f><v>2.5</v></c>", withComma ? "2,5" : "2.5"),
        cell(0x06, formulaResult(0, 0), "<c t=\"str\"><f>A1</f><v>made</v></c>", "made"),
        cell(0x06, formulaResult(1, 1), "<c t=\"b\"><f>A1</f><v>1</v></c>", "TRUE"),
        cell(0x06, formulaResult(2, 0x17), "<c t=\"e\"><f>A1</f><v>#REF!</v></c>", "#REF!"),
        cell(0x06, formulaResult(3, 0), "<c t=\"str\"><f>A1</f><v></v></c>", ""),
        numberCell(day, 1, "2026-11-21"),
        numberCell(day + 0.75, 1, "2026-11-21"),
        numberCell(day + 0.75, 2, "2026-11-21 18:00:00"),
        numberCell(day + 0.9999999, 2, "2026-11-22 00:00:00"),
        numberCell(0.75, 3, "18:00:00"),
        numberCell(day, 4, "2026-11-21"),
        numberCell(0.5 + 1.0 / 86400, 5, "12:00:01"),
        numberCell(1.5, 6, withComma ? "1,5" : "1.5"),
        numberCell(7, 7, "7"),
        numberCell(0.75, 8, "18:00:00"),
        numberCell(0.75, 9, "18:00:00"),
        numberCell(7, 10, "7"),
        numberCell(-1, 1, "-1"),
        numberCell(3000000, 1, "3000000"),
        numberCell(1, 1, since1904 ? "1904-01-02" : "1900-01-01"),
        numberCell(59, 1, since1904 ? "1904-02-29" : "1900-02-28"),
        numberCell(60, 1, since1904 ? "1904-03-01" : "1900-02-29"),
        numberCell(61, 1, since1904 ? "1904-03-02" : "1900-03-01"),
        numberCell(0, 1, since1904 ? "1904-01-01" : "0"),
        cell(0x204, std::string("\3\0\0end", 6), "<c t=\"inlineStr\"><is><t>end</t></is></c>", "end"),
    };
}

TEST_F(DesignTableObjectsTest, TheSameCellsHaveTheSameTextsInBothKindsOfSpreadsheets) {
    for (const bool since1904 : {false, true})
        for (const char* const mark : {".", ","}) {
            environment().decimalSeparator = mark;
            const auto all = testCells(since1904, mark == std::string(","));
            std::vector<std::pair<const char*, std::string>> files = {{"cells.xls", xlsOf(all, since1904)}};
            if (embedded::readsSpreadsheets("xlsx")) files.emplace_back("cells.xlsx", xlsxOf(all, since1904));
            for (const auto& [name, bytes] : files) {
                const auto made = table(write(name, bytes));
                EXPECT_EQ(made.rows(), static_cast<int>(all.size()));
                for (std::size_t i = 0; i < all.size(); ++i)
                    EXPECT_EQ(made.cell(static_cast<int>(i) + 1, 1), all[i].text) << name << i << mark << since1904;
            }
        }
}

TEST_F(DesignTableObjectsTest, PartsOfWorkbooksThatCannotBeReadAreNotEmpty) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    for (const char* const part : {"xl/sharedStrings.xml", "xl/styles.xml"}) {
        const auto made = table(
            write("w.xlsx",
                  archiveOf({{"xl/workbook.xml", "<workbook><sheets><sheet r:id=\"a\"/></sheets></workbook>"},
                             {"xl/_rels/workbook.xml.rels",
                              "<Relationships><Relationship Id=\"a\" Target=\"s.xml\"/></Relationships>"},
                             {"xl/s.xml", "<worksheet><sheetData><row><c><v>1</v></c></row></sheetData></worksheet>"},
                             {part, "<no markup"}})));
        EXPECT_EQ(made.rows(), 0) << part;
    }
}

TEST_F(DesignTableObjectsTest, XlsFilesOfOtherFormsAreRead) {
    const auto numberAt = [](int row, double value) {
        return xlsRecord(0x203, littleEndian(std::uint64_t(row), 6) + real(value));
    };
    const std::string chart = xlsBegin(0x20) + numberAt(0, 9) + xlsRecord(0x0A, "");
    EXPECT_EQ(cells(table(
                  write("t.xls", compoundFile("Workbook", xlsStream("", {numberAt(0, 1) + chart + numberAt(1, 2)}))))),
              "1|\n2|\n")
        << "a chart within the sheet";

    const std::string format = littleEndian(164, 2) + "\4yyyy";
    const std::string style = littleEndian(std::uint64_t(164) << 16, 16);
    const std::string older =
        xlsStream(xlsRecord(0x41E, format) + xlsRecord(0xE0, style),
                  {xlsRecord(0x204, littleEndian(0, 6) + "\2" + '\0' + "L\xE9") + numberAt(1, 46347)}, 0x500);
    EXPECT_EQ(cells(table(write("t.xls", compoundFile("Book", older)))), "L\xC3\xA9|\n2026-11-21|\n")
        << "one byte a character";

    const std::string filling = xlsRecord(0x41, std::string(8000, '\0'));
    std::string large;
    while (large.size() < 16000000) large += filling;
    std::string file = compoundFile("Workbook", xlsStream(large, {numberAt(0, 1)}));
    EXPECT_EQ(cells(table(write("t.xls", file))), "1|\n") << "a file whose header has no room for its tables";
    constexpr std::size_t nextList = 512 + 508;
    file.replace(nextList, 4, littleEndian(0, 4));
    EXPECT_EQ(table(write("t.xls", file)).rows(), 0) << "its lists of tables run in a circle";
}

TEST_F(DesignTableObjectsTest, XlsFilesThatDoNotHoldTogetherAreRefused) {
    const std::string cells = xlsRecord(0x203, littleEndian(0, 6) + real(1));
    const std::string shared = xlsRecord(0xFD, littleEndian(0, 6) + littleEndian(0, 4));
    const auto file = [](const std::string& book, const std::string& sheet) {
        return compoundFile("Workbook", xlsStream(book, {sheet}));
    };
    ASSERT_EQ(table(write("t.xls", file("", cells))).rows(), 1);
    EXPECT_EQ(table(write("t.xls", compoundFile("Book", xlsStream("", {cells})))).rows(), 1);
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"an empty sheet", file("", "")},
        {"a shared text that is not there", file("", cells + shared)},
        {"shared texts that are cut",
         file(xlsRecord(0xFC, littleEndian(2, 4) + littleEndian(2, 4) + std::string("\1\0\0x", 4)), cells)},
        {"a password", file(xlsRecord(0x2F, "xx"), cells)},
        {"a cut record", file("", cells + xlsRecord(0x203, littleEndian(0, 9)))},
        {"no end", compoundFile("Workbook", xlsStream("", {cells}).substr(0, 53))},
        {"a column that no sheet has", file("", xlsRecord(0x203, littleEndian(300 << 16, 6) + real(1)))},
        {"a chart", compoundFile("Workbook",
                                 [&] {
                                     std::string stream = xlsStream("", {cells});
                                     stream[stream.size() - cells.size() - 6] = 0x20;
                                     return stream;
                                 }())},
        {"another stream", compoundFile("Other", xlsStream("", {cells}))},
        {"a stream of text", compoundFile("Workbook", "L\tN\n1\t2\n")},
    };
    for (const auto& one : cases) EXPECT_EQ(table(write("t.xls", one.bytes)).rows(), 0) << one.name;
    // A chain that runs in a circle: the stream's second sector is followed by itself.
    std::string circle = compoundFile("Workbook", xlsStream(std::string(5000, '\0'), {cells}));
    circle.replace(512 + 4 * 4, 4, littleEndian(4, 4));
    EXPECT_EQ(table(write("t.xls", circle)).rows(), 0);
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
    write("bolts.txt", "L\n3\n");
    touch("bolts.txt", 2000);
    EXPECT_EQ(sheet->IsFileModified(before, after), 1) << "within the same second";
    made.openElsewhere(true);
    EXPECT_EQ(int(sheet->UpdateLocalCopy()), 0);
    EXPECT_STREQ(sheet->Cell(2, 1).ConvertToChar(), "2");
    made.openElsewhere(false);
    EXPECT_EQ(int(sheet->UpdateLocalCopy()), 1);
    write("bolts.txt", "");
    EXPECT_EQ(int(sheet->UpdateLocalCopy()), 0);
    EXPECT_STREQ(sheet->Cell(2, 1).ConvertToChar(), "3") << "what cannot be read leaves the cells";
}

TEST_F(DesignTableObjectsTest, SelectingTouchesWhatTheSessionSays) {
    const std::string file = write("bolts.xls", xlsOf(testCells(false, false), false));
    const auto size = [&] { return std::filesystem::file_size(std::filesystem::u8path(file)); };
    const auto before = size();
    embedded::Switches switches;
    embedded::setSwitches(switches);
    auto made = table(file).configuration(2);
    const CATICkeOleSheet_var sheet(made.get()->Sheet());
    sheet->SetSheetIndex(2);
    EXPECT_EQ(made.get()->SetCurrentConfiguration(3), CATIDesignTable::NoError);
    EXPECT_EQ(size(), before);
    switches.selectingWritesTables = switches.sheetSelectsFirstConfiguration = switches.rowZeroIsTaken = true;
    embedded::setSwitches(switches);
    sheet->SetSheetIndex(1);
    EXPECT_EQ(size(), before + 1);
    sheet->SetSheetIndex(1);
    EXPECT_EQ(size(), before + 1);
    EXPECT_EQ(made.configuration(), 1);
    EXPECT_EQ(made.get()->SetCurrentConfiguration(2), CATIDesignTable::NoError);
    EXPECT_EQ(size(), before + 2);
    EXPECT_EQ(made.get()->SetCurrentConfiguration(0), CATIDesignTable::NoError);
    EXPECT_EQ(made.configuration(), 0);
    EXPECT_TRUE(made.update()) << "the longer file can be read";
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
        .openElsewhere(true)
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
