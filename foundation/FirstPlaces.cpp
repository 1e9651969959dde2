#include "foundation/FirstPlaces.h"

#include <algorithm>

namespace vorntools {

namespace {

/** Small enough for a block to stay in the processor's cache while every marker is looked for in it. */
constexpr std::size_t kBlock = std::size_t{256} << 10;

/** What is known of the image that was searched last. Never destroyed: strings may go after it at the process's end. */
struct KnownPlaces {
    struct Entry {
        std::string_view marker;
        std::size_t place;
    };
    static constexpr std::size_t capacity = 8;

    const char* image = nullptr;
    std::size_t size = 0;
    std::array<Entry, capacity> entries{};
    std::size_t count = 0;

    void turnTo(std::string_view i_image) {
        if (image == i_image.data() && size == i_image.size()) return;
        image = i_image.data();
        size = i_image.size();
        count = 0;
    }
    const Entry* find(std::string_view i_image, std::string_view i_marker) const {
        if (image != i_image.data() || size != i_image.size()) return nullptr;
        const Entry* const p_end = entries.data() + count;
        const Entry* const p_entry =
            std::find_if(entries.data(), p_end, [&](const Entry& i_entry) { return i_entry.marker == i_marker; });
        return p_entry != p_end ? p_entry : nullptr;
    }
    void add(std::string_view i_marker, std::size_t i_place) {
        if (count < capacity) entries[count++] = {i_marker, i_place};
    }
};

KnownPlaces known;

std::size_t placeWithin(std::string_view i_image, std::string_view i_marker, std::size_t i_from, std::size_t i_to) {
    return i_to == 0 ? notFound
                     : vorntools::search(i_image, i_marker, i_from, i_to == notFound ? notFound : i_to - 1, 1);
}

/** Looks for the markers block by block. */
void searchTogether(std::string_view i_image, const std::string_view* ip_markers, const bool* ip_wanted,
                    std::size_t i_count, std::size_t* op_places) {
    bool missing = true;
    for (std::size_t begin = 0; missing && begin < i_image.size(); begin += kBlock) {
        missing = false;
        for (std::size_t k = 0; k < i_count; ++k) {
            if (!ip_wanted[k] || op_places[k] != notFound) continue;
            op_places[k] = placeWithin(i_image, ip_markers[k], begin, begin + kBlock + ip_markers[k].size() - 1);
            missing = missing || op_places[k] == notFound;
        }
    }
}

} // namespace

void findFirstPlaces(std::string_view i_image, const std::string_view* ip_markers, std::size_t i_count,
                     std::size_t* op_places) {
    known.turnTo(i_image);
    std::array<bool, KnownPlaces::capacity> wanted{};
    for (std::size_t k = 0; k < i_count; ++k) {
        const KnownPlaces::Entry* const p_entry = known.find(i_image, ip_markers[k]);
        wanted[k] = !p_entry;
        op_places[k] = p_entry ? p_entry->place : notFound;
    }
    searchTogether(i_image, ip_markers, wanted.data(), i_count, op_places);
    for (std::size_t k = 0; k < i_count; ++k)
        if (wanted[k]) known.add(ip_markers[k], op_places[k]);
}

std::size_t firstPlaceBetween(std::string_view i_image, std::string_view i_marker, std::size_t i_from,
                              std::size_t i_to) {
    const KnownPlaces::Entry* const p_entry = known.find(i_image, i_marker);
    if (!p_entry || p_entry->place < i_from) return placeWithin(i_image, i_marker, i_from, i_to);
    const bool inside = p_entry->place < i_to && i_marker.size() <= i_to - p_entry->place;
    return inside ? p_entry->place : notFound;
}

void forgetPlaces(const char* ip_image) {
    if (known.image == ip_image) known.turnTo({});
}

} // namespace vorntools
