#ifndef EMBEDDED_DOCUMENTS_LOADED_DOCUMENTS_H
#define EMBEDDED_DOCUMENTS_LOADED_DOCUMENTS_H

#include "embedded/documents/SessionData.h"

#include <cstdint>
#include <unordered_map>

namespace embedded {

/**
 * Which documents of the session are loaded, at one moment. A document whose every place in the open structures is in
 * visualisation is not: the places show a picture that the cache holds. A window, a lock and whoever holds a reference
 * to the document or its root product keep it loaded all the same.
 *
 * The open structures are those of documents that no other document uses, and of those that a window or a lock keeps.
 */
class LoadedDocuments {
public:
    explicit LoadedDocuments(SessionData& session);

    bool contains(const DocumentObject& document);

private:
    /** Number of places in the open structures. Shared assemblies multiply: it stops at a great many. */
    using Count = std::uint64_t;

    bool isKept(const DocumentObject& document) const;
    bool isOpen(const Reference& reference) const;
    Count placesOf(const Reference& reference);
    Count sumOfPlaces(const Reference& reference) const;

    SessionData& m_session;
    std::unordered_map<const Reference*, Count> m_places;
};

} // namespace embedded

#endif
