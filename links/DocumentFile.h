#ifndef LINKS_DOCUMENT_FILE_H
#define LINKS_DOCUMENT_FILE_H

#include "foundation/FileReader.h"
#include "links/DocumentDirectory.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/**
 * A document file and its directory. docs/document-file.md describes the layout and says of each step of linkImage why
 * it loses no link.
 */
class DocumentFile {
public:
    /** Opens the file and reads its directory. @return false when there is no file or it cannot be read */
    bool open(const CATUnicodeString& i_name);

    const FileHeader& header() const { return m_header; }
    std::uint64_t size() const { return m_reader.size(); }
    /** Whether the directory ends where the file ends. */
    bool isWhole() const { return m_header.end() == size(); }
    /** Storages and streams in the order of the directory; none when there is no directory that fits. */
    const std::vector<DirectoryEntry>& entries() const { return m_entries; }

    /** Bytes of a stream, its pieces put together. @return false when they cannot be read; nothing is then appended */
    bool appendStream(const DirectoryEntry& i_entry, std::uint64_t i_from, std::uint64_t i_count,
                      std::string& io_bytes);
    bool appendStream(const DirectoryEntry& i_entry, std::string& io_bytes) {
        return appendStream(i_entry, 0, i_entry.size, io_bytes);
    }
    /** The stream of a name below a storage; null without one. @param i_parent identifier of the storage */
    const DirectoryEntry* find(std::u16string_view i_name, std::uint32_t i_parent) const;

    /**
     * An image of the streams that hold the links, in the order of the file, which the scan reads as it does the whole
     * file.
     * @return false when the streams do not tell, or cannot be read: the whole file must be scanned
     */
    bool readLinkImage(std::string& o_image);
    /** Identifier of the storage that everything of the document stands below; 0 without one. */
    std::uint32_t rootStorage() const;
    /** The picture that is stored with the document. @return false when it has none, or an empty one */
    bool readPreview(std::string& o_picture);
    /** The whole file. @return false when it cannot be read or is 2 GiB or larger; op_bytes holds size() bytes */
    bool readWhole(char* op_bytes) const { return m_reader.readInto({0, size()}, op_bytes); }

private:
    using Streams = std::vector<const DirectoryEntry*>;

    bool readEntries();
    bool fetch(const Streams& i_streams);
    std::string classOf(const DirectoryEntry& i_storage_property);
    Streams basicStreams() const;
    Streams linkContainers();
    std::string imageOf(Streams i_streams) const;

    FileReader m_reader;
    FileHeader m_header{std::string_view()};
    std::vector<DirectoryEntry> m_entries;
};

} // namespace vorntools

#endif
