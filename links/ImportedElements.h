#ifndef LINKS_IMPORTED_ELEMENTS_H
#define LINKS_IMPORTED_ELEMENTS_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vorntools {

/** The elements of other parts that a part has imported with a link. */
struct ImportedElements {
    struct Input {
        std::uint32_t path;       ///< index of the element's path
        std::uint32_t repository; ///< which of the document's import repositories holds it, from 0
        std::int32_t symbol;      ///< number of the record that the repository points to; 0 when it does not tell
    };

    /** Paths of the elements as stored, UTF-8: "InputToDoc:Doc!" kind ":" element "!". They stay in the image. */
    std::vector<std::string_view> paths;
    /** In stream order. Several may share a path. */
    std::vector<Input> inputs;

    void append(std::size_t i_path, std::size_t i_repository, std::int32_t i_symbol) {
        inputs.push_back({static_cast<std::uint32_t>(i_path), static_cast<std::uint32_t>(i_repository), i_symbol});
    }
};

bool isElementPath(std::string_view i_text);

/** The element alone, which stands between the kind and the exclamation mark that ends its path: ten letters for
 * geometry, a name for a parameter; empty when the path does not tell it. */
std::string_view elementOf(std::string_view i_path);

/**
 * Reads the imported elements of a part. A container that cannot be read leaves the element paths that stand in the
 * image.
 * @param i_repository first position of the repositories' name; notFound gives none
 */
ImportedElements importedElements(std::string_view i_image, std::size_t i_repository);

} // namespace vorntools

#endif
