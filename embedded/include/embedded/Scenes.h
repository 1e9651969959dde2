#ifndef EMBEDDED_SCENES_H
#define EMBEDDED_SCENES_H

#include "ExportedByCatia.h"
#include "embedded/Session.h"

#include <array>
#include <string>
#include <vector>

namespace embedded {

class SceneObject;

/** Place of a product relative to its father: three axes, then the origin. */
using Components = std::array<double, 12>;

/** The place of a product that was not moved. */
constexpr Components kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
/** A place that is only moved. */
constexpr Components translation(double x, double y, double z) { return {1, 0, 0, 0, 1, 0, 0, 0, 1, x, y, z}; }

/**
 * A scene of an assembly. A light name for it, as Document and Product; calls on a name of nothing, and calls with a
 * product that is not below the assembly's root, do nothing.
 *
 *     scenes(root).addPartial("Exploded").move(bolt, translation(0, 0, 50)).hide(cover);
 */
class ExportedByCatia Scene {
public:
    explicit Scene(SceneObject* object = nullptr) : m_object(object) {}
    explicit operator bool() const { return m_object != nullptr; }

    std::string name() const;
    bool isFull() const;

    /** Takes a product in where it stands and visible; one that is in the scene stays as it is. */
    Scene& take(const Product& product);
    /** Takes products out; the scene knows nothing of them any more. */
    Scene& drop(const Product& product);
    /** These take the product in when it is not. */
    Scene& move(const Product& product, const Components& components);
    Scene& hide(const Product& product, bool hidden = true);
    /** The product's position cannot be read. */
    Scene& withoutPosition(const Product& product);

    bool knows(const Product& product) const;
    bool hides(const Product& product) const;

private:
    SceneObject* m_object;
};

/** The scenes of an assembly. A light name for them. */
class ExportedByCatia Scenes {
public:
    explicit Scenes(ProductObject* root) : m_root(root) {}

    /** A scene that knows every product below the root as of now. None when there is a scene of that name. */
    Scene addFull(const std::string& name) const;
    /** A scene that knows no product yet. */
    Scene addPartial(const std::string& name) const;
    Scene find(const std::string& name) const;
    /** In the order in which they were added. */
    std::vector<Scene> all() const;
    /** The root does not give its scenes away. */
    void withhold() const;

private:
    ProductObject* m_root;
};

/** The scenes of a root product. Only the root of a product document has scenes: for any other product nothing can be
 * added. */
ExportedByCatia Scenes scenes(const Product& root);

} // namespace embedded

#endif
