#include "links/DocumentScan.h"

#include "links/FirstPlaces.h"
#include "links/Markers.h"

#include <algorithm>
#include <utility>

namespace vorntools {

DocumentScan::DocumentScan(std::string_view i_image) : m_image(i_image) {
    const auto places =
        firstPlaces<3>(i_image, {marker::applicationContainer, marker::documentProperty, marker::containerName});
    m_application = places[0];
    m_property = places[1];
    m_first_names = places[2];
}

DocumentScan::DocumentScan(std::string_view i_image, std::size_t i_application, std::size_t i_property)
    : m_image(i_image), m_application(i_application), m_property(i_property) {}

const PropertyStream& DocumentScan::stream() {
    if (!m_stream) m_stream = m_property == notFound ? PropertyStream() : PropertyStream(m_image, m_property);
    return *m_stream;
}

void DocumentScan::takeStream(DocumentScan& io_other) {
    if (m_property == notFound || !io_other.stream().isComplete()) return;
    const std::size_t length = io_other.stream().end() - io_other.m_property;
    if (standsAt(m_image, m_property, io_other.m_image.substr(io_other.m_property, length)))
        m_stream = std::move(io_other.m_stream);
}

std::vector<const LinkedDocument*> DocumentScan::used(LinkedDocument::Kind i_kind) {
    std::vector<const LinkedDocument*> documents;
    for (const LinkedDocument& document : stream().documents())
        if (document.kind == i_kind && document.uses != 0) documents.push_back(&document);
    return documents;
}

bool DocumentScan::usesAny() {
    const std::vector<LinkedDocument>& documents = stream().documents();
    return std::any_of(documents.begin(), documents.end(),
                       [](const LinkedDocument& i_document) { return i_document.uses != 0; });
}

std::size_t DocumentScan::summary() {
    if (!m_summary) m_summary = findMarker(m_image, marker::summary, 0);
    return *m_summary;
}

DocumentVersion DocumentScan::version() { return readVersion(m_image, summary()); }

int DocumentScan::release() {
    if (!m_release) m_release = version().release;
    return *m_release;
}

void DocumentScan::setRelease(int i_release) { m_release = i_release; }

std::size_t DocumentScan::containerNames() const {
    if (m_application == notFound || m_property == notFound) return notFound;
    if (!m_first_names || *m_first_names < m_application)
        return findMarker(m_image, marker::containerName, m_application, m_property);
    const bool whole_inside =
        *m_first_names < m_property && marker::containerName.size() <= m_property - *m_first_names;
    return whole_inside ? *m_first_names : notFound;
}

const std::vector<std::string>& DocumentScan::references() {
    if (!m_references) m_references = externalReferences(m_image, containerNames(), m_property);
    return *m_references;
}

const std::vector<ImportUse>& DocumentScan::contextPartUses() {
    if (m_uses) return *m_uses;
    std::vector<std::string> identities;
    for (const LinkedDocument* const p_document : used(LinkedDocument::ContextPart))
        identities.push_back(p_document->identity);
    m_uses.emplace(identities.size());
    if (!identities.empty() && m_application != notFound)
        m_uses = importUses(m_image, m_property, identities, [this] { return usesOlderForm(release()); });
    return *m_uses;
}

const MultiModelLinks& DocumentScan::multiModelLinks() {
    if (m_multi_model) return *m_multi_model;
    const ImportedElements imported = importedElements(m_image, findMarker(m_image, marker::importRepository, 0));
    m_multi_model =
        vorntools::multiModelLinks(imported, used(LinkedDocument::PartFile), contextPartUses(), m_image.size());
    return *m_multi_model;
}

} // namespace vorntools
