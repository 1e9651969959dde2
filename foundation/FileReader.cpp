#include "foundation/FileReader.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vorntools {

namespace {

/** What stands between two stretches is read as well when it is no longer: one read costs more than so many bytes. */
constexpr std::uint64_t kGap = 4096;

/** A position that no file has. */
constexpr std::uint64_t kUnknown = (std::numeric_limits<std::uint64_t>::max)();

#if defined(_WIN32)
bool seek(std::FILE* ip_file, std::uint64_t i_offset, int i_origin) {
    return _fseeki64(ip_file, static_cast<long long>(i_offset), i_origin) == 0;
}
long long position(std::FILE* ip_file) { return _ftelli64(ip_file); }
#else
bool seek(std::FILE* ip_file, std::uint64_t i_offset, int i_origin) {
    return std::fseek(ip_file, static_cast<long>(i_offset), i_origin) == 0;
}
long long position(std::FILE* ip_file) { return std::ftell(ip_file); }
#endif

/** Makes one of those that lie close to each other. */
void join(std::vector<FileRange>& io_ranges) {
    std::sort(io_ranges.begin(), io_ranges.end(),
              [](const FileRange& i_left, const FileRange& i_right) { return i_left.offset < i_right.offset; });
    std::size_t last = 0;
    for (std::size_t i = 1; i < io_ranges.size(); ++i) {
        if (io_ranges[i].offset > io_ranges[last].end() + kGap)
            io_ranges[++last] = io_ranges[i];
        else
            io_ranges[last].length = (std::max)(io_ranges[last].end(), io_ranges[i].end()) - io_ranges[last].offset;
    }
    io_ranges.resize((std::min)(io_ranges.size(), last + 1));
}

} // namespace

bool FileReader::open(const CATUnicodeString& i_name) {
    m_known.clear();
    m_size = 0;
    m_file = openFile(i_name, "rb");
    if (!m_file) return false;
    std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
    const long long size = seek(m_file.get(), 0, SEEK_END) ? position(m_file.get()) : -1;
    // A folder opens on some systems, and tells a length that no file has.
    if (size < 0 || size == (std::numeric_limits<long long>::max)()) m_file.reset();
    m_size = m_file ? static_cast<std::uint64_t>(size) : 0;
    m_position = m_size;
    return m_file != nullptr;
}

bool FileReader::fetch(std::vector<FileRange> i_wanted) {
    for (const FileRange& range : i_wanted)
        if (range.offset > m_size || range.length > m_size - range.offset) return false;
    const auto known = [this](const FileRange& i_range) { return knows(i_range); };
    i_wanted.erase(std::remove_if(i_wanted.begin(), i_wanted.end(), known), i_wanted.end());
    join(i_wanted);
    return std::all_of(i_wanted.begin(), i_wanted.end(), [this](const FileRange& i_range) { return read(i_range); });
}

/** The known one that holds a stretch as a whole, and where in it; null for none. */
const FileReader::Stretch* FileReader::stretchWith(const FileRange& i_range, std::uint64_t& o_from) const {
    auto known = m_known.upper_bound(i_range.offset);
    if (known == m_known.begin()) return nullptr;
    --known;
    o_from = i_range.offset - known->first;
    const Stretch& stretch = known->second;
    return o_from <= stretch.length && i_range.length <= stretch.length - o_from ? &stretch : nullptr;
}

std::string_view FileReader::bytes(const FileRange& i_range) const {
    std::uint64_t from = 0;
    const Stretch* const p_stretch = stretchWith(i_range, from);
    if (!p_stretch) return {};
    return {p_stretch->bytes.get() + from, static_cast<std::size_t>(i_range.length)};
}

std::shared_ptr<const char[]> FileReader::keep(const FileRange& i_range) const {
    std::uint64_t from = 0;
    const Stretch* const p_stretch = stretchWith(i_range, from);
    if (!p_stretch) return nullptr;
    return {p_stretch->bytes, p_stretch->bytes.get() + from};
}

bool FileReader::readInto(const FileRange& i_range, char* op_bytes) const {
    if (!m_file) return false;
    if (m_position != i_range.offset && !seek(m_file.get(), i_range.offset, SEEK_SET)) return false;
    m_position = i_range.end();
    if (std::fread(op_bytes, 1, i_range.length, m_file.get()) == i_range.length) return true;
    m_position = kUnknown;
    return false;
}

bool FileReader::read(const FileRange& i_range) {
    const auto length = static_cast<std::size_t>(i_range.length);
    Stretch stretch = {std::shared_ptr<char[]>(new char[length]), length};
    if (!readInto(i_range, stretch.bytes.get())) return false;
    // No stretch lies within another: the one that begins last before a place reaches furthest beyond it.
    auto within = m_known.lower_bound(i_range.offset);
    while (within != m_known.end() && within->first + within->second.length <= i_range.end())
        within = m_known.erase(within);
    m_known.emplace(i_range.offset, std::move(stretch));
    return true;
}

} // namespace vorntools
