#include "embedded/scenes/SceneObjects.h"

#include "embedded/Session.h"
#include "embedded/files/FileNames.h"
#include "embedded/object/Automation.h"
#include "embedded/session_file/JsonText.h"
#include "embedded/structure/Places.h"

#include <algorithm>
#include <utility>

EMBEDDED_INTERFACE(CATIACollection, CATBaseDispatch, 0x500);
EMBEDDED_INTERFACE(CATIAScene, CATIABase, 0x501);
EMBEDDED_INTERFACE(CATIASceneProduct, CATIABase, 0x502);
EMBEDDED_INTERFACE(CATIAPosition, CATIABase, 0x503);

namespace embedded {

namespace {

/** Name under which a root product keeps its scenes. */
constexpr const char* kScenesItem = "ScenesCollection";
/** Enumerations that are kept before one that nobody holds is used again. */
constexpr std::size_t kKeptEnumerations = 64;

bool isBelow(const ProductObject* product, const ProductObject& root) {
    for (; product && product != &root; product = product->father()) {
    }
    return product != nullptr;
}

ProductObject* productBehind(CATIAProduct* pointer) { return dynamic_cast<ProductObject*>(pointer); }

} // namespace

std::string ScenePositionObject::objectName() const { return "position of " + m_product.objectName(); }

HRESULT __stdcall ScenePositionObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIAPosition::get_Name"), "Position", oName);
}

HRESULT __stdcall ScenePositionObject::GetComponents(CATSafeArrayVariant& oComponents) {
    const FaultFlavour flavour = called("CATIAPosition::GetComponents");
    if (flavour == FaultFlavour::codeWithOutput) std::fill(oComponents.values.begin(), oComponents.values.end(), 47.11);
    if (flavour != FaultFlavour::none || !m_product.components) return Failures::get().codeOf(flavour);
    if (oComponents.values.size() != m_product.components->size()) return E_INVALIDARG;
    std::copy(m_product.components->begin(), m_product.components->end(), oComponents.values.begin());
    return S_OK;
}

std::string SceneProductObject::objectName() const { return m_product.objectName() + " in " + m_scene.objectName(); }

HRESULT __stdcall SceneProductObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIASceneProduct::get_Name"), m_product.instanceName(), oName);
}

HRESULT __stdcall SceneProductObject::get_Hidden(CAT_VARIANT_BOOL& oHidden) {
    const FaultFlavour flavour = called("CATIASceneProduct::get_Hidden");
    if (flavour != FaultFlavour::none) return failedAnswer<CAT_VARIANT_BOOL>(flavour, oHidden, 0, -1);
    oHidden = hidden ? -1 : 0;
    return S_OK;
}

HRESULT __stdcall SceneProductObject::get_Position(CATIAPosition*& oPosition) {
    const FaultFlavour flavour = called("CATIASceneProduct::get_Position");
    if (!m_position) m_position = std::make_unique<ScenePositionObject>(*this);
    if (flavour != FaultFlavour::none)
        return failedAnswer<CATIAPosition*>(flavour, oPosition, nullptr, m_position.get());
    oPosition = handOut<CATIAPosition>(m_position.get());
    return S_OK;
}

SceneObject::SceneObject(ProductObject& root, std::string name, CatSceneType type)
    : Implements("ProductScene"), m_root(root), m_name(std::move(name)), m_type(type) {}

SceneProductObject* SceneObject::find(const ProductObject* product) const {
    const auto found = m_index.find(product);
    return found == m_index.end() ? nullptr : found->second;
}

SceneProductObject* SceneObject::take(const ProductObject* product) {
    if (SceneProductObject* const known = find(product)) return known;
    if (product == &m_root || !isBelow(product, m_root)) return nullptr;
    m_products.push_back(std::make_unique<SceneProductObject>(*this, *product));
    return m_index[product] = m_products.back().get();
}

std::vector<const SceneProductObject*> SceneObject::inOrder() const {
    std::vector<std::pair<std::vector<std::size_t>, const SceneProductObject*>> places;
    for (const auto& product : m_products) places.emplace_back(indicesBelowRoot(product->product()), product.get());
    std::sort(places.begin(), places.end());
    std::vector<const SceneProductObject*> products;
    for (const auto& place : places) products.push_back(place.second);
    return products;
}

void SceneObject::takeAll() {
    std::vector<const ProductObject*> open{&m_root};
    for (std::size_t next = 0; next < open.size(); ++next) {
        for (std::size_t i = 0; i < open[next]->childCount(); ++i) {
            const ProductObject* const child = open[next]->child(i);
            take(child);
            open.push_back(child);
        }
    }
}

void SceneObject::drop(const ProductObject* product) {
    if (m_index.erase(product) == 0) return;
    m_products.erase(std::find_if(m_products.begin(), m_products.end(),
                                  [=](const auto& known) { return &known->product() == product; }));
}

HRESULT __stdcall SceneObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIAScene::get_Name"), m_name, oName);
}

HRESULT __stdcall SceneObject::get_Type(CatSceneType& oType) {
    const FaultFlavour flavour = called("CATIAScene::get_Type");
    if (flavour != FaultFlavour::none)
        return failedAnswer<CatSceneType>(flavour, oType, CatSceneTypeDelta, CatSceneTypeFull);
    oType = m_type;
    return S_OK;
}

HRESULT __stdcall SceneObject::ExistsInScene(CATIAProduct* iProduct, CAT_VARIANT_BOOL& oExists) {
    const FaultFlavour flavour = called("CATIAScene::ExistsInScene");
    if (flavour != FaultFlavour::none) return failedAnswer<CAT_VARIANT_BOOL>(flavour, oExists, 0, -1);
    oExists = find(productBehind(iProduct)) ? -1 : 0;
    return iProduct ? S_OK : E_INVALIDARG;
}

HRESULT __stdcall SceneObject::GetSceneProductData(CATIAProduct* iProduct, CATIASceneProduct*& oData) {
    const FaultFlavour flavour = called("CATIAScene::GetSceneProductData");
    if (flavour != FaultFlavour::none)
        return failedAnswer<CATIASceneProduct*>(flavour, oData, nullptr, find(productBehind(iProduct)));
    SceneProductObject* const data = take(productBehind(iProduct));
    oData = handOut<CATIASceneProduct>(data);
    return data ? S_OK : E_FAIL;
}

SceneObject* ScenesObject::find(const std::string& name) const {
    for (const auto& scene : m_scenes)
        if (scene->name() == name) return scene.get();
    return nullptr;
}

SceneObject* ScenesObject::add(const std::string& name, CatSceneType type) {
    if (find(name)) return nullptr;
    m_scenes.push_back(std::make_unique<SceneObject>(m_root, name, type));
    return m_scenes.back().get();
}

HRESULT __stdcall ScenesObject::get_Count(CATLONG& oNbItems) {
    const FaultFlavour flavour = called("CATIACollection::get_Count");
    if (flavour != FaultFlavour::none) return failedAnswer<CATLONG>(flavour, oNbItems, 0, 4711);
    oNbItems = static_cast<CATLONG>(m_scenes.size());
    return S_OK;
}

EnumerationObject& ScenesObject::newEnumeration() {
    Enumerated objects;
    for (const auto& scene : m_scenes) objects.push_back(scene.get());
    if (m_enumerations.size() >= kKeptEnumerations) {
        const auto unused = std::find_if(m_enumerations.begin(), m_enumerations.end(),
                                         [](const auto& enumeration) { return enumeration->references() == 0; });
        if (unused != m_enumerations.end()) m_enumerations.erase(unused);
    }
    m_enumerations.push_back(std::make_unique<EnumerationObject>("enumeration of " + objectName(), std::move(objects)));
    return *m_enumerations.back();
}

HRESULT __stdcall ScenesObject::get__NewEnum(IUnknown*& oEnumIter) {
    const FaultFlavour flavour = called("CATIACollection::get__NewEnum");
    EnumerationObject& enumeration = newEnumeration();
    if (flavour != FaultFlavour::none)
        return failedAnswer<IUnknown*>(flavour, oEnumIter, nullptr, static_cast<IEnumVARIANT*>(&enumeration));
    oEnumIter = handOut<IEnumVARIANT>(&enumeration);
    return S_OK;
}

SessionScenes& SessionScenes::get() { return Session::current().data().part<SessionScenes>(); }

ScenesObject* SessionScenes::of(ProductObject* product) {
    const auto known = m_index.find(product);
    if (known != m_index.end()) return known->second;
    const bool isRoot = product && product->isReference() && !product->reference()->component;
    if (!isRoot || foldedName(product->reference()->document->type()) != "catproduct") return nullptr;
    m_scenes.push_back(std::make_unique<ScenesObject>(*product));
    return m_index[product] = m_scenes.back().get();
}

HRESULT __stdcall ProductObject::GetItem(const CATBSTR& iName, CATBaseDispatch*& oObject) {
    const FaultFlavour flavour = called("CATIAProduct::GetItem");
    ScenesObject* scenes = nullptr;
    if (fromAutomationText(iName) == kScenesItem) scenes = m_session.part<SessionScenes>().of(this);
    if (scenes && scenes->withheld) scenes = nullptr;
    if (flavour != FaultFlavour::none) return failedAnswer<CATBaseDispatch*>(flavour, oObject, nullptr, scenes);
    oObject =
        scenes && Failures::get().givesOtherKind() ? handOut<CATBaseDispatch>(this) : handOut<CATBaseDispatch>(scenes);
    return scenes ? S_OK : E_FAIL;
}

void SessionScenes::addToDigest(std::string& text) const {
    std::vector<std::string> lines;
    for (const auto& list : m_scenes) {
        if (!list->withheld && list->all().empty()) continue;
        std::string line =
            "scenes of " + list->root().reference()->document->name() + (list->withheld ? " withheld" : "") + "\n";
        for (const auto& scene : list->all()) {
            line += " " + std::to_string(scene->type()) + scene->objectName() + "\n";
            for (const SceneProductObject* product : scene->inOrder()) {
                line += "  " + product->objectName() + (product->hidden ? " hidden" : "");
                if (product->components)
                    for (const double number : *product->components) line += " " + jsonNumber(number);
                line += "\n";
            }
        }
        lines.push_back(std::move(line));
    }
    std::sort(lines.begin(), lines.end());
    for (const std::string& line : lines) text += line;
}

} // namespace embedded
