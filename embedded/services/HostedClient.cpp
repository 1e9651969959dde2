#include "embedded/services/HostedClient.h"

#include "SKManager.h"

namespace embedded {

void SessionHostedClient::addToDigest(std::string& text) const {
    if (client.open) text += "hosted_client_open\n";
    if (!client.installed) text += "without_hosted_client\n";
}

HostedClient& hostedClient() { return Session::current().data().part<SessionHostedClient>().client; }

} // namespace embedded

using namespace embedded;

namespace {

class HostedClientManager final : public SKManager {
public:
    unsigned char isOpen() override { return !fails("SKManager::isOpen") && hostedClient().open ? 1 : 0; }
    HRESULT openWindow() override {
        const FaultFlavour flavour = Failures::get().ask("SKManager::openWindow");
        if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
        hostedClient().open = true;
        return S_OK;
    }
    HRESULT toFront() override {
        const FaultFlavour flavour = Failures::get().ask("SKManager::toFront");
        if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
        ++hostedClient().broughtToFront;
        return S_OK;
    }
};

} // namespace

SKManager* SKManager::getInstance() {
    static HostedClientManager manager;
    return fails("SKManager::getInstance") || !hostedClient().installed ? nullptr : &manager;
}
