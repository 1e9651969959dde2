#ifndef EMBEDDED_TABLES_SHEET_BUILDER_H
#define EMBEDDED_TABLES_SHEET_BUILDER_H

#include <cstddef>
#include <string>
#include <vector>

namespace embedded {

/** Texts of cells by row and column; a row is as long as its last cell. */
using SheetRows = std::vector<std::vector<std::string>>;

/** More cells than any design table has: a file that would need more is not read. Cells in front of a row's last one
 * count, and so does each row. */
constexpr std::size_t kMostCells = std::size_t(4) << 20U;
/** And more bytes in all cells together: many cells may share one long text of the file. */
constexpr std::size_t kMostCellBytes = std::size_t(256) << 20U;
/** Nor is a longer file, or a packed part that would become longer. */
constexpr std::size_t kLargestSheetFile = std::size_t(64) << 20U;

/** Cells that grow where something is put. */
class SheetBuilder {
public:
    /** Puts a text, both positions from 0. False when there are too many cells, or bytes. */
    bool put(std::size_t row, std::size_t column, std::string text);
    /** Hands the cells over, without what is empty at the end of rows and of the whole. */
    SheetRows take();

private:
    SheetRows m_rows;
    std::size_t m_cells = 0;
    std::size_t m_bytes = 0;
};

} // namespace embedded

#endif
