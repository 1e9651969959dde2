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
    /** Of the document as the image names it, and whether it was found; nothing for a link that names none. */
    std::string_view storedName = {};
    bool exists = false;
};

/** The multi-model link of a document; see VornToolsLinks::updateMMLLink. */
inline FoundLink multiModelLink(std::string_view i_file_name, std::string_view i_tag) {
    return {kMultiModelLink, i_file_name, i_tag, !i_tag.empty()};
}

/** Names in a list, in the place of each link; null where no document is known. They stay in the LinkedNames. */
using NamesOfLinks = std::vector<const LinkedName*>;

/** Names of the documents of io_scan.multiModelLinks().links, by index; then of the documents that are linked to
 * without any of them. */
NamesOfLinks multiModelNames(DocumentScan& io_scan, LinkedNames& io_names);

/** The links of one document image, group by group in the order of the calls. */
class LinkScan {
public:
    /** @param io_scan outlives this object. @param i_file_name of the document now
     * @param i_directory for names without one. @param io_folders known */
    LinkScan(DocumentScan& io_scan, std::string_view i_file_name, std::string_view i_directory,
             KnownFolders& io_folders);

    LinkedNames& names() { return m_names; }

    void addContext();
    void addReferences();
    void addUnpublished();
    /** The three above. */
    void addAssembly();
    /** Multi-model links. @return whether one of them lacks its tag, or an imported element its document */
    bool addMultiModel();
    void addDrawing();
    /** The links of a type, as VornToolsLinks::getLinks takes it. @return whether multi-model links alone are asked for
     * and one of them lacks its tag or document */
    bool addByType(std::string_view i_type);
    /** The same as VornToolsLinks::searchLinks takes it, which knows those of a drawing, too. */
    bool addForSearch(std::string_view i_type);

    /** Their texts are good for as long as the scan. */
    const std::vector<FoundLink>& links() const { return m_links; }

private:
    void addNames(const char* i_type, const NamesOfLinks& i_names);

    DocumentScan& m_scan;
    LinkedNames m_names;
    std::vector<FoundLink> m_links;
};

} // namespace vorntools

#endif
