#include "embedded/Scenes.h"

#include "embedded/scenes/SceneObjects.h"

namespace embedded {

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

Scene Scenes::addFull(const std::string& name) const {
    ScenesObject* const list = SessionScenes::get().of(m_root);
    SceneObject* const scene = list ? list->add(name, CatSceneTypeFull) : nullptr;
    if (scene) scene->takeAll();
    return Scene(scene);
}

Scene Scenes::addPartial(const std::string& name) const {
    ScenesObject* const list = SessionScenes::get().of(m_root);
    return Scene(list ? list->add(name, CatSceneTypeDelta) : nullptr);
}

Scene Scenes::find(const std::string& name) const {
    const ScenesObject* const list = SessionScenes::get().of(m_root);
    return Scene(list ? list->find(name) : nullptr);
}

std::vector<Scene> Scenes::all() const {
    std::vector<Scene> result;
    if (const ScenesObject* const list = SessionScenes::get().of(m_root))
        for (const auto& scene : list->all()) result.emplace_back(scene.get());
    return result;
}

void Scenes::withhold() const {
    if (ScenesObject* const list = SessionScenes::get().of(m_root)) list->withheld = true;
}

Scenes scenes(const Product& root) { return Scenes(root.object()); }

} // namespace embedded
