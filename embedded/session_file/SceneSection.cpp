#include "embedded/scenes/SceneObjects.h"
#include "embedded/session_file/SessionSections.h"
#include "embedded/structure/Places.h"

#include <cmath>
#include <cstring>

namespace embedded {

namespace {

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

void readScene(const JsonField& field, ScenesObject& scenes) {
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
        scene->takeAll();
}

void readScenes(const JsonField& field, const SectionReader& reader) {
    for (const JsonField& assembly : field.elements()) {
        assembly.expectKeys({"document", "withheld", "scenes"});
        const JsonField document = assembly.required("document");
        ScenesObject* const list = SessionScenes::get().of(reader.document(document).root().object());
        if (!list) document.fail("only a product document has scenes");
        if (const auto withheld = assembly.optional("withheld")) list->withheld = withheld->flag();
        if (const auto scenes = assembly.optional("scenes"))
            for (const JsonField& scene : scenes->elements()) readScene(scene, *list);
    }
}

Json writeProduct(const SceneProductObject& product) {
    Json object{{"path", Json::array()}};
    for (const std::string& name : namesBelowRoot(product.product())) object["path"].push_back(checkedText(name));
    if (product.hidden) object["hidden"] = true;
    if (!product.components) {
        object["without"].push_back("position");
    } else if (std::memcmp(product.components->data(), kIdentity.data(), sizeof(Components)) != 0) { // -0 is not 0
        for (const double number : *product.components) {
            if (!std::isfinite(number)) throw SaveFault{"a position in a scene is no number"};
            object["position"].push_back(number);
        }
    }
    return object;
}

Json writeScene(const SceneObject& scene) {
    Json object{{"name", checkedText(scene.name())}, {"type", scene.type() == CatSceneTypeFull ? "full" : "partial"}};
    Json& products = object["products"] = Json::array();
    for (const SceneProductObject* product : scene.inOrder()) products.push_back(writeProduct(*product));
    return object;
}

Json writeAssembly(const ScenesObject& scenes) {
    Json object{{"document", checkedText(scenes.root().reference()->document->name())}};
    if (scenes.withheld) object["withheld"] = true;
    for (const auto& scene : scenes.all()) object["scenes"].push_back(writeScene(*scene));
    return object;
}

/** In the order of the documents. */
Json writeScenes(Session& session) {
    Json json;
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const ScenesObject* const list = SessionScenes::get().of(session.documentAt(i).root().object());
        if (list && (list->withheld || !list->all().empty())) json.push_back(writeAssembly(*list));
    }
    return json;
}

const SessionSection scenesSection("scenes", readScenes, writeScenes);

} // namespace

} // namespace embedded
