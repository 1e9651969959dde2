#include "embedded/documents/Documents.h"

#include "CATDocumentServices.h"
#include "embedded/Session.h"
#include "embedded/documents/SessionData.h"
#include "embedded/documents/SessionObject.h"
#include "embedded/files/FileNames.h"
#include "embedded/object/Stranger.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATIADocument, CATIABase, 0x610);
EMBEDDED_INTERFACE(CATIDocId, CATBaseUnknown, 0x611);
EMBEDDED_INTERFACE(CATIDocRoots, CATBaseUnknown, 0x612);

namespace embedded {

namespace {

/** The class that every document's class derives from. */
constexpr const char* kDocumentClass = "CATDocument";

/** Whether documents of a type show as a product; the others (drawings, catalogs, results, texts) only have a root. */
bool hasProductStructure(const std::string& type) {
    static const char* const types[] = {"catproduct", "catpart", "catshape", "model", "cgr",  "wrl",
                                        "jt",         "stp",     "step",     "igs",   "iges", "3dxml"};
    return std::find(std::begin(types), std::end(types), foldedName(type)) != std::end(types);
}

/** A suffix may be spelled otherwise than the class of its kind. */
std::string classOf(const std::string& type) {
    static const char* const classes[] = {"CATPart",     "CATProduct", "CATDrawing", "CATAnalysis", "CATProcess",
                                          "CATMaterial", "CATShape",   "catalog",    "model",       "cgr"};
    const auto isIt = [&](const char* one) { return foldedName(one) == foldedName(type); };
    const auto* const found = std::find_if(std::begin(classes), std::end(classes), isIt);
    return found == std::end(classes) ? type : *found;
}

} // namespace

DocumentIdObject::DocumentIdObject(DocumentObject& document) : Implements("DocumentId"), m_document(document) {}

std::string DocumentIdObject::objectName() const { return "identity of " + m_document.objectName(); }

const Object* DocumentIdObject::home() const { return &m_document; }

HRESULT DocumentIdObject::GetType(CATUnicodeString& oType) {
    return textAnswer(called("CATIDocId::GetType"), m_document.type(), oType);
}

DescriptorObject::DescriptorObject(DocumentObject& document)
    : Implements("CATDocumentDescriptor"), m_document(document) {}

std::string DescriptorObject::objectName() const { return "descriptor of " + m_document.objectName(); }

const Object* DescriptorObject::home() const { return &m_document; }

CATUuid DescriptorObject::GetUuid() const {
    static char null[] = "0_0_0_0";
    return failing("CATDocumentDescriptor::GetUuid") ? CATUuid(null) : m_document.uuid;
}

PlainRootObject::PlainRootObject(DocumentObject& document) : Implements("DocumentRoot"), m_document(document) {}

std::string PlainRootObject::objectName() const { return "root of " + m_document.objectName(); }

CATBoolean PlainRootObject::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_document.upToDate ? TRUE : FALSE;
}

DocumentObject::DocumentObject(SessionData& session, const std::string& storageName)
    : Implements(kDocumentClass), onDisk(hasDirectory(storageName)), m_session(session), m_name(storageName) {
    setType(suffixOf(storageName));
    pin();
}

std::string DocumentObject::objectName() const { return "document " + m_name; }

void DocumentObject::setType(const std::string& type) {
    m_type = type;
    if (type.empty())
        setClass(kDocumentClass, CATBaseUnknown::ClassName());
    else
        setClass(classOf(type), kDocumentClass);
}

bool DocumentObject::isOf(const char* kind) const { return foldedName(m_type) == foldedName(kind); }

std::string DocumentObject::uuidText() const {
    char text[256];
    CATUuid(uuid).UUID_to_chaine(text);
    return text;
}

ProductObject* DocumentObject::rootProduct() {
    if (!hasProductStructure(m_type)) return nullptr;
    if (!m_rootProduct) {
        Reference& reference = m_session.newReference(*this, false);
        const std::string_view file = fileNameOf(m_name);
        reference.partNumber = file.substr(0, file.rfind('.'));
        m_rootProduct = reference.node;
    }
    return m_rootProduct;
}

bool DocumentObject::answers(const IID& iid) const {
    const bool automation = iid == IID_CATIADocument || iid == IID_CATIABase || iid == IID_CATBaseDispatch;
    return hasAutomation || !automation;
}

CATUnicodeString DocumentObject::StorageName() const {
    return failing("CATDocument::StorageName") ? CATUnicodeString() : toText(m_name);
}

HRESULT DocumentObject::GetDocId(CATIDocId** oDocId) {
    if (!oDocId) return E_POINTER;
    if (!m_id) m_id = std::make_unique<DocumentIdObject>(*this);
    const FaultFlavour flavour = called("CATDocument::GetDocId");
    if (flavour != FaultFlavour::none) return failedAnswer<CATIDocId*>(flavour, *oDocId, nullptr, m_id.get());
    *oDocId = handOut<CATIDocId>(m_id.get());
    return S_OK;
}

CATBoolean DocumentObject::IsSaved() const { return !failing("CATDocument::IsSaved") && onDisk ? TRUE : FALSE; }

CATDocumentDescriptor* DocumentObject::GetDocumentDescriptor() const {
    if (failing("CATDocument::GetDocumentDescriptor") || !hasDescriptor) return nullptr;
    if (!m_descriptor) m_descriptor = std::make_unique<DescriptorObject>(const_cast<DocumentObject&>(*this));
    m_descriptor->pin();
    return m_descriptor.get();
}

HRESULT __stdcall DocumentObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIADocument::get_Name"), std::string(fileNameOf(m_name)), oName);
}

HRESULT __stdcall DocumentObject::get_Saved(CAT_VARIANT_BOOL& oSaved) {
    const FaultFlavour flavour = called("CATIADocument::get_Saved");
    oSaved = (flavour == FaultFlavour::none && saved) || flavour == FaultFlavour::codeWithOutput ? -1 : 0;
    return flavour == FaultFlavour::none ? S_OK : E_FAIL;
}

CATBaseUnknown* DocumentObject::mainRoot() {
    if (ProductObject* const product = rootProduct()) return product->unknown();
    if (!m_plainRoot) m_plainRoot = std::make_unique<PlainRootObject>(*this);
    return m_plainRoot->unknown();
}

CATDocument* DocumentObject::GetDocument() {
    return failing("CATILinkableObject::GetDocument") ? nullptr : documentOrStranger(this);
}

CATListValCATBaseUnknown_var* DocumentObject::GiveDocRoots() {
    if (failing("CATIDocRoots::GiveDocRoots") || !hasRoots) return nullptr;
    auto roots = std::make_unique<CATListValCATBaseUnknown_var>();
    addStrangers<CATBaseUnknown_var>(*roots);
    roots->Append(handleOf<CATBaseUnknown_var>(mainRoot()));
    return roots.release();
}

CATDocument* documentOrStranger(CATDocument* document) {
    if (!document || !Failures::get().givesOtherKind()) return document;
    SessionDocuments& part = SessionDocuments::get();
    std::unique_ptr<DocumentObject>& stranger = part.strangers[document];
    if (!stranger)
        stranger =
            std::make_unique<DocumentObject>(part.session, "instead of " + Accounting::nameOf(*document) + ".txt");
    return stranger.get();
}

bool isStranger(const CATDocument& document) {
    const auto& strangers = SessionDocuments::get().strangers;
    return std::any_of(strangers.begin(), strangers.end(),
                       [&](const auto& stranger) { return stranger.second.get() == &document; });
}

std::string nameOf(const DocumentObject* document) { return document ? document->name() : std::string(); }

} // namespace embedded

HRESULT CATDocumentServices::GetDocumentInSession(const CATUnicodeString& iStorageName, CATDocument*& oOpenedDoc) {
    using namespace embedded;
    oOpenedDoc = nullptr;
    const FaultFlavour flavour = Failures::get().ask("CATDocumentServices::GetDocumentInSession");
    Document document = Session::current().find(toBytes(iStorageName));
    if (!document.loaded()) document = Document();
    if (flavour != FaultFlavour::none) return failedAnswer<CATDocument*>(flavour, oOpenedDoc, nullptr, document.get());
    oOpenedDoc = documentOrStranger(document.get());
    return document ? S_OK : E_FAIL;
}
