#include "links/DocumentFields.h"

#include "links/ImageBytes.h"
#include "links/Markers.h"
#include "links/StoredText.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>

namespace vorntools {

namespace {

/** The number between two markers; false when one is missing. The closing marker holds the opening one, so that it is
 * looked for behind it. */
bool numberBetween(std::string_view i_image, std::size_t i_from, const SearchPattern& i_open,
                   const SearchPattern& i_close, int& o_number) {
    const std::size_t open = findMarker(i_image, i_open, i_from);
    if (open == notFound) return false;
    const std::size_t begin = open + i_open.size();
    const std::size_t close = findMarker(i_image, i_close, begin);
    if (close == notFound) return false;
    o_number = leadingNumber(i_image.substr(begin, close - begin));
    return true;
}

/** Last index of the reference at a place, as its length in front of it tells; negative when it tells none. */
long long lengthOfReference(std::string_view i_image, std::size_t i_at) {
    // Short texts have one byte of length in front of them, which counts itself; longer ones a 0 and four bytes.
    constexpr std::size_t longLength = sizeof(std::int32_t);
    if (i_at > longLength && byteAt(i_image, i_at - longLength - 1) == 0) {
        const std::size_t length_at = i_at - longLength;
        return int32At(i_image, length_at, isLittleEndianAt(i_image, length_at)) - 1LL;
    }
    return i_at > 0 ? byteAt(i_image, i_at - 1) - 2LL : -1LL;
}

std::vector<std::string> referencesIn(std::string_view i_image, std::size_t i_begin, std::size_t i_end) {
    std::vector<std::string> references;
    std::unordered_set<std::string> known;
    for (std::size_t at = findMarker(i_image, marker::externalReference, i_begin, i_end); at != notFound;) {
        const long long length = lengthOfReference(i_image, at);
        if (length < 1 || static_cast<std::size_t>(length) >= i_end - at) break;
        const std::size_t end = at + static_cast<std::size_t>(length);
        const std::string reference = decoded(std::string(i_image.substr(at, end + 1 - at)));
        if (known.insert(reference).second) references.push_back(reference);
        at = findMarker(i_image, marker::externalReference, end, i_end);
    }
    return references;
}

constexpr std::size_t kIdentifierBytes = 5;

/** Identifiers of the zone that one lead-in introduces: five bytes, then the first end byte. */
void appendIdentifiers(std::string_view i_zone, std::string_view i_lead,
                       std::vector<std::string_view>& io_identifiers) {
    const std::size_t whole = i_lead.size() + kIdentifierBytes;
    // Zeros follow each other in long runs, where a plain search does better than one that is prepared for each.
    for (std::size_t at = i_zone.find(i_lead); at != notFound; at = i_zone.find(i_lead, at + i_lead.size())) {
        if (i_zone.substr(at, whole + 1).find(marker::keyEnd) == whole)
            io_identifiers.push_back(i_zone.substr(at + i_lead.size(), kIdentifierBytes));
    }
}

} // namespace

DocumentVersion readVersion(std::string_view i_image, std::size_t i_summary) {
    DocumentVersion version;
    if (i_summary == notFound) return version;
    const auto read = [&](const SearchPattern& i_open, const SearchPattern& i_close, int& o_number) {
        if (!numberBetween(i_image, i_summary, i_open, i_close, o_number)) version.complete = false;
    };
    read(marker::versionBegin, marker::versionEnd, version.version);
    read(marker::releaseBegin, marker::releaseEnd, version.release);
    read(marker::servicePackBegin, marker::servicePackEnd, version.servicePack);
    return version;
}

std::vector<std::string> externalReferences(std::string_view i_image, std::size_t i_names, std::size_t i_end) {
    if (i_names == notFound) return {};
    const std::size_t begin = i_names + marker::containerName.size();
    std::size_t end = findMarker(i_image, marker::catalogManager, begin, i_end);
    if (end == notFound) end = findMarker(i_image, marker::streamSignature, begin, i_end);
    return end == notFound ? std::vector<std::string>() : referencesIn(i_image, begin, end);
}

std::vector<std::string> publishedReferences(std::string_view i_image, std::size_t i_names) {
    if (i_names == notFound) return {};
    const std::size_t begin = i_names + marker::containerName.size();
    const std::size_t end = findMarker(i_image, marker::catalogManager, begin);
    return end == notFound ? std::vector<std::string>() : referencesIn(i_image, begin, end);
}

std::vector<std::string_view> identifiersBehind(std::string_view i_image, std::string_view i_key) {
    const std::size_t key = findMarker(i_image, i_key, 0);
    if (key == notFound) return {};
    std::size_t end = findMarker(i_image, marker::keyZoneEnd, key);
    if (end == notFound) end = findMarker(i_image, marker::catalogManager, key);
    const std::size_t begin = key + i_key.size();
    if (end == notFound || begin >= end) return {};
    const std::string_view zone = i_image.substr(begin, end - begin);
    std::vector<std::string_view> identifiers;
    appendIdentifiers(zone, marker::keyLead, identifiers);
    appendIdentifiers(zone, marker::zeroLead, identifiers);
    return identifiers;
}

bool publishes(std::string_view i_image, const std::vector<std::string_view>& i_keys) {
    const std::size_t connector = findMarker(i_image, marker::shapeConnector, 0);
    if (connector == notFound) return false;
    const std::size_t begin = connector + marker::shapeConnector.size();
    const std::size_t zone_end = findMarker(i_image, marker::inputs, begin);
    if (zone_end == notFound) return false;
    const std::string_view zone = i_image.substr(begin, zone_end - begin);

    const std::size_t names = findMarker(zone, marker::containerName, 0);
    // Kept because it makes no difference: without container names nothing is left out, and zone_end, a position of the
    // image, lies behind every position of the zone.
    const std::size_t left_out_from = names == notFound ? zone_end : names;
    const std::size_t catalog = findMarker(zone, marker::catalogManager, left_out_from);
    // The table of the names ends at its catalog; one whose catalog lies behind the zone covers the zone to its end.
    const std::size_t left_out_to = catalog == notFound ? zone.size() : catalog + marker::catalogManager.size();
    return std::any_of(i_keys.begin(), i_keys.end(), [&](std::string_view i_key) {
        const std::size_t at = findMarker(zone, i_key, 0);
        return at != notFound && (at < left_out_from || at >= left_out_to);
    });
}

} // namespace vorntools
