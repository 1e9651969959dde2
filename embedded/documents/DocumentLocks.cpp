#include "CATSessionServices.h"
#include "embedded/frame/Frame.h"

using namespace embedded;

namespace {

/** The session's document behind a platform pointer; null for one that the session does not hold. */
DocumentObject* documentBehind(const CATDocument& document) {
    for (const auto& entry : Session::current().data().documents)
        if (entry.get() == &document) return entry.get();
    return nullptr;
}

} // namespace

HRESULT CATUnLockDocument(CATDocument& iDocument) {
    DocumentObject* const document = documentBehind(iDocument);
    if (!document) {
        Accounting::get().breach("a document that is not in session is unlocked");
        return E_FAIL;
    }
    if (fails("CATUnLockDocument")) return E_FAIL;
    FrameData& data = FrameData::get();
    const auto lock = data.locks.find(document);
    if (lock != data.locks.end() && --lock->second == 0) data.locks.erase(lock);
    data.closeUnlessHeld(*document);
    return S_OK;
}
