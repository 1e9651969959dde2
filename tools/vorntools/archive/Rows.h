#ifndef TOOLS_VORNTOOLS_ARCHIVE_ROWS_H
#define TOOLS_VORNTOOLS_ARCHIVE_ROWS_H

#include <cstddef>
#include <cstdint>

/** Number of a row or a text. */
using Index = std::uint32_t;
constexpr Index kNoIndex = 0xFFFFFFFFU;

/** Rows of another table that belong to one row. */
struct RowRange {
    Index first = 0, count = 0;
};

/** Some neighbouring rows of a table. */
template <class Row>
class Rows {
public:
    Rows() = default;
    Rows(const Row* first, std::size_t count) : m_first(first), m_count(count) {}
    const Row* begin() const { return m_first; }
    const Row* end() const { return m_first + m_count; }
    std::size_t size() const { return m_count; }
    bool empty() const { return m_count == 0; }
    const Row& operator[](std::size_t at) const { return m_first[at]; }

private:
    const Row* m_first = nullptr;
    std::size_t m_count = 0;
};

#endif
