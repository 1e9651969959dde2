#include "embedded/documents/SessionObject.h"

#include "CATSessionServices.h"
#include "embedded/Session.h"
#include "embedded/documents/LoadedDocuments.h"

namespace embedded {

// The session's own list is not one that somebody must give back.
SessionDocuments::SessionDocuments(SessionData& sessionData) : session(sessionData) {
    --Accounting::get().live().lists;
}

SessionDocuments::~SessionDocuments() { ++Accounting::get().live().lists; }

SessionDocuments& SessionDocuments::get() { return Session::current().data().part<SessionDocuments>(); }

void SessionDocuments::addToDigest(std::string& text) const {
    if (!exists) text += "without_session\n";
}

} // namespace embedded

using namespace embedded;

CATSession* CATSession::GetPtrSession() {
    SessionDocuments& part = SessionDocuments::get();
    return fails("CATSession::GetPtrSession") || !part.exists ? nullptr : &part.object;
}

HRESULT Create_Session(char* iSessionName, CATSession*& oSession) {
    SessionDocuments& part = SessionDocuments::get();
    const FaultFlavour flavour = Failures::get().ask("Create_Session");
    if (flavour != FaultFlavour::none) return failedAnswer<CATSession*>(flavour, oSession, nullptr, &part.object);
    oSession = &part.object;
    if (part.exists) return S_FALSE;
    part.object.name = fromEightBit(iSessionName ? iSessionName : "");
    part.exists = true;
    return S_OK;
}

const CATLISTP(CATDocument) * ListDocuments() {
    SessionDocuments& part = SessionDocuments::get();
    if (fails("ListDocuments")) return nullptr;
    part.list.RemoveAll(CATCollec::KeepAllocation);
    if (Failures::get().givesOtherKind()) part.list.Append(nullptr);
    LoadedDocuments loaded(part.session);
    for (const auto& document : part.session.documents)
        if (loaded.settle(*document)) part.list.Append(document.get());
    return &part.list;
}
