#include "tools/vorntools/archive/TextPool.h"

#include <cstring>
#include <functional>
#include <utility>

namespace {

constexpr std::size_t kBlockBytes = std::size_t(1) << 16U;

std::uint32_t hashOf(std::string_view text) { return static_cast<std::uint32_t>(std::hash<std::string_view>()(text)); }

} // namespace

Index TextPool::add(std::string_view text) {
    if (text.empty()) return 0;
    if (m_texts.size() > m_slots.size() / 4 * 3) grow();
    const std::uint32_t hash = hashOf(text);
    Slot& slot = m_slots[placeOf(text, hash)];
    if (slot.text != 0) return slot.text;
    slot = {hash, static_cast<Index>(m_texts.size())};
    m_texts.push_back(keep(text));
    return slot.text;
}

Index TextPool::find(std::string_view text) const {
    if (text.empty()) return 0;
    const Slot& slot = m_slots[placeOf(text, hashOf(text))];
    return slot.text != 0 ? slot.text : kNoIndex;
}

std::size_t TextPool::placeOf(std::string_view text, std::uint32_t hash) const {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t place = hash & mask;
    while (m_slots[place].text != 0 && (m_slots[place].hash != hash || m_texts[m_slots[place].text] != text))
        place = (place + 1) & mask;
    return place;
}

void TextPool::grow() {
    std::vector<Slot> slots(m_slots.size() * 2);
    const std::size_t mask = slots.size() - 1;
    for (const Slot& slot : m_slots) {
        if (slot.text == 0) continue;
        std::size_t place = slot.hash & mask;
        while (slots[place].text != 0) place = (place + 1) & mask;
        slots[place] = slot;
    }
    m_slots = std::move(slots);
}

std::string_view TextPool::keep(std::string_view text) {
    if (text.size() > kBlockBytes / 4) {
        // A block of its own, put in front of the one that is being filled.
        auto block = std::make_unique<char[]>(text.size());
        std::memcpy(block.get(), text.data(), text.size());
        const std::string_view kept(block.get(), text.size());
        m_blocks.insert(m_blocks.begin(), std::move(block));
        return kept;
    }
    if (text.size() > m_free) {
        m_blocks.push_back(std::make_unique<char[]>(kBlockBytes));
        m_free = kBlockBytes;
    }
    char* const place = m_blocks.back().get() + (kBlockBytes - m_free);
    std::memcpy(place, text.data(), text.size());
    m_free -= text.size();
    return {place, text.size()};
}
