#include "links/DocumentScan.h"

#include "foundation/FirstPlaces.h"
#include "links/Markers.h"

#include <algorithm>

namespace vorntools {

namespace {

/** Which part file an element belongs to: the one whose record its repository points to, else the one as far down the
 * list as the repository is. */
std::size_t documentOf(const ImportedElement& i_element, const std::vector<LinkedDocument>& i_part_files) {
    const auto meant = std::find_if(i_part_files.begin(), i_part_files.end(), [&](const LinkedDocument& i_file) {
        return i_file.symbol != 0 && i_file.symbol == i_element.symbol;
    });
    if (meant != i_part_files.end()) return static_cast<std::size_t>(meant - i_part_files.begin());
    return i_element.repository < i_part_files.size() ? i_element.repository : MultiModelLink::noDocument;
}

} // namespace

DocumentScan::DocumentScan(std::string_view i_image) : m_image(i_image) {
    const auto places =
        firstPlaces<3>(i_image, {marker::applicationContainer, marker::documentProperty, marker::containerName});
    m_application = places[0];
    m_property = places[1];
}

DocumentScan::DocumentScan(std::string_view i_image, std::size_t i_application, std::size_t i_property)
    : m_image(i_image), m_application(i_application), m_property(i_property) {}

const PropertyStream& DocumentScan::stream() {
    if (!m_stream_read && m_property != notFound) m_stream = PropertyStream(m_image, m_property);
    m_stream_read = true;
    return m_stream;
}

std::vector<LinkedDocument> DocumentScan::used(LinkedDocument::Kind i_kind) {
    std::vector<LinkedDocument> documents;
    for (const LinkedDocument& document : stream().documents())
        if (document.kind == i_kind && document.uses != 0) documents.push_back(document);
    return documents;
}

int DocumentScan::release() {
    if (m_release < 0) m_release = readVersion(m_image, firstPlace(m_image, marker::summary)).release;
    return m_release;
}

void DocumentScan::setRelease(int i_release) { m_release = std::max(0, i_release); }

std::vector<std::string> DocumentScan::references() {
    if (m_application == notFound || m_property == notFound || m_property < m_application) return {};
    const std::size_t names = firstPlaceBetween(m_image, marker::containerName, m_application, m_property);
    return externalReferences(m_image, names, m_property);
}

const std::vector<ImportUse>& DocumentScan::contextPartUses() {
    if (m_uses_known) return m_uses;
    m_uses_known = true;
    std::vector<std::string> identities;
    for (const LinkedDocument& document : used(LinkedDocument::ContextPart)) identities.push_back(document.identity);
    m_uses.resize(identities.size());
    if (!identities.empty() && m_application != notFound)
        m_uses = importUses(m_image, m_property, identities, [this] { return usesOlderForm(release()); });
    return m_uses;
}

std::vector<MultiModelLink> DocumentScan::multiModelLinks() {
    const std::vector<LinkedDocument> part_files = used(LinkedDocument::PartFile);
    const std::vector<ImportUse>& uses = contextPartUses();
    std::vector<MultiModelLink> links;
    for (const ImportedElement& element : importedElements(m_image, firstPlace(m_image, marker::importRepository)))
        links.push_back({element.publication, element.tag, documentOf(element, part_files)});
    for (std::size_t i = 0; i < uses.size(); ++i) {
        if (uses[i].kind == ImportUse::OlderForm && !uses[i].tag.empty())
            links.push_back({uses[i].tag, uses[i].tag, part_files.size() + i});
    }
    return links;
}

} // namespace vorntools
