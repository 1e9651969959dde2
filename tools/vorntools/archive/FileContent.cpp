#include "tools/vorntools/archive/FileContent.h"

#include "tools/vorntools/archive/Sha256.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace {

constexpr std::size_t kPieceBytes = std::size_t(1) << 16U;

/** Opens a file; nothing else, since what is no file may have no end. */
std::ifstream openFile(const std::string& fullName) {
    const std::filesystem::path path = std::filesystem::u8path(fullName);
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) ? std::ifstream(path, std::ios::binary) : std::ifstream();
}

/** Reads a file piece by piece. */
class Pieces {
public:
    explicit Pieces(const std::string& fullName) : m_stream(openFile(fullName)), m_good(m_stream.is_open()) {}

    /** False at the end and when the file cannot be read. */
    bool next(std::string& piece) {
        piece.resize(kPieceBytes);
        m_stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        piece.resize(static_cast<std::size_t>(m_stream.gcount()));
        m_good = m_good && !m_stream.bad();
        return !piece.empty();
    }
    bool good() const { return m_good; }

private:
    std::ifstream m_stream;
    bool m_good;
};

/** A number that different bytes hardly ever share. */
class Digest {
public:
    /** @param bytes in pieces of whole words but for the last one */
    void add(std::string_view bytes) {
        std::size_t at = 0;
        for (; at + sizeof(std::uint64_t) <= bytes.size(); at += sizeof(std::uint64_t))
            addWord(bytes.data() + at, sizeof(std::uint64_t));
        addWord(bytes.data() + at, bytes.size() - at);
    }
    std::uint64_t value() const { return m_value; }

private:
    void addWord(const char* bytes, std::size_t count) {
        constexpr std::uint64_t kPrime = 0x100000001B3U;
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, count);
        m_value = (m_value ^ word) * kPrime;
        m_value ^= m_value >> 32U;
    }
    std::uint64_t m_value = 0xCBF29CE484222325U;
};

bool haveSameBytes(const std::string& a, const std::string& b) {
    Pieces first(a), second(b);
    for (std::string piece, other;;) {
        const bool more = first.next(piece);
        if (second.next(other) != more || piece != other || !first.good() || !second.good()) return false;
        if (!more) return true;
    }
}

} // namespace

std::string sha256Of(const std::string& fullName) {
    Pieces pieces(fullName);
    Sha256 sum;
    for (std::string piece; pieces.next(piece);) sum.add(piece);
    return pieces.good() ? sum.text() : std::string();
}

/** Takes a file into the buffer, as much of it as may be kept. */
bool ContentComparison::load(const std::string& fullName) {
    std::ifstream stream = openFile(fullName);
    if (!stream.is_open()) return false;
    std::size_t size = 0;
    do {
        if (size == m_buffer.size()) m_buffer.resize(std::max(kPieceBytes, std::min(2 * size, m_mostKept + 1)));
        stream.read(&m_buffer[size], static_cast<std::streamsize>(m_buffer.size() - size));
        size += static_cast<std::size_t>(stream.gcount());
    } while (stream && size <= m_mostKept);
    m_isWhole = size <= m_mostKept;
    m_loaded = std::string_view(m_buffer).substr(0, size);
    return !stream.bad();
}

std::optional<std::uint64_t> ContentComparison::digest(const std::string& fullName) const {
    Digest digest;
    if (m_isWhole) {
        digest.add(m_loaded);
        return digest.value();
    }
    Pieces pieces(fullName);
    for (std::string piece; pieces.next(piece);) digest.add(piece);
    return pieces.good() ? std::optional<std::uint64_t>(digest.value()) : std::nullopt;
}

bool ContentComparison::isSame(const Content& content, const std::string& fullName) const {
    if (content.isKept) return m_isWhole && content.bytes == m_loaded;
    return haveSameBytes(content.fullName, fullName);
}

std::optional<std::size_t> ContentComparison::add(const std::string& fullName) {
    if (!load(fullName)) return std::nullopt;
    // Most files are as the one before.
    if (!m_contents.empty() && m_contents[m_last].isKept && isSame(m_contents[m_last], fullName)) return m_last;
    const std::optional<std::uint64_t> number = digest(fullName);
    if (!number) return std::nullopt;
    const auto [first, end] = m_byDigest.equal_range(*number);
    for (auto known = first; known != end; ++known)
        if (isSame(m_contents[known->second], fullName)) return m_last = known->second;
    m_byDigest.emplace(*number, m_contents.size());
    Content content;
    content.fullName = fullName;
    content.isKept = m_isWhole && m_kept + m_loaded.size() <= m_mostKept;
    if (content.isKept) content.bytes = m_loaded;
    m_kept += content.bytes.size();
    m_contents.push_back(std::move(content));
    return m_last = m_contents.size() - 1;
}
