#include "embedded/object/Object.h"

#include "embedded/Accounting.h"
#include "embedded/object/Interfaces.h"

#include <map>
#include <utility>

namespace embedded {

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
    static auto& classes = *new std::map<std::pair<std::string, std::string>, Class>;
    return &classes.try_emplace({name, base}, name, base).first->second.meta;
}

int HandingOut::s_depth = 0;

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

HRESULT Object::query(const Hold& held, const IID& iid, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    const Found found = findInterface(iid);
    const char* const site = querySite(iid);
    use(held, site);
    const FaultFlavour flavour = Failures::get().ask(site);
    if (flavour == FaultFlavour::nullOutput) return S_OK;
    if (flavour == FaultFlavour::codeWithOutput) *result = found ? found.pointer : implementation();
    if (flavour != FaultFlavour::none) return E_FAIL;
    if (!found) return E_NOINTERFACE;
    const HandingOut goesOn;
    *result = found.pointer;
    addReference(*found.hold);
    return S_OK;
}

ULONG Object::addReference(Hold& held) {
    if (!HandingOut::goesOn()) use(held, "AddRef");
    ++Accounting::get().live().references;
    ++m_references;
    return static_cast<ULONG>(++held.references);
}

ULONG Object::releaseReference(Hold& held) {
    long& count = held.references != 0 ? held.references : held.lost;
    if (count == 0) {
        Accounting::get().breach("double release of " + objectName());
        return 0;
    }
    --Accounting::get().live().references;
    --m_references;
    return static_cast<ULONG>(--count);
}

void Object::loseAllOf(const Object& document, const Object* root) {
    for (Object* object = s_first; object; object = object->m_next) {
        const bool stays = root && (object == root || object == &document);
        if (stays || object->home() != &document) continue;
        object->lose();
        for (const auto& extension : object->m_extensions) extension->lose();
    }
}

void Object::recordUseAfterRelease(const char* site) const {
    Accounting::get().breach("use after release of " + objectName() + " in " + site);
}

} // namespace embedded
