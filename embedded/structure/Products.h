#ifndef EMBEDDED_STRUCTURE_PRODUCTS_H
#define EMBEDDED_STRUCTURE_PRODUCTS_H

#include "CATIAProduct.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Extensions.h"
#include "embedded/object/Implements.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace embedded {

class DocumentObject;
class ProductObject;
struct SessionData;

EMBEDDED_AUTOMATION_IDENTITY(CATIAProduct);
EMBEDDED_IDENTITY(CATIPrdProperties);
EMBEDDED_IDENTITY(CATIProduct);

/** What a reference keeps for all its instances. Owned by the session; lives in a document. */
struct Reference {
    ProductObject* node = nullptr;
    DocumentObject* document = nullptr;
    bool component = false;
    bool linkable = true;
    std::string partNumber;
    std::string description;
    std::string masterShape;
    std::vector<std::pair<std::string, std::string>> shapes;    ///< names with paths, the default first
    std::unordered_map<std::string, std::size_t> instanceIndex; ///< instance names of brothers are different
    std::vector<Reference*> usedIn;                             ///< one entry for each of its instances
    std::unordered_set<const ProductObject*> pictures;          ///< its places in visualisation
    std::uint64_t mark = 0;                                     ///< of the last search through the structure
};

/** The master shape representation of a product as automation shows it: what matters is its name. */
class RepresentationObject final : public Implements<CATBaseUnknown, CATIABase> {
public:
    explicit RepresentationObject(const ProductObject& product);

    std::string objectName() const override;
    const Object* home() const override;
    HRESULT __stdcall get_Name(CATBSTR& oName) override;

private:
    const ProductObject& m_product;
};

/**
 * A product as one place in the structure: a reference, an instance directly below one, or an occurrence further down.
 *
 * Each reference is the root of its own tree of places. Its instances are there from the beginning; everything below
 * them comes into being when somebody asks and then stays, so that a place is always the same object. An instance of
 * reference R stands below R itself, which is therefore its father.
 */
class ProductObject final : public Implements<CATBaseUnknown, CATIProduct, CATIPrdProperties, CATILinkableObject,
                                              CATIAProduct, CATISpecObject> {
public:
    /** A reference. */
    ProductObject(SessionData& session, Reference& reference);
    /** A place below another; `instance` is the direct instance that it shows, null when it is one itself. */
    ProductObject(ProductObject& father, std::size_t index, ProductObject* instance, Reference* reference);

    std::string objectName() const override;
    /** A reference goes with its document; its places belong to those who use it. */
    const Object* home() const override;

    // The structure as the builder sees it: no failure point, no reference counted.
    bool isReference() const { return m_father == nullptr; }
    bool isDirectInstance() const { return m_instance == this; }
    /** Null for an unresolved instance. */
    Reference* reference() const { return m_reference; }
    ProductObject* father() const { return m_father; }
    std::size_t index() const { return m_index; }
    std::size_t childCount() const;
    ProductObject* child(std::size_t index) const;
    ProductObject* childNamed(const std::string& instanceName) const;
    /** Adds an instance below this reference, of nothing when the child is not loaded. Null when a brother has the name
     * or when the structure would contain itself. */
    ProductObject* addInstance(Reference* child, const std::string& instanceName);

    /** Empty for a reference. */
    const std::string& instanceName() const;
    bool rename(const std::string& instanceName);
    std::string partNumber() const { return m_reference ? m_reference->partNumber : std::string(); }
    std::string description() const;
    /** The text given to this very place, if any. */
    const std::optional<std::string>& ownDescription() const { return m_description; }
    void setDescription(const std::string& text) { m_description = text; }
    bool hasProperties() const { return m_hasProperties; }
    void withoutProperties() { m_hasProperties = false; }
    /** Number of CATPrsWorkModeServices::WorkMode; any other for a product that is out of order. */
    int workMode() const { return m_workMode; }
    void setWorkMode(int mode);
    bool isVisualised() const { return m_workMode == 0; }
    /** Whether what the reference keeps can be told or changed here: in visualisation only the picture is loaded. */
    bool tellsReference() const { return m_reference && (isReference() || !isVisualised()); }
    /** That of a reference; of an instance the assembly's, wherever the place of it stands. */
    DocumentObject& storedIn() const;

    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    CATIProduct_var GetReferenceProduct() override;
    CATIProduct_var GetFatherProduct() override;
    HRESULT IsReference() override;
    CATIProduct_var FindInstance(const CATIProduct_var& iContext) override;
    CATUnicodeString GetPartNumber() const override;
    void SetPartNumber(const CATUnicodeString& iPartNumber) override;
    HRESULT GetPrdInstanceName(CATUnicodeString& oName) override;
    HRESULT SetPrdInstanceName(const CATUnicodeString iName) override;
    CATListValCATBaseUnknown_var* GetChildren(const char* iIntfId) const override;
    int GetChildrenCount() const override;

    HRESULT GetDescriptionInst(CATUnicodeString& oDescription) override;
    HRESULT SetDescriptionInst(const CATUnicodeString& iDescription) override;
    HRESULT SetDescriptionRef(const CATUnicodeString& iDescription) override;
    HRESULT SetDefinition(const CATUnicodeString& iDefinition) override;
    HRESULT SetRevision(const CATUnicodeString& iRevision) override;
    HRESULT SetNomenclature(const CATUnicodeString& iNomenclature) override;
    HRESULT GetUserProperties(CATIParmPublisher*& oPublisher, CATBoolean iCreate) override;

    CATDocument* GetDocument() override;
    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;
    CATUnicodeString GetDisplayName() const override;
    CATUnicodeString GetType() const override;
    CATIContainer_var GetFeatContainer() const override;
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                    CATAttrInOut iInOut) override;

    /** Defined with the scenes, the one thing that a product keeps under a name. */
    HRESULT __stdcall GetItem(const CATBSTR& iName, CATBaseDispatch*& oObject) override;
    HRESULT __stdcall HasAMasterShapeRepresentation(CAT_VARIANT_BOOL& oHas) override;
    HRESULT __stdcall GetMasterShapeRepresentation(CAT_VARIANT_BOOL iLoadIfNecessary, CATBaseDispatch*& oRep) override;
    HRESULT __stdcall GetMasterShapeRepresentationPathName(CATBSTR& oPath) override;
    HRESULT __stdcall GetDefaultShapeName(CATBSTR& oName) override;
    HRESULT __stdcall GetShapePathName(const CATBSTR& iShapeName, CATBSTR& oPath) override;

private:
    bool answers(const IID& iid) const override;
    Found extended(const IID& iid) override { return extensionFor(*this, iid); }
    ProductObject* findInstance(const ProductObject& context) const;
    bool tellsShapes() const;

    SessionData& m_session;
    ProductObject* const m_father;
    ProductObject* const m_instance;
    Reference* const m_reference;
    const std::size_t m_index;
    bool m_hasProperties = true;
    int m_workMode = 3;
    std::unique_ptr<RepresentationObject> m_representation; ///< made on first use
    std::string m_name;                                     ///< of a direct instance
    std::optional<std::string> m_description;
    /** Of a reference its instances; of any other place a slot for each of them, filled on demand. */
    mutable std::vector<ProductObject*> m_children;
};

} // namespace embedded

#endif
