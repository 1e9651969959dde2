#include "tests/support/DocumentContainer.h"

using namespace std::string_literals;

namespace {

constexpr std::size_t kHeader = 16;

/** A text of eight bytes has a tag of its own in the place of a length. */
std::string text(const std::string& value) {
    return value.size() == 8 ? "\x20" + value : "\x34"s + static_cast<char>(value.size()) + value;
}

} // namespace

std::string DocumentContainer::bigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

std::string DocumentContainer::classStream(const std::string& className) {
    return "\x34\x12"
           "CATStorageProperty\x80\x01\0\0\0\0\x34\x10"
           "CATUnicodeString\xA0\x02\0\0\0\0"s +
           text(className) +
           "\x9F\x36\x08"
           "FINJPL  "s;
}

DocumentContainer::DocumentContainer(const std::string& documentClass) : m_file(kHeader, '\0') {
    m_root = storage("CATIA1", storage(".0123456789abcdef", top));
    if (!documentClass.empty())
        stream("\x03"
               "CATStorageProperty",
               classStream(documentClass));
}

std::string DocumentContainer::entry(const std::string& name, std::uint32_t parent, std::uint32_t kind,
                                     std::uint32_t size, const std::vector<Piece>& pieces) {
    // 2021-04-22 13:07:23, low word first.
    const std::string date = bigEndian(0x6F73C420) + bigEndian(0x01D73778);
    const std::string fixed =
        bigEndian(size) + bigEndian(0) + date + std::string(8, '\0') + date + bigEndian(18) + std::string(32, '\0');
    std::string wide;
    for (const char character : name + '\0') wide += "\0"s + character;
    std::string bytes =
        bigEndian(parent) + bigEndian(kind) + fixed + bigEndian(static_cast<std::uint32_t>(wide.size())) + wide;
    bytes += bigEndian(86 + 20 * static_cast<std::uint32_t>(pieces.size())) + bigEndian(++m_last);
    bytes += bigEndian(kind).substr(2) + bigEndian(kind) + fixed + bigEndian(static_cast<std::uint32_t>(pieces.size()));
    for (const Piece& piece : pieces)
        bytes += bigEndian(piece.offset) + bigEndian(piece.length) + bigEndian(piece.length) +
                 bigEndian(piece.position) + bigEndian(0);
    return bytes;
}

std::uint32_t DocumentContainer::storage(const std::string& name, std::uint32_t parent) {
    m_entries += entry(name, parent, 1, 0, {});
    return m_last;
}

DocumentContainer& DocumentContainer::stream(const std::string& name, const std::string& bytes, std::uint32_t parent,
                                             std::uint32_t pieces, bool backwards) {
    const auto size = static_cast<std::uint32_t>(bytes.size());
    std::vector<Piece> places(pieces);
    for (std::uint32_t i = 0; i < pieces; ++i) {
        const std::uint32_t begin = size / pieces * i;
        places[i] = {0, (i + 1 == pieces ? size : size / pieces * (i + 1)) - begin, begin};
    }
    for (std::uint32_t i = 0; i < pieces; ++i) {
        Piece& place = places[backwards ? pieces - 1 - i : i];
        place.offset = static_cast<std::uint32_t>(m_file.size());
        m_file += bytes.substr(place.position, place.length);
        if (pieces > 1) m_file += "between";
    }
    m_entries += entry(name, parent, 2, size, places);
    return *this;
}

DocumentContainer& DocumentContainer::container(const std::string& className, const std::string& bytes) {
    const std::string name = "0_1_2_" + std::to_string(m_last);
    const std::uint32_t parent = storage(name, m_root);
    stream("Cont_" + name, bytes, parent);
    return className.empty() ? *this
                             : stream("\x03"
                                      "CATStorageProperty",
                                      classStream(className), parent);
}

DocumentContainer& DocumentContainer::gap(const std::string& bytes) {
    m_file += bytes;
    return *this;
}

std::string DocumentContainer::directory() const {
    std::string bytes = "CATIA_V5 CB0001\0"s + std::string(48, '\0');
    bytes += bigEndian(86) + bigEndian(1) + std::string(86, '\0') + m_entries;
    return bytes + bigEndian(static_cast<std::uint32_t>(bytes.size()) + 12) + "CB__END\0"s;
}

std::string DocumentContainer::bytes() const { return bytesWithDirectory(directory()); }

std::string DocumentContainer::bytesWithDirectory(const std::string& directory) const {
    const std::string header = "V5_CFV2\0"s + bigEndian(static_cast<std::uint32_t>(m_file.size())) +
                               bigEndian(static_cast<std::uint32_t>(directory.size()));
    return header + m_file.substr(kHeader) + directory;
}
