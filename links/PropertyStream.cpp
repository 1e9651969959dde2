#include "links/PropertyStream.h"

#include "links/ImageBytes.h"
#include "links/Markers.h"
#include "links/StoredText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorntools {

namespace {

constexpr std::size_t kCountOffset = 31;
/** From the end of a block's text to the next block. */
constexpr std::size_t kTail = 45;
/** Offset of the use count behind the text of a block. */
constexpr std::size_t kUses = 16;
/** Where the symbol numbers begin behind the text of the last block. */
constexpr std::size_t kSymbols = 27;
/** A tag and a symbol number. */
constexpr std::size_t kSymbolBytes = 5;
/** The word behind the symbol numbers, which ends the stream. */
constexpr std::string_view kClosing = "\x9F\x36\x08\x46INJPL";
/** A text holds one path, whose length is a 16-bit number, and less than a hundred bytes beside it. */
constexpr std::int32_t kLongestText = 0x10000 + 256;

constexpr std::size_t kOwnDocument = 27;
constexpr std::size_t kOwnFile = 108;
constexpr std::size_t kOwnType = 123;
constexpr std::size_t kIdentity = 12;
constexpr std::size_t kObject = 75;
constexpr std::size_t kObjectFile = 132;
constexpr std::size_t kObjectType = 147;
/** The first byte of a text. */
constexpr std::size_t kFirstText = 6;
/** The length of a name, between its type and the name. */
constexpr std::size_t kNameLengthBytes = 2;

/** One block: length word, text of three bytes a byte, tail. The tail of the last one may be cut off. */
struct Block {
    std::size_t at;
    std::size_t textEnd; ///< at + three times the text's bytes
    std::size_t next() const { return textEnd + kTail; }
};

bool readBlock(std::string_view i_image, std::size_t i_at, bool i_little_endian, Block& o_block) {
    if (!holds(i_image, i_at, sizeof(std::int32_t))) return false;
    const std::int32_t length = int32At(i_image, i_at, i_little_endian);
    if (length < 0 || length > kLongestText) return false;
    o_block = {i_at, i_at + textStride * static_cast<std::size_t>(length)};
    return holds(i_image, o_block.textEnd, 0);
}

/** The text between a type word and the end of its block. */
std::string nameBehind(std::string_view i_image, const Block& i_block, std::size_t i_type, std::string_view i_word) {
    const std::size_t begin = i_block.at + i_type + textStride * (i_word.size() + kNameLengthBytes);
    const std::size_t end = i_block.textEnd + 2 * textStride;
    return begin < end ? decoded(textAt(i_image, begin, (end - begin) / textStride)) : std::string();
}

// What names no document gives no name.

void readPartFile(std::string_view i_image, const Block& i_block, LinkedDocument& o_document) {
    if (!textStandsAt(i_image, i_block.at + kOwnFile, marker::file) ||
        !textStandsAt(i_image, i_block.at + kOwnType, marker::part))
        return;
    o_document.kind = LinkedDocument::PartFile;
    o_document.name = nameBehind(i_image, i_block, kOwnType, marker::part);
}

void readObjectTarget(std::string_view i_image, const Block& i_block, LinkedDocument& o_document) {
    static constexpr struct {
        std::string_view word;
        LinkedDocument::Kind kind;
    } types[] = {{marker::product, LinkedDocument::ContextProduct},
                 {marker::part, LinkedDocument::ContextPart},
                 {marker::drawing, LinkedDocument::Drawing}};
    if (!textStandsAt(i_image, i_block.at + kObject, marker::object) ||
        !textStandsAt(i_image, i_block.at + kObjectFile, marker::file))
        return;
    for (const auto& type : types) {
        if (!textStandsAt(i_image, i_block.at + kObjectType, type.word)) continue;
        o_document.kind = type.kind;
        o_document.name = nameBehind(i_image, i_block, kObjectType, type.word);
        o_document.identity = textAt(i_image, i_block.at + kIdentity, LinkedDocument::identityBytes);
    }
}

/** False for the records that name anything else than a document, or no name at all. */
bool readDocument(std::string_view i_image, const Block& i_block, bool i_little_endian, LinkedDocument& o_document) {
    if (textStandsAt(i_image, i_block.at + kOwnDocument, marker::ownDocument))
        readPartFile(i_image, i_block, o_document);
    else
        readObjectTarget(i_image, i_block, o_document);
    o_document.uses = int32At(i_image, i_block.textEnd + kUses, i_little_endian);
    return !o_document.name.empty();
}

/** As textAt; what lies behind the end of the text is left out. */
std::string textBefore(std::string_view i_image, std::size_t i_at, std::size_t i_count, std::size_t i_end) {
    return i_at < i_end ? textAt(i_image, i_at, (std::min)(i_count, (i_end - i_at) / textStride)) : std::string();
}

/** The type and the name that any record holds behind its word for a file, wherever that stands. */
bool readOther(std::string_view i_image, const Block& i_block, bool i_little_endian, OtherDocument& o_document) {
    static constexpr std::string_view catalogs_of_the_platform[] = {"feat", "CATfct"};
    o_document.uses = int32At(i_image, i_block.textEnd + kUses, i_little_endian);
    if (o_document.uses == 0) return false;
    const std::size_t end = i_block.textEnd + kFirstText;
    const std::size_t file =
        vorntools::search(i_image, marker::countedFile, i_block.at + kFirstText, end - 1, textStride);
    if (file == notFound) return false;
    const std::size_t type = file + textStride * marker::countedFile.size();
    o_document.kind = textBefore(i_image, type + textStride, byteAt(i_image, type), end);
    if (std::find(std::begin(catalogs_of_the_platform), std::end(catalogs_of_the_platform), o_document.kind) !=
        std::end(catalogs_of_the_platform))
        return false;
    const std::size_t length = type + textStride * (1 + o_document.kind.size());
    const std::size_t name_bytes = byteAt(i_image, length) | std::size_t{byteAt(i_image, length + textStride)} << 8;
    o_document.name = decoded(textBefore(i_image, length + textStride * kNameLengthBytes, name_bytes, end));
    return !o_document.name.empty();
}

} // namespace

/** The first block: the document itself. */
struct PropertyStream::Header {
    Block block{};
    bool littleEndian = true;
    bool found = false;

    Header(std::string_view i_image, std::size_t i_position) {
        const std::size_t text = findMarker(i_image, marker::textByte, i_position + marker::documentProperty.size());
        if (text == notFound) return;
        const std::size_t base = text - sizeof(std::int32_t);
        littleEndian = isLittleEndianAt(i_image, base);
        found = readBlock(i_image, base, littleEndian, block);
    }
};

PropertyStream::PropertyStream(std::string_view i_image, std::size_t i_position) {
    if (!holds(i_image, i_position, marker::documentProperty.size())) return;
    const Header header(i_image, i_position);
    if (!header.found) return;
    readOwnPath(i_image, header);
    readRecords(i_image, i_position, header);
}

void PropertyStream::readOwnPath(std::string_view i_image, const Header& i_header) {
    const std::size_t begin = i_header.block.at + 2 * textStride;
    const std::size_t end = i_header.block.textEnd + 2 * textStride;
    const std::size_t file = vorntools::search(i_image, marker::file, begin, end, textStride);
    if (file == notFound) return;
    const std::size_t type_length = byteAt(i_image, file + textStride * marker::file.size());
    const std::size_t length_at = file + textStride * (marker::file.size() + 1 + type_length);
    m_own_path = decoded(textAt(i_image, length_at + textStride * kNameLengthBytes, byteAt(i_image, length_at)));
}

void PropertyStream::readRecords(std::string_view i_image, std::size_t i_position, const Header& i_header) {
    const std::int32_t count = int32At(i_image, i_position + kCountOffset, i_header.littleEndian);
    std::vector<std::size_t> records;
    Block block = i_header.block;
    std::int32_t record = 0;
    for (; record < count && readBlock(i_image, block.next(), i_header.littleEndian, block); ++record) {
        LinkedDocument document;
        if (!readDocument(i_image, block, i_header.littleEndian, document)) {
            OtherDocument other;
            if (readOther(i_image, block, i_header.littleEndian, other)) m_others.push_back(std::move(other));
            continue;
        }
        m_documents.push_back(std::move(document));
        records.push_back(static_cast<std::size_t>(record));
    }
    if (record != count) return;
    const std::size_t symbols = block.textEnd + kSymbols;
    readSymbols(i_image, symbols, records, i_header.littleEndian);
    const std::size_t closing = symbols + kSymbolBytes * static_cast<std::size_t>(count);
    if (standsAt(i_image, closing, kClosing)) m_end = closing + kClosing.size();
}

void PropertyStream::readSymbols(std::string_view i_image, std::size_t i_at, const std::vector<std::size_t>& i_records,
                                 bool i_little_endian) {
    for (std::size_t i = 0; i < i_records.size(); ++i) {
        const std::size_t at = i_at + kSymbolBytes * i_records[i];
        const unsigned char tag = byteAt(i_image, at);
        if (tag != 0x22 && tag != 0x24) return;
        m_documents[i].symbol = int32At(i_image, at + 1, i_little_endian);
    }
}

} // namespace vorntools
