#include "tools/vorntools/archive/TextPool.h"

#include <cstring>

namespace {

constexpr std::size_t kBlockBytes = std::size_t(1) << 16U;

} // namespace

Index TextPool::add(std::string_view text) {
    const auto known = m_numbers.find(text);
    if (known != m_numbers.end()) return known->second;
    const Index number = static_cast<Index>(m_texts.size());
    m_texts.push_back(keep(text));
    m_numbers.emplace(m_texts.back(), number);
    return number;
}

Index TextPool::find(std::string_view text) const {
    const auto known = m_numbers.find(text);
    return known == m_numbers.end() ? kNoIndex : known->second;
}

std::string_view TextPool::keep(std::string_view text) {
    if (text.empty()) return {};
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
