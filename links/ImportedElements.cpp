#include "links/ImportedElements.h"

#include "links/ImageBytes.h"
#include "links/ImportContainer.h"
#include "links/Markers.h"

namespace vorntools {

namespace {

/** Length of the text at a place, as the bytes in front of it tell; 0 when they tell none. */
std::size_t lengthOfText(std::string_view i_image, std::size_t i_at) {
    constexpr unsigned char longest_short = 49;
    const unsigned char counted = i_at > 0 ? byteAt(i_image, i_at - 1) : static_cast<unsigned char>(0);
    if (counted > 1 && counted <= longest_short) return counted - 1U;
    if (i_at < 5 || byteAt(i_image, i_at - 5) != 0) return 0;
    // A negative length is longer than any image.
    return static_cast<std::size_t>(int32At(i_image, i_at - 4, true));
}

/** Every element path of the image: what is left when the container cannot be read. */
ImportedElements elementsAnywhere(std::string_view i_image) {
    ImportedElements elements;
    for (std::size_t at = findMarker(i_image, marker::importedElement, 0); at != notFound;) {
        const std::size_t length = lengthOfText(i_image, at);
        const bool whole = length >= marker::importedElement.size() && holds(i_image, at, length);
        if (whole) {
            elements.append(elements.paths.size(), 0, 0);
            elements.paths.push_back(i_image.substr(at, length));
        }
        at = findMarker(i_image, marker::importedElement, at + (whole ? length : marker::importedElement.size()));
    }
    return elements;
}

} // namespace

bool isElementPath(std::string_view i_text) {
    return i_text.substr(0, marker::importedElement.size()) == marker::importedElement;
}

std::string_view elementOf(std::string_view i_path) {
    const std::size_t kind = i_path.find(':', marker::importedElement.size());
    const std::size_t end = i_path.rfind('!');
    if (end == std::string_view::npos || end <= kind) return {}; // a kind that is missing lies behind every end
    return i_path.substr(kind + 1, end - kind - 1);
}

ImportedElements importedElements(std::string_view i_image, std::size_t i_repository) {
    if (i_repository == notFound) return {};
    ImportedElements elements = readImportContainer(i_image, i_repository);
    return elements.inputs.empty() ? elementsAnywhere(i_image) : elements;
}

} // namespace vorntools
