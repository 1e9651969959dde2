#include "ENVManager.h"

#include "embedded/object/Answers.h"
#include "embedded/services/EnvironmentAnswers.h"

using namespace embedded;

namespace {

class EnvironmentManager final : public ENVManager {
public:
    unsigned char isEnvInitilized() override { return flag("ENVManager::isEnvInitilized", &Environment::initialized); }
    unsigned char getCATIAIsUsingDLName() override {
        return flag("ENVManager::getCATIAIsUsingDLName", &Environment::usesLogicalNames);
    }
    unsigned char get_catia_pn_manual_input() override {
        return flag("ENVManager::get_catia_pn_manual_input", &Environment::manualPartNumberInput);
    }
    CATUnicodeString getStagingDirectory() override {
        return text("ENVManager::getStagingDirectory", &Environment::stagingDirectory);
    }
    CATUnicodeString getFilesDirectory() override {
        return text("ENVManager::getFilesDirectory", &Environment::filesDirectory);
    }
    CATUnicodeString getReferencePath() override {
        return text("ENVManager::getReferencePath", &Environment::referencePath);
    }
    CATUnicodeString getReferencePrefix() override {
        return text("ENVManager::getReferencePrefix", &Environment::referencePrefix);
    }
    CATUnicodeString getLocalCacheDirectory() override {
        return text("ENVManager::getLocalCacheDirectory", &Environment::localCacheDirectory);
    }
    HRESULT getReleaseCacheDirectories(CATListValCATUnicodeString& oDirectories) override {
        oDirectories.RemoveAll();
        const FaultFlavour flavour = Failures::get().ask("ENVManager::getReleaseCacheDirectories");
        if (flavour == FaultFlavour::codeWithOutput) oDirectories.Append("stale");
        if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
        for (const std::string& directory : environment().releaseCacheDirectories)
            oDirectories.Append(toText(directory));
        return S_OK;
    }
    unsigned char isInstDescManagedForIgnoreNode() override {
        return flag("ENVManager::isInstDescManagedForIgnoreNode", &Environment::instanceDescriptionMarksIgnoreNodes);
    }
    unsigned char updateDrawing() override { return flag("ENVManager::updateDrawing", &Environment::updateDrawing); }
    unsigned char isUpdateDrawingInLUS() override {
        return flag("ENVManager::isUpdateDrawingInLUS", &Environment::updateDrawingInLastUpdateState);
    }
    unsigned char saveDetailSheet() override {
        return flag("ENVManager::saveDetailSheet", &Environment::saveDetailSheet);
    }
    unsigned char checkForUpdatePart() override {
        return flag("ENVManager::checkForUpdatePart", &Environment::checkForUpdatePart);
    }
    CATUnicodeString getTempDirectory() override {
        return text("ENVManager::getTempDirectory", &Environment::tempDirectory);
    }
    unsigned char isDebugModeEnable() override {
        return flag("ENVManager::isDebugModeEnable", &Environment::keepsIntermediateFiles);
    }
    CATUnicodeString getSpreadSheetPath() override {
        return text("ENVManager::getSpreadSheetPath", &Environment::spreadsheetPath);
    }
    CATUnicodeString getImportPath() override { return text("ENVManager::getImportPath", &Environment::importPath); }
    unsigned char isManageCatiaStatusOnRoot() override {
        return flag("ENVManager::isManageCatiaStatusOnRoot", &Environment::managesStatusOnRoot);
    }
    unsigned char isPX1Available() override {
        return flag("ENVManager::isPX1Available", &Environment::platformPdmConnection);
    }
    unsigned char createPropsForMapping() override {
        return flag("ENVManager::createPropsForMapping", &Environment::createsProperties);
    }
    HRESULT getReadOnlyPropertiesOnCreate(CATListValCATUnicodeString& oNames) override {
        oNames.RemoveAll();
        const FaultFlavour flavour = Failures::get().ask("ENVManager::getReadOnlyPropertiesOnCreate");
        if (flavour == FaultFlavour::codeWithOutput) oNames.Append("stale");
        if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
        for (const std::string& name : environment().propertiesReadOnlyOnCreate) oNames.Append(toText(name));
        return S_OK;
    }
};

} // namespace

ENVManager* ENVManager::getInstance() {
    static EnvironmentManager manager;
    return finds("ENVManager::getInstance", "ENVManager") ? &manager : nullptr;
}
