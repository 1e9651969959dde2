#ifndef EMBEDDED_DOCUMENTS_LOADED_DOCUMENTS_H
#define EMBEDDED_DOCUMENTS_LOADED_DOCUMENTS_H

#include "embedded/documents/SessionData.h"

#include <cstdint>
#include <unordered_map>

namespace embedded {

/**
 * Which documents of the session are loaded, at one moment. A document whose every place in the open structures is in
 * visualisation is not: the places show a picture that the cache holds. A window and a lock keep it loaded all the
 * same, a reference that somebody holds does not. A product document stays loaded.
 *
 * The open structures are those of documents that no other document uses, and of those that a window or a lock keeps.
 */
class LoadedDocuments {
public:
    explicit LoadedDocuments(SessionData& session);

    /** Whether a document is among them. One that is loaded no longer is unloaded with everything in it, one that is
     * again is loaded: to be asked when that may have changed. */
    bool settle(DocumentObject& document);

private:
    /** Number of places in the open structures. Shared assemblies multiply: it stops at a great many. */
    using Count = std::uint64_t;

    bool contains(const DocumentObject& document);
    bool isKept(const DocumentObject& document) const;
    bool isOpen(const Reference& reference) const;
    Count placesOf(const Reference& reference);
    Count sumOfPlaces(const Reference& reference) const;

    SessionData& m_session;
    std::unordered_map<const Reference*, Count> m_places;
};

} // namespace embedded

#endif
