// The way from a document to its root container.
#include "CATInit.h"
#include "embedded/knowledge/KnowledgeData.h"

EMBEDDED_INTERFACE(CATInit, CATBaseUnknown, 0x613);

namespace embedded {

EMBEDDED_IDENTITY(CATInit);

namespace {

class DocumentInit final : public Extends<DocumentObject, CATInit> {
public:
    explicit DocumentInit(DocumentObject& document) : Extends(document) {}

    CATBaseUnknown* GetRootContainer(const CATIdent iInterfaceID) override {
        const IID* const iid = interfaceNamed(iInterfaceID);
        if (failing("CATInit::GetRootContainer") || !iid) return nullptr;
        ContainerObject& container = KnowledgeData::get().container(owner());
        const Found found = container.findInterface(*iid);
        return handOut(static_cast<CATBaseUnknown*>(found.pointer));
    }
};

const ExtensionOf<DocumentObject, DocumentInit> documentInitKnown;

} // namespace

} // namespace embedded
