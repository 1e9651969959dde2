#include "CATSessionServices.h"
#include "embedded/frame/FrameData.h"

using namespace embedded;

HRESULT CATUnLockDocument(CATDocument& iDocument) {
    if (isStranger(iDocument)) return fails("CATUnLockDocument") ? E_FAIL : S_OK;
    DocumentObject* const document = Session::current().data().documentBehind(&iDocument);
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
