#include "links/DocumentDirectory.h"

#include "links/ImageBytes.h"

namespace vorntools {

namespace {

using namespace std::string_view_literals;

constexpr auto kMagic = "V5_CFV"sv;
constexpr auto kKnownMagic = "V5_CFV2\0"sv;
constexpr auto kSignature = "CATIA_V5 CB0001\0"sv;
constexpr auto kEnd = "CB__END\0"sv;

/** Where the root entry begins; its length stands first. */
constexpr std::size_t kRoot = 64;
/** Behind the root entry, as its length counts it. */
constexpr std::size_t kBehindRoot = 8;
/** Beside its pieces. */
constexpr std::uint32_t kRestOfEntry = 86;
constexpr std::uint32_t kPieceBytes = StreamPieces::bytesOfOne;
/** From the beginning of an entry to its dates, and to the length of its name. */
constexpr std::size_t kDates = 16;
constexpr std::size_t kNameLength = 76;
/** From the length of the rest of an entry to its number of pieces. */
constexpr std::size_t kPieceCount = 82;

constexpr std::uint32_t kStorage = 1;
constexpr std::uint32_t kStream = 2;

/** 0 for what does not lie within the directory. */
std::uint32_t numberAt(std::string_view i_bytes, std::size_t i_at) {
    return holds(i_bytes, i_at, sizeof(std::uint32_t)) ? directoryNumber(i_bytes.data() + i_at) : 0;
}

/** Reads the entries, one behind the other, up to the directory's own end. */
class DirectoryReader {
public:
    DirectoryReader(std::string_view i_directory, std::uint64_t i_file_size)
        : m_bytes(i_directory), m_file_size(i_file_size) {}

    bool read(std::vector<DirectoryEntry>& io_entries) {
        if (!standsAt(m_bytes, 0, kSignature)) return false;
        const std::uint32_t root = numberAt(m_bytes, kRoot);
        if (root < kRestOfEntry || !holds(m_bytes, kRoot, std::size_t{root} + kBehindRoot)) return false;
        m_at = kRoot + root + kBehindRoot;
        while (!isAtEnd()) {
            io_entries.emplace_back();
            if (!readEntry(io_entries.back())) return false;
        }
        return true;
    }

private:
    /** The directory ends with its length and a word of its own. Old releases leave room behind them. */
    bool isAtEnd() const { return standsAt(m_bytes, m_at + sizeof(std::uint32_t), kEnd); }

    bool readEntry(DirectoryEntry& o_entry) {
        if (!holds(m_bytes, m_at, kNameLength)) return false;
        o_entry.parent = numberAt(m_bytes, m_at);
        const std::uint32_t kind = numberAt(m_bytes, m_at + 4);
        if (kind != kStorage && kind != kStream) return false;
        o_entry.is_stream = kind == kStream;
        o_entry.size = numberAt(m_bytes, m_at + 8);
        o_entry.dates = EntryDates(m_bytes.substr(m_at + kDates, EntryDates::count * EntryDates::bytesOfOne));
        return readName(o_entry) && readRest(o_entry);
    }

    /** The name's length counts the NUL that ends it. */
    bool readName(DirectoryEntry& o_entry) {
        const std::uint32_t length = numberAt(m_bytes, m_at + kNameLength);
        const std::size_t begin = m_at + kNameLength + sizeof(std::uint32_t);
        if (length < 2 || length % 2 != 0 || !holds(m_bytes, begin, length)) return false;
        o_entry.name = m_bytes.substr(begin, length - 2);
        m_at = begin + length;
        return true;
    }

    bool readRest(DirectoryEntry& o_entry) {
        const std::uint32_t rest = numberAt(m_bytes, m_at);
        if (rest < kRestOfEntry || !holds(m_bytes, m_at, rest)) return false;
        o_entry.identifier = numberAt(m_bytes, m_at + 4);
        const std::uint32_t count = numberAt(m_bytes, m_at + kPieceCount);
        if (count != (rest - kRestOfEntry) / kPieceBytes || (rest - kRestOfEntry) % kPieceBytes != 0) return false;
        o_entry.pieces = StreamPieces(m_bytes.substr(m_at + kRestOfEntry, std::size_t{count} * kPieceBytes));
        std::uint64_t length = 0;
        std::size_t at = m_at + kRestOfEntry;
        m_at += rest;
        for (const StreamPiece piece : o_entry.pieces) {
            if (std::uint64_t{piece.offset} + piece.length > m_file_size || numberAt(m_bytes, at + 12) != length)
                return false;
            length += piece.length;
            at += kPieceBytes;
        }
        return length == o_entry.size && length <= m_file_size;
    }

    std::string_view m_bytes;
    std::uint64_t m_file_size;
    std::size_t m_at = 0;
};

} // namespace

FileHeader::FileHeader(std::string_view i_first_bytes)
    : is_document(standsAt(i_first_bytes, 0, kMagic)),
      is_known_layout(i_first_bytes.size() >= length && standsAt(i_first_bytes, 0, kKnownMagic)),
      directory(numberAt(i_first_bytes, kKnownMagic.size())),
      directory_length(numberAt(i_first_bytes, kKnownMagic.size() + 4)) {}

std::u16string charactersOf(std::string_view i_name) {
    std::u16string characters;
    for (std::size_t i = 0; i + 1 < i_name.size(); i += 2)
        characters += static_cast<char16_t>(byteAt(i_name, i) << 8 | byteAt(i_name, i + 1));
    return characters;
}

bool readDirectory(std::string_view i_directory, std::uint64_t i_file_size, std::vector<DirectoryEntry>& o_entries) {
    // An entry with a name takes more than two hundred bytes.
    o_entries.clear();
    o_entries.reserve(i_directory.size() / 200);
    if (DirectoryReader(i_directory, i_file_size).read(o_entries)) return true;
    o_entries.clear();
    return false;
}

} // namespace vorntools
