#include "embedded/documents/LoadedDocuments.h"

#include "embedded/files/FileNames.h"
#include "embedded/frame/FrameData.h"
#include "embedded/structure/Places.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace embedded {

LoadedDocuments::LoadedDocuments(SessionData& session) : m_session(session) {}

bool LoadedDocuments::contains(const DocumentObject& document) {
    const ProductObject* const root = document.existingRootProduct();
    if (!root || root->reference()->pictures.empty()) return true;
    const Reference& reference = *root->reference();
    if (foldedName(document.type()) == "catproduct" || isOpen(reference)) return true;
    if (placesOf(reference) > reference.pictures.size()) return true;
    const auto isInOpenStructure = [this](const ProductObject* place) { return isOpen(*rootOf(*place).reference()); };
    const auto seen = std::count_if(reference.pictures.begin(), reference.pictures.end(), isInOpenStructure);
    return placesOf(reference) > static_cast<Count>(seen);
}

bool LoadedDocuments::settle(DocumentObject& document) {
    const bool unloaded = document.inSession && !contains(document);
    if (unloaded && !document.wasUnloaded) Object::loseAllOf(document);
    if (!unloaded && document.wasUnloaded) document.pin();
    document.wasUnloaded = unloaded;
    return !unloaded;
}

bool LoadedDocuments::isKept(const DocumentObject& document) const {
    const FrameData& frame = m_session.part<FrameData>();
    const auto shows = [&document](const auto& window) { return window->document() == &document; };
    return frame.locks.count(&document) != 0 || std::any_of(frame.windows.begin(), frame.windows.end(), shows);
}

bool LoadedDocuments::isOpen(const Reference& reference) const {
    if (reference.component || !reference.document->inSession) return false;
    const auto isUser = [](const Reference* user) { return user->document->inSession; };
    return std::none_of(reference.usedIn.begin(), reference.usedIn.end(), isUser) || isKept(*reference.document);
}

/** Counts the users first, without recursion: a structure may be as deep as it likes. */
LoadedDocuments::Count LoadedDocuments::placesOf(const Reference& reference) {
    const auto isUncounted = [this](const Reference* user) { return m_places.count(user) == 0; };
    std::vector<const Reference*> waiting{&reference};
    while (!waiting.empty()) {
        const Reference& next = *waiting.back();
        const std::size_t before = waiting.size();
        if (isUncounted(&next))
            std::copy_if(next.usedIn.begin(), next.usedIn.end(), std::back_inserter(waiting), isUncounted);
        if (waiting.size() > before) continue;
        m_places.emplace(&next, sumOfPlaces(next));
        waiting.pop_back();
    }
    return m_places.at(&reference);
}

LoadedDocuments::Count LoadedDocuments::sumOfPlaces(const Reference& reference) const {
    constexpr Count kGreatMany = Count{1} << 62U;
    Count sum = isOpen(reference) ? 1 : 0;
    for (const Reference* user : reference.usedIn) sum = std::min(sum + m_places.at(user), kGreatMany);
    return sum;
}

} // namespace embedded
