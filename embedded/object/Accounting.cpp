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

void Accounting::breach(const std::string& what) { m_breaches.push_back(what); }

std::vector<std::string> Accounting::takeBreaches() { return std::exchange(m_breaches, {}); }

} // namespace embedded
