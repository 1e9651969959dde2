// What analysis and process documents answer of their own.

#include "CATISPPProcessContainer.h"
#include "CATISamAccess.h"
#include "CATISamAnalysisContainer.h"
#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/object/Stranger.h"

EMBEDDED_INTERFACE(CATIContainerOfDocument, CATBaseUnknown, 0x600);
EMBEDDED_INTERFACE(CATISamAccess, CATIContainerOfDocument, 0x601);
EMBEDDED_INTERFACE(CATISamAnalysisContainer, CATBaseUnknown, 0x602);
EMBEDDED_INTERFACE(CATISamAnalysisManager, CATBaseUnknown, 0x603);
EMBEDDED_INTERFACE(CATISPPContainer, CATBaseUnknown, 0x604);
EMBEDDED_INTERFACE(CATISPPProcessContainer, CATISPPContainer, 0x605);

namespace embedded {

EMBEDDED_IDENTITY(CATISamAnalysisContainer);
EMBEDDED_IDENTITY(CATISamAnalysisManager);
template <>
struct Identity<CATISamAccess> {
    static bool has(const IID& iid) { return iid == IID_CATISamAccess || iid == IID_CATIContainerOfDocument; }
};
template <>
struct Identity<CATISPPProcessContainer> {
    static bool has(const IID& iid) { return iid == IID_CATISPPProcessContainer || iid == IID_CATISPPContainer; }
};

namespace {

constexpr const char* kAnalysisDocument = "CATAnalysis";
constexpr const char* kProcessDocument = "CATProcess";
constexpr const char* kManager = "AnalysisManager";
constexpr const char* kProcess = "Process";

class AnalysisAccess final : public Extends<DocumentObject, CATISamAccess> {
public:
    explicit AnalysisAccess(DocumentObject& document) : Extends(document) {}

    HRESULT GetSpecContainer(CATIContainer*& oContainer) override {
        const FaultFlavour flavour = called("CATIContainerOfDocument::GetSpecContainer");
        ContainerObject& container = KnowledgeData::get().container(owner());
        if (flavour != FaultFlavour::none)
            return failedAnswer<CATIContainer*>(flavour, oContainer, nullptr, &container);
        oContainer =
            Failures::get().givesOtherKind() ? handOut(&strangeContainer()) : handOut<CATIContainer>(&container);
        return S_OK;
    }

private:
    bool answers(const IID&) const override { return owner().isOf(kAnalysisDocument); }
};

class AnalysisManager final : public Extends<FeatureNode, CATISamAnalysisManager> {
public:
    explicit AnalysisManager(FeatureNode& feature) : Extends(feature) {}

private:
    bool answers(const IID&) const override { return owner().type() == kManager; }
};

class AnalysisContainer final : public Extends<ContainerObject, CATISamAnalysisContainer> {
public:
    explicit AnalysisContainer(ContainerObject& container) : Extends(container) {}

    HRESULT GetAnalysisManager(CATISamAnalysisManager_var& oManager) override {
        const FaultFlavour flavour = called("CATISamAnalysisContainer::GetAnalysisManager");
        FeatureNode& feature = KnowledgeData::get().feature(owner().document(), kManager, "Analysis Manager");
        const bool filled = flavour == FaultFlavour::none || flavour == FaultFlavour::codeWithOutput;
        oManager = filled ? handleOf<CATISamAnalysisManager_var>(
                                static_cast<CATISamAnalysisManager*>(&extensionOf<AnalysisManager>(feature)))
                          : CATISamAnalysisManager_var();
        return flavour == FaultFlavour::none ? S_OK : Failures::get().codeOf(flavour);
    }

private:
    bool answers(const IID&) const override { return owner().document().isOf(kAnalysisDocument); }
};

class ProcessContainer final : public Extends<ContainerObject, CATISPPProcessContainer> {
public:
    explicit ProcessContainer(ContainerObject& container) : Extends(container) {}

    /** The process that the builder or the session file made; an empty list before. */
    CATListValCATBaseUnknown_var* GetAllProcess() const override {
        if (failing("CATISPPProcessContainer::GetAllProcess")) return nullptr;
        auto list = std::make_unique<CATListValCATBaseUnknown_var>();
        addStrangers<CATBaseUnknown_var>(*list);
        const auto& roots = KnowledgeData::get().roots;
        const auto found = roots.find({&owner().document(), kProcess});
        if (found != roots.end()) list->Append(handleOf<CATBaseUnknown_var>(found->second->unknown()));
        return list.release();
    }

private:
    bool answers(const IID&) const override { return owner().document().isOf(kProcessDocument); }
};

const ExtensionOf<DocumentObject, AnalysisAccess> knownAccess;
const ExtensionOf<ContainerObject, AnalysisContainer> knownContainer;
const ExtensionOf<FeatureNode, AnalysisManager> knownManager;
const ExtensionOf<ContainerObject, ProcessContainer> knownProcesses;

} // namespace

} // namespace embedded
