#include "embedded/Accounting.h"

#include "embedded/object/Object.h"

#include <utility>

namespace embedded {

Accounting& Accounting::get() {
    static Accounting& books = *new Accounting;
    return books;
}

std::vector<std::string> Accounting::holders() const {
    std::vector<std::string> result;
    for (const Object* object = Object::s_first; object; object = object->m_next)
        if (object->m_references != 0)
            result.push_back(object->objectName() + ": " + std::to_string(object->m_references));
    return result;
}

std::string Accounting::nameOf(const CATBaseUnknown& object) {
    const CATBaseUnknown* const identity = const_cast<CATBaseUnknown&>(object).GetImpl();
    for (Object* known = Object::s_first; known; known = known->m_next)
        if (known->implementation() == identity) return known->objectName();
    return object.IsA();
}

void Accounting::breach(const std::string& what) { m_breaches.push_back(what); }

std::vector<std::string> Accounting::takeBreaches() { return std::exchange(m_breaches, {}); }

} // namespace embedded
