#include "embedded/WorkModes.h"

#include "CATError.h"
#include "CATErrorMacros.h"
#include "CATPrsWorkModeServices.h"
#include "embedded/structure/SessionWorkModes.h"

#include <stdexcept>

namespace embedded {

namespace {

constexpr int kDesign = static_cast<int>(WorkMode::design);

ProductObject* productBehind(const CATIProduct_var& product) {
    return dynamic_cast<ProductObject*>(static_cast<CATIProduct*>(product));
}

} // namespace

SessionWorkModes& SessionWorkModes::get() { return Session::current().data().part<SessionWorkModes>(); }

void SessionWorkModes::addToDigest(std::string& text) const {
    for (const auto& product : session.products)
        if (product->workMode() != kDesign)
            text += "work_mode " + product->objectName() + " " + std::to_string(product->workMode()) + "\n";
    if (outcome != SwitchOutcome::switched) text += "switch_outcome " + std::to_string(int(outcome)) + "\n";
}

void setWorkMode(const Product& product, WorkMode mode) { setUnknownWorkMode(product, static_cast<int>(mode)); }

WorkMode workMode(const Product& product) {
    return static_cast<WorkMode>(product ? product.object()->workMode() : kDesign);
}

void setUnknownWorkMode(const Product& product, int number) {
    if (!product) return;
    SessionWorkModes::get(); // which tells the modes from now on
    product.object()->setWorkMode(number);
}

std::size_t workModeSwitches() { return SessionWorkModes::get().switches; }

void setSwitchOutcome(SwitchOutcome outcome) { SessionWorkModes::get().outcome = outcome; }

} // namespace embedded

using namespace embedded;

HRESULT CATPrsWorkModeServices::GetWorkMode(const CATIProduct_var& iProduct, WorkMode& oCurrentMode) {
    const FaultFlavour flavour = Failures::get().ask("CATPrsWorkModeServices::GetWorkMode");
    if (flavour == FaultFlavour::codeWithOutput) oCurrentMode = WM_DESIGN;
    // An answer without a mode leaves what was there.
    if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
    const ProductObject* const product = productBehind(iProduct);
    if (!product || !product->reference()) return E_FAIL;
    oCurrentMode = static_cast<WorkMode>(product->workMode());
    return S_OK;
}

HRESULT CATPrsWorkModeServices::SetWorkMode(const CATIProduct_var& iProduct, WorkMode iNewMode) {
    const FaultFlavour flavour = Failures::get().ask("CATPrsWorkModeServices::SetWorkMode");
    if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
    ProductObject* const product = productBehind(iProduct);
    if (!product || !product->reference()) return E_FAIL;
    SessionWorkModes& modes = SessionWorkModes::get();
    ++modes.switches;
    switch (modes.outcome) {
    case SwitchOutcome::ignored: return S_OK;
    case SwitchOutcome::refused: return E_FAIL;
    case SwitchOutcome::error: CATThrow(new CATInternalError("CannotSwitch", "CATProductStructure"));
    case SwitchOutcome::foreign: CATThrow(std::runtime_error("out of licences"));
    case SwitchOutcome::switched: break;
    }
    product->setWorkMode(iNewMode);
    return S_OK;
}
