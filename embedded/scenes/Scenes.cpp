#include "embedded/Scenes.h"

#include "CATAutoConversions.h"
#include "embedded/files/FileNames.h"
#include "embedded/object/Automation.h"
#include "embedded/scenes/SceneObjects.h"
#include "embedded/session_file/SessionSections.h"

#include <algorithm>
#include <cmath>
#include <cstring>

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

void takeAllBelow(SceneObject& scene, const ProductObject& root) {
    std::vector<const ProductObject*> open{&root};
    for (std::size_t next = 0; next < open.size(); ++next) {
        for (std::size_t i = 0; i < open[next]->childCount(); ++i) {
            const ProductObject* const child = open[next]->child(i);
            scene.take(child);
            open.push_back(child);
        }
    }
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
    if (flavour != FaultFlavour::none || !m_product.components)
        return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
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
    m_position->AddRef();
    oPosition = m_position.get();
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
    oData = data;
    if (!data) return E_FAIL;
    data->AddRef();
    return S_OK;
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
    enumeration.AddRef();
    oEnumIter = static_cast<IEnumVARIANT*>(&enumeration);
    return S_OK;
}

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
    oObject = scenes;
    if (!scenes) return E_FAIL;
    scenes->AddRef();
    return S_OK;
}

std::string Scene::name() const { return m_object ? m_object->name() : std::string(); }

bool Scene::isFull() const { return m_object && m_object->type() == CatSceneTypeFull; }

Scene& Scene::take(const Product& product) {
    if (m_object) m_object->take(product.object());
    return *this;
}

Scene& Scene::drop(const Product& product) {
    if (m_object) m_object->drop(product.object());
    return *this;
}

Scene& Scene::move(const Product& product, const Components& components) {
    if (SceneProductObject* const data = m_object ? m_object->take(product.object()) : nullptr)
        data->components = components;
    return *this;
}

Scene& Scene::hide(const Product& product, bool hidden) {
    if (SceneProductObject* const data = m_object ? m_object->take(product.object()) : nullptr) data->hidden = hidden;
    return *this;
}

Scene& Scene::withoutPosition(const Product& product) {
    if (SceneProductObject* const data = m_object ? m_object->take(product.object()) : nullptr)
        data->components.reset();
    return *this;
}

bool Scene::knows(const Product& product) const { return m_object && m_object->find(product.object()); }

bool Scene::hides(const Product& product) const {
    const SceneProductObject* const data = m_object ? m_object->find(product.object()) : nullptr;
    return data && data->hidden;
}

namespace {

ScenesObject* scenesOf(ProductObject* root) { return Session::current().data().part<SessionScenes>().of(root); }

} // namespace

Scene Scenes::addFull(const std::string& name) const {
    ScenesObject* const list = scenesOf(m_root);
    SceneObject* const scene = list ? list->add(name, CatSceneTypeFull) : nullptr;
    if (scene) takeAllBelow(*scene, *m_root);
    return Scene(scene);
}

Scene Scenes::addPartial(const std::string& name) const {
    ScenesObject* const list = scenesOf(m_root);
    return Scene(list ? list->add(name, CatSceneTypeDelta) : nullptr);
}

Scene Scenes::find(const std::string& name) const {
    const ScenesObject* const list = scenesOf(m_root);
    return Scene(list ? list->find(name) : nullptr);
}

std::vector<Scene> Scenes::all() const {
    std::vector<Scene> result;
    if (const ScenesObject* const list = scenesOf(m_root))
        for (const auto& scene : list->all()) result.emplace_back(scene.get());
    return result;
}

void Scenes::withhold() const {
    if (ScenesObject* const list = scenesOf(m_root)) list->withheld = true;
}

Scenes scenes(const Product& root) { return Scenes(root.object()); }

namespace {

// The section "scenes" of session files.

/** Position of a product below the root: indices, outermost first. */
std::vector<std::size_t> positionOf(const ProductObject& product) {
    std::vector<std::size_t> position;
    for (const ProductObject* place = &product; place->father(); place = place->father())
        position.push_back(place->index());
    std::reverse(position.begin(), position.end());
    return position;
}

/** Instance names from below the root, outermost first. */
std::vector<std::string> pathOf(const ProductObject& product) {
    std::vector<std::string> names;
    for (const ProductObject* place = &product; place->father(); place = place->father())
        names.push_back(place->instanceName());
    std::reverse(names.begin(), names.end());
    return names;
}

/** What a scene knows, in the order of the structure. */
std::vector<const SceneProductObject*> inOrder(const SceneObject& scene) {
    std::vector<std::pair<std::vector<std::size_t>, const SceneProductObject*>> places;
    for (const auto& product : scene.products()) places.emplace_back(positionOf(product->product()), product.get());
    std::sort(places.begin(), places.end());
    std::vector<const SceneProductObject*> products;
    for (const auto& place : places) products.push_back(place.second);
    return products;
}

Components readComponents(const JsonField& field) {
    const std::vector<JsonField> numbers = field.elements();
    Components components = kIdentity;
    if (numbers.size() != components.size()) field.fail("12 numbers are expected");
    for (std::size_t i = 0; i < numbers.size(); ++i) components[i] = numbers[i].number();
    return components;
}

void readProduct(const JsonField& field, SceneObject& scene) {
    field.expectKeys({"path", "hidden", "position", "without"});
    const JsonField path = field.required("path");
    const ProductObject* place = &scene.root();
    for (const JsonField& name : path.elements()) {
        place = place->childNamed(name.text());
        if (!place) name.fail("no such instance");
    }
    if (scene.find(place)) path.fail("given twice");
    SceneProductObject* const product = scene.take(place);
    if (!product) path.fail("the root itself is in no scene");
    if (const auto hidden = field.optional("hidden")) product->hidden = hidden->flag();
    if (const auto position = field.optional("position")) product->components = readComponents(*position);
    const auto without = field.optional("without");
    if (!without) return;
    for (const JsonField& what : without->elements()) {
        if (what.text() != "position") what.fail("nothing named '" + what.text() + "' can be missing here");
        product->components.reset();
    }
}

void readScene(const JsonField& field, ScenesObject& scenes, ProductObject& root) {
    field.expectKeys({"name", "type", "products"});
    const JsonField name = field.required("name");
    const JsonField type = field.required("type");
    if (type.text() != "full" && type.text() != "partial") type.fail("\"full\" or \"partial\" is expected");
    const bool full = type.text() == "full";
    SceneObject* const scene = scenes.add(name.text(), full ? CatSceneTypeFull : CatSceneTypeDelta);
    if (!scene) name.fail("a second scene named '" + name.text() + "'");
    if (const auto products = field.optional("products"))
        for (const JsonField& product : products->elements()) readProduct(product, *scene);
    else if (full)
        takeAllBelow(*scene, root);
}

void readScenesSection(const JsonField& field, const SectionReader& reader) {
    for (const JsonField& assembly : field.elements()) {
        assembly.expectKeys({"document", "withheld", "scenes"});
        const JsonField document = assembly.required("document");
        ProductObject* const root = reader.document(document).root().object();
        ScenesObject* const list = scenesOf(root);
        if (!list) document.fail("only a product document has scenes");
        if (const auto withheld = assembly.optional("withheld")) list->withheld = withheld->flag();
        if (const auto scenes = assembly.optional("scenes"))
            for (const JsonField& scene : scenes->elements()) readScene(scene, *list, *root);
    }
}

Json writeProduct(const SceneProductObject& product) {
    Json object{{"path", Json::array()}};
    for (const std::string& name : pathOf(product.product())) object["path"].push_back(checkedText(name));
    if (product.hidden) object["hidden"] = true;
    if (!product.components) {
        object["without"].push_back("position");
    } else if (std::memcmp(product.components->data(), kIdentity.data(), sizeof(Components)) != 0) { // -0 is not 0
        for (const double number : *product.components)
            if (!std::isfinite(number)) throw SaveFault{"a position in a scene is no number"};
        for (const double number : *product.components) object["position"].push_back(number);
    }
    return object;
}

Json writeScene(const SceneObject& scene) {
    Json object{{"name", checkedText(scene.name())}, {"type", scene.type() == CatSceneTypeFull ? "full" : "partial"}};
    Json& products = object["products"] = Json::array();
    for (const SceneProductObject* product : inOrder(scene)) products.push_back(writeProduct(*product));
    return object;
}

Json writeScenes(const ScenesObject& scenes) {
    Json object{{"document", checkedText(scenes.root().reference()->document->name())}};
    if (scenes.withheld) object["withheld"] = true;
    for (const auto& scene : scenes.all()) object["scenes"].push_back(writeScene(*scene));
    return object;
}

/** In the order of the documents. */
Json writeScenesSection(Session& session) {
    Json section;
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const ScenesObject* const list = scenesOf(session.documentAt(i).root().object());
        if (list && (list->withheld || !list->all().empty())) section.push_back(writeScenes(*list));
    }
    return section;
}

const SessionSection scenesSection("scenes", &readScenesSection, &writeScenesSection);

} // namespace

void SessionScenes::addToDigest(std::string& text) const {
    std::vector<std::string> lines;
    for (const auto& list : m_scenes) {
        if (!list->withheld && list->all().empty()) continue;
        std::string line =
            "scenes of " + list->root().reference()->document->name() + (list->withheld ? " withheld" : "") + "\n";
        for (const auto& scene : list->all()) {
            line += " " + std::to_string(scene->type()) + scene->objectName() + "\n";
            for (const SceneProductObject* product : inOrder(*scene)) {
                line += "  " + product->objectName() + (product->hidden ? " hidden" : "");
                if (product->components)
                    for (const double number : *product->components) line += " " + Json(number).dump();
                line += "\n";
            }
        }
        lines.push_back(std::move(line));
    }
    std::sort(lines.begin(), lines.end());
    for (const std::string& line : lines) text += line;
}

} // namespace embedded
