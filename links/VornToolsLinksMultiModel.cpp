#include "VornToolsLinks.h"

#include "VornToolsFolderMemory.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/FolderSearch.h"
#include "links/LinkLists.h"
#include "links/LinkedNames.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// Multi-model links, step by step.

using namespace vorntools;

namespace {

/** A text of each multi-model link; none when memory gives out. */
Strings textsOf(std::string_view i_image, int i_release, int i_application, int i_property,
                std::string MultiModelLinks::Element::*i_text) {
    const auto read = [&] {
        DocumentScan scan(i_image, positionOf(i_application), positionOf(i_property));
        scan.setRelease(i_release);
        const MultiModelLinks& found = scan.multiModelLinks();
        std::vector<std::string_view> views;
        for (const MultiModelLinks::Link& link : found.links) views.push_back(found.elements[link.element].*i_text);
        return stringsOf(views);
    };
    return guarded(read, Strings::withoutSlots());
}

/** The document of each multi-model link. @return 0 */
int nameDocuments(const VornToolsString* ip_image, int i_release, int i_application, int i_property,
                  const VornToolsString* ip_file_name, const CATUnicodeString& i_directory, Strings& o_documents,
                  KnownFolders*& iop_folders) {
    const JournalFrame frame(VornToolsLinks::_CteCLASS_NAME, "getMmlDocuments");
    clear(o_documents);
    if (isMissing(frame, ip_image)) return 0;
    guarded([&] {
        DocumentScan scan(viewOf(*ip_image), positionOf(i_application), positionOf(i_property));
        scan.setRelease(i_release);
        LinkedNames names(scan.stream().ownPath(), viewOf(ip_file_name), viewOf(i_directory), made(iop_folders));
        std::vector<std::string_view> paths;
        for (const LinkedName* const p_name : multiModelNames(scan, names))
            paths.push_back(p_name ? std::string_view(p_name->path) : std::string_view());
        o_documents = stringsOf(paths);
    });
    return 0;
}

} // namespace

int VornToolsLinks::getMMLTag(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                              VornToolsVector<VornToolsString>& tags) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLTag");
    clear(tags);
    if (isMissing(frame, image)) return 0;
    tags = textsOf(viewOf(*image), release, applicationPosition, propertyPosition, &MultiModelLinks::Element::tag);
    return 0;
}

int VornToolsLinks::getMmlPublication(VornToolsString* image, int release, int applicationPosition,
                                      int propertyPosition, VornToolsVector<VornToolsString>& publications) {
    const JournalFrame frame(_CteCLASS_NAME, "getMmlPublication");
    clear(publications);
    if (isMissing(frame, image)) return 0;
    publications =
        textsOf(viewOf(*image), release, applicationPosition, propertyPosition, &MultiModelLinks::Element::publication);
    return 0;
}

int VornToolsLinks::getMmlDocuments(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                                    VornToolsString* fileName, CATUnicodeString directory,
                                    VornToolsVector<VornToolsString>& documents) {
    VornToolsFolderMemory folders;
    return nameDocuments(image, release, applicationPosition, propertyPosition, fileName, directory, documents,
                         folders.m_folders);
}

int VornToolsLinks::getMmlDocuments(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                                    VornToolsString* fileName, CATUnicodeString directory,
                                    VornToolsVector<VornToolsString>& documents, VornToolsFolderMemory& folders) {
    return nameDocuments(image, release, applicationPosition, propertyPosition, fileName, directory, documents,
                         folders.m_folders);
}

int VornToolsLinks::updateMMLLink(VornToolsVector<VornToolsString>& tags,
                                  VornToolsVector<VornToolsString>& publications,
                                  VornToolsVector<VornToolsString>& names, VornToolsVector<VornToolsLink>& links) {
    const JournalFrame frame(_CteCLASS_NAME, "updateMMLLink");
    clear(links);
    guarded([&] {
        std::vector<FoundLink> found;
        for (unsigned int i = 0; i < names.size(); ++i) {
            if (names[i].size() == 0) continue;
            const bool has_tag = i < publications.size() && i < tags.size();
            found.push_back(multiModelLink(viewOf(names[i]), has_tag ? viewOf(tags[i]) : std::string_view()));
        }
        links = linksOf(found);
    });
    return 0;
}

int VornToolsLinks::sortImportUnpublished_and_MMLR12(VornToolsString* image, int release, int applicationPosition,
                                                     int propertyPosition, VornToolsVector<VornToolsString>& names,
                                                     VornToolsVector<VornToolsString>& references,
                                                     VornToolsVector<VornToolsString>& unpublished,
                                                     VornToolsVector<VornToolsString>& olderForm) {
    const JournalFrame frame(_CteCLASS_NAME, "sortImportUnpublished_and_MMLR12");
    clear(unpublished);
    clear(olderForm);
    if (isMissing(frame, image)) return 0;
    guarded([&] {
        DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
        scan.setRelease(release);
        const std::vector<const LinkedDocument*> parts = scan.used(LinkedDocument::ContextPart);
        std::unordered_map<std::string_view, ImportUse::Kind> kinds;
        for (std::size_t i = 0; i < parts.size(); ++i)
            kinds.emplace(parts[i]->reference(), scan.contextPartUses()[i].kind);
        std::vector<std::string_view> of_unpublished, of_older_form;
        for (unsigned int i = 0; i < names.size() && i < references.size(); ++i) {
            const auto kind = kinds.find(viewOf(references[i]));
            if (kind == kinds.end() || kind->second == ImportUse::None) continue;
            (kind->second == ImportUse::Unpublished ? of_unpublished : of_older_form).push_back(viewOf(names[i]));
        }
        Strings first = stringsOf(of_unpublished), second = stringsOf(of_older_form);
        unpublished = std::move(first);
        olderForm = std::move(second);
    });
    return 0;
}
