#ifndef TOOLS_VORNTOOLS_ARCHIVE_TEXT_POOL_H
#define TOOLS_VORNTOOLS_ARCHIVE_TEXT_POOL_H

#include "tools/vorntools/archive/Rows.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

/** Texts of any bytes, each stored once and known by a number. Number 0 is the empty text. */
class TextPool {
public:
    TextPool() { add({}); }

    /** @return the number of the text, which is added unless it is there */
    Index add(std::string_view text);
    /** @return kNoIndex for a text that is not there */
    Index find(std::string_view text) const;
    /** Good for as long as the pool. */
    std::string_view operator[](Index number) const { return m_texts[number]; }
    std::size_t size() const { return m_texts.size(); }

private:
    std::string_view keep(std::string_view text);

    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_free = 0; ///< bytes left at the end of the last block
    std::vector<std::string_view> m_texts;
    std::unordered_map<std::string_view, Index> m_numbers;
};

#endif
