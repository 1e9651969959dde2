#ifndef LINKS_DOCUMENT_DIRECTORY_H
#define LINKS_DOCUMENT_DIRECTORY_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/** A number of the directory: big-endian, unlike those of the streams. */
inline std::uint32_t directoryNumber(const char* ip_at) {
    const auto byte = [ip_at](int i_index) { return std::uint32_t{static_cast<unsigned char>(ip_at[i_index])}; };
    return byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3);
}

/** A stretch of the file that holds a part of a stream. */
struct StreamPiece {
    std::uint32_t offset = 0; ///< in the file
    std::uint32_t length = 0;
};

/** The pieces of a stream, read from the bytes of its entry. */
class StreamPieces {
public:
    static constexpr std::size_t bytesOfOne = 20;

    class Iterator {
    public:
        explicit Iterator(const char* ip_at) : m_at(ip_at) {}
        StreamPiece operator*() const { return {directoryNumber(m_at), directoryNumber(m_at + 4)}; }
        Iterator& operator++() {
            m_at += bytesOfOne;
            return *this;
        }
        bool operator!=(const Iterator& i_other) const { return m_at != i_other.m_at; }

    private:
        const char* m_at;
    };

    StreamPieces() = default;
    /** @param i_bytes bytesOfOne for each piece, big-endian */
    explicit StreamPieces(std::string_view i_bytes) : m_bytes(i_bytes) {}

    bool empty() const { return m_bytes.empty(); }
    std::size_t size() const { return m_bytes.size() / bytesOfOne; }
    StreamPiece front() const { return *begin(); }
    Iterator begin() const { return Iterator(m_bytes.data()); }
    Iterator end() const { return Iterator(m_bytes.data() + m_bytes.size()); }

private:
    std::string_view m_bytes;
};

/** When an entry was made and changed, each in units of 100 ns since 1601, 0 where the file does not tell; read from
 * the bytes of the entry. */
class EntryDates {
public:
    static constexpr std::size_t count = 3;
    static constexpr std::size_t bytesOfOne = 8;

    EntryDates() = default;
    /** @param i_bytes bytesOfOne for each date, the less significant half first */
    explicit EntryDates(std::string_view i_bytes) : m_bytes(i_bytes) {}

    std::uint64_t operator[](std::size_t i_index) const {
        const char* const p_at = m_bytes.data() + i_index * bytesOfOne;
        return std::uint64_t{directoryNumber(p_at + 4)} << 32 | directoryNumber(p_at);
    }

private:
    std::string_view m_bytes;
};

/** A storage or a stream of a document file. What it refers to stays in the bytes of the directory. */
struct DirectoryEntry {
    std::uint32_t identifier = 0;
    std::uint32_t parent = 0; ///< identifier of the storage that holds it; it need not be there
    bool is_stream = false;
    std::uint32_t size = 0;
    EntryDates dates;
    /** UTF-16 as stored, big-endian. The names of properties begin with the character 3, that of the preview with 5. */
    std::string_view name;
    /** In the order of the stream, which need not be that of the file. Together they are as long as the size, which is
     * no more than that of the file, and each lies within it. */
    StreamPieces pieces;
};

/** The characters of a stored name. */
std::u16string charactersOf(std::string_view i_name);

/** The first bytes of a document file, which tell where its directory is. */
struct FileHeader {
    static constexpr std::size_t length = 16;

    explicit FileHeader(std::string_view i_first_bytes);

    bool is_document = false;     ///< whether the file begins as a document of any layout does
    bool is_known_layout = false; ///< whether the directory has the layout that readDirectory reads
    std::uint32_t directory = 0;  ///< its position
    std::uint32_t directory_length = 0;

    /** End of the directory, which is that of every file that is whole. */
    std::uint64_t end() const { return std::uint64_t{directory} + directory_length; }
};

/**
 * Reads a directory. Everything that it tells is checked against the file; one thing that does not fit and none of it
 * is believed.
 * @param i_directory its bytes, from FileHeader::directory to the end of the file; the entries refer to them
 * @return false, without entries, when it does not fit
 */
bool readDirectory(std::string_view i_directory, std::uint64_t i_file_size, std::vector<DirectoryEntry>& o_entries);

} // namespace vorntools

#endif
