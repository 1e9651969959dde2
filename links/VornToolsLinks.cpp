#include "VornToolsLinks.h"

#include "VornToolsCommon.h"
#include "foundation/FirstPlaces.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentScan.h"
#include "links/LinkedNames.h"
#include "links/Markers.h"
#include "links/StoredText.h"

#include <memory>
#include <unordered_set>

using namespace vorntools;

const CATUnicodeString VornToolsLinks::_CteCLASS_NAME("VornToolsLinks::");

namespace {

using Links = VornToolsVector<VornToolsLink>;
using Strings = VornToolsVector<VornToolsString>;

constexpr const char* kContext = "MMLAssy_Context";
constexpr const char* kReference = "MMLAssy_Ref";
constexpr const char* kNotPublished = "MMLAssy_ImportNotPub";
constexpr const char* kMultiModel = "MML";
constexpr const char* kDrawing = "MMLDrawing";
constexpr const char* kAssemblyOnly = "MMLASSY";
constexpr const char* kMultiModelOnly = "MML";

std::string_view viewOf(const VornToolsString& i_text) { return {i_text.bytes(), i_text.size()}; }
std::string_view viewOf(const VornToolsString* ip_text) { return ip_text ? viewOf(*ip_text) : std::string_view(); }
std::string_view viewOf(const CATUnicodeString& i_text) {
    return {i_text.ConvertToChar(), static_cast<std::size_t>(i_text.GetLengthInByte())};
}

CATUnicodeString textOf(std::string_view i_bytes) { return CATUnicodeString(i_bytes.data(), i_bytes.size()); }
VornToolsString stringOf(std::string_view i_bytes) {
    return VornToolsString(i_bytes.data(), static_cast<int>(i_bytes.size()));
}

/** A position of the caller's; notFound for -1. */
std::size_t positionOf(int i_position) { return i_position < 0 ? notFound : static_cast<std::size_t>(i_position); }

/** A list that is empty stays as it is: making one allocates its hundred elements. */
template <class List>
void clear(List& io_list) {
    if (io_list.size() > 0) io_list = List();
}

void append(std::string_view i_bytes, Strings& io_strings) { io_strings.append(stringOf(i_bytes)); }

/** The one record that is filled anew for every link. */
class LinkList {
public:
    explicit LinkList(const char* i_type) { m_link.set_type(i_type); }
    void append(std::string_view i_file_name, std::string_view i_reference, bool i_tag_found, Links& io_links) {
        m_link.set_linkedFileName(textOf(i_file_name));
        m_link.set_reference(textOf(i_reference));
        m_link.set_link_tag_found(i_tag_found ? 1 : 0);
        io_links.append(m_link);
    }

private:
    VornToolsLink m_link;
};

/** Pairs publications with their documents; see updateMMLLink. */
void pairMultiModelLinks(const Strings& i_tags, const Strings& i_publications, const Strings& i_names,
                         Links& io_links) {
    LinkList list(kMultiModel);
    for (unsigned int i = 0; i < i_names.size(); ++i) {
        if (i_names[i].size() == 0) continue;
        const bool has_tag = i < i_publications.size() && i < i_tags.size();
        const std::string_view tag = has_tag ? viewOf(i_tags[i]) : std::string_view();
        list.append(viewOf(i_names[i]), tag, !tag.empty(), io_links);
    }
}

/** The links of one document image. */
class LinkScan {
public:
    LinkScan(const VornToolsString& i_image, const VornToolsString* ip_file_name, const CATUnicodeString& i_directory)
        : m_scan(viewOf(i_image)), m_names(m_scan.stream().ownPath(), viewOf(ip_file_name), viewOf(i_directory)) {}

    void appendContext(Links& io_links) { appendNames(LinkedDocument::ContextProduct, LinkList(kContext), io_links); }
    void appendReferences(Links& io_links) {
        LinkList list(kReference);
        for (const std::string& reference : m_scan.references()) list.append({}, reference, false, io_links);
    }
    void appendUnpublished(Links& io_links) {
        LinkList list(kNotPublished);
        for (const std::string& name : namesOfUse(ImportUse::Unpublished)) list.append(name, {}, false, io_links);
    }
    void appendAssembly(Links& io_links) {
        appendContext(io_links);
        appendReferences(io_links);
        appendUnpublished(io_links);
    }
    /** @param o_missing whether a publication has no document or a link no tag */
    void appendMultiModel(Links& io_links, bool& o_missing);
    void appendDrawing(Links& io_links);

private:
    /** Imported elements, by index; see updateMMLLink. */
    struct Publications {
        Strings tags, texts, names;
        std::unordered_set<std::string> documents; ///< those named
    };
    Publications readPublications(const std::vector<std::string>& i_part_files);

    std::vector<std::string> namesOf(LinkedDocument::Kind i_kind) {
        std::vector<std::string> names;
        for (const LinkedDocument& document : m_scan.used(i_kind)) names.push_back(m_names.resolve(document.name));
        return names;
    }
    std::vector<std::string> namesOfUse(ImportUse::Kind i_kind) {
        std::vector<std::string> names;
        const std::vector<LinkedDocument> parts = m_scan.used(LinkedDocument::ContextPart);
        const std::vector<ImportUse>& uses = m_scan.contextPartUses();
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (uses[i].kind == i_kind) names.push_back(m_names.resolve(parts[i].name));
        return names;
    }
    void appendNames(LinkedDocument::Kind i_kind, LinkList i_list, Links& io_links) {
        for (const std::string& name : namesOf(i_kind)) i_list.append(name, {}, false, io_links);
    }

    DocumentScan m_scan;
    LinkedNames m_names;
};

void LinkScan::appendMultiModel(Links& io_links, bool& o_missing) {
    o_missing = false;
    const std::vector<std::string> part_files = namesOf(LinkedDocument::PartFile);
    const std::vector<std::string> older = namesOfUse(ImportUse::OlderForm);
    if (part_files.empty() && older.empty()) return;

    Publications publications = readPublications(part_files);
    std::unordered_set<std::string> known(publications.documents);
    for (const std::string& name : part_files)
        if (publications.documents.count(name) == 0) append(name, publications.names);
    // A document that is imported in both forms keeps its place among the part files.
    known.insert(part_files.begin(), part_files.end());
    for (const std::string& name : older)
        if (known.insert(name).second) append(name, publications.names);

    const unsigned int before = io_links.size();
    pairMultiModelLinks(publications.tags, publications.texts, publications.names, io_links);
    o_missing = publications.texts.size() > io_links.size() - before;
    for (unsigned int i = before; i < io_links.size(); ++i)
        o_missing = o_missing || io_links[i].get_link_tag_found() == 0;
}

LinkScan::Publications LinkScan::readPublications(const std::vector<std::string>& i_part_files) {
    Publications publications;
    const std::vector<LinkedDocument> context_parts = m_scan.used(LinkedDocument::ContextPart);
    for (const MultiModelLink& link : m_scan.multiModelLinks()) {
        std::string name;
        if (link.document < i_part_files.size())
            name = i_part_files[link.document];
        else if (link.document != MultiModelLink::noDocument)
            name = m_names.resolve(context_parts[link.document - i_part_files.size()].name);
        append(decoded(link.tag), publications.tags);
        append(decoded(link.publication), publications.texts);
        append(name, publications.names);
        publications.documents.insert(name);
    }
    return publications;
}

void LinkScan::appendDrawing(Links& io_links) {
    LinkList list(kDrawing);
    std::unordered_set<std::string> known;
    for (const auto kind : {LinkedDocument::ContextProduct, LinkedDocument::ContextPart, LinkedDocument::Drawing}) {
        for (const std::string& name : namesOf(kind))
            if (known.insert(name).second) list.append(name, {}, false, io_links);
    }
}

Links linksOf(const VornToolsString& i_image, const CATUnicodeString& i_type, const VornToolsString* ip_file_name,
              const CATUnicodeString& i_directory, unsigned char& o_missing_tag) {
    Links links;
    LinkScan scan(i_image, ip_file_name, i_directory);
    const bool multi_model_only = i_type == kMultiModelOnly;
    if (!multi_model_only) scan.appendAssembly(links);
    if (i_type == kAssemblyOnly) return links;
    bool missing = false;
    scan.appendMultiModel(links, missing);
    o_missing_tag = multi_model_only && missing ? 1 : 0;
    return links;
}

/** Reports a missing image. */
bool isMissing(const JournalFrame& i_frame, const VornToolsString* ip_image) {
    if (!ip_image) i_frame.badInput("ip_image");
    return !ip_image;
}

/** Runs one group of links on an image; reports a missing image. */
template <class Group>
Links groupOf(const JournalFrame& i_frame, const VornToolsString* ip_image, const VornToolsString* ip_file_name,
              const CATUnicodeString& i_directory, Group&& i_group) {
    Links links;
    if (isMissing(i_frame, ip_image)) return links;
    LinkScan scan(*ip_image, ip_file_name, i_directory);
    i_group(scan, links);
    return links;
}

VornToolsString* resolved(const JournalFrame& i_frame, const VornToolsString* ip_own_path,
                          const VornToolsString* ip_file_name, const VornToolsString* ip_linked_name,
                          const CATUnicodeString& i_directory) {
    if (!ip_linked_name) {
        i_frame.badInput("ip_linked_name");
        return new VornToolsString;
    }
    LinkedNames names(viewOf(ip_own_path), viewOf(ip_file_name), viewOf(i_directory));
    const std::string& found = names.resolve(std::string(viewOf(*ip_linked_name)));
    return new VornToolsString(found.data(), static_cast<int>(found.size()));
}

} // namespace

VornToolsLinks::VornToolsLinks() = default;

VornToolsLinks::~VornToolsLinks() = default;

int VornToolsLinks::searchLinks(CATUnicodeString filePath, CATUnicodeString linkType, CATUnicodeString directory,
                                double& count, CATListValCATUnicodeString& linkedFileNames,
                                CATListValCATUnicodeString& types, CATListValCATUnicodeString& references,
                                CATListValCATUnicodeString& sixth, CATListValCATUnicodeString& seventh,
                                VornToolsVector<unsigned char>& tagFound, unsigned char& missingTag) {
    const JournalFrame frame(_CteCLASS_NAME, "searchLinks");
    count = 0;
    for (CATListValCATUnicodeString* const list : {&linkedFileNames, &types, &references, &sixth, &seventh})
        list->RemoveAll();
    clear(tagFound);
    missingTag = 0;

    const std::unique_ptr<VornToolsString> sp_image(VornToolsCommon::readBinaryFile(filePath));
    if (!sp_image) return 0;
    const VornToolsString file_name = stringOf(viewOf(filePath));
    Links links;
    if (linkType == kDrawing)
        LinkScan(*sp_image, &file_name, directory).appendDrawing(links);
    else
        links = linksOf(*sp_image, linkType, &file_name, directory, missingTag);

    count = links.size();
    for (unsigned int i = 0; i < links.size(); ++i) {
        linkedFileNames.Append(links[i].get_linkedFileName());
        types.Append(links[i].get_type());
        references.Append(links[i].get_reference());
        sixth.Append("");
        seventh.Append("");
        tagFound.append(links[i].get_link_tag_found());
    }
    return 0;
}

VornToolsVector<VornToolsLink> VornToolsLinks::getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                        VornToolsString* fileName, CATUnicodeString directory,
                                                        unsigned char& missingTag) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinks");
    missingTag = 0;
    return isMissing(frame, image) ? Links() : linksOf(*image, linkType, fileName, directory, missingTag);
}

VornToolsVector<VornToolsLink> VornToolsLinks::getAllLinks(VornToolsString* image, VornToolsString* fileName,
                                                           CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getAllLinks");
    return groupOf(frame, image, fileName, directory, [](LinkScan& io_scan, Links& io_links) {
        bool missing = false;
        io_scan.appendMultiModel(io_links, missing);
        io_scan.appendAssembly(io_links);
    });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getContextLinks(VornToolsString* image, VornToolsString* fileName,
                                                               CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getContextLinks");
    return groupOf(frame, image, fileName, directory,
                   [](LinkScan& io_scan, Links& io_links) { io_scan.appendContext(io_links); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getImportLinks(VornToolsString* image, VornToolsString* fileName,
                                                              CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getImportLinks");
    return groupOf(frame, image, fileName, directory, [](LinkScan& io_scan, Links& io_links) {
        io_scan.appendReferences(io_links);
        io_scan.appendUnpublished(io_links);
    });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getImportLinksWithoutPub(VornToolsString* image,
                                                                        VornToolsString* fileName,
                                                                        CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getImportLinksWithoutPub");
    return groupOf(frame, image, fileName, directory,
                   [](LinkScan& io_scan, Links& io_links) { io_scan.appendUnpublished(io_links); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getImportLinksWithPub(VornToolsString* image) {
    const JournalFrame frame(_CteCLASS_NAME, "getImportLinksWithPub");
    Links links;
    if (isMissing(frame, image)) return links;
    LinkList list(kReference);
    const std::size_t names = firstPlace(viewOf(*image), marker::containerName);
    for (const std::string& reference : publishedReferences(viewOf(*image), names))
        list.append({}, reference, false, links);
    return links;
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLLinks(VornToolsString* image, VornToolsString* fileName,
                                                           CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLLinks");
    return groupOf(frame, image, fileName, directory, [](LinkScan& io_scan, Links& io_links) {
        bool missing = false;
        io_scan.appendMultiModel(io_links, missing);
    });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLAssyLinks(VornToolsString* image, VornToolsString* fileName,
                                                               CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLAssyLinks");
    return groupOf(frame, image, fileName, directory,
                   [](LinkScan& io_scan, Links& io_links) { io_scan.appendAssembly(io_links); });
}

VornToolsVector<VornToolsLink> VornToolsLinks::getMMLDrawingLinks(VornToolsString* image, VornToolsString* fileName,
                                                                  CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLDrawingLinks");
    return groupOf(frame, image, fileName, directory,
                   [](LinkScan& io_scan, Links& io_links) { io_scan.appendDrawing(io_links); });
}

int VornToolsLinks::findStreams(VornToolsString* image, int& applicationPosition, int& propertyPosition) {
    const JournalFrame frame(_CteCLASS_NAME, "findStreams");
    applicationPosition = propertyPosition = -1;
    if (isMissing(frame, image)) return 0;
    // The other two are what the operations that take these positions look for next.
    const auto places = firstPlaces<4>(viewOf(*image), {marker::applicationContainer, marker::documentProperty,
                                                        marker::containerName, marker::summary});
    applicationPosition = places[0] == notFound ? -1 : static_cast<int>(places[0]);
    propertyPosition = places[1] == notFound ? -1 : static_cast<int>(places[1]);
    return 0;
}

int VornToolsLinks::getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                     CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                     VornToolsVector<VornToolsString>& contextProducts,
                                     VornToolsVector<VornToolsString>& contextParts,
                                     VornToolsVector<VornToolsString>& contextPartReferences) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedDocName");
    for (Strings* const list : {&partFiles, &contextProducts, &contextParts, &contextPartReferences}) clear(*list);
    if (isMissing(frame, image)) return 0;
    const PropertyStream stream(viewOf(*image), positionOf(position));
    LinkedNames names(stream.ownPath(), viewOf(fileName), viewOf(directory));
    for (const LinkedDocument& document : stream.documents()) {
        if (document.uses == 0 || document.kind == LinkedDocument::Drawing) continue;
        Strings& list = document.kind == LinkedDocument::PartFile         ? partFiles
                        : document.kind == LinkedDocument::ContextProduct ? contextProducts
                                                                          : contextParts;
        append(names.resolve(document.name), list);
        if (document.kind == LinkedDocument::ContextPart) append(document.reference(), contextPartReferences);
    }
    return 0;
}

int VornToolsLinks::getGhosts(VornToolsString* image, int position, VornToolsVector<VornToolsString>& ghosts) {
    const JournalFrame frame(_CteCLASS_NAME, "getGhosts");
    clear(ghosts);
    if (isMissing(frame, image)) return 0;
    const PropertyStream stream(viewOf(*image), positionOf(position));
    for (const LinkedDocument& document : stream.documents())
        if (document.uses == 0) append(document.name, ghosts);
    return 0;
}

int VornToolsLinks::getExternalReference(VornToolsString* image, int, int applicationPosition, int propertyPosition,
                                         VornToolsVector<VornToolsString>& references) {
    const JournalFrame frame(_CteCLASS_NAME, "getExternalReference");
    clear(references);
    if (isMissing(frame, image)) return 0;
    DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
    for (const std::string& reference : scan.references()) append(reference, references);
    return 0;
}

int VornToolsLinks::getVersion(VornToolsString* image, int& version, int& release, int& servicePack) {
    const JournalFrame frame(_CteCLASS_NAME, "getVersion");
    version = release = servicePack = 0;
    if (isMissing(frame, image)) return 0;
    const std::string_view bytes = viewOf(*image);
    const DocumentVersion found = readVersion(bytes, firstPlace(bytes, marker::summary));
    version = found.version;
    release = found.release;
    servicePack = found.servicePack;
    return found.complete ? 0 : 1;
}

VornToolsVector<VornToolsString> VornToolsLinks::findKey(VornToolsString* image, VornToolsString& key) {
    const JournalFrame frame(_CteCLASS_NAME, "findKey");
    Strings identifiers;
    if (isMissing(frame, image)) return identifiers;
    for (const std::string& identifier : identifiersBehind(viewOf(*image), viewOf(key)))
        append(identifier, identifiers);
    return identifiers;
}

int VornToolsLinks::isKeyInFile(VornToolsString& image, VornToolsVector<VornToolsString>& keys) {
    const JournalFrame frame(_CteCLASS_NAME, "isKeyInFile");
    std::vector<std::string_view> views;
    for (unsigned int i = 0; i < keys.size(); ++i) views.push_back(viewOf(keys[i]));
    return publishes(viewOf(image), views) ? 1 : 0;
}

int VornToolsLinks::getMMLTag(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                              VornToolsVector<VornToolsString>& tags) {
    const JournalFrame frame(_CteCLASS_NAME, "getMMLTag");
    clear(tags);
    if (isMissing(frame, image)) return 0;
    DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
    scan.setRelease(release);
    for (const MultiModelLink& link : scan.multiModelLinks()) append(decoded(link.tag), tags);
    return 0;
}

int VornToolsLinks::getMmlPublication(VornToolsString* image, int release, int applicationPosition,
                                      int propertyPosition, VornToolsVector<VornToolsString>& publications) {
    const JournalFrame frame(_CteCLASS_NAME, "getMmlPublication");
    clear(publications);
    if (isMissing(frame, image)) return 0;
    DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
    scan.setRelease(release);
    for (const MultiModelLink& link : scan.multiModelLinks()) append(decoded(link.publication), publications);
    return 0;
}

int VornToolsLinks::updateMMLLink(VornToolsVector<VornToolsString>& tags,
                                  VornToolsVector<VornToolsString>& publications,
                                  VornToolsVector<VornToolsString>& names, VornToolsVector<VornToolsLink>& links) {
    const JournalFrame frame(_CteCLASS_NAME, "updateMMLLink");
    clear(links);
    pairMultiModelLinks(tags, publications, names, links);
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
    const std::vector<LinkedDocument> parts = scan.used(LinkedDocument::ContextPart);
    std::unordered_map<std::string, ImportUse::Kind> kinds;
    for (std::size_t i = 0; i < parts.size(); ++i) kinds.emplace(parts[i].reference(), scan.contextPartUses()[i].kind);
    for (unsigned int i = 0; i < names.size() && i < references.size(); ++i) {
        const auto kind = kinds.find(std::string(viewOf(references[i])));
        if (kind == kinds.end() || kind->second == ImportUse::None) continue;
        (kind->second == ImportUse::Unpublished ? unpublished : olderForm).append(names[i]);
    }
    return 0;
}

unsigned char VornToolsLinks::isAFilename(const VornToolsString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isAFilename");
    return isBareName(viewOf(name)) ? 1 : 0;
}

const char* VornToolsLinks::findFileInPath(const char* fileName, const char* directory) {
    const JournalFrame frame(_CteCLASS_NAME, "findFileInPath");
    if (fileName && directory) return findBelow(fileName, directory);
    frame.badInput(fileName ? "ip_directory" : "ip_file_name");
    return nullptr;
}

int VornToolsLinks::replaceSeparatorInString(VornToolsString& path) {
    const JournalFrame frame(_CteCLASS_NAME, "replaceSeparatorInString");
    path.replaceAll(VornToolsString("/", 1), VornToolsString("\\", 1));
    return 0;
}

VornToolsString* VornToolsLinks::realLinkedDocPath(VornToolsString* ownPath, VornToolsString* fileName,
                                                   VornToolsString* linkedName, CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "realLinkedDocPath");
    return resolved(frame, ownPath, fileName, linkedName, directory);
}

VornToolsString* VornToolsLinks::realLinkedDocPath_2(VornToolsString* ownPath, VornToolsString* fileName,
                                                     VornToolsString* linkedName, CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "realLinkedDocPath_2");
    return resolved(frame, ownPath, fileName, linkedName, directory);
}
