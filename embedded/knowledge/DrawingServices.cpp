#include "CATIDftDocumentServices.h"
#include "embedded/knowledge/KnowledgeData.h"

EMBEDDED_INTERFACE(CATIDftDocumentServices, CATBaseUnknown, 0x320);

namespace embedded {

EMBEDDED_IDENTITY(CATIDftDocumentServices);

namespace {

/** What a drawing document answers beside its own interfaces. */
class DrawingServices final : public Extends<DocumentObject, CATIDftDocumentServices> {
public:
    explicit DrawingServices(DocumentObject& document) : Extends(document) {}

    HRESULT GetDrawing(const IID iIID, void** oDrawing) override {
        if (!oDrawing) return E_POINTER;
        const FaultFlavour flavour = called("CATIDftDocumentServices::GetDrawing");
        FeatureNode& drawing = KnowledgeData::get().feature(owner(), FeatureNode::kDrawing, "Drawing");
        *oDrawing = flavour == FaultFlavour::codeWithOutput ? drawing.unknown() : nullptr;
        if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
        return handleOf<CATBaseUnknown_var>(drawing.unknown())->QueryInterface(iIID, oDrawing);
    }

private:
    bool answers(const IID&) const override { return owner().isOf("CATDrawing"); }
};

const ExtensionOf<DocumentObject, DrawingServices> drawingServicesKnown;

} // namespace

} // namespace embedded
