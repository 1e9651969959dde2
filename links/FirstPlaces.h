#ifndef LINKS_FIRST_PLACES_H
#define LINKS_FIRST_PLACES_H

#include "links/ImageBytes.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace vorntools {

/** First places of several markers, notFound where there is none. They are looked for block by block, so that a large
 * image goes through the processor's cache once. */
template <std::size_t count>
std::array<std::size_t, count> firstPlaces(std::string_view i_image,
                                           const std::array<SearchPattern, count>& i_markers) {
    constexpr std::size_t block = std::size_t{256} << 10;
    std::array<std::size_t, count> places;
    places.fill(notFound);
    std::size_t missing = count;
    for (std::size_t begin = 0; missing > 0 && begin < i_image.size(); begin += block) {
        for (std::size_t k = 0; k < count; ++k) {
            if (places[k] != notFound) continue;
            places[k] = findMarker(i_image, i_markers[k], begin, begin + block + i_markers[k].size() - 1);
            if (places[k] != notFound) --missing;
        }
    }
    return places;
}

} // namespace vorntools

#endif
