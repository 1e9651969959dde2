#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr std::size_t kUsualParts = 12;

} // namespace

bool isRelativePath(std::string_view path) {
    return !path.empty() && !isSeparator(path.front()) && !(path.size() > 1 && path[1] == ':');
}

PathParts partsOf(std::string_view path) {
    PathParts parts;
    parts.reserve(kUsualParts);
    for (std::size_t begin = 0, end = 0; end <= path.size(); ++end) {
        if (end < path.size() && !isSeparator(path[end])) continue;
        parts.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

PathParts partsOfFolder(std::string_view path) {
    PathParts parts = partsOf(path);
    parts.pop_back();
    return parts;
}

std::string_view lastName(std::string_view path) {
    std::size_t begin = path.size();
    while (begin > 0 && !isSeparator(path[begin - 1])) --begin;
    return path.substr(begin);
}

std::string_view folderOfPath(std::string_view path) {
    const std::size_t end = path.size() - lastName(path).size();
    return path.substr(0, end == 0 ? 0 : end - 1);
}

std::string folded(std::string_view text) {
    std::string result(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        const unsigned char byte = static_cast<unsigned char>(result[i]);
        if (byte >= 'A' && byte <= 'Z') result[i] = static_cast<char>(byte + 0x20);
        // The second byte of the letters from U+00C0 to U+00DE; U+00D7 is a sign.
        const bool isLatin = i > 0 && static_cast<unsigned char>(result[i - 1]) == 0xC3U && byte >= 0x80U &&
                             byte <= 0x9EU && byte != 0x97U;
        if (isLatin) result[i] = static_cast<char>(byte + 0x20);
    }
    return result;
}

std::string fileKey(std::string_view fullName) {
    if constexpr (std::filesystem::path::preferred_separator == '/') return std::string(fullName);
    std::string key = folded(fullName);
    std::replace(key.begin(), key.end(), '/', '\\');
    return key;
}
