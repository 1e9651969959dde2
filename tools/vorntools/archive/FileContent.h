#ifndef TOOLS_VORNTOOLS_ARCHIVE_FILE_CONTENT_H
#define TOOLS_VORNTOOLS_ARCHIVE_FILE_CONTENT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/** What sha256sum prints of a file; empty when it cannot be read. */
std::string sha256Of(const std::string& fullName);

/**
 * Tells which files hold the same bytes. Reads each file once while the different ones can be kept; beyond that, a file
 * that seems to be the same as another is read again together with it.
 */
class ContentComparison {
public:
    /** @param mostKept bytes of different files that are kept */
    explicit ContentComparison(std::size_t mostKept) : m_mostKept(mostKept) {}

    /** @return a number from 0 that files of the same bytes share; none for a file that cannot be read */
    std::optional<std::size_t> add(const std::string& fullName);

private:
    struct Content {
        std::string fullName; ///< of the first file
        std::string bytes;
        bool isKept = false; ///< in bytes
    };
    bool load(const std::string& fullName);
    std::optional<std::uint64_t> digest(const std::string& fullName) const;
    bool isSame(const Content& content, const std::string& fullName) const;

    const std::size_t m_mostKept;
    std::vector<Content> m_contents;
    std::unordered_multimap<std::uint64_t, std::size_t> m_byDigest;
    std::size_t m_last = 0; ///< content of the file that was added before
    std::size_t m_kept = 0; ///< bytes of all contents that are kept
    std::string m_buffer;   ///< begins with the file that is being added
    std::string_view m_loaded;
    bool m_isWhole = false; ///< all of it is loaded
};

#endif
