#include "links/LinkImage.h"

#include "VornToolsString.h"
#include "links/ImageBytes.h"
#include "links/ImportContainer.h"
#include "links/Markers.h"
#include "links/StreamNames.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vorntools {

namespace {

using namespace std::string_view_literals;

using Streams = DocumentFile::Streams;

constexpr auto kPartClass = "CATPart"sv;
constexpr auto kProductClass = "CATProduct"sv;
constexpr auto kDrawingClass = "CATDrawing"sv;
/** Holds external references and pointers to context parts and products. */
constexpr auto kProductContainer = "CATProdCont"sv;
/** Holds imports with link. */
constexpr auto kLinkContainer = "CATXDocLinkCont"sv;

/** Lengths of strings are handed over as int. */
constexpr std::uint64_t kLongestImage = (std::numeric_limits<int>::max)();

bool isContainer(const DirectoryEntry& i_entry) {
    return i_entry.is_stream && i_entry.name.substr(0, stream::containerBegin.size()) == stream::containerBegin;
}

/** The class that a property stream of a storage tells, a text behind the name of its type; empty when it tells none.
 * Texts have their length in front of them but for those of eight bytes, which have a tag of their own. */
std::string_view classIn(std::string_view i_stream) {
    constexpr SearchPattern type("CATUnicodeString"sv);
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

std::string classOf(DocumentFile& io_file, const DirectoryEntry* ip_storage_property) {
    std::string bytes;
    return ip_storage_property && io_file.appendStream(*ip_storage_property, bytes) ? std::string(classIn(bytes))
                                                                                    : std::string();
}

bool holdsLinks(std::string_view i_class) { return i_class == kProductContainer || i_class == kLinkContainer; }

/** Streams of a name, wherever they stand. */
Streams streamsOf(const DocumentFile& i_file, std::string_view i_name) {
    Streams streams;
    for (const DirectoryEntry& entry : i_file.entries())
        if (entry.is_stream && entry.name == i_name) streams.push_back(&entry);
    return streams;
}

void append(const Streams& i_more, Streams& io_streams) {
    io_streams.insert(io_streams.end(), i_more.begin(), i_more.end());
}

/** The containers that may hold links, found step by step: few documents have more than one of each class, and the
 * platform writes the one with references first and the one with imports among the last. */
class LinkContainers {
public:
    explicit LinkContainers(DocumentFile& io_file) : m_file(io_file) {
        std::unordered_set<std::uint32_t> storages;
        for (const DirectoryEntry& entry : io_file.entries())
            if (isContainer(entry)) storages.insert(entry.parent);
        for (const DirectoryEntry* const p_property : streamsOf(io_file, stream::storageProperty))
            if (storages.count(p_property->parent) > 0) m_properties.push_back(p_property);
        m_end = m_properties.size();
    }

    /** Whether the class of every storage is known. */
    bool areAllKnown() const { return m_begin >= m_end; }

    /** Looks for the one with references among the first storages. @return false when they cannot be read */
    bool lookInFront() {
        constexpr int most = 6;
        for (int i = 0; i < most && !areAllKnown(); ++i) {
            const DirectoryEntry* const p_property = m_properties[m_begin++];
            if (!readClasses({p_property})) return false;
            if (isOfLinks(p_property->parent)) break;
        }
        return true;
    }
    /** Looks for the one with imports among the last storages. @return false when they cannot be read */
    bool lookAtEnd() {
        constexpr int most = 8;
        for (int i = 0; i < most && !areAllKnown(); ++i) {
            const DirectoryEntry* const p_property = m_properties[--m_end];
            if (!readClasses({p_property})) return false;
            if (isOfLinks(p_property->parent)) break;
        }
        return true;
    }
    /** Reads the classes of all storages. @return false when they cannot be read */
    bool readAll() {
        const auto at = [this](std::size_t i_index) {
            return m_properties.begin() + static_cast<std::ptrdiff_t>(i_index);
        };
        const Streams rest(at(m_begin), at(m_end));
        m_begin = m_end;
        return readClasses(rest);
    }

    /** Containers of the two classes, as far as known; and those without any class, once all are known. */
    Streams found() const {
        Streams containers;
        for (const DirectoryEntry& entry : m_file.entries()) {
            if (!isContainer(entry)) continue;
            const bool tells_no_class = areAllKnown() && m_holds_links.count(entry.parent) == 0;
            if (tells_no_class || isOfLinks(entry.parent)) containers.push_back(&entry);
        }
        return containers;
    }

private:
    bool isOfLinks(std::uint32_t i_storage) const {
        const auto holds_links = m_holds_links.find(i_storage);
        return holds_links != m_holds_links.end() && holds_links->second;
    }
    bool readClasses(const Streams& i_properties) {
        if (!m_file.fetch(i_properties)) return false;
        for (const DirectoryEntry* const p_property : i_properties) {
            const std::string name = classOf(m_file, p_property);
            if (!name.empty()) m_holds_links[p_property->parent] = holdsLinks(name);
        }
        return true;
    }

    DocumentFile& m_file;
    Streams m_properties;                                  ///< of the storages that hold a container
    std::size_t m_begin = 0, m_end = 0;                    ///< of those whose class is not known yet
    std::unordered_map<std::uint32_t, bool> m_holds_links; ///< by storage, for those that tell a class
};

/** Whether the containers that were read hold every pointer that the property stream counts, so that none of those
 * that were left out has one. */
bool holdsAllPointers(std::string_view i_image, const std::vector<LinkedDocument>& i_documents) {
    std::unordered_map<std::string_view, std::int64_t> missing;
    for (const LinkedDocument& document : i_documents)
        if (!document.identity.empty() && document.uses > 0) missing[document.identity] += document.uses;
    const std::size_t lead = marker::foreignIdentity.size();
    for (std::size_t at = findMarker(i_image, marker::foreignIdentity, 0); at != notFound;
         at = findMarker(i_image, marker::foreignIdentity, at + lead)) {
        if (!holds(i_image, at + lead, LinkedDocument::identityBytes)) break;
        const auto count = missing.find(i_image.substr(at + lead, LinkedDocument::identityBytes));
        if (count != missing.end()) --count->second;
    }
    return std::all_of(missing.begin(), missing.end(), [](const auto& i_pair) { return i_pair.second <= 0; });
}

/** Whether as many repositories of imports point to each part file as the property stream counts for it. */
bool holdsAllRepositories(std::string_view i_image, const std::vector<const LinkedDocument*>& i_part_files) {
    std::unordered_map<std::int32_t, std::int64_t> missing;
    for (const LinkedDocument* const p_document : i_part_files) missing[p_document->symbol] += p_document->uses;
    for (const std::int32_t symbol : repositorySymbols(i_image)) {
        const auto count = missing.find(symbol);
        if (count != missing.end()) --count->second;
    }
    return std::all_of(missing.begin(), missing.end(), [](const auto& i_pair) { return i_pair.second <= 0; });
}

bool areAllUnpublished(const std::vector<ImportUse>& i_uses) {
    return std::all_of(i_uses.begin(), i_uses.end(),
                       [](const ImportUse& i_use) { return i_use.kind == ImportUse::Unpublished; });
}

/** Whether the image tells all that the scan asks of a part that points to others.
 * @param i_all_containers whether it has all containers that may hold links, as far as they tell their class */
bool isEnoughForPart(std::string_view i_image, DocumentScan& io_scan, bool i_all_containers) {
    // Imports of the older form are told from leftovers by all bytes of the file; others by what was read.
    const bool may_be_older = !io_scan.used(LinkedDocument::ContextPart).empty() && usesOlderForm(io_scan.release());
    if (may_be_older && !areAllUnpublished(io_scan.contextPartUses())) return false;
    const auto part_files = io_scan.used(LinkedDocument::PartFile);
    if (!part_files.empty()) {
        if (findMarker(i_image, marker::importRepository, 0) == notFound) return false;
        if (!i_all_containers && !holdsAllRepositories(i_image, part_files)) return false;
    }
    return holdsAllPointers(i_image, io_scan.stream().documents());
}

} // namespace

std::string_view LinkImage::bytes() const {
    if (m_streams) return m_streams->bytes;
    return m_whole ? std::string_view(m_whole.get(), m_whole_size) : std::string_view();
}

bool LinkImage::read(const JournalFrame& i_frame, DocumentFile& io_file) {
    return readStreams(io_file) || readWhole(i_frame, io_file);
}

DocumentScan& LinkImage::scanStreams(const DocumentFile& i_file, const Streams& i_streams) {
    auto sp_scanned = std::make_unique<Scanned>(i_file.imageOf(i_streams));
    // What all these images have in common need not be read again.
    if (m_streams) sp_scanned->scan.takeStream(m_streams->scan);
    m_streams = std::move(sp_scanned);
    return m_streams->scan;
}

bool LinkImage::readStreams(DocumentFile& io_file) {
    Streams streams = streamsOf(io_file, stream::documentProperty);
    if (streams.empty()) return false;
    const std::uint32_t root = io_file.rootStorage();
    const DirectoryEntry* const p_class = io_file.find(stream::storageProperty, root);
    const DirectoryEntry* const p_sets = io_file.find(stream::propertySets, root);
    if (p_sets) streams.push_back(p_sets);
    Streams wanted = streams;
    if (p_class) wanted.push_back(p_class);
    if (!io_file.fetch(wanted)) return false;

    const std::string name = classOf(io_file, p_class);
    const bool may_be_part = name != kProductClass && name != kDrawingClass;
    if (may_be_part) append(streamsOf(io_file, stream::containers), streams);
    if (!io_file.fetch(streams)) return false;
    scanStreams(io_file, streams);
    if (!scan().hasSummary() || (may_be_part && !scan().hasApplication())) {
        for (const DirectoryEntry* const p_sets_of_container : streamsOf(io_file, stream::propertySets))
            if (p_sets_of_container != p_sets) streams.push_back(p_sets_of_container);
        if (!io_file.fetch(streams)) return false;
        scanStreams(io_file, streams);
    }
    if (!scan().usesAny()) return true;

    const bool is_part = scan().hasApplication() || name.empty() || name == kPartClass;
    // Products and drawings name what they show in the property stream alone.
    if (!is_part) return scan().used(LinkedDocument::PartFile).empty();
    return scan().hasApplication() && readContainers(io_file, streams);
}

bool LinkImage::readContainers(DocumentFile& io_file, const Streams& i_basic) {
    LinkContainers containers(io_file);
    const auto is_enough = [&] {
        const Streams found = containers.found();
        if (found.empty() || !io_file.fetch(found)) return false;
        Streams streams = i_basic;
        append(found, streams);
        DocumentScan& scan = scanStreams(io_file, streams);
        return isEnoughForPart(bytes(), scan, containers.areAllKnown());
    };
    const bool has_imports = !scan().used(LinkedDocument::PartFile).empty();
    if (!containers.lookInFront() || (has_imports && !containers.lookAtEnd())) return false;
    if (is_enough()) return true;
    return containers.readAll() && is_enough();
}

bool LinkImage::readWhole(const JournalFrame& i_frame, const DocumentFile& i_file) {
    m_streams.reset();
    const std::uint64_t size = i_file.size();
    if (size == 0) return false;
    if (size >= kLongestImage) {
        i_frame.write("The file has 2 GiB or more");
        return false;
    }
    m_whole_size = static_cast<std::size_t>(size);
    m_whole.reset(static_cast<char*>(std::malloc(m_whole_size + 1)));
    if (!m_whole || !i_file.readWhole(m_whole.get())) return false;
    m_whole.get()[m_whole_size] = '\0';
    m_scan_of_whole.emplace(bytes());
    return true;
}

VornToolsDocumentFile::EnumDocumentCondition LinkImage::conditionOf(const DocumentFile& i_file) {
    const FileHeader& header = i_file.header();
    if (header.is_document && i_file.size() < FileHeader::length) return VornToolsDocumentFile::DocumentCutOff;
    if (header.is_known_layout && !i_file.isWhole())
        return header.end() > i_file.size() ? VornToolsDocumentFile::DocumentCutOff
                                            : VornToolsDocumentFile::DocumentDamaged;
    if (!scan().hasStream())
        return header.is_document ? VornToolsDocumentFile::DocumentIntact : VornToolsDocumentFile::DocumentNoDocument;
    return scan().stream().isComplete() ? VornToolsDocumentFile::DocumentIntact
                                        : VornToolsDocumentFile::DocumentDamaged;
}

void LinkImage::dropBytes() {
    m_whole.reset();
    if (m_streams) m_streams->bytes = std::string();
}

VornToolsString* LinkImage::takeBytes() {
    m_scan_of_whole.reset();
    if (m_whole) return new VornToolsString(static_cast<int>(m_whole_size), m_whole.release());
    if (bytes().size() >= kLongestImage) return nullptr;
    return new VornToolsString(bytes().data(), static_cast<int>(bytes().size()));
}

} // namespace vorntools
