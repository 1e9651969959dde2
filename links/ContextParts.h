#ifndef LINKS_CONTEXT_PARTS_H
#define LINKS_CONTEXT_PARTS_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/** Whether releases of that number store imports in the older form: without a container of their own, told only by the
 * record of the part. */
inline bool usesOlderForm(int i_release) { return i_release >= 1 && i_release <= 12; }

/** How a part uses one of the parts that it points into. */
struct ImportUse {
    enum Kind {
        None,        ///< no import: a neighbour in the assembly, or the document itself under an older name
        Unpublished, ///< geometry imported in context that is no publication
        OlderForm    ///< a multi-model link of the older form
    };
    Kind kind = None;
    /** Of the imported element, ten letters; empty when the document does not tell it. Older form only. */
    std::string tag;
};

/**
 * Tells for each identity how the part uses the one behind it.
 * @param i_identities 16 bytes each, of the context parts. @param i_end position of the document-property stream
 * @param i_older whether the part's release uses the older form; only asked when it matters, which is seldom
 */
std::vector<ImportUse> importUses(std::string_view i_image, std::size_t i_end,
                                  const std::vector<std::string>& i_identities, const std::function<bool()>& i_older);

} // namespace vorntools

#endif
