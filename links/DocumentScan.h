#ifndef LINKS_DOCUMENT_SCAN_H
#define LINKS_DOCUMENT_SCAN_H

#include "foundation/SearchKernel.h"
#include "links/ContextParts.h"
#include "links/DocumentFields.h"
#include "links/MultiModelLinks.h"
#include "links/PropertyStream.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/**
 * What one document image holds, each thing looked for when it is first asked for, and once: a search through the image
 * costs as much as reading it from memory, and few documents need all of them. The image must outlive the scan.
 */
class DocumentScan {
public:
    explicit DocumentScan(std::string_view i_image);
    /** With the positions of "AppliCont" and "CATDocumentProperty", notFound for none. */
    DocumentScan(std::string_view i_image, std::size_t i_application, std::size_t i_property);
    DocumentScan(const DocumentScan&) = delete;
    DocumentScan& operator=(const DocumentScan&) = delete;

    /** Whether the image has a document-property stream. */
    bool hasStream() const { return m_property != notFound; }
    /** Whether it has an application container, as parts do. */
    bool hasApplication() const { return m_application != notFound; }
    bool hasSummary() { return summary() != notFound; }
    const PropertyStream& stream();
    /** Takes over what another scan has read of its property stream, if that is complete and this image has the same
     * bytes for it. */
    void takeStream(DocumentScan& io_other);
    /** Documents of a kind that are in use, in stream order. */
    std::vector<const LinkedDocument*> used(LinkedDocument::Kind i_kind);
    /** Whether any document is in use. */
    bool usesAny();
    /** Of the program that saved the document last. */
    DocumentVersion version();

    /** Release of the program that saved the document last; 0 when it does not tell. */
    int release();
    /** Answers for a release that the caller knows. */
    void setRelease(int i_release);

    const std::vector<std::string>& references();
    /** Uses of used(ContextPart), by index. Only a part imports: other documents point to the parts that they show. */
    const std::vector<ImportUse>& contextPartUses();
    /** Documents count by index in used(PartFile), then in used(ContextPart). */
    const MultiModelLinks& multiModelLinks();

private:
    /** Where the names of containers begin between the two streams; notFound when they do not. */
    std::size_t containerNames() const;
    std::size_t summary();

    std::string_view m_image;
    std::size_t m_application;
    std::size_t m_property;
    std::optional<std::size_t> m_first_names; ///< first place in the image, when known
    std::optional<PropertyStream> m_stream;
    std::optional<std::size_t> m_summary;
    std::optional<int> m_release;
    std::optional<std::vector<std::string>> m_references;
    std::optional<std::vector<ImportUse>> m_uses;
    std::optional<MultiModelLinks> m_multi_model;
};

} // namespace vorntools

#endif
