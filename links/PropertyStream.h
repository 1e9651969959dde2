#ifndef LINKS_PROPERTY_STREAM_H
#define LINKS_PROPERTY_STREAM_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/** What a record of the document-property stream says of another document. */
struct LinkedDocument {
    /** Of a container of a document. */
    static constexpr std::size_t identityBytes = 16;

    enum Kind {
        PartFile,       ///< a part, named by the document as a whole
        ContextProduct, ///< a product whose objects the document points to
        ContextPart,    ///< a part whose objects the document points to
        Drawing         ///< a drawing whose objects the document points to
    };
    Kind kind = PartFile;
    /** As stored, in the platform's 8-bit form. */
    std::string name;
    /** The 16 bytes of the container pointed to; empty for a part file. */
    std::string identity;
    /** Pointers in the document that go through the record. 0: the target was deleted or renamed since. */
    std::int32_t uses = 0;
    /** Number under which the document's containers mean the record; 0 when the stream does not tell. */
    std::int32_t symbol = 0;

    /** The identity's own eight bytes: when, where and as which number the container was made. */
    std::string_view reference() const {
        return identity.size() == identityBytes ? std::string_view(identity).substr(8) : std::string_view();
    }
};

/** A record in use of any other kind: a design table, a material, a catalog, a model of version 4, a result file. */
struct OtherDocument {
    std::string kind; ///< the type that the record tells
    std::string name; ///< as stored, in the platform's 8-bit form
    std::int32_t uses = 0;
};

/**
 * The document-property stream of a document image: its own path at the last save, and the documents it names. Damage
 * ends the reading; what stands before it is kept. The layout is described in docs/links.md.
 */
class PropertyStream {
public:
    PropertyStream() = default;
    /** @param i_position of the stream's name; a position outside gives an empty stream */
    PropertyStream(std::string_view i_image, std::size_t i_position);

    /** In the platform's 8-bit form; empty when the stream does not tell it. */
    const std::string& ownPath() const { return m_own_path; }
    /** In stream order, unused ones and repeats included. */
    const std::vector<LinkedDocument>& documents() const { return m_documents; }
    /** In stream order, without the catalogs that the platform brings itself. */
    const std::vector<OtherDocument>& others() const { return m_others; }
    /** Whether the stream was read to its end: as many records as it counts, and the word that closes it. */
    bool isComplete() const { return m_end != 0; }
    /** Position behind the word that closes it, when it is complete. */
    std::size_t end() const { return m_end; }

private:
    struct Header;
    void readOwnPath(std::string_view i_image, const Header& i_header);
    void readRecords(std::string_view i_image, std::size_t i_position, const Header& i_header);
    void readSymbols(std::string_view i_image, std::size_t i_at, const std::vector<std::size_t>& i_records,
                     bool i_little_endian);

    std::string m_own_path;
    std::vector<LinkedDocument> m_documents;
    std::vector<OtherDocument> m_others;
    std::size_t m_end = 0;
};

} // namespace vorntools

#endif
