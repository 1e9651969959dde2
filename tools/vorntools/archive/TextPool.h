#ifndef TOOLS_VORNTOOLS_ARCHIVE_TEXT_POOL_H
#define TOOLS_VORNTOOLS_ARCHIVE_TEXT_POOL_H

#include "tools/vorntools/archive/Rows.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

/** Texts of any bytes, each stored once and known by a number. Number 0 is the empty text. */
class TextPool {
public:
    TextPool() : m_texts(1), m_slots(64) {}

    /** @return the number of the text, which is added unless it is there */
    Index add(std::string_view text);
    /** @return kNoIndex for a text that is not there */
    Index find(std::string_view text) const;
    /** Good for as long as the pool. */
    std::string_view operator[](Index number) const { return m_texts[number]; }
    std::size_t size() const { return m_texts.size(); }

private:
    /** A place of the hash table, in which the empty text has none. */
    struct Slot {
        std::uint32_t hash = 0;
        Index text = 0; ///< 0: free
    };
    /** Where the text stands, or else has to be put. */
    std::size_t placeOf(std::string_view text, std::uint32_t hash) const;
    void grow();
    std::string_view keep(std::string_view text);

    std::vector<std::unique_ptr<char[]>> m_blocks;
    std::size_t m_free = 0; ///< bytes left at the end of the last block
    std::vector<std::string_view> m_texts;
    std::vector<Slot> m_slots; ///< a power of two, at least a quarter of them free; searched from the hash on
};

#endif
