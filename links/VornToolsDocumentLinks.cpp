#include "VornToolsDocumentLinks.h"

#include "VornToolsFolderMemory.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFile.h"
#include "links/LinkImage.h"
#include "links/LinkLists.h"
#include "links/LinkScan.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace vorntools;

const CATUnicodeString VornToolsDocumentLinks::_CteCLASS_NAME("VornToolsDocumentLinks::");

namespace {

using Documents = VornToolsDocumentLinks;

/** A text that has a NUL behind it: a whole string, or a literal. */
Documents::Text textOfWhole(std::string_view i_text) {
    if (i_text.data() == nullptr) return {"", 0};
    return {i_text.data(), static_cast<unsigned int>(i_text.size())};
}

Documents::EnumDocumentKind kindOf(LinkedDocument::Kind i_kind) {
    switch (i_kind) {
    case LinkedDocument::PartFile: return Documents::KindPartFile;
    case LinkedDocument::ContextProduct: return Documents::KindContextProduct;
    case LinkedDocument::ContextPart: return Documents::KindContextPart;
    case LinkedDocument::Drawing: break;
    }
    return Documents::KindDrawing;
}

template <class Element>
const Element* listOf(const std::vector<Element>& i_list, unsigned int& o_count) {
    o_count = static_cast<unsigned int>(i_list.size());
    return i_list.empty() ? nullptr : i_list.data();
}

} // namespace

/** What was read. Texts of the lists belong to the scans. */
struct VornToolsDocumentLinks::Content {
    /** What is asked for, and where documents are looked for. */
    struct Question {
        std::string_view link_type, path, directory;
        KnownFolders& folders;
        bool find_unused, read_preview;
    };
    bool read(const JournalFrame& i_frame, DocumentFile& io_file, const Question& i_question);

    LinkImage image;
    std::optional<LinkScan> scan;

    std::uint64_t size = 0;
    VornToolsDocumentFile::EnumDocumentCondition condition = VornToolsDocumentFile::DocumentNoDocument;
    DocumentVersion version;
    Text saved_path = {"", 0};
    std::string save, preview;
    std::vector<NamedDocument> documents;
    std::vector<Link> links;
    std::vector<Text> references;
    bool missing_tag = false;

private:
    void listDocuments(bool i_find_unused);
    void listLinks();
    void place(const std::string& i_name, bool i_look, NamedDocument& io_document);
};

bool VornToolsDocumentLinks::Content::read(const JournalFrame& i_frame, DocumentFile& io_file,
                                           const Question& i_question) {
    size = io_file.size();
    if (size == 0) return true;
    if (!image.read(i_frame, io_file)) return false;
    condition = image.conditionOf(io_file);
    version = image.scan().version();
    saved_path = textOfWhole(image.scan().stream().ownPath());
    scan.emplace(image.scan(), i_question.path, i_question.directory, i_question.folders);
    listDocuments(i_question.find_unused);
    missing_tag = scan->addForSearch(i_question.link_type);
    listLinks();
    for (const std::string& reference : image.scan().references()) references.push_back(textOfWhole(reference));
    if (i_question.read_preview && !io_file.readPreview(preview)) preview.clear();
    if (const DirectoryEntry* const p_top = io_file.topStorage()) save = p_top->name;
    image.dropBytes();
    return true;
}

void VornToolsDocumentLinks::Content::place(const std::string& i_name, bool i_look, NamedDocument& io_document) {
    io_document.storedName = io_document.foundName = textOfWhole(i_name);
    if (!i_look) return;
    const LinkedName& name = scan->names().find(i_name);
    io_document.foundName = textOfWhole(name.path);
    io_document.isFound = name.exists ? 1 : 0;
}

void VornToolsDocumentLinks::Content::listDocuments(bool i_find_unused) {
    const PropertyStream& stream = image.scan().stream();
    documents.reserve(stream.documents().size() + stream.others().size());
    for (const LinkedDocument& document : stream.documents()) {
        documents.push_back({kindOf(document.kind), {"", 0}, {}, {}, textOfWhole(document.identity), document.uses, 0});
        place(document.name, document.uses != 0 || i_find_unused, documents.back());
    }
    for (const OtherDocument& document : stream.others()) {
        documents.push_back({KindOther, textOfWhole(document.kind), {}, {}, {"", 0}, document.uses, 0});
        place(document.name, true, documents.back());
    }
}

void VornToolsDocumentLinks::Content::listLinks() {
    links.reserve(scan->links().size());
    for (const FoundLink& link : scan->links())
        links.push_back({textOfWhole(link.type), textOfWhole(link.storedName), textOfWhole(link.fileName),
                         textOfWhole(link.reference), static_cast<unsigned char>(link.exists ? 1 : 0),
                         static_cast<unsigned char>(link.tagFound ? 1 : 0)});
}

VornToolsDocumentLinks::VornToolsDocumentLinks() : m_content(nullptr), m_isPreviewRead(0) {}

VornToolsDocumentLinks::~VornToolsDocumentLinks() { delete m_content; }

void VornToolsDocumentLinks::setPreviewRead(unsigned char i_is_read) {
    const JournalFrame frame(_CteCLASS_NAME, "setPreviewRead");
    m_isPreviewRead = i_is_read;
}

HRESULT VornToolsDocumentLinks::read(const CATUnicodeString& i_path, const CATUnicodeString& i_link_type,
                                     const CATUnicodeString& i_directory, VornToolsFolderMemory& io_folders,
                                     unsigned char i_find_unused) {
    const JournalFrame frame(_CteCLASS_NAME, "read");
    delete std::exchange(m_content, nullptr);
    bool opened = false;
    const bool done = guarded(
        [&] {
            DocumentFile file;
            opened = file.open(i_path);
            auto sp_content = std::make_unique<Content>();
            const Content::Question question = {viewOf(i_link_type),        viewOf(i_path),     viewOf(i_directory),
                                                made(io_folders.m_folders), i_find_unused != 0, m_isPreviewRead != 0};
            if (!opened || !sp_content->read(frame, file, question)) return false;
            m_content = sp_content.release();
            return true;
        },
        false);
    if (done) return S_OK;
    return opened ? frame.callFailed("read") : frame.report(ErrorFileNotOpened, i_path);
}

VornToolsDocumentFile::EnumDocumentCondition VornToolsDocumentLinks::getCondition() const {
    const JournalFrame frame(_CteCLASS_NAME, "getCondition");
    return m_content ? m_content->condition : VornToolsDocumentFile::DocumentNotOpen;
}

unsigned long long VornToolsDocumentLinks::getSize() const {
    const JournalFrame frame(_CteCLASS_NAME, "getSize");
    return m_content ? m_content->size : 0;
}

int VornToolsDocumentLinks::getVersion(int& o_version, int& o_release, int& o_service_pack) const {
    const JournalFrame frame(_CteCLASS_NAME, "getVersion");
    const DocumentVersion version = m_content ? m_content->version : DocumentVersion();
    o_version = version.version;
    o_release = version.release;
    o_service_pack = version.servicePack;
    return version.complete ? 0 : 1;
}

VornToolsDocumentLinks::Text VornToolsDocumentLinks::getSavedPath() const {
    const JournalFrame frame(_CteCLASS_NAME, "getSavedPath");
    return m_content ? m_content->saved_path : Text{"", 0};
}

VornToolsDocumentLinks::Text VornToolsDocumentLinks::getPreview() const {
    const JournalFrame frame(_CteCLASS_NAME, "getPreview");
    return m_content ? textOfWhole(m_content->preview) : Text{"", 0};
}

VornToolsDocumentLinks::Text VornToolsDocumentLinks::getSave() const {
    const JournalFrame frame(_CteCLASS_NAME, "getSave");
    return m_content ? textOfWhole(m_content->save) : Text{"", 0};
}

const VornToolsDocumentLinks::NamedDocument* VornToolsDocumentLinks::getDocuments(unsigned int& o_count) const {
    const JournalFrame frame(_CteCLASS_NAME, "getDocuments");
    o_count = 0;
    return m_content ? listOf(m_content->documents, o_count) : nullptr;
}

const VornToolsDocumentLinks::Link* VornToolsDocumentLinks::getLinks(unsigned int& o_count) const {
    const JournalFrame frame(_CteCLASS_NAME, "getLinks");
    o_count = 0;
    return m_content ? listOf(m_content->links, o_count) : nullptr;
}

const VornToolsDocumentLinks::Text* VornToolsDocumentLinks::getExternalReferences(unsigned int& o_count) const {
    const JournalFrame frame(_CteCLASS_NAME, "getExternalReferences");
    o_count = 0;
    return m_content ? listOf(m_content->references, o_count) : nullptr;
}

unsigned char VornToolsDocumentLinks::getMissingTag() const {
    const JournalFrame frame(_CteCLASS_NAME, "getMissingTag");
    return m_content && m_content->missing_tag ? 1 : 0;
}
