#include "VornToolsLinks.h"

#include "foundation/JournalFrame.h"
#include "links/LinkLists.h"

#include <unordered_map>

// Multi-model links, step by step.

using namespace vorntools;

namespace {

/** The links of the publications are those of an image; the release is the caller's. */
template <class Member>
Strings textsOfPublications(std::string_view i_image, int i_release, int i_application, int i_property,
                            Member i_member) {
    DocumentScan scan(i_image, positionOf(i_application), positionOf(i_property));
    scan.setRelease(i_release);
    const MultiModelLinks& found = scan.multiModelLinks();
    std::vector<std::string_view> texts;
    for (const MultiModelLinks::Link& link : found.links) texts.push_back(found.elements[link.element].*i_member);
    return stringsOf(texts);
}

} // namespace

int VornToolsLinks::getMMLTag(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                              VornToolsVector<VornToolsString>& tags) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLTag");
    clear(tags);
    if (isMissing(frame, image)) return 0;
    tags = textsOfPublications(viewOf(*image), release, applicationPosition, propertyPosition,
                               &MultiModelLinks::Element::tag);
    return 0;
}

int VornToolsLinks::getMmlPublication(VornToolsString* image, int release, int applicationPosition,
                                      int propertyPosition, VornToolsVector<VornToolsString>& publications) {
    const JournalFrame frame(_CteCLASS_NAME, "getMmlPublication");
    clear(publications);
    if (isMissing(frame, image)) return 0;
    publications = textsOfPublications(viewOf(*image), release, applicationPosition, propertyPosition,
                                       &MultiModelLinks::Element::publication);
    return 0;
}

int VornToolsLinks::updateMMLLink(VornToolsVector<VornToolsString>& tags,
                                  VornToolsVector<VornToolsString>& publications,
                                  VornToolsVector<VornToolsString>& names, VornToolsVector<VornToolsLink>& links) {
    const JournalFrame frame(_CteCLASS_NAME, "updateMMLLink");
    clear(links);
    std::vector<FoundLink> found;
    for (unsigned int i = 0; i < names.size(); ++i) {
        if (names[i].size() == 0) continue;
        const bool has_tag = i < publications.size() && i < tags.size();
        found.push_back(multiModelLink(viewOf(names[i]), has_tag ? viewOf(tags[i]) : std::string_view()));
    }
    links = linksOf(found);
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
    DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
    scan.setRelease(release);
    const std::vector<const LinkedDocument*> parts = scan.used(LinkedDocument::ContextPart);
    std::unordered_map<std::string, ImportUse::Kind> kinds;
    for (std::size_t i = 0; i < parts.size(); ++i) kinds.emplace(parts[i]->reference(), scan.contextPartUses()[i].kind);
    for (unsigned int i = 0; i < names.size() && i < references.size(); ++i) {
        const auto kind = kinds.find(std::string(viewOf(references[i])));
        if (kind == kinds.end() || kind->second == ImportUse::None) continue;
        (kind->second == ImportUse::Unpublished ? unpublished : olderForm).append(names[i]);
    }
    return 0;
}
