#ifndef LINKS_LINK_LISTS_H
#define LINKS_LINK_LISTS_H

#include "CATUnicodeString.h"
#include "VornToolsLink.h"
#include "VornToolsString.h"
#include "VornToolsVector.h"
#include "foundation/JournalFrame.h"
#include "foundation/SearchKernel.h"
#include "links/LinkScan.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace vorntools {

// What the exported operations of VornToolsLinks take and hand out.

using Links = VornToolsVector<VornToolsLink>;
using Strings = VornToolsVector<VornToolsString>;

inline std::string_view viewOf(const VornToolsString& i_text) { return {i_text.bytes(), i_text.size()}; }
inline std::string_view viewOf(const VornToolsString* ip_text) {
    return ip_text ? viewOf(*ip_text) : std::string_view();
}
inline std::string_view viewOf(const CATUnicodeString& i_text) {
    return {i_text.ConvertToChar(), static_cast<std::size_t>(i_text.GetLengthInByte())};
}

inline CATUnicodeString textOf(std::string_view i_bytes) { return CATUnicodeString(i_bytes.data(), i_bytes.size()); }
inline VornToolsString stringOf(std::string_view i_bytes) {
    return VornToolsString(i_bytes.data(), static_cast<int>(i_bytes.size()));
}

/** A position of the caller's; notFound for -1. */
inline std::size_t positionOf(int i_position) {
    return i_position < 0 ? notFound : static_cast<std::size_t>(i_position);
}

/** Reports a missing image. */
inline bool isMissing(const JournalFrame& i_frame, const VornToolsString* ip_image) {
    if (!ip_image) i_frame.badInput("ip_image");
    return !ip_image;
}

/** Needs no memory. A list that is empty keeps its slots. */
template <class List>
void clear(List& io_list) {
    if (io_list.size() > 0) io_list = List::withoutSlots();
}

Links linksOf(const std::vector<FoundLink>& i_found);
Strings stringsOf(const std::vector<std::string_view>& i_texts);

} // namespace vorntools

#endif
