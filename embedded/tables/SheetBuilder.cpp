#include "embedded/tables/SheetBuilder.h"

#include <utility>

namespace embedded {

bool SheetBuilder::put(std::size_t row, std::size_t column, std::string text) {
    const std::size_t newRows = row < m_rows.size() ? 0 : row + 1 - m_rows.size();
    const std::size_t present = newRows > 0 ? 0 : m_rows[row].size();
    const std::size_t newCells = column < present ? 0 : column + 1 - present;
    if (row >= kMostCells || column >= kMostCells || m_cells + newRows + newCells > kMostCells) return false;
    if (text.size() > kMostCellBytes - m_bytes) return false;
    m_bytes += text.size();
    m_cells += newRows + newCells;
    if (newRows > 0) m_rows.resize(row + 1);
    if (newCells > 0) m_rows[row].resize(column + 1);
    m_rows[row][column] = std::move(text);
    return true;
}

SheetRows SheetBuilder::take() {
    for (auto& row : m_rows)
        while (!row.empty() && row.back().empty()) row.pop_back();
    while (!m_rows.empty() && m_rows.back().empty()) m_rows.pop_back();
    return std::move(m_rows);
}

} // namespace embedded
