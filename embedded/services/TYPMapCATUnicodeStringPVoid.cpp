#include "TYPMapCATUnicodeStringPVoid.h"

#include "embedded/services/ClassNames.h"
#include "embedded/text/TextBytes.h"

#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

using embedded::acceptsClass;
using embedded::internedClassName;

namespace {

const CATUnicodeString& emptyText() {
    static const CATUnicodeString& empty = *new CATUnicodeString;
    return empty;
}

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;
constexpr std::size_t kWord = sizeof(std::uint64_t);

std::uint64_t mixed(std::uint64_t hash, const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    hash = (hash ^ word) * kMultiplier;
    return hash ^ (hash >> 29U);
}

/** Whole words, the last one overlapping the one before it: no byte is handled by itself in a key of usual length. */
std::uint32_t hashOf(const CATUnicodeString& key) {
    const char* const bytes = embedded::TextBytes::of(key).data();
    const std::size_t size = embedded::TextBytes::of(key).size();
    std::uint64_t hash = size * kMultiplier;
    if (size < kWord) {
        hash = mixed(hash, bytes, size);
    } else {
        for (std::size_t i = 0; i + kWord < size; i += kWord) hash = mixed(hash, bytes + i, kWord);
        hash = mixed(hash, bytes + size - kWord, kWord);
    }
    return static_cast<std::uint32_t>(hash >> 16U);
}

constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);
/** Up to so many entries a walk is as fast as an index. */
constexpr std::size_t kWalked = 16;
constexpr std::uint32_t kFree = 0xFFFFFFFFU;

} // namespace

/**
 * Entries in order of insertion. One that is taken out stays as a gap until gaps outnumber entries or somebody asks for
 * an entry by its index; gaps at either end are never in the way. Large tables find keys by open addressing.
 */
struct TYPMapCATUnicodeStringPVoid::Table {
    struct Entry {
        CATUnicodeString key;
        void* value;
        const char* className; ///< null: the entry was taken out
    };

    std::size_t size() const { return m_entries.size() - m_gaps; }

    std::size_t find(const CATUnicodeString& key) const {
        if (m_slots.empty()) {
            for (std::size_t i = m_first; i < m_entries.size(); ++i)
                if (m_entries[i].className && m_entries[i].key == key) return i;
            return kAbsent;
        }
        const std::size_t slot = findSlot(key, hashOf(key));
        return slot == kAbsent ? kAbsent : m_slots[slot].entry;
    }

    void insert(const CATUnicodeString& key, void* value, const char* className) {
        const std::size_t found = find(key);
        if (found != kAbsent) {
            m_entries[found].value = value;
            m_entries[found].className = internedClassName(className);
            return;
        }
        if (m_gaps > kWalked && m_gaps > size()) closeGaps();
        m_entries.push_back({key, value, internedClassName(className)});
        if (m_entries.size() * 4 > m_slots.size() * 3)
            rebuildIndex();
        else
            addToIndex(m_entries.size() - 1);
    }

    bool erase(const CATUnicodeString& key) {
        const std::size_t found = find(key);
        if (found == kAbsent) return false;
        if (!m_slots.empty()) removeFromIndex(findSlot(key, hashOf(key)));
        m_entries[found] = Entry{CATUnicodeString(), nullptr, nullptr};
        ++m_gaps;
        trimEnds();
        return true;
    }

    const Entry* at(int index) {
        if (index < 0 || static_cast<std::size_t>(index) >= size()) return nullptr;
        if (m_gaps > m_first) closeGaps();
        return &m_entries[m_first + static_cast<std::size_t>(index)];
    }

    const Entry& entry(std::size_t index) const { return m_entries[index]; }

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t entry;
    };

    std::size_t findSlot(const CATUnicodeString& key, std::uint32_t hash) const {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
            const Slot& slot = m_slots[i];
            if (slot.entry == kFree) return kAbsent;
            if (slot.hash == hash && m_entries[slot.entry].key == key) return i;
        }
    }

    void addToIndex(std::size_t entry) {
        if (m_slots.empty()) return;
        const std::size_t mask = m_slots.size() - 1;
        const std::uint32_t hash = hashOf(m_entries[entry].key);
        std::size_t i = hash & mask;
        while (m_slots[i].entry != kFree) i = (i + 1) & mask;
        m_slots[i] = {hash, static_cast<std::uint32_t>(entry)};
    }

    /** Closes the hole by moving later slots of the same run up, so that a search may stop at the first free slot. */
    void removeFromIndex(std::size_t hole) {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = (hole + 1) & mask; m_slots[i].entry != kFree; i = (i + 1) & mask) {
            const std::size_t home = m_slots[i].hash & mask;
            if (((i - home) & mask) < ((i - hole) & mask)) continue;
            m_slots[hole] = m_slots[i];
            hole = i;
        }
        m_slots[hole].entry = kFree;
    }

    void rebuildIndex() {
        m_slots.clear();
        if (m_entries.size() <= kWalked) return;
        std::size_t count = 4 * kWalked;
        while (count < 2 * m_entries.size() + 2) count *= 2;
        m_slots.assign(count, Slot{0, kFree});
        for (std::size_t i = m_first; i < m_entries.size(); ++i)
            if (m_entries[i].className) addToIndex(i);
    }

    void trimEnds() {
        while (!m_entries.empty() && m_entries.size() > m_first && !m_entries.back().className) {
            m_entries.pop_back();
            --m_gaps;
        }
        while (m_first < m_entries.size() && !m_entries[m_first].className) ++m_first;
        if (size() > 0) return;
        m_entries.clear();
        m_slots.clear();
        m_first = m_gaps = 0;
    }

    void closeGaps() {
        std::size_t kept = 0;
        for (Entry& entry : m_entries)
            if (entry.className) std::swap(m_entries[kept++], entry);
        m_entries.resize(kept);
        m_first = m_gaps = 0;
        rebuildIndex();
    }

    std::vector<Entry> m_entries;
    std::vector<Slot> m_slots;
    std::size_t m_first = 0; ///< gaps at the beginning
    std::size_t m_gaps = 0;  ///< all gaps
};

TYPMapCATUnicodeStringPVoid::TYPMapCATUnicodeStringPVoid() : m_table(new Table) {}

TYPMapCATUnicodeStringPVoid::~TYPMapCATUnicodeStringPVoid() { delete m_table; }

void TYPMapCATUnicodeStringPVoid::insert(const CATUnicodeString& iKey, void* iValue, const char* iClassName) {
    m_table->insert(iKey, iValue, iClassName);
}

void* TYPMapCATUnicodeStringPVoid::find(const CATUnicodeString& iKey, const char* iClassName) const {
    const std::size_t found = m_table->find(iKey);
    if (found == kAbsent) return nullptr;
    const Table::Entry& entry = m_table->entry(found);
    return acceptsClass(entry.className, iClassName) ? entry.value : nullptr;
}

unsigned char TYPMapCATUnicodeStringPVoid::contains(const CATUnicodeString& iKey) const {
    return m_table->find(iKey) != kAbsent ? 1 : 0;
}

unsigned char TYPMapCATUnicodeStringPVoid::erase(const CATUnicodeString& iKey) { return m_table->erase(iKey) ? 1 : 0; }

int TYPMapCATUnicodeStringPVoid::size() const { return static_cast<int>(m_table->size()); }

void* TYPMapCATUnicodeStringPVoid::valueAt(int iIndex) const {
    const Table::Entry* const entry = m_table->at(iIndex);
    return entry ? entry->value : nullptr;
}

const char* TYPMapCATUnicodeStringPVoid::classNameAt(int iIndex) const {
    const Table::Entry* const entry = m_table->at(iIndex);
    return entry ? entry->className : nullptr;
}

const CATUnicodeString& TYPMapCATUnicodeStringPVoid::keyAt(int iIndex) const {
    const Table::Entry* const entry = m_table->at(iIndex);
    return entry ? entry->key : emptyText();
}
