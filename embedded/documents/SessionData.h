#ifndef EMBEDDED_DOCUMENTS_SESSION_DATA_H
#define EMBEDDED_DOCUMENTS_SESSION_DATA_H

#include "embedded/Environment.h"
#include "embedded/Profile.h"
#include "embedded/documents/Documents.h"
#include "embedded/structure/Products.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace embedded {

/** What one topic (windows, scenes, ...) keeps for the session. Gone with the session's contents. */
class SessionPart {
public:
    SessionPart() = default;
    SessionPart(const SessionPart&) = delete;
    SessionPart& operator=(const SessionPart&) = delete;
    virtual ~SessionPart() = default;

    /** Adds text that tells every stored state apart, as Session::digest. */
    virtual void addToDigest(std::string& text) const = 0;
};

/**
 * Everything that the session owns. Objects hold plain pointers to each other and die together, in flat lists: however
 * deep a structure is, taking it down needs no recursion.
 */
struct SessionData {
    SessionData();

    Environment environment;
    std::vector<std::string> updatedDrawings;
    std::vector<std::string> logLines; ///< of the integration's log file
    std::vector<std::unique_ptr<DocumentObject>> documents;
    std::unordered_map<std::string, DocumentObject*> documentIndex; ///< by foldedName()
    std::vector<std::unique_ptr<Reference>> references;
    std::vector<std::unique_ptr<ProductObject>> products;
    std::uint64_t lastMark = 0; ///< counts the searches through the structure
    std::map<std::string, std::unique_ptr<SessionPart>> parts;

    /** The part of a topic, made on first use. P has a `static constexpr const char* kName` and a constructor that
     * takes the SessionData. */
    template <class P>
    P& part() {
        std::unique_ptr<SessionPart>& part = parts[P::kName];
        if (!part) part = std::make_unique<P>(*this);
        return static_cast<P&>(*part);
    }

    Reference& newReference(DocumentObject& document, bool component);
    ProductObject* newProduct(std::unique_ptr<ProductObject> product);
    const Switches& switches() const { return m_switches; }
    void setSwitches(const Switches& switches);
    /** The document behind a platform pointer; null for one that the session does not hold. */
    DocumentObject* documentBehind(const CATDocument* pointer) const;

private:
    Switches m_switches;
};

} // namespace embedded

#endif
