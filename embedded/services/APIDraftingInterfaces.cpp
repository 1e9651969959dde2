#include "APIDraftingInterfaces.h"

#include "CATDocument.h"
#include "embedded/Failures.h"
#include "embedded/Session.h"

using namespace embedded;

namespace {

/** The session's document behind a platform pointer; none for a document that the session does not hold. */
Document documentBehind(const CATDocument* pointer) {
    const Session& session = Session::current();
    for (std::size_t i = 0; i < session.documentCount(); ++i)
        if (session.documentAt(i).get() == pointer) return session.documentAt(i);
    return Document();
}

} // namespace

HRESULT APIDraftingInterfaces::updateDrawing(CATDocument* iDocument, unsigned char iSaveDetailSheet) {
    const FaultFlavour flavour = Failures::get().ask("APIDraftingInterfaces::updateDrawing");
    if (flavour == FaultFlavour::nullOutput) return S_OK;
    const Document document = documentBehind(iDocument);
    if (flavour != FaultFlavour::none || !document || document.type() != "CATDrawing") return E_FAIL;
    Session::current().updatedDrawings().push_back(document.name() + (iSaveDetailSheet ? "+details" : ""));
    return S_OK;
}
