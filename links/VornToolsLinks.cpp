#include "VornToolsLinks.h"

#include "VornToolsCommon.h"
#include "VornToolsFolderMemory.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
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

/** Runs some groups of links on an image; reports a missing image. */
template <class Groups>
Links linksOfImage(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
                   const CATUnicodeString& i_directory, KnownFolders& io_folders, Groups&& i_add_groups) {
    Links links;
    if (isMissing(i_frame, ip_image)) return links;
    guarded([&] {
        DocumentScan document(viewOf(*ip_image));
        LinkScan scan(document, viewOf(ip_file_name), viewOf(i_directory), io_folders);
        i_add_groups(scan);
        links = linksOf(scan.links());
    });
    return links;
}

/** The same with folders that nobody knows yet. */
template <class Groups>
Links linksOfImage(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
                   const CATUnicodeString& i_directory, Groups&& i_add_groups) {
    KnownFolders folders;
    return linksOfImage(i_frame, ip_image, ip_file_name, i_directory, folders, i_add_groups);
}

/** The lists of searchLinks, an entry a link. */
struct ParallelLists {
    CATListValCATUnicodeString &linkedFileNames, &types, &references, &sixth, &seventh;
    VornToolsVector<unsigned char>& tagFound;

    void clear() {
        for (CATListValCATUnicodeString* const list : {&linkedFileNames, &types, &references, &sixth, &seventh})
            list->RemoveAll();
        vorntools::clear(tagFound);
    }
    void fill(const std::vector<FoundLink>& i_links) {
        const int count = static_cast<int>(i_links.size());
        for (CATListValCATUnicodeString* const list : {&linkedFileNames, &types, &references, &sixth, &seventh})
            list->Size(count);
        VornToolsVector<unsigned char> flags(static_cast<unsigned int>(count));
        for (int i = 0; i < count; ++i) {
            const FoundLink& link = i_links[static_cast<std::size_t>(i)];
            linkedFileNames[i + 1] = textOf(link.fileName);
            types[i + 1] = link.type;
            references[i + 1] = textOf(link.reference);
            flags.append(link.tagFound ? 1 : 0);
        }
        tagFound = std::move(flags);
    }
};

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
    ParallelLists lists{linkedFileNames, types, references, sixth, seventh, tagFound};
    lists.clear();
    count = 0;
    missingTag = 0;

    const CATUnicodeString name = nameOnDisk(filePath);
    const std::unique_ptr<VornToolsString> sp_image(VornToolsCommon::readBinaryFile(name));
    if (!sp_image) return 0;
    const bool whole = guarded([&] {
        DocumentScan document(viewOf(*sp_image));
        LinkScan scan(document, viewOf(name), viewOf(directory), *folders.m_folders);
        const bool missing = scan.addForSearch(viewOf(linkType));
        lists.fill(scan.links());
        count = static_cast<double>(scan.links().size());
        missingTag = missing ? 1 : 0;
    });
    if (!whole) lists.clear();
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
    Links links;
    if (isMissing(frame, image)) return links;
    guarded([&] {
        DocumentScan document(viewOf(*image));
        LinkScan scan(document, viewOf(fileName), viewOf(directory), *folders.m_folders);
        const bool missing = scan.addByType(viewOf(linkType));
        links = linksOf(scan.links());
        missingTag = missing ? 1 : 0;
    });
    return links;
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
    Links links;
    if (isMissing(frame, image)) return links;
    guarded([&] {
        const std::size_t names = findMarker(viewOf(*image), marker::containerName, 0);
        const std::vector<std::string> references = publishedReferences(viewOf(*image), names);
        std::vector<FoundLink> found;
        found.reserve(references.size());
        for (const std::string& reference : references) found.push_back({kReferenceLink, {}, reference});
        links = linksOf(found);
    });
    return links;
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
