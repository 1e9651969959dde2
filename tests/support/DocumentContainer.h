#ifndef TESTS_SUPPORT_DOCUMENT_CONTAINER_H
#define TESTS_SUPPORT_DOCUMENT_CONTAINER_H

#include <cstdint>
#include <string>
#include <vector>

/**
 * The bytes of a document file as docs/document-file.md lays them out: streams in the order of the calls, each at the
 * place of its call, then the directory.
 */
class DocumentContainer {
public:
    /** Below no storage. */
    static constexpr std::uint32_t top = 0;

    /** Begins with the storage CATIA1, whose class is that of the document ("CATPart"). */
    explicit DocumentContainer(const std::string& documentClass = "CATPart");

    /** Identifier of CATIA1. */
    std::uint32_t root() const { return m_root; }
    /** A new storage. @return its identifier */
    std::uint32_t storage(const std::string& name, std::uint32_t parent);
    /** A stream in so many pieces, which stand in the file from the last to the first when `backwards`. @param name a
     * character each; "\x03" and "\x05" lead those of properties and of the preview */
    DocumentContainer& stream(const std::string& name, const std::string& bytes, std::uint32_t parent,
                              std::uint32_t pieces = 1, bool backwards = false);
    DocumentContainer& stream(const std::string& name, const std::string& bytes) { return stream(name, bytes, m_root); }
    /** A container with its class and content, below CATIA1. */
    DocumentContainer& container(const std::string& className, const std::string& bytes);
    /** Bytes that belong to no stream. */
    DocumentContainer& gap(const std::string& bytes);

    std::string bytes() const;
    /** A text of a directory in the place of the one that fits. */
    std::string bytesWithDirectory(const std::string& directory) const;
    std::string directory() const;

    /** A stream that tells a class, as every storage of a container has one. */
    static std::string classStream(const std::string& className);
    static std::string bigEndian(std::uint32_t value);

private:
    struct Piece {
        std::uint32_t offset, length, position;
    };
    std::string entry(const std::string& name, std::uint32_t parent, std::uint32_t kind, std::uint32_t size,
                      const std::vector<Piece>& pieces);

    std::string m_file;
    std::string m_entries;
    std::uint32_t m_last = 1;
    std::uint32_t m_root = 0;
};

#endif
