#include "links/DocumentFile.h"

#include "links/ImageBytes.h"
#include "links/StreamNames.h"

#include <algorithm>
#include <utility>

namespace vorntools {

namespace {

using namespace std::string_view_literals;

/** A file that is no longer is read in one go: that costs less than the ways to its parts. */
constexpr std::uint64_t kSmallFile = std::uint64_t{32} * 1024;
/** Of a file that is no longer more is read at both ends than header and directory: the platform writes what links are
 * read from right behind the one and right before the other. Larger ones hold too much beside it. */
constexpr std::uint64_t kMiddleFile = std::uint64_t{512} * 1024;
/** The header, and as a rule what stands right behind it. */
constexpr std::uint64_t kFirstRead = 4096;
constexpr std::uint64_t kFirstReadOfMiddle = 8192;
constexpr std::uint64_t kBeforeDirectory = std::uint64_t{12} * 1024;

FileRange rangeOf(const StreamPiece& i_piece) { return {i_piece.offset, i_piece.length}; }

std::uint64_t lengthOfFirstRead(std::uint64_t i_size) {
    if (i_size <= kSmallFile) return i_size;
    return i_size <= kMiddleFile ? kFirstReadOfMiddle : kFirstRead;
}

} // namespace

bool DocumentFile::open(const CATUnicodeString& i_name) {
    m_entries.clear();
    m_root = m_top = 0;
    m_header = FileHeader(std::string_view());
    if (!m_reader.open(i_name)) return false;
    const FileRange first = {0, lengthOfFirstRead(size())};
    if (!m_reader.fetch({first})) return false;
    m_header = FileHeader(m_reader.bytes({0, std::min<std::uint64_t>(size(), FileHeader::length)}));
    return readEntries(first.end());
}

bool DocumentFile::readEntries(std::uint64_t i_known) {
    if (!m_header.is_known_layout || !isWhole()) return true;
    const FileRange directory = {m_header.directory, m_header.directory_length};
    FileRange wanted = directory;
    if (size() <= kMiddleFile && directory.offset > i_known) {
        wanted.offset -= (std::min)(kBeforeDirectory, directory.offset - i_known);
        wanted.length = directory.end() - wanted.offset;
    }
    if (!m_reader.fetch({wanted})) return false;
    m_directory = m_reader.keep(directory);
    readDirectory(m_reader.bytes(directory), size(), m_entries);
    const auto root = std::find_if(m_entries.begin(), m_entries.end(), [](const DirectoryEntry& i_entry) {
        return !i_entry.is_stream && i_entry.name == stream::root;
    });
    if (root == m_entries.end()) return true;
    m_root = root->identifier;
    m_top = root->parent;
    return true;
}

const DirectoryEntry* DocumentFile::topStorage() const {
    const auto top = std::find_if(m_entries.begin(), m_entries.end(), [this](const DirectoryEntry& i_entry) {
        return !i_entry.is_stream && i_entry.identifier == m_top;
    });
    return top == m_entries.end() ? nullptr : &*top;
}

const DirectoryEntry* DocumentFile::find(std::string_view i_name, std::uint32_t i_parent) const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const DirectoryEntry& i_entry) {
        return i_entry.is_stream && i_entry.parent == i_parent && i_entry.name == i_name;
    });
    return found == m_entries.end() ? nullptr : &*found;
}

bool DocumentFile::fetch(const Streams& i_streams) {
    std::uint64_t length = 0;
    for (const DirectoryEntry* const p_stream : i_streams) length += p_stream->size;
    if (length > size()) return false;
    std::vector<FileRange> wanted;
    for (const DirectoryEntry* const p_stream : i_streams)
        for (const StreamPiece piece : p_stream->pieces) wanted.push_back(rangeOf(piece));
    return m_reader.fetch(std::move(wanted));
}

bool DocumentFile::appendStream(const DirectoryEntry& i_entry, std::uint64_t i_from, std::uint64_t i_count,
                                std::string& io_bytes) {
    std::vector<FileRange> wanted;
    std::uint64_t position = 0;
    const std::uint64_t end =
        i_from + std::min<std::uint64_t>(i_count, i_entry.size - std::min<std::uint64_t>(i_from, i_entry.size));
    for (const StreamPiece piece : i_entry.pieces) {
        const std::uint64_t begin = (std::max)(i_from, position);
        const std::uint64_t stop = (std::min)(end, position + piece.length);
        if (begin < stop) wanted.push_back({piece.offset + (begin - position), stop - begin});
        position += piece.length;
    }
    if (!m_reader.fetch(wanted)) return false;
    for (const FileRange& range : wanted) io_bytes += m_reader.bytes(range);
    return true;
}

std::string DocumentFile::imageOf(Streams i_streams) const {
    const auto place = [](const DirectoryEntry* ip_stream) {
        return ip_stream->pieces.empty() ? 0 : ip_stream->pieces.front().offset;
    };
    std::stable_sort(i_streams.begin(), i_streams.end(),
                     [&](const DirectoryEntry* ip_left, const DirectoryEntry* ip_right) {
                         return place(ip_left) < place(ip_right);
                     });
    constexpr std::size_t between = 8;
    std::size_t length = FileHeader::length;
    for (const DirectoryEntry* const p_stream : i_streams) length += p_stream->size + between;
    std::string image;
    image.reserve(length);
    image = m_reader.bytes({0, FileHeader::length});
    std::uint64_t end = image.size();
    for (const DirectoryEntry* const p_stream : i_streams) {
        bool is_first = true;
        for (const StreamPiece piece : p_stream->pieces) {
            // What is left out stands between: no marker may come about where two streams meet.
            if (is_first && piece.offset != end) image.append(between, '\0');
            image += m_reader.bytes(rangeOf(piece));
            end = rangeOf(piece).end();
            is_first = false;
        }
    }
    return image;
}

bool DocumentFile::readPreview(std::string& o_picture) {
    // Four bytes stand in front of the picture.
    constexpr std::uint64_t head = 4;
    constexpr auto picture_begin = "\xFF\xD8\xFF"sv;
    o_picture.clear();
    const DirectoryEntry* const p_preview = find(stream::preview, rootStorage());
    return p_preview && appendStream(*p_preview, head, p_preview->size, o_picture) &&
           standsAt(o_picture, 0, picture_begin);
}

} // namespace vorntools
