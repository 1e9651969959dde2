#ifndef LINKS_MULTI_MODEL_LINKS_H
#define LINKS_MULTI_MODEL_LINKS_H

#include "links/ContextParts.h"
#include "links/ImportedElements.h"
#include "links/PropertyStream.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vorntools {

/** The imported elements of a part, each with the document that it comes from. */
struct MultiModelLinks {
    static constexpr std::uint32_t noDocument = static_cast<std::uint32_t>(-1);

    /** How the part names an element, in the platform's 8-bit form. */
    struct Element {
        std::string publication;
        std::string tag;
    };
    struct Link {
        std::uint32_t element;
        /** Index among the part files or, behind them, among the context parts; noDocument when unknown. */
        std::uint32_t document;
    };

    std::vector<Element> elements;
    /** Those of part files in stream order, then those of the older form. Several may share an element. */
    std::vector<Link> links;
};

/**
 * @param i_part_files in use. @param i_uses of the context parts
 * @param i_image_size in bytes: inputs that would take more texts than docs/links.md allows for it are left out
 */
MultiModelLinks multiModelLinks(const ImportedElements& i_imported,
                                const std::vector<const LinkedDocument*>& i_part_files,
                                const std::vector<ImportUse>& i_uses, std::size_t i_image_size);

} // namespace vorntools

#endif
