#include "APIDraftingInterfaces.h"

#include "embedded/Session.h"
#include "embedded/documents/SessionData.h"

using namespace embedded;

HRESULT APIDraftingInterfaces::updateDrawing(CATDocument* iDocument, unsigned char iSaveDetailSheet) {
    const FaultFlavour flavour = Failures::get().ask("APIDraftingInterfaces::updateDrawing");
    if (flavour == FaultFlavour::nullOutput) return S_OK;
    const DocumentObject* const document = Session::current().data().documentBehind(iDocument);
    if (flavour != FaultFlavour::none || !document || document->type() != "CATDrawing") return E_FAIL;
    Session::current().updatedDrawings().push_back(document->name() + (iSaveDetailSheet ? "+details" : ""));
    return S_OK;
}
