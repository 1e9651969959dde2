#include "links/Imports.h"

#include "foundation/FirstPlaces.h"
#include "links/ImageBytes.h"
#include "links/Markers.h"

#include <algorithm>
#include <unordered_map>

namespace vorntools {

namespace {

// Tokens of the import container's streams. Each attribute is a head of four bytes, the code of the release and the
// value; FE ends it.
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

constexpr std::size_t kLongestTableHead = 11;

struct Number {
    std::int32_t value = 0;
    std::size_t end = notFound; ///< position behind it
};

Number numberAt(std::string_view i_image, std::size_t i_at) {
    const unsigned char first = byteAt(i_image, i_at);
    if (first == kWideNumber) return {int32At(i_image, i_at + 1, true), i_at + 5};
    if (first < kFirstNumber) return {};
    if (first < kFirstPair) return {first - kFirstNumber, i_at + 1};
    return {(first - kFirstPair) * 256 + byteAt(i_image, i_at + 1), i_at + 2};
}

/** A text of a table: one byte of length, which counts itself, or 0 and four bytes; false when it does not lie whole
 * in front of i_end. */
bool readText(std::string_view i_image, std::size_t& io_at, std::size_t i_end, std::string_view& o_text) {
    const unsigned char first = byteAt(i_image, io_at);
    const std::size_t begin = io_at + (first == 0 ? 5 : 1);
    const std::int64_t length = first == 0 ? int32At(i_image, io_at + 1, true) : first - 1;
    if (length < 0 || begin > i_end || static_cast<std::uint64_t>(length) > i_end - begin) return false;
    o_text = i_image.substr(begin, static_cast<std::size_t>(length));
    io_at = begin + o_text.size();
    return true;
}

bool isImportedElement(std::string_view i_text) {
    return i_text.substr(0, marker::importedElement.size()) == marker::importedElement;
}

/** What stands between the kind of an element and the exclamation mark that ends its path. */
std::string tagOf(std::string_view i_publication) {
    const std::size_t kind = i_publication.find(':', marker::importedElement.size());
    const std::size_t end = i_publication.rfind('!');
    if (kind == std::string_view::npos || end == std::string_view::npos || end <= kind) return {};
    return std::string(i_publication.substr(kind + 1, end - kind - 1));
}

ImportedElement elementOf(std::string_view i_publication, std::size_t i_repository, std::int32_t i_symbol) {
    return {std::string(i_publication), tagOf(i_publication), i_repository, i_symbol};
}

/** The import container: its object stream and its table of texts. */
class ImportContainer {
public:
    ImportContainer(std::string_view i_image, std::size_t i_repository) : m_image(i_image) {
        const std::size_t catalog = lastBefore(i_repository, marker::catalogManager);
        if (catalog == notFound || catalog == 0) return;
        m_objects_end = catalog;
        const std::size_t stream = lastBefore(catalog, marker::featureStream);
        m_objects_begin = stream == notFound ? windowBefore(catalog) : stream;
        readTable(catalog - 1);
    }

    std::vector<ImportedElement> elements() const {
        std::vector<ImportedElement> elements;
        std::vector<bool> used(m_texts.size(), false);
        std::size_t repositories = 0;
        std::int32_t symbol = 0;
        for (std::size_t at = nextHead(m_objects_begin); at != notFound; at = nextHead(at + 1)) {
            if (standsAt(m_image, at, kContextHead)) {
                const Number number = numberAt(m_image, at + kContextHead.size() + 1);
                if (!standsAt(m_image, number.end, kContextEnd)) continue;
                ++repositories;
                symbol = number.value;
            } else if (const std::size_t text = textMeantAt(at); text != notFound) {
                used[text] = true;
                elements.push_back(elementOf(m_texts[text], repositories == 0 ? 0 : repositories - 1, symbol));
            }
        }
        appendUnused(used, elements);
        return elements;
    }

private:
    /** The container takes a hundred bytes an input; what is further off belongs to another one. */
    static std::size_t windowBefore(std::size_t i_at) {
        constexpr std::size_t window = std::size_t{1} << 20;
        return i_at - std::min(i_at, window);
    }
    std::size_t lastBefore(std::size_t i_at, std::string_view i_marker) const {
        const std::size_t begin = windowBefore(i_at);
        const std::size_t found = searchLast(m_image.substr(begin, i_at - begin), i_marker);
        return found == notFound ? notFound : begin + found;
    }
    /** The table tells its length and the number of its texts in front of them. */
    void readTable(std::size_t i_first_text) {
        const std::size_t earliest = i_first_text - std::min(i_first_text, kLongestTableHead);
        const std::size_t found = searchLast(m_image.substr(earliest, i_first_text - earliest), kTableHead);
        if (found == notFound) return;
        const std::size_t head = earliest + found;
        const std::int32_t length = int32At(m_image, head + kTableHead.size(), true);
        const Number count = numberAt(m_image, head + kTableHead.size() + sizeof(std::int32_t));
        if (length < 0 || count.end != i_first_text || !holds(m_image, head, static_cast<std::size_t>(length))) return;
        const std::size_t end = head + static_cast<std::size_t>(length);
        std::size_t at = i_first_text;
        std::string_view text;
        for (std::int32_t i = 0; i < count.value && readText(m_image, at, end, text); ++i) m_texts.push_back(text);
    }
    /** Next attribute that names a repository's record or an input's element: both heads begin alike. */
    std::size_t nextHead(std::size_t i_from) const {
        return findMarker(m_image, kContextHead.substr(0, 2), i_from, m_objects_end);
    }
    /** Index of the element path that an input at this place means; notFound when there is none. */
    std::size_t textMeantAt(std::size_t i_at) const {
        const std::size_t value = i_at + kElementHead.size() + 1;
        if (!standsAt(m_image, i_at, kElementHead) || byteAt(m_image, value + 1) != kTokenEnd) return notFound;
        const std::size_t index = static_cast<std::size_t>(byteAt(m_image, value)) - kFirstText;
        return index < m_texts.size() && isImportedElement(m_texts[index]) ? index : notFound;
    }
    /** Element paths beyond the reach of one byte are meant in another way: nothing tells their repository. */
    void appendUnused(const std::vector<bool>& i_used, std::vector<ImportedElement>& io_elements) const {
        for (std::size_t i = 0; i < m_texts.size(); ++i)
            if (!i_used[i] && isImportedElement(m_texts[i])) io_elements.push_back(elementOf(m_texts[i], 0, 0));
    }

    std::string_view m_image;
    std::size_t m_objects_begin = 0;
    std::size_t m_objects_end = 0;
    std::vector<std::string_view> m_texts;
};

/** Length of the text at a place, as the bytes in front of it tell; 0 when they tell none. */
std::size_t lengthOfText(std::string_view i_image, std::size_t i_at) {
    constexpr unsigned char longest_short = 49;
    const unsigned char counted = i_at > 0 ? byteAt(i_image, i_at - 1) : static_cast<unsigned char>(0);
    if (counted > 1 && counted <= longest_short) return counted - 1U;
    if (i_at < 5 || byteAt(i_image, i_at - 5) != 0) return 0;
    const std::int32_t length = int32At(i_image, i_at - 4, true);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

/** Every element path of the image: what is left when the container cannot be read. */
std::vector<ImportedElement> elementsAnywhere(std::string_view i_image) {
    std::vector<ImportedElement> elements;
    for (std::size_t at = findMarker(i_image, marker::importedElement, 0); at != notFound;) {
        const std::size_t length = lengthOfText(i_image, at);
        const bool whole = length >= marker::importedElement.size() && holds(i_image, at, length);
        if (whole) elements.push_back(elementOf(i_image.substr(at, length), 0, 0));
        at = findMarker(i_image, marker::importedElement, at + (whole ? length : marker::importedElement.size()));
    }
    return elements;
}

constexpr std::size_t kIdentityBytes = 16;
constexpr std::size_t kElementBytes = 5;
/** Stands between the identity of a container and the number of an object in it. */
constexpr std::string_view kObjectLead("\x07\0\0\0\x05\0", 6);

/** Five bytes as ten letters, A for 0 to P for 15. */
std::string lettersOf(std::string_view i_bytes) {
    std::string letters;
    for (const char byte : i_bytes) {
        const auto value = static_cast<unsigned char>(byte);
        letters += static_cast<char>('A' + value / 16);
        letters += static_cast<char>('A' + value % 16);
    }
    return letters;
}

/** How the feature streams point to one identity. */
struct Pointers {
    bool any = false;
    std::string tag; ///< of the first object pointed to
};

/** Looks for pointers to any of the identities, in one pass at most. Their own eight bytes tell them apart.
 * @param i_with_tags whether their objects count, too */
std::unordered_map<std::string, Pointers> pointersTo(std::string_view i_streams,
                                                     const std::vector<std::string>& i_identities, bool i_with_tags) {
    std::unordered_map<std::string, Pointers> pointers;
    for (const std::string& identity : i_identities)
        if (identity.size() == kIdentityBytes) pointers.emplace(identity.substr(8), Pointers());
    std::size_t missing = pointers.size();
    for (std::size_t at = findMarker(i_streams, marker::foreignIdentity, 0); at != notFound && missing > 0;
         at = findMarker(i_streams, marker::foreignIdentity, at + 1)) {
        const std::size_t behind = at + marker::foreignIdentity.size() + kIdentityBytes;
        if (!holds(i_streams, behind, 0)) break;
        const auto pointer = pointers.find(std::string(i_streams.substr(behind - 8, 8)));
        if (pointer == pointers.end()) continue;
        const std::size_t element = behind + kObjectLead.size();
        const bool has_tag = standsAt(i_streams, behind, kObjectLead) && holds(i_streams, element, kElementBytes);
        const bool was_complete = pointer->second.any && (!i_with_tags || !pointer->second.tag.empty());
        pointer->second.any = true;
        if (has_tag && pointer->second.tag.empty())
            pointer->second.tag = lettersOf(i_streams.substr(element, kElementBytes));
        if (!was_complete && (!i_with_tags || !pointer->second.tag.empty())) --missing;
    }
    return pointers;
}

/** Recognises the containers of the document itself: the beginning of their identities stands in the image on its own,
 * not as that of a foreign container. */
class OwnContainers {
public:
    OwnContainers(std::string_view i_image, std::size_t i_end)
        : m_streams(i_image.substr(0, i_end)), m_left(kPasses * m_streams.size() + kLittle) {}

    bool hold(const std::string& i_identity) {
        const std::string beginning = i_identity.substr(0, kSharedBytes);
        const auto answered = m_answers.find(beginning);
        if (answered != m_answers.end()) return answered->second;
        return m_answers[beginning] = m_left > 0 && standsAlone(beginning);
    }

private:
    bool standsAlone(std::string_view i_beginning) {
        std::size_t at = findMarker(m_streams, i_beginning, 0);
        while (at != notFound && at >= marker::foreignIdentity.size() &&
               standsAt(m_streams, at - marker::foreignIdentity.size(), marker::foreignIdentity))
            at = findMarker(m_streams, i_beginning, at + 1);
        m_left -= std::min(m_left, std::min(at, m_streams.size()));
        return at != notFound;
    }

    /** The last four bytes number the containers made in one moment. */
    static constexpr std::size_t kSharedBytes = 12;
    /** Real documents ask for one or two beginnings, and find them in front; a damaged one is not to cost more. */
    static constexpr std::size_t kPasses = 2;
    static constexpr std::size_t kLittle = std::size_t{1} << 20;

    std::string_view m_streams;
    std::size_t m_left; ///< bytes that may still be searched
    std::unordered_map<std::string, bool> m_answers;
};

} // namespace

std::vector<ImportedElement> importedElements(std::string_view i_image, std::size_t i_repository) {
    if (i_repository == notFound) return {};
    const std::vector<ImportedElement> elements = ImportContainer(i_image, i_repository).elements();
    return elements.empty() ? elementsAnywhere(i_image) : elements;
}

std::vector<ImportUse> importUses(std::string_view i_image, std::size_t i_end,
                                  const std::vector<std::string>& i_identities, const std::function<bool()>& i_older) {
    std::vector<ImportUse> uses(i_identities.size());
    const bool has_proxy = firstPlace(i_image, marker::importProxy) != notFound;
    if (!has_proxy && !i_older()) return uses;
    const auto pointers = pointersTo(i_image.substr(0, i_end), i_identities, !has_proxy);
    OwnContainers own(i_image, i_end);
    for (std::size_t i = 0; i < i_identities.size(); ++i) {
        if (i_identities[i].size() != kIdentityBytes) continue;
        const Pointers& found = pointers.at(i_identities[i].substr(8));
        if (found.any && has_proxy)
            uses[i].kind = ImportUse::Unpublished;
        else if (i_older() && !own.hold(i_identities[i]))
            uses[i] = {ImportUse::OlderForm, found.tag};
    }
    return uses;
}

} // namespace vorntools
