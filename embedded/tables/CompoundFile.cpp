#include "embedded/tables/CompoundFile.h"

#include "embedded/tables/LittleEndian.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace embedded {

namespace {

constexpr std::string_view kSignature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::size_t kHeader = 512;
constexpr std::size_t kSectorsInHeader = 109; ///< of the table of sectors
constexpr std::size_t kEntry = 128;           ///< of the directory
constexpr std::size_t kNameBytes = 64;
constexpr std::size_t kShortSector = 64;
constexpr std::uint32_t kLastSector = 0xFFFFFFFA; ///< larger numbers end a chain

enum EntryType : unsigned char { TypeStream = 2, TypeRoot = 5 };

/** Which sector follows which one. */
using Table = std::vector<std::uint32_t>;

struct Entry {
    std::string name; ///< ASCII; a character that is not becomes '?'
    unsigned char type;
    std::uint32_t first;
    std::uint64_t size;
};

class CompoundFile {
public:
    explicit CompoundFile(std::string_view bytes) : m_bytes(bytes) {}

    /** False when the tables cannot be read. */
    bool open() {
        if (m_bytes.size() < kHeader || m_bytes.substr(0, kSignature.size()) != kSignature) return false;
        const unsigned shift = read16(m_bytes, 30);
        if ((shift != 9 && shift != 12) || read16(m_bytes, 32) != 6) return false;
        m_sector = std::size_t(1) << shift;
        m_cutoff = read32(m_bytes, 56);
        if (!readTable() || !readDirectory()) return false;
        const auto shortTable = chain(read32(m_bytes, 60));
        if (shortTable) appendNumbers(*shortTable, m_shortTable);
        return shortTable.has_value();
    }

    std::optional<std::string> stream(std::string_view name) const {
        const Entry* const entry = find(TypeStream, name);
        if (!entry || entry->size > m_bytes.size()) return std::nullopt;
        auto content = entry->size < m_cutoff ? shortChain(entry->first) : chain(entry->first);
        if (!content || content->size() < entry->size) return std::nullopt;
        content->resize(static_cast<std::size_t>(entry->size));
        return content;
    }

private:
    /** Empty behind the end of the file. The last sector may be cut. */
    std::string_view sector(std::uint32_t number) const {
        const std::uint64_t begin = (std::uint64_t(number) + 1) * m_sector;
        if (number > kLastSector || begin >= m_bytes.size()) return {};
        return m_bytes.substr(static_cast<std::size_t>(begin), m_sector);
    }

    static void appendNumbers(std::string_view bytes, Table& numbers) {
        for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) numbers.push_back(read32(bytes, i));
    }

    /** The table lies in sectors that the header lists, and where it has no room for all, a chain of its own. */
    bool readTable() {
        // A table that is longer than the file needs runs in a circle.
        const std::size_t most = m_bytes.size() / m_sector + m_sector;
        Table sectors;
        appendNumbers(m_bytes.substr(76, 4 * kSectorsInHeader), sectors);
        std::uint32_t next = read32(m_bytes, 68);
        while (next <= kLastSector) {
            const std::string_view list = sector(next);
            if (list.size() < m_sector || sectors.size() > most) return false;
            appendNumbers(list.substr(0, m_sector - 4), sectors);
            next = read32(list, m_sector - 4);
        }
        for (const std::uint32_t number : sectors) {
            if (number > kLastSector) continue;
            if (sector(number).empty() || m_table.size() > most) return false;
            appendNumbers(sector(number), m_table);
        }
        return true;
    }

    bool readDirectory() {
        const auto directory = chain(read32(m_bytes, 48));
        if (!directory) return false;
        for (std::size_t at = 0; at + kEntry <= directory->size(); at += kEntry) {
            const std::string_view entry = std::string_view(*directory).substr(at, kEntry);
            m_entries.push_back({nameOf(entry), static_cast<unsigned char>(entry[66]), read32(entry, 116),
                                 m_sector == 512 ? read32(entry, 120) : read64(entry, 120)});
        }
        return true;
    }

    static std::string nameOf(std::string_view entry) {
        std::string name;
        for (std::size_t i = 0; i < kNameBytes && read16(entry, i) != 0; i += 2)
            name += read16(entry, i) < 0x80 ? static_cast<char>(read16(entry, i)) : '?';
        return name;
    }

    const Entry* find(EntryType type, std::string_view name) const {
        const auto isWanted = [&](const Entry& one) { return one.type == type && (name.empty() || one.name == name); };
        const auto found = std::find_if(m_entries.begin(), m_entries.end(), isWanted);
        return found == m_entries.end() ? nullptr : &*found;
    }

    /** The sectors of a chain one behind the other. None for one that runs in a circle or leaves the file. */
    std::optional<std::string> chain(std::uint32_t first) const {
        std::string content;
        for (std::uint32_t number = first; number <= kLastSector; number = m_table[number]) {
            const std::string_view bytes = sector(number);
            if (bytes.empty() || number >= m_table.size() || content.size() + m_sector > m_bytes.size())
                return std::nullopt;
            content += bytes;
        }
        return content;
    }

    /** Short streams share the sectors of one that the root has. */
    std::optional<std::string> shortChain(std::uint32_t first) const {
        const Entry* const root = find(TypeRoot, {});
        const auto shared = root ? chain(root->first) : std::nullopt;
        if (!shared) return std::nullopt;
        std::string content;
        for (std::uint32_t number = first; number <= kLastSector; number = m_shortTable[number]) {
            const std::size_t begin = std::size_t(number) * kShortSector;
            if (number >= m_shortTable.size() || begin >= shared->size() || content.size() > shared->size())
                return std::nullopt;
            content.append(*shared, begin, kShortSector);
        }
        return content;
    }

    const std::string_view m_bytes;
    std::size_t m_sector = 0;
    std::uint32_t m_cutoff = 0;
    Table m_table;
    Table m_shortTable;
    std::vector<Entry> m_entries;
};

} // namespace

std::optional<std::string> streamOf(std::string_view file, std::string_view name) {
    CompoundFile compound(file);
    return compound.open() ? compound.stream(name) : std::nullopt;
}

} // namespace embedded
