#include "links/ContextParts.h"

#include "links/ImageBytes.h"
#include "links/Markers.h"
#include "links/PropertyStream.h"

#include <algorithm>
#include <unordered_map>

namespace vorntools {

namespace {

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
        if (identity.size() == LinkedDocument::identityBytes) pointers.emplace(identity.substr(8), Pointers());
    std::size_t missing = pointers.size();
    const std::size_t lead = marker::foreignIdentity.size();
    for (std::size_t at = findMarker(i_streams, marker::foreignIdentity, 0); at != notFound && missing > 0;
         at = findMarker(i_streams, marker::foreignIdentity, at + lead)) {
        const std::size_t behind = at + lead + LinkedDocument::identityBytes;
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
        m_left -= (std::min)(m_left, (std::min)(at, m_streams.size()));
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

std::vector<ImportUse> importUses(std::string_view i_image, std::size_t i_end,
                                  const std::vector<std::string>& i_identities, const std::function<bool()>& i_older) {
    std::vector<ImportUse> uses(i_identities.size());
    const bool has_proxy = findMarker(i_image, marker::importProxy, 0) != notFound;
    if (!has_proxy && !i_older()) return uses;
    const auto pointers = pointersTo(i_image.substr(0, i_end), i_identities, !has_proxy);
    OwnContainers own(i_image, i_end);
    for (std::size_t i = 0; i < i_identities.size(); ++i) {
        if (i_identities[i].size() != LinkedDocument::identityBytes) continue;
        const Pointers& found = pointers.at(i_identities[i].substr(8));
        if (found.any && has_proxy)
            uses[i].kind = ImportUse::Unpublished;
        else if (i_older() && !own.hold(i_identities[i]))
            uses[i] = {ImportUse::OlderForm, found.tag};
    }
    return uses;
}

} // namespace vorntools
