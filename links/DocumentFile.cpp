#include "links/DocumentFile.h"

#include "links/DocumentScan.h"
#include "links/ImageBytes.h"
#include "links/Markers.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace vorntools {

namespace {

using namespace std::string_view_literals;

constexpr auto kRootStorage = u"CATIA1"sv;
constexpr auto kPropertyStream = u"\x03\x43\x41TDocumentProperty"sv;
constexpr auto kPropertySets = u"\x03\x43\x41TPropertySets"sv;
constexpr auto kStorageProperty = u"\x03\x43\x41TStorageProperty"sv;
constexpr auto kDirectoryOfContainers = u"Data"sv;
constexpr auto kPreview = u"\x05\x43\x41TPreview"sv;
constexpr auto kContainer = u"Cont_"sv;

constexpr auto kPartClass = "CATPart"sv;
/** Holds external references and pointers to context parts and products. */
constexpr auto kProductContainer = "CATProdCont"sv;
/** Holds imports with link. */
constexpr auto kLinkContainer = "CATXDocLinkCont"sv;

/** A file that is no longer is read in one go: that costs less than the ways to its parts. */
constexpr std::uint64_t kSmallFile = 32 * 1024;
/** The header, and as a rule what stands right behind it. */
constexpr std::uint64_t kFirstRead = 4096;

FileRange rangeOf(const StreamPiece& i_piece) { return {i_piece.offset, i_piece.length}; }

bool isContainer(std::u16string_view i_name) { return i_name.substr(0, kContainer.size()) == kContainer; }

/** The class that a property stream of a storage tells, a text behind the name of its type; empty when it tells none.
 * Texts have their length in front of them but for those of eight bytes, which have a tag of their own. */
std::string_view classIn(std::string_view i_stream) {
    constexpr auto type = "CATUnicodeString"sv;
    constexpr std::size_t number_of_instance = 6;
    constexpr unsigned char counted_text = 0x34;
    constexpr unsigned char text_of_eight = 0x20;
    const std::size_t name = findMarker(i_stream, type, 0);
    if (name == notFound) return {};
    const std::size_t tag = name + type.size() + number_of_instance;
    if (byteAt(i_stream, tag) == text_of_eight && holds(i_stream, tag + 1, 8)) return i_stream.substr(tag + 1, 8);
    const std::size_t length = byteAt(i_stream, tag + 1);
    if (byteAt(i_stream, tag) != counted_text || !holds(i_stream, tag + 2, length)) return {};
    return i_stream.substr(tag + 2, length);
}

/** How often each identity is pointed to. */
std::unordered_map<std::string, std::int64_t> countPointers(std::string_view i_image,
                                                            const std::vector<LinkedDocument>& i_documents) {
    std::unordered_map<std::string, std::int64_t> counts;
    for (const LinkedDocument& document : i_documents)
        if (!document.identity.empty()) counts.emplace(document.identity, 0);
    if (counts.empty()) return counts;
    const std::size_t lead = marker::foreignIdentity.size();
    for (std::size_t at = findMarker(i_image, marker::foreignIdentity, 0); at != notFound;
         at = findMarker(i_image, marker::foreignIdentity, at + 1)) {
        if (!holds(i_image, at + lead, LinkedDocument::identityBytes)) break;
        const auto count = counts.find(std::string(i_image.substr(at + lead, LinkedDocument::identityBytes)));
        if (count != counts.end()) ++count->second;
    }
    return counts;
}

/** Whether the containers that were read hold every pointer that the property stream counts, so that none of those
 * that were left out has one. */
bool holdsAllPointers(std::string_view i_image, const std::vector<LinkedDocument>& i_documents) {
    const auto counts = countPointers(i_image, i_documents);
    std::unordered_map<std::string, std::int64_t> expected;
    for (const LinkedDocument& document : i_documents)
        if (!document.identity.empty() && document.uses > 0) expected[document.identity] += document.uses;
    return std::all_of(expected.begin(), expected.end(),
                       [&](const auto& i_pair) { return counts.at(i_pair.first) >= i_pair.second; });
}

/** Whether the image tells all that the scan asks of a part that points to others. */
bool isEnoughFor(std::string_view i_image) {
    DocumentScan scan(i_image);
    // Imports of the older form are told from leftovers by all bytes of the file.
    if (!scan.used(LinkedDocument::ContextPart).empty() && usesOlderForm(scan.release())) return false;
    if (!scan.used(LinkedDocument::PartFile).empty() && findMarker(i_image, marker::importRepository, 0) == notFound)
        return false;
    return holdsAllPointers(i_image, scan.stream().documents());
}

bool usesAny(const PropertyStream& i_stream) {
    const std::vector<LinkedDocument>& documents = i_stream.documents();
    return std::any_of(documents.begin(), documents.end(),
                       [](const LinkedDocument& i_document) { return i_document.uses != 0; });
}

} // namespace

bool DocumentFile::open(const CATUnicodeString& i_name) {
    m_entries.clear();
    m_header = FileHeader(std::string_view());
    if (!m_reader.open(i_name)) return false;
    const FileRange first = {0, size() <= kSmallFile ? size() : kFirstRead};
    if (!m_reader.fetch({first})) return false;
    m_header = FileHeader(m_reader.bytes({0, std::min<std::uint64_t>(size(), FileHeader::length)}));
    return readEntries();
}

bool DocumentFile::readEntries() {
    if (!m_header.is_known_layout || !isWhole()) return true;
    const FileRange directory = {m_header.directory, m_header.directory_length};
    if (!m_reader.fetch({directory})) return false;
    readDirectory(m_reader.bytes(directory), size(), m_entries);
    return true;
}

bool DocumentFile::appendStream(const DirectoryEntry& i_entry, std::uint64_t i_from, std::uint64_t i_count,
                                std::string& io_bytes) {
    std::vector<FileRange> wanted;
    std::uint64_t position = 0;
    const std::uint64_t end =
        i_from + std::min<std::uint64_t>(i_count, i_entry.size - std::min<std::uint64_t>(i_from, i_entry.size));
    for (const StreamPiece& piece : i_entry.pieces) {
        const std::uint64_t begin = (std::max)(i_from, position);
        const std::uint64_t stop = (std::min)(end, position + piece.length);
        if (begin < stop) wanted.push_back({piece.offset + (begin - position), stop - begin});
        position += piece.length;
    }
    if (!m_reader.fetch(wanted)) return false;
    for (const FileRange& range : wanted) io_bytes += m_reader.bytes(range);
    return true;
}

const DirectoryEntry* DocumentFile::find(std::u16string_view i_name, std::uint32_t i_parent) const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const DirectoryEntry& i_entry) {
        return i_entry.is_stream && i_entry.parent == i_parent && i_entry.name == i_name;
    });
    return found == m_entries.end() ? nullptr : &*found;
}

/** Streams that share their bytes may be longer than the file, which costs less then. */
bool DocumentFile::fetch(const Streams& i_streams) {
    std::uint64_t length = 0;
    for (const DirectoryEntry* const p_stream : i_streams) length += p_stream->size;
    if (length > size()) return false;
    std::vector<FileRange> wanted;
    for (const DirectoryEntry* const p_stream : i_streams)
        for (const StreamPiece& piece : p_stream->pieces) wanted.push_back(rangeOf(piece));
    return m_reader.fetch(std::move(wanted));
}

std::string DocumentFile::classOf(const DirectoryEntry& i_storage_property) {
    std::string bytes;
    return appendStream(i_storage_property, bytes) ? std::string(classIn(bytes)) : std::string();
}

/** The containers of the two classes that hold references and imports, and those that do not tell their class. */
DocumentFile::Streams DocumentFile::linkContainers() {
    Streams properties;
    for (const DirectoryEntry& entry : m_entries)
        if (entry.is_stream && entry.name == kStorageProperty) properties.push_back(&entry);
    if (!fetch(properties)) return {};
    std::unordered_set<std::uint32_t> others;
    for (const DirectoryEntry* const p_property : properties) {
        const std::string name = classOf(*p_property);
        if (!name.empty() && name != kProductContainer && name != kLinkContainer) others.insert(p_property->parent);
    }
    Streams containers;
    for (const DirectoryEntry& entry : m_entries)
        if (entry.is_stream && isContainer(entry.name) && others.count(entry.parent) == 0) containers.push_back(&entry);
    return containers;
}

/** The header and the streams, whose bytes are known, in the order of the file. */
std::string DocumentFile::imageOf(Streams i_streams) const {
    const auto place = [](const DirectoryEntry* ip_stream) {
        return ip_stream->pieces.empty() ? 0 : ip_stream->pieces.front().offset;
    };
    std::stable_sort(i_streams.begin(), i_streams.end(),
                     [&](const DirectoryEntry* ip_left, const DirectoryEntry* ip_right) {
                         return place(ip_left) < place(ip_right);
                     });
    std::string image(m_reader.bytes({0, FileHeader::length}));
    std::uint64_t end = image.size();
    for (const DirectoryEntry* const p_stream : i_streams) {
        for (const StreamPiece& piece : p_stream->pieces) {
            // What is left out stands between: no marker may come about where two streams meet.
            if (piece.offset != end && &piece == &p_stream->pieces.front()) image.append(8, '\0');
            image += m_reader.bytes(rangeOf(piece));
            end = rangeOf(piece).end();
        }
    }
    return image;
}

bool DocumentFile::readLinkImage(std::string& o_image) {
    o_image.clear();
    Streams streams = basicStreams();
    const DirectoryEntry* const p_class = find(kStorageProperty, rootStorage());
    Streams wanted = streams;
    if (p_class) wanted.push_back(p_class);
    if (streams.empty() || !fetch(wanted)) return false;
    o_image = imageOf(streams);

    DocumentScan scan(o_image);
    if (!usesAny(scan.stream())) return true;
    const bool has_application = findMarker(o_image, marker::applicationContainer, 0) != notFound;
    const std::string name = p_class ? classOf(*p_class) : std::string();
    const bool is_part = has_application || name.empty() || name == kPartClass;
    // Products and drawings name what they show in the property stream alone.
    if (!is_part) return scan.used(LinkedDocument::PartFile).empty();
    if (!has_application) return false;

    const Streams containers = linkContainers();
    if (containers.empty() || !fetch(containers)) return false;
    streams.insert(streams.end(), containers.begin(), containers.end());
    o_image = imageOf(streams);
    return isEnoughFor(o_image);
}

bool DocumentFile::readPreview(std::string& o_picture) {
    // Four bytes stand in front of the picture.
    constexpr std::uint64_t head = 4;
    constexpr auto picture_begin = "\xFF\xD8\xFF"sv;
    o_picture.clear();
    const DirectoryEntry* const p_preview = find(kPreview, rootStorage());
    return p_preview && appendStream(*p_preview, head, p_preview->size, o_picture) &&
           standsAt(o_picture, 0, picture_begin);
}

/** What every document has: the property stream, the version and what tells a part. None without a property stream. */
DocumentFile::Streams DocumentFile::basicStreams() const {
    Streams streams;
    bool has_properties = false;
    for (const DirectoryEntry& entry : m_entries) {
        if (!entry.is_stream) continue;
        has_properties = has_properties || entry.name == kPropertyStream;
        if (entry.name == kPropertyStream || entry.name == kPropertySets || entry.name == kDirectoryOfContainers)
            streams.push_back(&entry);
    }
    return has_properties ? streams : Streams();
}

std::uint32_t DocumentFile::rootStorage() const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [](const DirectoryEntry& i_entry) {
        return !i_entry.is_stream && i_entry.name == kRootStorage;
    });
    return found == m_entries.end() ? 0 : found->identifier;
}

} // namespace vorntools
