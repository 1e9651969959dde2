#include "CATIPrtContainer.h"
#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/object/Stranger.h"

EMBEDDED_INTERFACE(CATIPrtContainer, CATBaseUnknown, 0x330);

namespace embedded {

EMBEDDED_IDENTITY(CATIPrtContainer);

namespace {

/** The container of a part document leads to the part, which every one has. */
class PartContainer final : public Extends<ContainerObject, CATIPrtContainer> {
public:
    explicit PartContainer(ContainerObject& container) : Extends(container) {}

    CATISpecObject_var GetPart() override {
        if (failing("CATIPrtContainer::GetPart")) return CATISpecObject_var();
        if (Failures::get().givesOtherKind())
            return handleOf<CATISpecObject_var>(static_cast<CATISpecObject*>(&StrangerObject::get()));
        DocumentObject& document = owner().document();
        const ProductObject* const root = document.rootProduct();
        const std::string name = root ? root->partNumber() : std::string();
        FeatureNode& part = KnowledgeData::get().impliedFeature(document, "MechanicalPart", name);
        return handleOf<CATISpecObject_var>(static_cast<CATISpecObject*>(&part));
    }

private:
    bool answers(const IID&) const override { return owner().document().isOf("CATPart"); }
};

const ExtensionOf<ContainerObject, PartContainer> partContainerKnown;

} // namespace

} // namespace embedded
