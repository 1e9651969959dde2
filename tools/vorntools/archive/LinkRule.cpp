#include "tools/vorntools/archive/LinkRule.h"

#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <cstddef>

namespace {

bool beginsWith(const PathParts& path, const PathParts& begin) {
    return path.size() >= begin.size() && std::equal(begin.begin(), begin.end(), path.begin());
}

/** Whether a path is another one with a folder exchanged at its beginning. */
bool isExchanged(const PathParts& from, const PathParts& to, const PathParts& folderFrom, const PathParts& folderTo) {
    return beginsWith(from, folderFrom) && beginsWith(to, folderTo) &&
           from.size() - folderFrom.size() == to.size() - folderTo.size() &&
           std::equal(from.begin() + static_cast<std::ptrdiff_t>(folderFrom.size()), from.end(),
                      to.begin() + static_cast<std::ptrdiff_t>(folderTo.size()));
}

/** Whether the file lies below the document's folder as the stored name lies below the end of the folder where the
 * document was saved: that part of it in which the two folders differ. */
bool isMovedAlong(const PathParts& stored, const PathParts& found, const PathParts& saved, const PathParts& now) {
    if (saved.empty() || saved == now || !beginsWith(found, now)) return false;
    const std::size_t below = found.size() - now.size();
    if (below > stored.size() ||
        !std::equal(found.rbegin(), found.rbegin() + static_cast<std::ptrdiff_t>(below), stored.rbegin()))
        return false;
    const auto differs = std::mismatch(saved.begin(), saved.end(), now.begin(), now.end()).first;
    if (differs == saved.end()) return isExchanged(stored, found, saved, now);
    const PathParts tail(differs, saved.end());
    const std::size_t above = stored.size() - below;
    return above >= tail.size() &&
           std::equal(tail.rbegin(), tail.rend(), stored.rbegin() + static_cast<std::ptrdiff_t>(below));
}

bool isInTreeAbove(const PathParts& stored, const PathParts& found, PathParts saved, PathParts now) {
    while (!saved.empty() && !now.empty() && saved.back() == now.back()) {
        saved.pop_back();
        now.pop_back();
    }
    return !saved.empty() && isExchanged(stored, found, saved, now);
}

} // namespace

const char* ruleName(LinkRule rule) {
    switch (rule) {
    case LinkRule::AsStored: return "as stored";
    case LinkRule::Relative: return "relative";
    case LinkRule::Moved: return "moved along with the document";
    case LinkRule::TreeAbove: return "tree above";
    case LinkRule::ByName: return "by name";
    case LinkRule::NotFound: break;
    }
    return "";
}

LinkRule ruleOf(std::string_view stored, std::string_view found, std::string_view savedPath,
                std::string_view document) {
    if (found.empty()) return LinkRule::NotFound;
    if (found == stored) return LinkRule::AsStored;
    const PathParts to = partsOf(found), now = partsOfFolder(document);
    if (isRelativePath(stored)) {
        const bool fromHere = stored.size() > 1 && stored.front() == '.' && isSeparator(stored[1]);
        PathParts beside = now;
        const PathParts below = partsOf(fromHere ? stored.substr(2) : stored);
        beside.insert(beside.end(), below.begin(), below.end());
        return to == beside ? LinkRule::Relative : LinkRule::ByName;
    }
    const PathParts from = partsOf(stored), saved = partsOfFolder(savedPath);
    if (isMovedAlong(from, to, saved, now)) return LinkRule::Moved;
    return isInTreeAbove(from, to, saved, now) ? LinkRule::TreeAbove : LinkRule::ByName;
}
