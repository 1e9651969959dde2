#ifndef EMBEDDED_DOCUMENTS_SESSION_OBJECT_H
#define EMBEDDED_DOCUMENTS_SESSION_OBJECT_H

#include "CATDocumentsInSession.h"
#include "CATSession.h"
#include "embedded/documents/SessionData.h"
#include "embedded/object/Extensions.h"
#include "embedded/object/Implements.h"

#include <map>
#include <memory>
#include <string>

namespace embedded {

/** The session as the platform shows it. */
class SessionObject final : public Implements<CATSession> {
public:
    SessionObject() : Implements("CATSession") { pin(); }

    std::string name = "CNEXT";

    CATUnicodeString GetIdent() const override {
        return failing("CATSession::GetIdent") ? CATUnicodeString() : toText(name);
    }

private:
    Found extended(const IID& iid) override { return extensionFor(*this, iid); }
};

/** The session object and the list of documents that it hands out. */
struct SessionDocuments final : SessionPart {
    static constexpr const char* kName = "session_documents";

    explicit SessionDocuments(SessionData& sessionData);
    ~SessionDocuments() override;
    static SessionDocuments& get();

    void addToDigest(std::string& text) const override;

    SessionData& session;
    std::map<const CATDocument*, std::unique_ptr<DocumentObject>> strangers; ///< see documentOrStranger
    bool exists = true;                                                      ///< whether there is a current session
    SessionObject object;
    CATListPtrCATDocument list;
};

} // namespace embedded

#endif
