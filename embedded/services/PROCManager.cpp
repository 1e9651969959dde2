#include "PROCManager.h"

#include "embedded/services/EnvironmentAnswers.h"

using namespace embedded;

namespace {

class ProcessManager final : public PROCManager {
public:
    unsigned char isCommandCreateSpreadsheet() override {
        return flag("PROCManager::isCommandCreateSpreadsheet", &Environment::commandCreateSpreadsheet);
    }
    unsigned char isCommandImport() override {
        return flag("PROCManager::isCommandImport", &Environment::commandImport);
    }
    unsigned char isCommandBRR() override { return flag("PROCManager::isCommandBRR", &Environment::commandBrr); }
    unsigned char isProcessLifeCycleFactory() override {
        return flag("PROCManager::isProcessLifeCycleFactory", &Environment::processLifeCycleFactory);
    }
    unsigned char isCommandHighlightItemRevision() override {
        return flag("PROCManager::isCommandHighlightItemRevision", &Environment::commandHighlightItemRevision);
    }
    unsigned char isCommandHighlightInCATIASK() override {
        return flag("PROCManager::isCommandHighlightInCATIASK", &Environment::commandHighlightHosted);
    }
    unsigned char isCommandStateDetailsUpdate() override {
        return flag("PROCManager::isCommandStateDetailsUpdate", &Environment::commandStateDetailsUpdate);
    }
    unsigned char manageDocumentsOfStatusWindowFileDeletion() override {
        return flag("PROCManager::manageDocumentsOfStatusWindowFileDeletion", &Environment::deletesStatusWindowFiles);
    }
    unsigned char ignoreOEMProperties() override {
        return flag("PROCManager::ignoreOEMProperties", &Environment::ignoresOemProperties);
    }
};

} // namespace

PROCManager* PROCManager::getInstance() {
    static ProcessManager manager;
    return finds("PROCManager::getInstance", "PROCManager") ? &manager : nullptr;
}
