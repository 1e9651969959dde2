// The builder's name of a document.
#include "embedded/Session.h"
#include "embedded/documents/LoadedDocuments.h"
#include "embedded/documents/SessionData.h"

namespace embedded {

CATDocument* Document::get() const { return m_object; }

std::string Document::name() const { return m_object ? m_object->name() : std::string(); }

Document& Document::uuid(const std::string& text) {
    std::string copy = text;
    if (m_object) m_object->uuid = CATUuid(copy.data());
    return *this;
}

std::string Document::uuid() const { return m_object ? m_object->uuidText() : std::string(); }

Document& Document::withoutDescriptor() {
    if (m_object) m_object->hasDescriptor = false;
    return *this;
}

Document& Document::saved(bool value) {
    if (m_object) m_object->saved = value;
    return *this;
}

bool Document::saved() const { return m_object && m_object->saved; }

Document& Document::onDisk(bool value) {
    if (m_object) m_object->onDisk = value;
    return *this;
}

bool Document::onDisk() const { return m_object && m_object->onDisk; }

Document& Document::type(const std::string& text) {
    if (m_object) m_object->setType(text);
    return *this;
}

std::string Document::type() const { return m_object ? m_object->type() : std::string(); }

Document& Document::upToDate(bool value) {
    if (m_object) m_object->upToDate = value;
    return *this;
}

bool Document::upToDate() const { return m_object && m_object->upToDate; }

Document& Document::withoutAutomation() {
    if (m_object) m_object->hasAutomation = false;
    return *this;
}

Document& Document::withoutRoots() {
    if (m_object) m_object->hasRoots = false;
    return *this;
}

bool Document::loaded() const {
    return m_object && m_object->inSession && LoadedDocuments(Session::current().data()).settle(*m_object);
}

Product Document::root() const { return Product(m_object ? m_object->rootProduct() : nullptr); }

} // namespace embedded
