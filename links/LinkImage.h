#ifndef LINKS_LINK_IMAGE_H
#define LINKS_LINK_IMAGE_H

#include "VornToolsDocumentFile.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFile.h"
#include "links/DocumentScan.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vorntools {

/**
 * What the scan for links reads of a document file, and the scan: the streams that hold links, in the order of the
 * file, or the whole file where these do not tell. docs/document-file.md says of each step why it loses no link.
 */
class LinkImage {
public:
    LinkImage() = default;
    LinkImage(const LinkImage&) = delete;
    LinkImage& operator=(const LinkImage&) = delete;

    /** @return false for an empty file, one that cannot be read any more, and one of 2 GiB and more, journalled, that
     * has to be read whole */
    bool read(const JournalFrame& i_frame, DocumentFile& io_file);

    // After a read.

    std::string_view bytes() const;
    DocumentScan& scan() { return m_streams ? m_streams->scan : *m_scan_of_whole; }
    VornToolsDocumentFile::EnumDocumentCondition conditionOf(const DocumentFile& i_file);
    /** The bytes as a new string, without a copy where the whole file was read; the image is then empty. */
    VornToolsString* takeBytes();
    /** Frees the bytes. What the scan has found stays; it can find nothing more. */
    void dropBytes();

private:
    using Streams = DocumentFile::Streams;
    struct FreeBytes {
        void operator()(char* ip_bytes) const { std::free(ip_bytes); }
    };

    struct Scanned {
        explicit Scanned(std::string i_bytes) : bytes(std::move(i_bytes)), scan(bytes) {}
        std::string bytes;
        DocumentScan scan;
    };

    bool readStreams(DocumentFile& io_file);
    bool readContainers(DocumentFile& io_file, const Streams& i_basic);
    bool readWhole(const JournalFrame& i_frame, const DocumentFile& i_file);
    DocumentScan& scanStreams(const DocumentFile& i_file, const Streams& i_streams);

    std::unique_ptr<Scanned> m_streams; ///< none where the whole file was read
    std::unique_ptr<char, FreeBytes> m_whole;
    std::size_t m_whole_size = 0;
    std::optional<DocumentScan> m_scan_of_whole;
};

} // namespace vorntools

#endif
