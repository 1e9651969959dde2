#include "CATInit.h"
#include "embedded/SessionData.h"

EMBEDDED_INTERFACE(CATInit, CATBaseUnknown, 0x110);

namespace embedded {

EMBEDDED_IDENTITY(CATInit);

namespace {

class DocumentInit final : public Extends<DocumentObject, CATInit> {
public:
    explicit DocumentInit(DocumentObject& document) : Extends(document) {}
};

const ExtensionOf<DocumentObject, DocumentInit> known;

} // namespace

} // namespace embedded
