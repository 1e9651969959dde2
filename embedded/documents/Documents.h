#ifndef EMBEDDED_DOCUMENTS_DOCUMENTS_H
#define EMBEDDED_DOCUMENTS_DOCUMENTS_H

#include "CATDocument.h"
#include "CATDocumentDescriptor.h"
#include "CATIADocument.h"
#include "CATIDocId.h"
#include "CATIDocRoots.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Extensions.h"
#include "embedded/object/Implements.h"

#include <memory>
#include <string>

namespace embedded {

class DocumentObject;
class ProductObject;
struct SessionData;

EMBEDDED_AUTOMATION_IDENTITY(CATIADocument);
EMBEDDED_IDENTITY(CATIDocId);
EMBEDDED_IDENTITY(CATIDocRoots);

/** The identity of a document as an object of its own. */
class DocumentIdObject final : public Implements<CATBaseUnknown, CATIDocId> {
public:
    explicit DocumentIdObject(DocumentObject& document);

    std::string objectName() const override;
    const Object* home() const override;
    HRESULT GetType(CATUnicodeString& oType) override;

private:
    DocumentObject& m_document;
};

/** The descriptor of a document. Nobody is given a reference to it. */
class DescriptorObject final : public Implements<CATDocumentDescriptor> {
public:
    explicit DescriptorObject(DocumentObject& document);

    std::string objectName() const override;
    const Object* home() const override;
    CATUuid GetUuid() const override;

private:
    DocumentObject& m_document;
};

/** The root of a document without product structure, such as a drawing. */
class PlainRootObject final : public Implements<CATBaseUnknown, CATISpecObject> {
public:
    explicit PlainRootObject(DocumentObject& document);

    std::string objectName() const override;
    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;

private:
    DocumentObject& m_document;
};

/** A document. It may be called without a reference: nobody is given one, except by QueryInterface. */
class DocumentObject final : public Implements<CATDocument, CATIADocument, CATIDocRoots, CATILinkableObject> {
public:
    DocumentObject(SessionData& session, const std::string& storageName);

    std::string objectName() const override;
    const Object* home() const override { return this; }
    const std::string& name() const { return m_name; }
    const std::string& type() const { return m_type; }
    void setType(const std::string& type);
    /** Whether the document is of a kind by its suffix, letter case ignored. */
    bool isOf(const char* kind) const;
    /** Somebody changed what is stored in the document. */
    void written() { saved = upToDate = false; }
    std::string uuidText() const;

    /** The root product, made on first use; null for a document without product structure. */
    ProductObject* rootProduct();
    const ProductObject* existingRootProduct() const { return m_rootProduct; }

    CATUuid uuid;
    bool saved = true;
    bool onDisk;
    bool upToDate = true;
    bool hasDescriptor = true;
    bool hasAutomation = true;
    bool hasRoots = true;
    bool inSession = true;    ///< false once closed
    bool wasUnloaded = false; ///< while every place of it shows its picture; see LoadedDocuments::settle

    CATUnicodeString StorageName() const override;
    HRESULT GetDocId(CATIDocId** oDocId) override;
    CATBoolean IsSaved() const override;
    CATDocumentDescriptor* GetDocumentDescriptor() const override;

    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall get_Saved(CAT_VARIANT_BOOL& oSaved) override;

    CATListValCATBaseUnknown_var* GiveDocRoots() override;
    CATDocument* GetDocument() override;

private:
    bool answers(const IID& iid) const override;
    Found extended(const IID& iid) override { return extensionFor(*this, iid); }
    CATBaseUnknown* mainRoot();

    SessionData& m_session;
    const std::string m_name;
    std::string m_type;
    ProductObject* m_rootProduct = nullptr;
    // Made on first use: most documents of a large session are never asked for them.
    std::unique_ptr<PlainRootObject> m_plainRoot;
    std::unique_ptr<DocumentIdObject> m_id;
    mutable std::unique_ptr<DescriptorObject> m_descriptor;
};

/** The document that a call is to hand out: another one, of another kind, when it answers with such. */
CATDocument* documentOrStranger(CATDocument* document);
/** Whether a document is such another one. */
bool isStranger(const CATDocument& document);

/** Empty for none. */
std::string nameOf(const DocumentObject* document);

} // namespace embedded

#endif
