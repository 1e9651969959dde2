// Any bytes as the text file of a design table: its cells are those that a second reader finds.

#include "ExchangeFolder.h"

#include "embedded/DesignTables.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

/** Lines end with LF, CR or CR LF; cells that are empty at the end of a row, and such rows at the end, do not count.
 * The first row's titles tell how many columns there are; none is empty. */
Rows rowsOf(const std::string& bytes) {
    Rows rows(1, std::vector<std::string>(1));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n' && i > 0 && bytes[i - 1] == '\r') continue;
        if (bytes[i] == '\n' || bytes[i] == '\r')
            rows.emplace_back(1);
        else if (bytes[i] == '\t')
            rows.back().emplace_back();
        else
            rows.back().back() += bytes[i];
    }
    std::size_t columns = rows[0].size();
    while (columns > 0 && rows[0][columns - 1].empty()) --columns;
    for (auto& row : rows) {
        if (row.size() > columns) row.resize(columns);
        while (!row.empty() && row.back().empty()) row.pop_back();
    }
    while (!rows.empty() && rows.back().empty()) rows.pop_back();
    for (std::size_t column = 0; column < columns; ++column)
        if (rows[0][column].empty()) return {};
    return columns == 0 ? Rows() : rows;
}

bool isPlain(const std::string& bytes) {
    for (const char byte : bytes)
        if (byte == '\0' || static_cast<unsigned char>(byte) > 0x7F) return false;
    return true;
}

/** The same text in 16 bits a character behind a byte order mark. */
std::string wide(const std::string& bytes, bool isHighFirst) {
    std::string text = isHighFirst ? "\xFE\xFF" : "\xFF\xFE";
    for (const char byte : bytes) {
        if (isHighFirst) text += '\0';
        text += byte;
        if (!isHighFirst) text += '\0';
    }
    return text;
}

void requireRows(const embedded::DesignTable& table, const Rows& rows) {
    require(static_cast<std::size_t>(table.rows()) == rows.size(), "the number of rows");
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column <= rows[row].size(); ++column)
            require(table.cell(static_cast<int>(row) + 1, static_cast<int>(column) + 1) ==
                        (column < rows[row].size() ? rows[row][column] : std::string()),
                    "a cell");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    folder.write("bolts.txt", bytes);
    {
        const auto part = embedded::Session::current().part("/w/Bolt.CATPart");
        auto table = embedded::addDesignTable(embedded::parametersOf(part, "MechanicalPart", "Bolt"), "T",
                                              folder.nameOf("bolts.txt"));
        require(table.update() == (table.rows() > 0), "a second reading");
        if (isPlain(bytes)) {
            const Rows rows = rowsOf(bytes);
            requireRows(table, rows);
            for (const std::string& same : {"\xEF\xBB\xBF" + bytes, wide(bytes, false), wide(bytes, true)}) {
                folder.write("bolts.txt", same);
                require(table.update() == !rows.empty(), "the same text in another encoding");
                requireRows(table, rows);
            }
        }
    }
    embedded::Session::current().reset();
    requireCleanliness();
    return 0;
}
