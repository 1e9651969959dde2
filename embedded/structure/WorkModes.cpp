#include "embedded/WorkModes.h"

#include "CATError.h"
#include "CATErrorMacros.h"
#include "CATGetEnvValue.h"
#include "CATPrsWorkModeServices.h"
#include "SKManager.h"
#include "embedded/documents/SessionData.h"
#include "embedded/object/Answers.h"
#include "embedded/session_file/SessionSections.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace embedded {

namespace {

constexpr std::array<const char*, 4> kModeNames = {"visualisation", "standard", "brep", "design"};
constexpr std::array<const char*, 5> kOutcomeNames = {"switched", "ignored", "refused", "error", "foreign"};
constexpr int kDesign = static_cast<int>(WorkMode::design);

/** Index of the text; fails at the field when it is none of them. */
template <std::size_t N>
int indexOf(const JsonField& field, const std::array<const char*, N>& names) {
    for (std::size_t i = 0; i < N; ++i)
        if (field.text() == names[i]) return static_cast<int>(i);
    field.fail("nothing is called '" + field.text() + "' here");
}

/** The session's work modes: those of the products stay with them. */
class WorkModes final : public SessionPart {
public:
    static constexpr const char* kName = "work_modes";
    explicit WorkModes(SessionData& sessionData) : session(sessionData) {}
    static WorkModes& get() { return Session::current().data().part<WorkModes>(); }

    void addToDigest(std::string& text) const override {
        for (const auto& product : session.products)
            if (product->workMode() != kDesign)
                text += "work_mode " + product->objectName() + " " + std::to_string(product->workMode()) + "\n";
        if (client.open) text += "hosted_client_open\n";
        if (!client.installed) text += "without_hosted_client\n";
        if (outcome != SwitchOutcome::switched) text += "switch_outcome " + std::to_string(int(outcome)) + "\n";
    }

    SessionData& session;
    SwitchOutcome outcome = SwitchOutcome::switched;
    std::size_t switches = 0;
    HostedClient client;
};

void readWorkModes(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"products", "switching"});
    WorkModes& modes = WorkModes::get();
    if (const auto switching = field.optional("switching"))
        modes.outcome = static_cast<SwitchOutcome>(indexOf(*switching, kOutcomeNames));
    const auto products = field.optional("products");
    if (!products) return;
    for (const JsonField& entry : products->elements()) {
        entry.expectKeys({"place", "mode"});
        const JsonField mode = entry.required("mode");
        setWorkMode(reader.place(entry.required("place")), static_cast<WorkMode>(indexOf(mode, kModeNames)));
    }
}

Json writeWorkModes(Session& session) {
    Json json;
    WorkModes& modes = session.data().part<WorkModes>();
    if (modes.outcome != SwitchOutcome::switched)
        json["switching"] = kOutcomeNames[static_cast<std::size_t>(modes.outcome)];
    for (const auto& product : session.data().products) {
        const auto mode = static_cast<std::size_t>(product->workMode());
        if (product->workMode() == kDesign) continue;
        if (mode >= kModeNames.size()) throw SaveFault{"a product has an unknown work mode"};
        json["products"].push_back({{"place", placeOf(Product(product.get()))}, {"mode", kModeNames[mode]}});
    }
    return json;
}

void readHostedClient(const JsonField& field, const SectionReader&) {
    field.expectKeys({"installed", "open"});
    if (const auto installed = field.optional("installed")) hostedClient().installed = installed->flag();
    if (const auto open = field.optional("open")) hostedClient().open = open->flag();
}

Json writeHostedClient(Session& session) {
    const HostedClient& client = session.data().part<WorkModes>().client;
    Json json;
    if (!client.installed) json["installed"] = false;
    if (client.open) json["open"] = true;
    return json;
}

const SessionSection workModesSection("work_modes", readWorkModes, writeWorkModes);
const SessionSection hostedClientSection("hosted_client", readHostedClient, writeHostedClient);

ProductObject* productBehind(const CATIProduct_var& product) {
    return dynamic_cast<ProductObject*>(static_cast<CATIProduct*>(product));
}

class HostedClientManager final : public SKManager {
public:
    unsigned char isOpen() override { return !fails("SKManager::isOpen") && hostedClient().open ? 1 : 0; }
    HRESULT openWindow() override {
        const FaultFlavour flavour = Failures::get().ask("SKManager::openWindow");
        if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
        hostedClient().open = true;
        return S_OK;
    }
    HRESULT toFront() override {
        const FaultFlavour flavour = Failures::get().ask("SKManager::toFront");
        if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
        ++hostedClient().broughtToFront;
        return S_OK;
    }
};

} // namespace

void setWorkMode(const Product& product, WorkMode mode) { setUnknownWorkMode(product, static_cast<int>(mode)); }

WorkMode workMode(const Product& product) {
    return static_cast<WorkMode>(product ? product.object()->workMode() : kDesign);
}

void setUnknownWorkMode(const Product& product, int number) {
    if (!product) return;
    WorkModes::get(); // which tells the modes from now on
    product.object()->setWorkMode(number);
}

std::size_t workModeSwitches() { return WorkModes::get().switches; }

void setSwitchOutcome(SwitchOutcome outcome) { WorkModes::get().outcome = outcome; }

HostedClient& hostedClient() { return WorkModes::get().client; }

} // namespace embedded

using namespace embedded;

HRESULT CATPrsWorkModeServices::GetWorkMode(const CATIProduct_var& iProduct, WorkMode& oCurrentMode) {
    const FaultFlavour flavour = Failures::get().ask("CATPrsWorkModeServices::GetWorkMode");
    if (flavour == FaultFlavour::codeWithOutput) oCurrentMode = WM_DESIGN;
    // An answer without a mode leaves what was there.
    if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    const ProductObject* const product = productBehind(iProduct);
    if (!product || !product->reference()) return E_FAIL;
    oCurrentMode = static_cast<WorkMode>(product->workMode());
    return S_OK;
}

HRESULT CATPrsWorkModeServices::SetWorkMode(const CATIProduct_var& iProduct, WorkMode iNewMode) {
    const FaultFlavour flavour = Failures::get().ask("CATPrsWorkModeServices::SetWorkMode");
    if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    ProductObject* const product = productBehind(iProduct);
    if (!product || !product->reference()) return E_FAIL;
    WorkModes& modes = WorkModes::get();
    ++modes.switches;
    switch (modes.outcome) {
    case SwitchOutcome::ignored: return S_OK;
    case SwitchOutcome::refused: return E_FAIL;
    case SwitchOutcome::error: CATThrow(new CATInternalError);
    case SwitchOutcome::foreign: CATThrow(std::runtime_error("out of licences"));
    case SwitchOutcome::switched: break;
    }
    product->setWorkMode(iNewMode);
    return S_OK;
}

CATLibStatus CATGetEnvValue(const char* iVarName, char** oVarValue) {
    if (oVarValue) *oVarValue = nullptr;
    if (fails("CATGetEnvValue") || !iVarName) return CATLibError;
    const auto& variables = Session::current().environment().variables;
    const auto found = variables.find(iVarName);
    const char* const value = found == variables.end() ? std::getenv(iVarName) : found->second.c_str();
    if (!value || !*value) return CATLibError;
    if (!oVarValue) return CATLibSuccess;
    const std::size_t size = std::strlen(value) + 1;
    *oVarValue = static_cast<char*>(std::malloc(size));
    if (!*oVarValue) return CATLibError;
    std::memcpy(*oVarValue, value, size);
    return CATLibSuccess;
}

SKManager* SKManager::getInstance() {
    static HostedClientManager manager;
    return fails("SKManager::getInstance") || !hostedClient().installed ? nullptr : &manager;
}
