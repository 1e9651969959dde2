#include "VornToolsLinks.h"

#include "VornToolsCommon.h"
#include "VornToolsFolderMemory.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFields.h"
#include "links/FolderSearch.h"
#include "links/ImageBytes.h"
#include "links/LinkLists.h"
#include "links/LinkScan.h"
#include "links/Markers.h"

#include <memory>
#include <utility>

using namespace vorntools;

const CATUnicodeString VornToolsLinks::_CteCLASS_NAME("VornToolsLinks::");

namespace {

/** What the work finds; nothing where memory gives out. */
template <class Work>
Links linksFound(Work&& i_work) {
    return guarded(std::forward<Work>(i_work), Links::withoutSlots());
}

/** Runs some groups of links on an image; reports a missing image. */
template <class Groups>
Links linksOfImage(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
                   const CATUnicodeString& i_directory, KnownFolders*& iop_folders, Groups&& i_add_groups) {
    return linksFound([&] {
        if (isMissing(i_frame, ip_image)) return Links();
        DocumentScan document(viewOf(*ip_image));
        LinkScan scan(document, viewOf(ip_file_name), viewOf(i_directory), made(iop_folders));
        i_add_groups(scan);
        return linksOf(scan.links());
    });
}

/** The same with folders that nobody knows yet. */
template <class Groups>
Links linksOfImage(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
                   const CATUnicodeString& i_directory, Groups&& i_add_groups) {
    return linksFound([&] {
        if (isMissing(i_frame, ip_image)) return Links();
        KnownFolders folders;
        KnownFolders* p_folders = &folders;
        return linksOfImage(i_frame, ip_image, ip_file_name, i_directory, p_folders, i_add_groups);
    });
}

/** The links of one type. */
Links linksByType(const VornToolsString* ip_image, const CATUnicodeString& i_type, const VornToolsString* ip_file_name,
                  const CATUnicodeString& i_directory, unsigned char& o_missing_tag, KnownFolders*& iop_folders) {
    const JournalFrame frame(VornToolsLinks::_CteCLASS_NAME, "getLinks");
    o_missing_tag = 0;
    return linksFound([&] {
        if (isMissing(frame, ip_image)) return Links();
        DocumentScan document(viewOf(*ip_image));
        LinkScan scan(document, viewOf(ip_file_name), viewOf(i_directory), made(iop_folders));
        const bool missing = scan.addByType(viewOf(i_type));
        Links links = linksOf(scan.links());
        o_missing_tag = missing ? 1 : 0;
        return links;
    });
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

/** The links of a document of the disk in lists. @return 0 */
int search(const CATUnicodeString& i_path, const CATUnicodeString& i_type, const CATUnicodeString& i_directory,
           double& o_count, ParallelLists& o_lists, unsigned char& o_missing_tag, KnownFolders*& iop_folders) {
    const JournalFrame frame(VornToolsLinks::_CteCLASS_NAME, "searchLinks");
    o_lists.clear();
    o_count = 0;
    o_missing_tag = 0;
    const bool whole = guarded([&] {
        const CATUnicodeString name = nameOnDisk(i_path);
        const std::unique_ptr<VornToolsString> sp_image(VornToolsCommon::readBinaryFile(name));
        if (!sp_image) return;
        DocumentScan document(viewOf(*sp_image));
        LinkScan scan(document, viewOf(name), viewOf(i_directory), made(iop_folders));
        const bool missing = scan.addForSearch(viewOf(i_type));
        o_lists.fill(scan.links());
        o_count = static_cast<double>(scan.links().size());
        o_missing_tag = missing ? 1 : 0;
    });
    if (!whole) o_lists.clear();
    return 0;
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
    ParallelLists lists{linkedFileNames, types, references, sixth, seventh, tagFound};
    return search(filePath, linkType, directory, count, lists, missingTag, folders.m_folders);
}

int VornToolsLinks::searchLinks(CATUnicodeString filePath, CATUnicodeString linkType, CATUnicodeString directory,
                                double& count, CATListValCATUnicodeString& linkedFileNames,
                                CATListValCATUnicodeString& types, CATListValCATUnicodeString& references,
                                CATListValCATUnicodeString& sixth, CATListValCATUnicodeString& seventh,
                                VornToolsVector<unsigned char>& tagFound, unsigned char& missingTag,
                                VornToolsFolderMemory& folders) {
    ParallelLists lists{linkedFileNames, types, references, sixth, seventh, tagFound};
    return search(filePath, linkType, directory, count, lists, missingTag, folders.m_folders);
}

VornToolsVector<VornToolsLink> VornToolsLinks::getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                        VornToolsString* fileName, CATUnicodeString directory,
                                                        unsigned char& missingTag) {
    VornToolsFolderMemory folders;
    return linksByType(image, linkType, fileName, directory, missingTag, folders.m_folders);
}

VornToolsVector<VornToolsLink> VornToolsLinks::getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                        VornToolsString* fileName, CATUnicodeString directory,
                                                        unsigned char& missingTag, VornToolsFolderMemory& folders) {
    return linksByType(image, linkType, fileName, directory, missingTag, folders.m_folders);
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
    return linksFound([&] {
        if (isMissing(frame, image)) return Links();
        const std::size_t names = findMarker(viewOf(*image), marker::containerName, 0);
        const std::vector<std::string> references = publishedReferences(viewOf(*image), names);
        std::vector<FoundLink> found;
        found.reserve(references.size());
        for (const std::string& reference : references) found.push_back({kReferenceLink, {}, reference});
        return linksOf(found);
    });
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
    const JournalFrame frame(_CteCLASS_NAME, "getMMLDrawingLinks");
    return linksOfImage(frame, image, fileName, directory, [](LinkScan& io_scan) { io_scan.addDrawing(); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLDrawingLinks(VornToolsString* image, VornToolsString* fileName,
                                                                  CATUnicodeString directory,
                                                                  VornToolsFolderMemory& folders) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLDrawingLinks");
    return linksOfImage(frame, image, fileName, directory, folders.m_folders,
                        [](LinkScan& io_scan) { io_scan.addDrawing(); });
}
