#include "links/ImportContainer.h"

#include "links/ImageBytes.h"
#include "links/Markers.h"

#include <algorithm>
#include <array>

namespace vorntools {

namespace {

// Tokens of the object stream. Each attribute is a head of four bytes, the code of the release and the value; FE ends
// it.
constexpr std::string_view kContextHead = "\xE9\xC0\x18\x40";
constexpr std::string_view kContextEnd = "\xE8\x01\x6F\xFE";
constexpr std::string_view kElementHead = "\xE9\xC0\x1D\x02";
constexpr std::string_view kTableHead = "\x7C\x02";
constexpr unsigned char kTokenEnd = 0xFE;

// Numbers: one byte from 81 on, two bytes from D1 on (the first one counts 256), or 80 and four bytes.
constexpr unsigned char kWideNumber = 0x80;
constexpr unsigned char kFirstNumber = 0x81;
constexpr unsigned char kFirstPair = 0xD1;
/** A text of the table is meant by one byte. */
constexpr unsigned char kFirstText = 0x34;
constexpr std::size_t kTextsInReach = 0x100 - kFirstText;

constexpr std::size_t kLongestTableHead = 11;

struct Number {
    std::int32_t value = 0;
    std::size_t end = notFound; ///< position behind it
};

Number packedNumberAt(std::string_view i_image, std::size_t i_at) {
    const unsigned char first = byteAt(i_image, i_at);
    if (first == kWideNumber) return {int32At(i_image, i_at + 1, true), i_at + 5};
    if (first < kFirstNumber) return {};
    if (first < kFirstPair) return {first - kFirstNumber, i_at + 1};
    return {(first - kFirstPair) * 256 + byteAt(i_image, i_at + 1), i_at + 2};
}

/** The symbol number of the repository at a place; its end is notFound when none stands there. */
Number repositoryAt(std::string_view i_image, std::size_t i_at) {
    if (!standsAt(i_image, i_at, kContextHead)) return {};
    const Number number = packedNumberAt(i_image, i_at + kContextHead.size() + 1);
    return standsAt(i_image, number.end, kContextEnd) ? number : Number();
}

/** A text of a table: one byte of length, which counts itself, or 0 and four bytes; false when it does not lie whole
 * in front of i_end. */
bool readText(std::string_view i_image, std::size_t& io_at, std::size_t i_end, std::string_view& o_text) {
    const unsigned char first = byteAt(i_image, io_at);
    const std::size_t begin = io_at + (first == 0 ? 5 : 1);
    const std::int64_t length = first == 0 ? int32At(i_image, io_at + 1, true) : first - 1;
    if (length < 0 || begin + static_cast<std::uint64_t>(length) > i_end) return false;
    o_text = i_image.substr(begin, static_cast<std::size_t>(length));
    io_at = begin + o_text.size();
    return true;
}

class ImportContainer {
public:
    ImportContainer(std::string_view i_image, std::size_t i_repository) : m_image(i_image) {
        m_path_of_text.fill(notFound);
        const std::size_t catalog = lastBefore(i_repository, marker::catalogManager);
        if (catalog == notFound || catalog == 0) return;
        const std::size_t stream = lastBefore(catalog, marker::featureStream);
        readTable(catalog - 1);
        readObjects(stream == notFound ? windowBefore(catalog) : stream, catalog);
        appendUnused();
    }

    ImportedElements takeElements() { return std::move(m_elements); }

private:
    /** The container takes a hundred bytes an input; what is further off belongs to another one. */
    static std::size_t windowBefore(std::size_t i_at) {
        constexpr std::size_t window = std::size_t{1} << 20;
        return i_at - (std::min)(i_at, window);
    }
    std::size_t lastBefore(std::size_t i_at, std::string_view i_marker) const {
        const std::size_t begin = windowBefore(i_at);
        const std::size_t found = searchLast(m_image.substr(begin, i_at - begin), i_marker);
        return found == notFound ? notFound : begin + found;
    }
    /** The table tells its length and the number of its texts in front of them. */
    void readTable(std::size_t i_first_text) {
        const std::size_t earliest = i_first_text - (std::min)(i_first_text, kLongestTableHead);
        const std::size_t found = searchLast(m_image.substr(earliest, i_first_text - earliest), kTableHead);
        if (found == notFound) return;
        const std::size_t head = earliest + found;
        const std::int32_t length = int32At(m_image, head + kTableHead.size(), true);
        const Number count = packedNumberAt(m_image, head + kTableHead.size() + sizeof(std::int32_t));
        // A negative length is longer than any image.
        if (count.end != i_first_text || !holds(m_image, head, static_cast<std::size_t>(length))) return;
        readTexts(i_first_text, head + static_cast<std::size_t>(length),
                  static_cast<std::size_t>((std::max)(0, count.value)));
    }
    void readTexts(std::size_t i_at, std::size_t i_end, std::size_t i_count) {
        std::string_view text;
        for (std::size_t i = 0; i < i_count && readText(m_image, i_at, i_end, text); ++i) {
            if (!isElementPath(text)) continue;
            if (i < kTextsInReach) m_path_of_text[i] = m_elements.paths.size();
            m_elements.paths.push_back(text);
        }
        m_used.resize(m_elements.paths.size());
    }
    /** Walks the attributes that name a repository's record or an input's element: both heads begin alike. */
    void readObjects(std::size_t i_begin, std::size_t i_end) {
        constexpr SearchPattern beginning(kContextHead.substr(0, 2));
        std::size_t repositories = 0;
        std::int32_t symbol = 0;
        for (std::size_t at = findMarker(m_image, beginning, i_begin, i_end); at != notFound;
             at = findMarker(m_image, beginning, at + beginning.size(), i_end)) {
            if (standsAt(m_image, at, kContextHead)) {
                const Number number = repositoryAt(m_image, at);
                if (number.end == notFound) continue;
                ++repositories;
                symbol = number.value;
            } else if (const std::size_t path = pathMeantAt(at); path != notFound) {
                m_used[path] = true;
                m_elements.append(path, repositories == 0 ? 0 : repositories - 1, symbol);
            }
        }
    }
    /** Index of the path that an input at this place means; notFound when there is none. */
    std::size_t pathMeantAt(std::size_t i_at) const {
        const std::size_t value = i_at + kElementHead.size() + 1;
        if (!standsAt(m_image, i_at, kElementHead) || byteAt(m_image, value + 1) != kTokenEnd) return notFound;
        const unsigned char text = byteAt(m_image, value);
        return text < kFirstText ? notFound : m_path_of_text[static_cast<std::size_t>(text - kFirstText)];
    }
    /** Paths beyond the reach of one byte are meant in another way: nothing tells their repository. */
    void appendUnused() {
        for (std::size_t path = 0; path < m_used.size(); ++path)
            if (!m_used[path]) m_elements.append(path, 0, 0);
    }

    std::string_view m_image;
    ImportedElements m_elements;
    std::array<std::size_t, kTextsInReach> m_path_of_text; ///< notFound: the text is no path of an element
    std::vector<bool> m_used;                              ///< by path: whether an input means it
};

} // namespace

ImportedElements readImportContainer(std::string_view i_image, std::size_t i_repository) {
    return ImportContainer(i_image, i_repository).takeElements();
}

std::vector<std::int32_t> repositorySymbols(std::string_view i_image) {
    std::vector<std::int32_t> symbols;
    for (std::size_t at = findMarker(i_image, kContextHead, 0); at != notFound;
         at = findMarker(i_image, kContextHead, at + kContextHead.size())) {
        const Number number = repositoryAt(i_image, at);
        if (number.end != notFound) symbols.push_back(number.value);
    }
    return symbols;
}

} // namespace vorntools
