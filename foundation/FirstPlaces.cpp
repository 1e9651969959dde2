#include "foundation/FirstPlaces.h"

#include <algorithm>
#include <atomic>
#include <mutex>

namespace vorntools {

namespace {

/** Small enough for a block to stay in the processor's cache while every marker is looked for in it. */
constexpr std::size_t kBlock = std::size_t{256} << 10;

constexpr std::size_t kMostMarkers = 8;

/** What is known of the image that was searched last. */
class KnownPlaces {
public:
    /** @param o_place set when the marker was looked for in this image */
    bool find(std::string_view i_image, std::string_view i_marker, std::size_t& o_place) {
        const std::lock_guard<std::mutex> guard(m_lock);
        if (m_image != i_image.data() || m_size != i_image.size()) return false;
        Entry* const p_end = m_entries.data() + m_count;
        Entry* const p_entry =
            std::find_if(m_entries.data(), p_end, [&](const Entry& i_entry) { return i_entry.marker == i_marker; });
        if (p_entry == p_end) return false;
        o_place = p_entry->place;
        return true;
    }
    /** Another image takes the place of the one before. */
    void add(std::string_view i_image, std::string_view i_marker, std::size_t i_place) {
        const std::lock_guard<std::mutex> guard(m_lock);
        if (m_image != i_image.data() || m_size != i_image.size()) m_count = 0;
        m_image = i_image.data();
        m_size = i_image.size();
        if (m_count < m_entries.size()) m_entries[m_count++] = {i_marker, i_place};
    }
    /** Costs next to nothing for bytes that were never searched: every string asks. */
    void forget(const char* ip_image) {
        if (!ip_image || m_image.load(std::memory_order_relaxed) != ip_image) return;
        const std::lock_guard<std::mutex> guard(m_lock);
        if (m_image == ip_image) m_image = nullptr;
    }

private:
    struct Entry {
        std::string_view marker;
        std::size_t place;
    };

    std::mutex m_lock;
    std::atomic<const char*> m_image{nullptr};
    std::size_t m_size = 0;
    std::array<Entry, kMostMarkers> m_entries{};
    std::size_t m_count = 0;
};

/** Never destroyed: strings may go after it at the process's end. */
KnownPlaces& known() {
    static KnownPlaces* const p_places = new KnownPlaces;
    return *p_places;
}

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
    std::array<bool, kMostMarkers> wanted{};
    for (std::size_t k = 0; k < i_count; ++k) {
        op_places[k] = notFound;
        wanted[k] = !known().find(i_image, ip_markers[k], op_places[k]);
    }
    searchTogether(i_image, ip_markers, wanted.data(), i_count, op_places);
    for (std::size_t k = 0; k < i_count; ++k)
        if (wanted[k]) known().add(i_image, ip_markers[k], op_places[k]);
}

std::size_t firstPlaceBetween(std::string_view i_image, std::string_view i_marker, std::size_t i_from,
                              std::size_t i_to) {
    std::size_t place = notFound;
    if (!known().find(i_image, i_marker, place) || place < i_from) return placeWithin(i_image, i_marker, i_from, i_to);
    const bool inside = place < i_to && i_marker.size() <= i_to - place;
    return inside ? place : notFound;
}

void forgetPlaces(const char* ip_image) { known().forget(ip_image); }

} // namespace vorntools
