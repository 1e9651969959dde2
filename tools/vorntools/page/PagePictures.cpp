#include "tools/vorntools/page/PagePictures.h"

#include "tools/vorntools/OutputFile.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <system_error>

namespace fs = std::filesystem;

namespace {

/** Documents whose pictures stand in one element: the page takes apart only those that come into sight. */
constexpr std::size_t kBlock = 2000;
constexpr std::size_t kNameLength = 16;
constexpr std::size_t kWrittenAtOnce = std::size_t(1) << 16U;

/** Two digits of base64 for each 12 bits. */
using DigitPairs = std::array<std::array<char, 2>, 4096>;

DigitPairs makeDigitPairs() {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    DigitPairs pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits) pairs[bits] = {kDigits[bits >> 6U], kDigits[bits & 63U]};
    return pairs;
}

void appendBase64(const std::string& bytes, std::string& text) {
    static const DigitPairs kPairs = makeDigitPairs();
    const std::size_t begin = text.size(), rest = bytes.size() % 3;
    text.append((bytes.size() + 2) / 3 * 4, '=');
    char* to = text.data() + begin;
    const auto* from = reinterpret_cast<const unsigned char*>(bytes.data());
    for (const auto* const end = from + (bytes.size() - rest); from != end; from += 3, to += 4) {
        const std::size_t first = from[0], second = from[1], third = from[2];
        std::memcpy(to, kPairs[first << 4U | second >> 4U].data(), 2);
        std::memcpy(to + 2, kPairs[(second & 15U) << 8U | third].data(), 2);
    }
    if (rest == 0) return;
    const std::size_t first = from[0], second = rest > 1 ? from[1] : 0;
    std::memcpy(to, kPairs[first << 4U | second >> 4U].data(), 2);
    if (rest > 1) to[2] = kPairs[(second & 15U) << 8U][0];
}

/** A name that tells one content from another. */
std::string nameOfContent(const std::string& bytes) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    std::string name;
    for (std::size_t i = 0; i < kNameLength; ++i, hash >>= 4U) name += "0123456789abcdef"[hash & 15U];
    return name;
}

bool isOurs(const fs::path& file) {
    const std::string name = file.filename().u8string();
    return name.size() == kNameLength + 4 && name.substr(kNameLength) == ".jpg" &&
           name.find_first_not_of("0123456789abcdef") == kNameLength;
}

/** A name of any bytes as a part of an address. */
std::string escapedForAddress(const std::string& name) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char letter : name) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') || byte == '.' || byte == '_' || byte == '-';
        if (isPlain)
            text += letter;
        else
            text += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
    return text;
}

} // namespace

PagePictures::~PagePictures() {
    std::error_code error;
    for (const fs::path& file : m_written) fs::remove(file, error);
    if (m_madeFolder) fs::remove(m_folder, error);
}

bool PagePictures::add(std::size_t document, std::string picture) {
    if (m_place == Place::Fitting && m_waitingBytes + picture.size() > kMostEmbedded && !moveToFolder()) return false;
    if (m_place == Place::Folder) return store(document, picture);
    if (m_place == Place::Page && m_hasBegun) {
        embed(document, picture);
    } else if (m_place != Place::None) {
        m_waitingBytes += picture.size();
        m_waiting.emplace_back(document, std::move(picture));
    }
    return true;
}

void PagePictures::begin() {
    m_hasBegun = true;
    if (m_place != Place::Page) return;
    for (const auto& [document, picture] : m_waiting) embed(document, picture);
    m_waiting.clear();
}

bool PagePictures::moveToFolder() {
    m_place = Place::Folder;
    for (const auto& [document, picture] : m_waiting)
        if (!store(document, picture)) return false;
    m_waiting.clear();
    return true;
}

/** A line a document; a block ends where the next one's documents begin. */
void PagePictures::embed(std::size_t document, const std::string& picture) {
    if (!m_inBlock || document / kBlock != m_next / kBlock) {
        if (m_inBlock) m_text += "</script>\n";
        m_inBlock = true;
        m_next = document / kBlock * kBlock;
        m_text += "<script type=\"text/plain\" id=\"pictures-" + std::to_string(document / kBlock) + "\">\n";
    }
    m_text.append(document - m_next, '\n');
    appendBase64(picture, m_text);
    m_text += '\n';
    m_next = document + 1;
    if (m_next % kBlock == 0) {
        m_text += "</script>\n";
        m_inBlock = false;
    }
    if (m_text.size() >= kWrittenAtOnce) writeText();
}

void PagePictures::writeText() {
    m_page.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
    m_text.clear();
}

bool PagePictures::store(std::size_t document, const std::string& picture) {
    const std::string name = nameOfContent(picture);
    m_names.resize(document + 1);
    m_names.back() = name;
    if (!m_stored.insert(name).second) return true;
    std::error_code error;
    m_madeFolder = fs::create_directory(m_folder, error) || m_madeFolder;
    const fs::path target = m_folder / (name + ".jpg");
    if (isThere(target)) return true;
    OutputFile file(target);
    file.stream().write(picture.data(), static_cast<std::streamsize>(picture.size()));
    if (!file.commit()) return false;
    m_written.push_back(target);
    return true;
}

void PagePictures::finish() {
    for (const auto& [document, picture] : m_waiting) embed(document, picture);
    if (m_inBlock) m_text += "</script>\n";
    writeText();
    m_page << "<script type=\"application/json\" id=\"pictures\">";
    if (m_place == Place::Folder) {
        m_page << "{\"kind\":\"folder\",\"folder\":\"" << escapedForAddress(m_folder.filename().u8string())
               << "\",\"name\":[";
        const char* between = "";
        for (const std::string& name : m_names) {
            m_page << between << '"' << name << '"';
            between = ",";
        }
        m_page << "]}";
    } else if (m_next == 0) {
        m_page << "{\"kind\":\"none\"}";
    } else {
        m_page << "{\"kind\":\"embed\",\"block\":" << kBlock << "}";
    }
    m_page << "</script>\n";
}

void PagePictures::keep() {
    m_written.clear();
    m_madeFolder = false;
    std::error_code error;
    if (m_place != Place::Folder) return;
    std::vector<fs::path> old;
    for (fs::directory_iterator file(m_folder, error), end; !error && file != end; file.increment(error))
        if (isOurs(file->path()) && m_stored.count(file->path().stem().u8string()) == 0) old.push_back(file->path());
    for (const fs::path& file : old) fs::remove(file, error);
}
