#include "embedded/Masks.h"

#include "MSKIMaskManager.h"
#include "embedded/documents/SessionObject.h"
#include "embedded/scenes/SessionMasks.h"
#include "embedded/structure/Places.h"

#include <algorithm>
#include <string>
#include <vector>

EMBEDDED_INTERFACE(MSKIMaskManager, CATBaseUnknown, 0x510);

namespace embedded {

EMBEDDED_IDENTITY(MSKIMaskManager);

namespace {

/** The manager as an interface of the session. Only products show masks. */
class MaskManager final : public Extends<SessionObject, MSKIMaskManager> {
public:
    explicit MaskManager(SessionObject& session) : Extends(session) {}

    HRESULT setMask(CATISpecObject* iObject, int iMask) override {
        const auto* const product = dynamic_cast<const ProductObject*>(iObject);
        if (failing("MSKIMaskManager::setMask")) return E_FAIL;
        if (!product || iMask < 1 || iMask > kGreatestMask) return E_INVALIDARG;
        SessionMasks::get().set(product, iMask);
        return S_OK;
    }
    HRESULT getMask(CATISpecObject* iObject, int& oMask) override {
        constexpr int stale = 7;
        const auto* const product = dynamic_cast<const ProductObject*>(iObject);
        const FaultFlavour flavour = called("MSKIMaskManager::getMask");
        if (flavour != FaultFlavour::none) return failedAnswer<int>(flavour, oMask, 0, stale);
        oMask = SessionMasks::get().of(product);
        return product ? S_OK : E_INVALIDARG;
    }
    HRESULT removeAllMasks(CATISpecObject* iObject) override {
        const auto* const product = dynamic_cast<const ProductObject*>(iObject);
        if (failing("MSKIMaskManager::removeAllMasks")) return E_FAIL;
        if (!product) return E_INVALIDARG;
        SessionMasks::get().set(product, 0);
        return S_OK;
    }

private:
    bool answers(const IID&) const override { return SessionMasks::get().hasManager; }
};

const ExtensionOf<SessionObject, MaskManager> maskManagerKnown;

} // namespace

SessionMasks& SessionMasks::get() { return Session::current().data().part<SessionMasks>(); }

void SessionMasks::addToDigest(std::string& text) const {
    std::vector<std::string> lines;
    for (const auto& mask : m_masks)
        lines.push_back("mask " + std::to_string(mask.second) + " " +
                        rootOf(*mask.first).reference()->document->name() + " " + mask.first->objectName() + "\n");
    std::sort(lines.begin(), lines.end());
    if (!hasManager) lines.emplace_back("without_mask_manager\n");
    for (const std::string& line : lines) text += line;
}

int maskOf(const Product& product) { return SessionMasks::get().of(product.object()); }

void setMask(const Product& product, int mask) {
    if (product && mask >= 0 && mask <= kGreatestMask) SessionMasks::get().set(product.object(), mask);
}

void withoutMaskManager() { SessionMasks::get().hasManager = false; }

} // namespace embedded
