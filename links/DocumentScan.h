#ifndef LINKS_DOCUMENT_SCAN_H
#define LINKS_DOCUMENT_SCAN_H

#include "foundation/SearchKernel.h"
#include "links/DocumentFields.h"
#include "links/Imports.h"
#include "links/PropertyStream.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/** A multi-model link: which document, which element of it. */
struct MultiModelLink {
    static constexpr std::size_t noDocument = static_cast<std::size_t>(-1);

    std::string publication;
    std::string tag;
    /** Index among the used part files or, behind them, among the used context parts; noDocument when unknown. */
    std::size_t document = noDocument;
};

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
    const PropertyStream& stream();
    /** Documents of a kind that are in use, in stream order. */
    std::vector<LinkedDocument> used(LinkedDocument::Kind i_kind);

    /** Release of the program that saved the document last. */
    int release();
    /** Answers for a release that the caller knows. */
    void setRelease(int i_release);

    std::vector<std::string> references();
    /** Uses of used(ContextPart), by index. Only a part imports: other documents point to the parts that they show. */
    const std::vector<ImportUse>& contextPartUses();
    /** Elements of part files in stream order, then those of the older form. */
    std::vector<MultiModelLink> multiModelLinks();

private:
    std::string_view m_image;
    std::size_t m_application;
    std::size_t m_property;
    PropertyStream m_stream;
    bool m_stream_read = false;
    std::vector<ImportUse> m_uses;
    bool m_uses_known = false;
    int m_release = -1; ///< -1: not read yet
};

} // namespace vorntools

#endif
