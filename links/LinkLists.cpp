#include "links/LinkLists.h"

namespace vorntools {

Links linksOf(const std::vector<FoundLink>& i_found) {
    Links links(static_cast<unsigned int>(i_found.size()));
    VornToolsLink record; // filled anew for every link
    for (const FoundLink& found : i_found) {
        record.set_type(found.type);
        record.set_linkedFileName(textOf(found.fileName));
        record.set_reference(textOf(found.reference));
        record.set_link_tag_found(found.tagFound ? 1 : 0);
        links.append(record);
    }
    return links;
}

Strings stringsOf(const std::vector<std::string_view>& i_texts) {
    Strings strings(static_cast<unsigned int>(i_texts.size()));
    for (const std::string_view text : i_texts) strings.append(stringOf(text));
    return strings;
}

} // namespace vorntools
