// How the extensions of a class come to be known and are made for an object of it.
#ifndef EMBEDDED_OBJECT_EXTENSIONS_H
#define EMBEDDED_OBJECT_EXTENSIONS_H

#include "embedded/object/Object.h"

#include <memory>
#include <typeinfo>
#include <vector>

namespace embedded {

/** How to make the extensions of a class. */
template <class T>
struct ExtensionMaker {
    bool (*offers)(const IID& iid);
    std::unique_ptr<Extension> (*make)(T& object);
    const std::type_info* type;

    static std::vector<ExtensionMaker>& all() {
        static std::vector<ExtensionMaker>& makers = *new std::vector<ExtensionMaker>;
        return makers;
    }
};

/** Makes extension E of class T known, for as long as the process lives. */
template <class T, class E>
struct ExtensionOf {
    ExtensionOf() {
        ExtensionMaker<T>::all().push_back(
            {&E::offers, [](T& object) -> std::unique_ptr<Extension> { return std::make_unique<E>(object); },
             &typeid(E)});
    }
};

/** The object's extension E, made now when it had none; for the builder. E need not be made known. */
template <class E, class T>
E& extensionOf(T& object) {
    for (const auto& extension : object.extensions())
        if (E* const found = dynamic_cast<E*>(extension.get())) return *found;
    object.extensions().push_back(std::make_unique<E>(object));
    return static_cast<E&>(*object.extensions().back());
}

/** The object's extension E; null when it has none. */
template <class E, class T>
E* existingExtension(T& object) {
    for (const auto& extension : object.extensions())
        if (E* const found = dynamic_cast<E*>(extension.get())) return found;
    return nullptr;
}

/** An interface that one of the object's extensions answers, made now when need be. */
template <class T>
Found extensionFor(T& object, const IID& iid) {
    for (const auto& extension : object.extensions())
        if (const Found found = extension->find(iid)) return found;
    for (const ExtensionMaker<T>& maker : ExtensionMaker<T>::all()) {
        if (!maker.offers(iid)) continue;
        bool made = false;
        for (const auto& extension : object.extensions()) {
            const Extension& present = *extension;
            made = made || typeid(present) == *maker.type;
        }
        if (made) continue;
        object.extensions().push_back(maker.make(object));
        if (const Found found = object.extensions().back()->find(iid)) return found;
    }
    return Found();
}

} // namespace embedded

#endif
