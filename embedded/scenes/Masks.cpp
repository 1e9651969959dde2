#include "embedded/Masks.h"

#include "MSKIMaskManager.h"
#include "embedded/documents/SessionObject.h"
#include "embedded/session_file/SessionSections.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

EMBEDDED_INTERFACE(MSKIMaskManager, CATBaseUnknown, 0x510);

namespace embedded {

EMBEDDED_IDENTITY(MSKIMaskManager);

namespace {

constexpr int kGreatestMask = 10;

/** Name of the document that a place begins in. */
std::string documentOf(const ProductObject& product) {
    const ProductObject* root = &product;
    while (root->father()) root = root->father();
    return root->reference()->document->name();
}

/** The masks of the session's products. */
class SessionMasks final : public SessionPart {
public:
    static constexpr const char* kName = "masks";

    explicit SessionMasks(SessionData&) {}
    static SessionMasks& get() { return Session::current().data().part<SessionMasks>(); }

    bool hasManager = true;

    int of(const ProductObject* product) const {
        const auto found = m_masks.find(product);
        return found == m_masks.end() ? 0 : found->second;
    }
    void set(const ProductObject* product, int mask) {
        if (mask == 0)
            m_masks.erase(product);
        else
            m_masks[product] = mask;
    }
    const std::map<const ProductObject*, int>& all() const { return m_masks; }

    void addToDigest(std::string& text) const override {
        std::vector<std::string> lines;
        for (const auto& mask : m_masks)
            lines.push_back("mask " + std::to_string(mask.second) + " " + documentOf(*mask.first) + " " +
                            mask.first->objectName() + "\n");
        std::sort(lines.begin(), lines.end());
        if (!hasManager) lines.emplace_back("without_mask_manager\n");
        for (const std::string& line : lines) text += line;
    }

private:
    std::map<const ProductObject*, int> m_masks;
};

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

const ExtensionOf<SessionObject, MaskManager> knownMaskManager;

void readMasks(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"without", "products"});
    if (const auto without = field.optional("without"))
        for (const JsonField& what : without->elements()) {
            if (what.text() != "manager") what.fail("nothing named '" + what.text() + "' can be missing here");
            withoutMaskManager();
        }
    const auto products = field.optional("products");
    if (!products) return;
    for (const JsonField& product : products->elements()) {
        product.expectKeys({"place", "mask"});
        const JsonField place = product.required("place");
        const Product marked = reader.place(place);
        if (maskOf(marked) != 0) place.fail("given twice");
        setMask(marked, product.required("mask").integer(1, kGreatestMask));
    }
}

Json writeMasks(Session& session) {
    const SessionMasks& masks = session.data().part<SessionMasks>();
    std::map<std::string, Json> products; // by place: the same session gives the same text
    for (const auto& mask : masks.all()) {
        const Json place = placeOf(Product(const_cast<ProductObject*>(mask.first)));
        products[place.dump()] = Json{{"place", place}, {"mask", mask.second}};
    }
    Json section;
    if (!masks.hasManager) section["without"].push_back("manager");
    for (const auto& product : products) section["products"].push_back(product.second);
    return section;
}

const SessionSection masksSection("masks", &readMasks, &writeMasks);

} // namespace

int maskOf(const Product& product) { return SessionMasks::get().of(product.object()); }

void setMask(const Product& product, int mask) {
    if (product && mask >= 0 && mask <= kGreatestMask) SessionMasks::get().set(product.object(), mask);
}

void withoutMaskManager() { SessionMasks::get().hasManager = false; }

} // namespace embedded
