#ifndef FOUNDATION_FIRST_PLACES_H
#define FOUNDATION_FIRST_PLACES_H

#include "foundation/SearchKernel.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace vorntools {

// Where markers stand first in a document image. A search through a large image costs as much as reading it from
// memory, and the operations on one image follow each other and ask for the same few markers: the places found in the
// image that was searched last are remembered until its bytes go. Images are the bytes of a VornToolsString, which
// tells when they go; markers are constants. Strings may be used in several threads at a time.

/** Fills in the first place of each of the markers, at most eight, notFound where there is none. */
void findFirstPlaces(std::string_view i_image, const std::string_view* ip_markers, std::size_t i_count,
                     std::size_t* op_places);

/** The same as an array. Markers not asked for before are looked for together, so that the image goes through the
 * processor's cache once. */
template <std::size_t count>
std::array<std::size_t, count> firstPlaces(std::string_view i_image,
                                           const std::array<std::string_view, count>& i_markers) {
    std::array<std::size_t, count> places;
    findFirstPlaces(i_image, i_markers.data(), count, places.data());
    return places;
}

inline std::size_t firstPlace(std::string_view i_image, std::string_view i_marker) {
    return firstPlaces<1>(i_image, {i_marker})[0];
}

/** First place of the marker that lies whole within from..to, `to` excluded; searches no more than that. */
std::size_t firstPlaceBetween(std::string_view i_image, std::string_view i_marker, std::size_t i_from,
                              std::size_t i_to);

/** To be called before bytes that were searched are freed or changed. */
void forgetPlaces(const char* ip_image);

} // namespace vorntools

#endif
