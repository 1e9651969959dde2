#ifndef EMBEDDED_SCENES_SCENE_OBJECTS_H
#define EMBEDDED_SCENES_SCENE_OBJECTS_H

#include "CATIACollection.h"
#include "CATIAPosition.h"
#include "CATIAScene.h"
#include "CATIASceneProduct.h"
#include "embedded/Scenes.h"
#include "embedded/documents/SessionData.h"
#include "embedded/object/Enumerations.h"
#include "embedded/object/Implements.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace embedded {

template <>
struct Identity<CATIACollection> {
    static bool has(const IID& iid) { return iid == IID_CATIACollection || iid == IID_CATBaseDispatch; }
};
EMBEDDED_AUTOMATION_IDENTITY(CATIAPosition);
EMBEDDED_AUTOMATION_IDENTITY(CATIAScene);
EMBEDDED_AUTOMATION_IDENTITY(CATIASceneProduct);

class SceneProductObject;

/** Place of a product in a scene. */
class ScenePositionObject final : public Implements<CATBaseUnknown, CATIAPosition> {
public:
    explicit ScenePositionObject(SceneProductObject& product) : Implements("Position"), m_product(product) {}

    std::string objectName() const override;
    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall GetComponents(CATSafeArrayVariant& oComponents) override;

private:
    SceneProductObject& m_product;
};

/** What a scene knows of a product. */
class SceneProductObject final : public Implements<CATBaseUnknown, CATIASceneProduct> {
public:
    SceneProductObject(const SceneObject& scene, const ProductObject& product)
        : Implements("SceneProductData"), m_scene(scene), m_product(product) {}

    std::string objectName() const override;
    const ProductObject& product() const { return m_product; }

    bool hidden = false;
    std::optional<Components> components = kIdentity; ///< none: cannot be read

    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall get_Hidden(CAT_VARIANT_BOOL& oHidden) override;
    HRESULT __stdcall get_Position(CATIAPosition*& oPosition) override;

private:
    const SceneObject& m_scene;
    const ProductObject& m_product;
    std::unique_ptr<ScenePositionObject> m_position;
};

class SceneObject final : public Implements<CATBaseUnknown, CATIAScene> {
public:
    SceneObject(ProductObject& root, std::string name, CatSceneType type);

    std::string objectName() const override { return "scene " + m_name; }
    const std::string& name() const { return m_name; }
    CatSceneType type() const { return m_type; }
    ProductObject& root() const { return m_root; }

    SceneProductObject* find(const ProductObject* product) const;
    /** Takes a product in; null when it is not below the root. */
    SceneProductObject* take(const ProductObject* product);
    /** Takes in what is below the root now. */
    void takeAll();
    void drop(const ProductObject* product);
    /** In the order in which they were taken in. */
    const std::vector<std::unique_ptr<SceneProductObject>>& products() const { return m_products; }
    /** The same in the order of the structure. */
    std::vector<const SceneProductObject*> inOrder() const;

    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall get_Type(CatSceneType& oType) override;
    HRESULT __stdcall ExistsInScene(CATIAProduct* iProduct, CAT_VARIANT_BOOL& oExists) override;
    HRESULT __stdcall GetSceneProductData(CATIAProduct* iProduct, CATIASceneProduct*& oData) override;

private:
    ProductObject& m_root;
    const std::string m_name;
    const CatSceneType m_type;
    std::vector<std::unique_ptr<SceneProductObject>> m_products;
    std::unordered_map<const ProductObject*, SceneProductObject*> m_index;
};

/** The scenes of one root product. */
class ScenesObject final : public Implements<CATBaseUnknown, CATIACollection> {
public:
    explicit ScenesObject(ProductObject& root) : Implements("Scenes"), m_root(root) {}

    std::string objectName() const override { return "scenes of " + m_root.objectName(); }

    ProductObject& root() const { return m_root; }
    SceneObject* find(const std::string& name) const;
    SceneObject* add(const std::string& name, CatSceneType type);
    const std::vector<std::unique_ptr<SceneObject>>& all() const { return m_scenes; }
    bool withheld = false;

    HRESULT __stdcall get_Count(CATLONG& oNbItems) override;
    HRESULT __stdcall get__NewEnum(IUnknown*& oEnumIter) override;

private:
    EnumerationObject& newEnumeration();

    ProductObject& m_root;
    std::vector<std::unique_ptr<SceneObject>> m_scenes;
    std::vector<std::unique_ptr<EnumerationObject>> m_enumerations;
};

/** The scenes of every root product of the session. */
class SessionScenes final : public SessionPart {
public:
    static constexpr const char* kName = "scenes";

    explicit SessionScenes(SessionData&) {}
    static SessionScenes& get();

    void addToDigest(std::string& text) const override;

    /** Made on first use; null for a product that has no scenes. */
    ScenesObject* of(ProductObject* product);
    const std::vector<std::unique_ptr<ScenesObject>>& all() const { return m_scenes; }

private:
    std::vector<std::unique_ptr<ScenesObject>> m_scenes; ///< in the order in which they were asked for
    std::map<const ProductObject*, ScenesObject*> m_index;
};

} // namespace embedded

#endif
