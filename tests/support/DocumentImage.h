#ifndef TESTS_SUPPORT_DOCUMENT_IMAGE_H
#define TESTS_SUPPORT_DOCUMENT_IMAGE_H

#include <cstdint>
#include <string>
#include <vector>

/** A record of the document-property stream. */
struct ImageRecord {
    std::string text;        ///< of the block, byte for byte
    std::int32_t uses = 1;   ///< pointers that go through the record
    std::int32_t symbol = 0; ///< number for the document's containers; 0: the record's place, from 1

    /** A document as a whole: "GenericLocate", "File". */
    static ImageRecord whole(const std::string& type, const std::string& path, std::int32_t uses = 1,
                             std::int32_t symbol = 0);
    /** An object in a container of a document: "CATIA", "File". @param identity 16 bytes */
    static ImageRecord object(const std::string& type, const std::string& path, const std::string& identity,
                              std::int32_t uses = 1);
    /** A file of the operating system, such as the sheets of a design table: "Undef", "CATWin", "File". */
    static ImageRecord unloadable(const std::string& path, std::int32_t uses = 1);
};

/** An import repository of a part: the record it points to and the texts of its inputs, by index into the table. */
struct ImageRepository {
    std::int32_t symbol = 1;
    std::vector<unsigned char> inputs;
};

/**
 * The bytes of a document file, put together stream by stream as docs/links.md lays them out. Only what the link scan
 * looks at is there; streams stand in the order of the calls.
 */
class DocumentImage {
public:
    explicit DocumentImage(bool littleEndian = true) : m_littleEndian(littleEndian) {}

    DocumentImage& raw(const std::string& bytes);
    /** The application container: what makes the document a part. */
    DocumentImage& application();
    /** The names of a container, with its external references and the catalog behind them. */
    DocumentImage& references(const std::vector<std::string>& texts);
    /** A pointer of the feature streams to an object. @param element five bytes */
    DocumentImage& pointer(const std::string& identity, const std::string& element = "");
    /** The import container. @param texts of its table, behind the four that every table begins with */
    DocumentImage& imports(const std::vector<ImageRepository>& repositories, const std::vector<std::string>& texts);
    DocumentImage& properties(const std::string& ownPath, const std::vector<ImageRecord>& records);
    DocumentImage& summary(int version, int release, int servicePack);

    const std::string& bytes() const { return m_bytes; }
    /** Positions of the streams' names, -1 without. */
    int applicationPosition() const { return position("AppliCont"); }
    int propertyPosition() const { return position("CATDocumentProperty"); }

    /** Index of the first text that imports() is given. */
    static constexpr unsigned char firstImportText = 4;
    /** Number form of a document: a byte, two bytes, or five. */
    static std::string number(std::int32_t value);
    /** A text as string tables hold it, its length in front. */
    static std::string tableText(const std::string& text);

private:
    int position(const char* name) const;
    std::string integer(std::int32_t value) const;
    std::string block(const std::string& text, std::int32_t uses) const;

    std::string m_bytes;
    bool m_littleEndian;
};

#endif
