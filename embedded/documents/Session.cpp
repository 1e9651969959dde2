#include "embedded/Session.h"

#include "embedded/Records.h"
#include "embedded/documents/Digest.h"
#include "embedded/documents/Profiles.h"
#include "embedded/documents/SessionData.h"
#include "embedded/files/FileNames.h"

namespace embedded {

Session& Session::current() {
    static Session& session = *new Session;
    return session;
}

Session::Session() : m_data(std::make_unique<SessionData>()) {}

Session::~Session() = default;

void Session::reset() {
    // In place: the environment keeps its address.
    m_data->environment = Environment();
    m_data->setSwitches(*switchesOf(profile()));
    m_data->updatedDrawings.clear();
    m_data->logLines.clear();
    // They refer to the objects below.
    m_data->parts.clear();
    m_data->documentIndex.clear();
    m_data->documents.clear();
    m_data->products.clear();
    m_data->references.clear();
    Journal::get().clear();
    ErrorReports::get().take();
    Messages::get().take();
}

Environment& Session::environment() { return m_data->environment; }

Document Session::document(const std::string& storageName) {
    const auto place = m_data->documentIndex.emplace(foldedName(storageName), nullptr);
    if (place.second) {
        m_data->documents.push_back(std::make_unique<DocumentObject>(*m_data, storageName));
        place.first->second = m_data->documents.back().get();
    }
    return Document(place.first->second);
}

Document Session::find(const std::string& storageName) const {
    const auto found = m_data->documentIndex.find(foldedName(storageName));
    return Document(found == m_data->documentIndex.end() ? nullptr : found->second);
}

std::size_t Session::documentCount() const { return m_data->documents.size(); }

Document Session::documentAt(std::size_t index) const {
    return Document(index < documentCount() ? m_data->documents[index].get() : nullptr);
}

std::vector<std::string>& Session::updatedDrawings() { return m_data->updatedDrawings; }

std::string Session::digest() const {
    std::string text = digestOf(*m_data);
    for (const auto& part : m_data->parts) part.second->addToDigest(text);
    return text;
}

} // namespace embedded
