#ifndef LINKS_DOCUMENT_FILE_H
#define LINKS_DOCUMENT_FILE_H

#include "foundation/FileReader.h"
#include "links/DocumentDirectory.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/** A document file and its directory. docs/document-file.md describes the layout. */
class DocumentFile {
public:
    using Streams = std::vector<const DirectoryEntry*>;

    DocumentFile() = default;
    DocumentFile(const DocumentFile&) = delete;
    DocumentFile& operator=(const DocumentFile&) = delete;

    /** Opens the file and reads its directory. @return false when there is no file or it cannot be read */
    bool open(const CATUnicodeString& i_name);

    const FileHeader& header() const { return m_header; }
    std::uint64_t size() const { return m_reader.size(); }
    /** Whether the directory ends where the file ends. */
    bool isWhole() const { return m_header.end() == size(); }
    /** Storages and streams in the order of the directory; none when there is no directory that fits. */
    const std::vector<DirectoryEntry>& entries() const { return m_entries; }
    /** Identifier of the storage that everything of the document stands below; 0 without one. */
    std::uint32_t rootStorage() const { return m_root; }
    /** The storage around it, which has another name after each save; null without one. */
    const DirectoryEntry* topStorage() const;
    /** The stream of a name below a storage; null without one.
     * @param i_name as it is stored. @param i_parent identifier of the storage */
    const DirectoryEntry* find(std::string_view i_name, std::uint32_t i_parent) const;

    /** Reads what is not known yet of the streams, neighbours together. @return false when it cannot be read, or when
     * together they are longer than the file, as streams that share their bytes may be */
    bool fetch(const Streams& i_streams);
    /** Bytes of a stream, its pieces put together. @return false when they cannot be read; nothing is then appended */
    bool appendStream(const DirectoryEntry& i_entry, std::uint64_t i_from, std::uint64_t i_count,
                      std::string& io_bytes);
    bool appendStream(const DirectoryEntry& i_entry, std::string& io_bytes) {
        return appendStream(i_entry, 0, i_entry.size, io_bytes);
    }
    /** The header and the streams, whose bytes are known, in the order of the file. */
    std::string imageOf(Streams i_streams) const;
    /** The picture that is stored with the document. @return false when it has none, or an empty one */
    bool readPreview(std::string& o_picture);
    /** The whole file. @return false when it cannot be read or is 2 GiB or larger; op_bytes holds size() bytes */
    bool readWhole(char* op_bytes) const { return m_reader.readInto({0, size()}, op_bytes); }

private:
    bool readEntries(std::uint64_t i_known);

    FileReader m_reader;
    FileHeader m_header{std::string_view()};
    std::shared_ptr<const char[]> m_directory; ///< its bytes, which the entries refer to
    std::vector<DirectoryEntry> m_entries;
    std::uint32_t m_root = 0;
    std::uint32_t m_top = 0;
};

} // namespace vorntools

#endif
