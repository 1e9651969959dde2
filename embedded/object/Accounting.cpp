#include "embedded/Accounting.h"
#include "embedded/object/Object.h"

#include <map>
#include <utility>

namespace embedded {

Accounting& Accounting::get() {
    // Objects of static storage are still counted while the process ends: the books outlive them all.
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

CATMetaClass* metaClass(const std::string& name, const std::string& base) {
    struct Class {
        std::string name;
        std::string base;
        CATMetaClass baseMeta;
        CATMetaClass meta;
        Class(const std::string& className, const std::string& baseName)
            : name(className), base(baseName),
              baseMeta(base.c_str(), baseName == CATBaseUnknown::ClassName() ? nullptr : rootMeta()),
              meta(name.c_str(), &baseMeta) {}
        static const CATMetaClass* rootMeta() {
            static const CATMetaClass root(CATBaseUnknown::ClassName(), nullptr);
            return &root;
        }
    };
    static std::map<std::pair<std::string, std::string>, Class> classes;
    return &classes.try_emplace({name, base}, name, base).first->second.meta;
}

Object* Object::s_first = nullptr;

Object::Object(const std::string& className, const std::string& baseName)
    : m_next(s_first), m_meta(metaClass(className, baseName)) {
    if (s_first) s_first->m_previous = this;
    s_first = this;
}

Object::~Object() {
    Accounting::get().live().references -= m_references;
    (m_previous ? m_previous->m_next : s_first) = m_next;
    if (m_next) m_next->m_previous = m_previous;
}

std::string Object::objectName() const { return m_meta->IsA(); }

void Object::setClass(const std::string& className, const std::string& baseName) {
    m_meta = metaClass(className, baseName);
}

ULONG Object::addReference() {
    ++Accounting::get().live().references;
    return static_cast<ULONG>(++m_references);
}

ULONG Object::releaseReference() {
    if (m_references == 0) {
        Accounting::get().breach("double release of " + objectName());
        return 0;
    }
    --Accounting::get().live().references;
    return static_cast<ULONG>(--m_references);
}

void Object::recordUseAfterRelease(const char* site) const {
    Accounting::get().breach("use after release of " + objectName() + " in " + site);
}

} // namespace embedded
