#include "embedded/tables/readers/Readers.h"

#include <freexl.h>

#include <memory>

using namespace embedded;

namespace {

/** What the format has room for. A damaged file may claim more. */
constexpr unsigned kMostRows = 65536;
constexpr unsigned kMostColumns = 256;

/** An open file of the older kind, closed by its destructor. */
class XlsFile {
public:
    explicit XlsFile(const std::string& file) {
        if (freexl_open(file.c_str(), &m_handle) != FREEXL_OK) close();
    }
    ~XlsFile() { close(); }
    XlsFile(const XlsFile&) = delete;
    XlsFile& operator=(const XlsFile&) = delete;

    explicit operator bool() const { return m_handle != nullptr; }
    const void* get() const { return m_handle; }

private:
    void close() {
        if (m_handle) freexl_close(m_handle);
        m_handle = nullptr;
    }

    const void* m_handle = nullptr;
};

std::string textOf(const FreeXL_CellValue& cell) {
    switch (cell.type) {
    case FREEXL_CELL_INT: return std::to_string(cell.value.int_value);
    case FREEXL_CELL_DOUBLE: return cellNumber(cell.value.double_value);
    case FREEXL_CELL_NULL: return std::string();
    default: return cell.value.text_value ? cell.value.text_value : std::string();
    }
}

} // namespace

bool vornReadXls(const std::string& file, int index, SheetRows& rows) {
    const XlsFile opened(file);
    unsigned rowCount = 0;
    unsigned short columns = 0;
    if (!opened || index > 0xFFFF ||
        freexl_select_active_worksheet(opened.get(), static_cast<unsigned short>(index - 1)) != FREEXL_OK ||
        freexl_worksheet_dimensions(opened.get(), &rowCount, &columns) != FREEXL_OK || rowCount > kMostRows ||
        columns > kMostColumns)
        return false;
    SheetBuilder sheet;
    for (unsigned row = 0; row < rowCount; ++row)
        for (unsigned short column = 0; column < columns; ++column) {
            FreeXL_CellValue cell{};
            if (freexl_get_cell_value(opened.get(), row, column, &cell) != FREEXL_OK) return false;
            std::string text = textOf(cell);
            if (!text.empty() && !sheet.put(row, column, std::move(text))) return false;
        }
    rows = sheet.take();
    return true;
}
