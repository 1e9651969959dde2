#include "VornToolsLinks.h"

#include "VornToolsCommon.h"
#include "VornToolsFolderMemory.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFields.h"
#include "links/ImageBytes.h"
#include "links/LinkLists.h"
#include "links/LinkScan.h"
#include "links/Markers.h"

#include <memory>

using namespace vorntools;

const CATUnicodeString VornToolsLinks::_CteCLASS_NAME("VornToolsLinks::");

namespace {

/** Adds what a filter asks for. @return whether a link that it asks for lacks its tag or document */
bool addByType(LinkScan& io_scan, const CATUnicodeString& i_type) {
    const bool multi_model_only = i_type == "MML";
    if (!multi_model_only) io_scan.addAssembly();
    if (i_type == "MMLASSY") return false;
    const bool missing = io_scan.addMultiModel();
    return multi_model_only && missing;
}

/** Runs some groups of links on an image; reports a missing image. */
template <class Groups>
Links linksOfImage(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
                   const CATUnicodeString& i_directory, KnownFolders& io_folders, Groups&& i_add_groups) {
    if (isMissing(i_frame, ip_image)) return Links();
    LinkScan scan(viewOf(*ip_image), viewOf(ip_file_name), viewOf(i_directory), io_folders);
    i_add_groups(scan);
    return linksOf(scan.links());
}

/** The same with folders that nobody knows yet. */
template <class Groups>
Links linksOfImage(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
                   const CATUnicodeString& i_directory, Groups&& i_add_groups) {
    KnownFolders folders;
    return linksOfImage(i_frame, ip_image, ip_file_name, i_directory, folders, i_add_groups);
}

} // namespace

VornToolsLinks::VornToolsLinks() = default;

VornToolsLinks::~VornToolsLinks() = default;

int VornToolsLinks::searchLinks(CATUnicodeString filePath, CATUnicodeString linkType, CATUnicodeString directory,
                                double& count, CATListValCATUnicodeString& linkedFileNames,
                                CATListValCATUnicodeString& types, CATListValCATUnicodeString& references,
                                CATListValCATUnicodeString& sixth, CATListValCATUnicodeString& seventh,
                                VornToolsVector<unsigned char>& tagFound, unsigned char& missingTag) {
    VornToolsFolderMemory folders;
    return searchLinks(filePath, linkType, directory, count, linkedFileNames, types, references, sixth, seventh,
                       tagFound, missingTag, folders);
}

int VornToolsLinks::searchLinks(CATUnicodeString filePath, CATUnicodeString linkType, CATUnicodeString directory,
                                double& count, CATListValCATUnicodeString& linkedFileNames,
                                CATListValCATUnicodeString& types, CATListValCATUnicodeString& references,
                                CATListValCATUnicodeString& sixth, CATListValCATUnicodeString& seventh,
                                VornToolsVector<unsigned char>& tagFound, unsigned char& missingTag,
                                VornToolsFolderMemory& folders) {
    const JournalFrame frame(_CteCLASS_NAME, "searchLinks");
    count = 0;
    for (CATListValCATUnicodeString* const list : {&linkedFileNames, &types, &references, &sixth, &seventh})
        list->RemoveAll();
    clear(tagFound);
    missingTag = 0;

    const std::unique_ptr<VornToolsString> sp_image(VornToolsCommon::readBinaryFile(filePath));
    if (!sp_image) return 0;
    LinkScan scan(viewOf(*sp_image), viewOf(filePath), viewOf(directory), *folders.m_folders);
    if (linkType == kDrawingLink)
        scan.addDrawing();
    else
        missingTag = addByType(scan, linkType) ? 1 : 0;

    count = static_cast<double>(scan.links().size());
    for (const FoundLink& link : scan.links()) {
        linkedFileNames.Append(textOf(link.fileName));
        types.Append(link.type);
        references.Append(textOf(link.reference));
        sixth.Append("");
        seventh.Append("");
        tagFound.append(link.tagFound ? 1 : 0);
    }
    return 0;
}

VornToolsVector<VornToolsLink> VornToolsLinks::getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                        VornToolsString* fileName, CATUnicodeString directory,
                                                        unsigned char& missingTag) {
    VornToolsFolderMemory folders;
    return getLinks(image, linkType, fileName, directory, missingTag, folders);
}

VornToolsVector<VornToolsLink> VornToolsLinks::getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                        VornToolsString* fileName, CATUnicodeString directory,
                                                        unsigned char& missingTag, VornToolsFolderMemory& folders) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinks");
    missingTag = 0;
    return linksOfImage(frame, image, fileName, directory, *folders.m_folders,
                        [&](LinkScan& io_scan) { missingTag = addByType(io_scan, linkType) ? 1 : 0; });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getAllLinks(VornToolsString* image, VornToolsString* fileName,
                                                           CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllLinks");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) {
        io_scan.addMultiModel();
        io_scan.addAssembly();
    });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getContextLinks(VornToolsString* image, VornToolsString* fileName,
                                                               CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getContextLinks");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) { io_scan.addContext(); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getImportLinks(VornToolsString* image, VornToolsString* fileName,
                                                              CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getImportLinks");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) {
        io_scan.addReferences();
        io_scan.addUnpublished();
    });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getImportLinksWithoutPub(VornToolsString* image,
                                                                        VornToolsString* fileName,
                                                                        CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getImportLinksWithoutPub");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) { io_scan.addUnpublished(); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getImportLinksWithPub(VornToolsString* image) {
    const JournalFrame frame(_CteCLASS_NAME, "getImportLinksWithPub");
    if (isMissing(frame, image)) return Links();
    const std::size_t names = findMarker(viewOf(*image), marker::containerName, 0);
    const std::vector<std::string> references = publishedReferences(viewOf(*image), names);
    std::vector<FoundLink> links;
    for (const std::string& reference : references) links.push_back({kReferenceLink, {}, reference});
    return linksOf(links);
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLLinks(VornToolsString* image, VornToolsString* fileName,
                                                           CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLLinks");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) { io_scan.addMultiModel(); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLAssyLinks(VornToolsString* image, VornToolsString* fileName,
                                                               CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLAssyLinks");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) { io_scan.addAssembly(); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLDrawingLinks(VornToolsString* image, VornToolsString* fileName,
                                                                  CATUnicodeString directory) {
    VornToolsFolderMemory folders;
    return getMMLDrawingLinks(image, fileName, directory, folders);
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLDrawingLinks(VornToolsString* image, VornToolsString* fileName,
                                                                  CATUnicodeString directory,
                                                                  VornToolsFolderMemory& folders) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLDrawingLinks");
    return linksOfImage(frame, image, fileName, directory, *folders.m_folders,
                        [](LinkScan& io_scan) { io_scan.addDrawing(); });
}
