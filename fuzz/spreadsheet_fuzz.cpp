// Any bytes as the workbook of a design table. What begins like an archive or like a compound file is taken as it is.
// What begins like a stream of records is put into a compound file, and all others are the XML parts of a workbook, one
// behind the other with a NUL between them, which are put into an archive: the containers would keep nearly every
// change away from what reads their content.

#include "ExchangeFolder.h"

#include "embedded/DesignTables.h"
#include "tests/support/Workbook.h"

#include <algorithm>

namespace {

constexpr const char* kParts[] = {"xl/worksheets/sheet1.xml", "xl/sharedStrings.xml", "xl/workbook.xml",
                                  "xl/_rels/workbook.xml.rels"};
constexpr const char* kUsualWorkbook =
    R"(<workbook xmlns:r="r"><sheets><sheet name="S" r:id="r1"/></sheets></workbook>)";
constexpr const char* kUsualRelations =
    R"(<Relationships><Relationship Id="r1" Target="worksheets/sheet1.xml"/></Relationships>)";

std::string archiveOfParts(const std::string& bytes) {
    std::vector<std::pair<std::string, std::string>> parts;
    std::size_t begin = 0;
    for (const char* const name : kParts) {
        const std::size_t end = std::min(bytes.find('\0', begin), bytes.size());
        parts.emplace_back(name, bytes.substr(begin, end - begin));
        begin = std::min(end + 1, bytes.size());
    }
    if (parts[2].second.empty()) parts[2].second = kUsualWorkbook;
    if (parts[3].second.empty()) parts[3].second = kUsualRelations;
    return archiveOf(parts);
}

bool beginsWith(const std::string& bytes, const std::string& beginning) { return bytes.rfind(beginning, 0) == 0; }

/** The file that the bytes stand for, and its name. */
std::pair<std::string, std::string> fileOf(const std::string& bytes) {
    if (beginsWith(bytes, "\xD0\xCF\x11\xE0")) return {"bolts.xls", bytes};
    if (beginsWith(bytes, "\x09\x08")) return {"bolts.xls", compoundFile("Workbook", bytes)};
    return {"bolts.xlsx", beginsWith(bytes, "PK") ? bytes : archiveOfParts(bytes)};
}

/** Reads all cells and some outside. @return how many are not empty */
int check(embedded::DesignTable& table) {
    const int columns = std::min(table.columns(), 100);
    int count = 0;
    for (int row = 1; row <= table.rows(); ++row)
        for (int column = 1; column <= columns; ++column) count += table.cell(row, column).empty() ? 0 : 1;
    for (const int outside : {-1, 0, table.rows() + 1, 2147483647}) {
        require(table.cell(outside, 1).empty(), "a cell in a row that is not there");
        require(outside > 0 && outside <= table.columns() ? true : table.cell(1, outside).empty(), "or in a column");
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    const auto [name, bytes] = fileOf(std::string(data, data + size));
    folder.write(name, bytes);
    {
        const auto part = embedded::Session::current().part("/w/Bolt.CATPart");
        auto table =
            embedded::addDesignTable(embedded::parametersOf(part, "MechanicalPart", "Bolt"), "T", folder.nameOf(name));
        const int cells = check(table);
        for (const int sheet : {2, 3, 0, -1, 65536, 2147483647}) {
            const int former = table.sheet();
            table.sheet(sheet);
            require(table.sheet() == sheet || table.sheet() == former, "neither the one sheet nor the other");
            check(table);
        }
        if (table.sheet() != 1) table.sheet(1);
        require(table.sheet() != 1 || check(table) == cells, "another content at the second reading");
    }
    embedded::Session::current().reset();
    requireCleanliness();
    return 0;
}
