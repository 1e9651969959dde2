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

/** The containers of the two classes that hold references and imports, among those whose class has been read by the
 * way. */
Streams linkContainersInSight(DocumentFile& io_file) {
    // Streams that share their bytes are not to cost more than they take in the directory.
    constexpr std::uint32_t usual_length = 1024;
    std::unordered_set<std::uint32_t> storages;
    for (const DirectoryEntry* const p_property : streamsOf(io_file, stream::storageProperty))
        if (p_property->size <= usual_length && io_file.knows(*p_property) && holdsLinks(classOf(io_file, p_property)))
            storages.insert(p_property->parent);
    if (storages.empty()) return {};
    Streams containers;
    for (const DirectoryEntry& entry : io_file.entries())
        if (isContainer(entry) && storages.count(entry.parent) > 0) containers.push_back(&entry);
    return containers;
}

/** All containers of the two classes, and those that do not tell their class. */
Streams linkContainers(DocumentFile& io_file) {
    const Streams properties = streamsOf(io_file, stream::storageProperty);
    if (!io_file.fetch(properties)) return {};
    std::unordered_set<std::uint32_t> others;
    for (const DirectoryEntry* const p_property : properties) {
        const std::string name = classOf(io_file, p_property);
        if (!name.empty() && !holdsLinks(name)) others.insert(p_property->parent);
    }
    Streams containers;
    for (const DirectoryEntry& entry : io_file.entries())
        if (isContainer(entry) && others.count(entry.parent) == 0) containers.push_back(&entry);
    return containers;
}

/** Whether the containers that were read hold every pointer that the property stream counts, so that none of those
 * that were left out has one. */
bool holdsAllPointers(std::string_view i_image, const std::vector<LinkedDocument>& i_documents) {
    std::unordered_map<std::string_view, std::int64_t> missing;
    for (const LinkedDocument& document : i_documents)
        if (!document.identity.empty() && document.uses > 0) missing[document.identity] += document.uses;
    if (missing.empty()) return true;
    const std::size_t lead = marker::foreignIdentity.size();
    for (std::size_t at = findMarker(i_image, marker::foreignIdentity, 0); at != notFound;
         at = findMarker(i_image, marker::foreignIdentity, at + 1)) {
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

/** Whether the image tells all that the scan asks of a part that points to others.
 * @param i_all_containers whether it has all containers that may hold links, as far as they tell their class */
bool isEnoughForPart(std::string_view i_image, DocumentScan& io_scan, bool i_all_containers) {
    // Imports of the older form are told from leftovers by all bytes of the file.
    if (!io_scan.used(LinkedDocument::ContextPart).empty() && usesOlderForm(io_scan.release())) return false;
    const auto part_files = io_scan.used(LinkedDocument::PartFile);
    if (!part_files.empty()) {
        if (findMarker(i_image, marker::importRepository, 0) == notFound) return false;
        if (!i_all_containers && !holdsAllRepositories(i_image, part_files)) return false;
    }
    return holdsAllPointers(i_image, io_scan.stream().documents());
}

} // namespace

std::string_view LinkImage::bytes() const {
    return m_whole ? std::string_view(m_whole.get(), m_whole_size) : std::string_view(m_streams);
}

bool LinkImage::read(const JournalFrame& i_frame, DocumentFile& io_file) {
    return readStreams(io_file) || readWhole(i_frame, io_file);
}

void LinkImage::scanStreams(const DocumentFile& i_file, const Streams& i_streams) {
    m_scan.reset();
    m_streams = i_file.imageOf(i_streams);
    m_scan.emplace(m_streams);
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
    if (!m_scan->hasSummary() || (may_be_part && !m_scan->hasApplication())) {
        for (const DirectoryEntry* const p_sets_of_container : streamsOf(io_file, stream::propertySets))
            if (p_sets_of_container != p_sets) streams.push_back(p_sets_of_container);
        if (!io_file.fetch(streams)) return false;
        scanStreams(io_file, streams);
    }
    if (!m_scan->usesAny()) return true;

    const bool is_part = m_scan->hasApplication() || name.empty() || name == kPartClass;
    // Products and drawings name what they show in the property stream alone.
    if (!is_part) return m_scan->used(LinkedDocument::PartFile).empty();
    return m_scan->hasApplication() && readContainers(io_file, streams);
}

bool LinkImage::readContainers(DocumentFile& io_file, const Streams& i_basic) {
    const auto is_enough = [&](const Streams& i_containers, bool i_all) {
        if (i_containers.empty() || !io_file.fetch(i_containers)) return false;
        Streams streams = i_basic;
        append(i_containers, streams);
        scanStreams(io_file, streams);
        return isEnoughForPart(m_streams, *m_scan, i_all);
    };
    return is_enough(linkContainersInSight(io_file), false) || is_enough(linkContainers(io_file), true);
}

bool LinkImage::readWhole(const JournalFrame& i_frame, const DocumentFile& i_file) {
    m_scan.reset();
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
    m_scan.emplace(bytes());
    return true;
}

VornToolsDocumentFile::EnumDocumentCondition LinkImage::conditionOf(const DocumentFile& i_file) {
    const FileHeader& header = i_file.header();
    if (header.is_document && i_file.size() < FileHeader::length) return VornToolsDocumentFile::DocumentCutOff;
    if (header.is_known_layout && !i_file.isWhole())
        return header.end() > i_file.size() ? VornToolsDocumentFile::DocumentCutOff
                                            : VornToolsDocumentFile::DocumentDamaged;
    if (!m_scan->hasStream())
        return header.is_document ? VornToolsDocumentFile::DocumentIntact : VornToolsDocumentFile::DocumentNoDocument;
    return m_scan->stream().isComplete() ? VornToolsDocumentFile::DocumentIntact
                                         : VornToolsDocumentFile::DocumentDamaged;
}

void LinkImage::dropBytes() {
    m_whole.reset();
    m_streams = std::string();
}

VornToolsString* LinkImage::takeBytes() {
    m_scan.reset();
    if (m_whole) return new VornToolsString(static_cast<int>(m_whole_size), m_whole.release());
    if (m_streams.size() >= kLongestImage) return nullptr;
    return new VornToolsString(m_streams.data(), static_cast<int>(m_streams.size()));
}

} // namespace vorntools
