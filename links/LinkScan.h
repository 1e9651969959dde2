#ifndef LINKS_LINK_SCAN_H
#define LINKS_LINK_SCAN_H

#include "links/DocumentScan.h"
#include "links/LinkedNames.h"

#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

// Kinds of links.
constexpr const char* kContextLink = "MMLAssy_Context";
constexpr const char* kReferenceLink = "MMLAssy_Ref";
constexpr const char* kUnpublishedLink = "MMLAssy_ImportNotPub";
constexpr const char* kMultiModelLink = "MML";
constexpr const char* kDrawingLink = "MMLDrawing";

/** A link whose texts belong to somebody else: the scan that found it, or the caller who named them. */
struct FoundLink {
    const char* type;
    std::string_view fileName;
    std::string_view reference;
    bool tagFound = false;
};

/** The multi-model link of a document; see VornToolsLinks::updateMMLLink. */
inline FoundLink multiModelLink(std::string_view i_file_name, std::string_view i_tag) {
    return {kMultiModelLink, i_file_name, i_tag, !i_tag.empty()};
}

/** Names of the documents of io_scan.multiModelLinks().links, by index, empty where none is known; then of the
 * documents that are linked to without any of them. They stay in io_names. */
std::vector<std::string_view> multiModelNames(DocumentScan& io_scan, LinkedNames& io_names);

/** The links of one document image, group by group in the order of the calls. The image must outlive the scan. */
class LinkScan {
public:
    /** @param i_file_name of the document now. @param i_directory for names without one. @param io_folders known */
    LinkScan(std::string_view i_image, std::string_view i_file_name, std::string_view i_directory,
             KnownFolders& io_folders);

    void addContext();
    void addReferences();
    void addUnpublished();
    /** The three above. */
    void addAssembly();
    /** Multi-model links. @return whether one of them lacks its tag, or an imported element its document */
    bool addMultiModel();
    void addDrawing();

    /** Their texts are good for as long as the scan. */
    const std::vector<FoundLink>& links() const { return m_links; }

private:
    void addNames(const char* i_type, const std::vector<std::string_view>& i_names);

    DocumentScan m_scan;
    LinkedNames m_names;
    std::vector<FoundLink> m_links;
};

} // namespace vorntools

#endif
