#ifndef FOUNDATION_FILE_READER_H
#define FOUNDATION_FILE_READER_H

#include "foundation/OpenFile.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace vorntools {

/** A stretch of a file. */
struct FileRange {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;

    std::uint64_t end() const { return offset + length; }
};

/**
 * Reads stretches of a file and keeps them. A read costs a way to the server and back, so neighbours are read together
 * and nothing is read twice. The file is neither mapped nor buffered: what is asked for is what is read.
 */
class FileReader {
public:
    /** @return false for what is no file or cannot be opened; nothing is then known */
    bool open(const CATUnicodeString& i_name);
    /** Its length when it was opened. */
    std::uint64_t size() const { return m_size; }

    /** Reads what is not known yet of the given stretches, in any order; those that overlap are read once.
     * @return false when one lies beyond the end or cannot be read: the file has changed */
    bool fetch(std::vector<FileRange> i_wanted);
    /** The bytes of a stretch that was fetched as a whole; empty for any other. Valid until more is fetched. */
    std::string_view bytes(const FileRange& i_range) const;
    /** Keeps the bytes of a stretch that was fetched as a whole valid as long as the pointer lives, whatever is fetched
     * meanwhile; null for any other. */
    std::shared_ptr<const char[]> keep(const FileRange& i_range) const;
    /** Reads a stretch into a buffer of the caller's and keeps nothing. @return as fetch */
    bool readInto(const FileRange& i_range, char* op_bytes) const;

    /** Whether a stretch was fetched as a whole. */
    bool knows(const FileRange& i_range) const { return i_range.length == 0 || !bytes(i_range).empty(); }

private:
    bool read(const FileRange& i_range);

    OpenFile m_file;
    std::uint64_t m_size = 0;
    /** What was read. Nothing fills the bytes before the file does. */
    struct Stretch {
        std::shared_ptr<char[]> bytes;
        std::size_t length = 0;
    };
    const Stretch* stretchWith(const FileRange& i_range, std::uint64_t& o_from) const;

    std::map<std::uint64_t, Stretch> m_known; ///< by position
    mutable std::uint64_t m_position = 0;     ///< of the open file
};

} // namespace vorntools

#endif
