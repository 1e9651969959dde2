#include "APIDraftingInterfaces.h"
#include "CATDocument.h"
#include "ENVManager.h"
#include "PROCManager.h"
#include "UTILFile.h"
#include "VornDebugOptions.h"
#include "VornEnvConfig.h"
#include "embedded/Session.h"
#include "embedded/object/Answers.h"

#include <algorithm>

using namespace embedded;

namespace {

const Environment& environment() { return Session::current().environment(); }

unsigned char flag(const char* site, bool Environment::*field) { return !fails(site) && environment().*field ? 1 : 0; }

CATUnicodeString text(const char* site, std::string Environment::*field) {
    return fails(site) ? CATUnicodeString() : toText(environment().*field);
}

/** The session's document behind a platform pointer; none for a document that the session does not hold. */
Document documentBehind(const CATDocument* pointer) {
    const Session& session = Session::current();
    for (std::size_t i = 0; i < session.documentCount(); ++i)
        if (session.documentAt(i).get() == pointer) return session.documentAt(i);
    return Document();
}

/** Whether getInstance() finds a manager; `site` is the failure point of asking for it. */
bool finds(const char* site, const char* manager) {
    const auto& missing = environment().missingManagers;
    return !fails(site) && std::find(missing.begin(), missing.end(), manager) == missing.end();
}

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
        if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
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
        if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
        for (const std::string& name : environment().propertiesReadOnlyOnCreate) oNames.Append(toText(name));
        return S_OK;
    }
};

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

class Configuration final : public VornEnvConfig {
public:
    CATUnicodeString getEnvFullFilename(const CATUnicodeString& iFileName) override {
        const std::string& directory = environment().configurationDirectory;
        if (fails("VornEnvConfig::getEnvFullFilename") || directory.empty() || iFileName.IsNull())
            return CATUnicodeString();
        const bool ends = directory.back() == '/' || directory.back() == '\\';
        return toText(directory) + (ends ? CATUnicodeString() : UTILFile::getPathSeparator()) + iFileName;
    }
};

} // namespace

ENVManager* ENVManager::getInstance() {
    static EnvironmentManager manager;
    return finds("ENVManager::getInstance", "ENVManager") ? &manager : nullptr;
}

PROCManager* PROCManager::getInstance() {
    static ProcessManager manager;
    return finds("PROCManager::getInstance", "PROCManager") ? &manager : nullptr;
}

VornEnvConfig* VornEnvConfig::getInstance() {
    static Configuration configuration;
    return finds("VornEnvConfig::getInstance", "VornEnvConfig") ? &configuration : nullptr;
}

int VornDebugOptions::getDebugModeValue() { return environment().debugMode ? 1 : 0; }

HRESULT APIDraftingInterfaces::updateDrawing(CATDocument* iDocument, unsigned char iSaveDetailSheet) {
    const FaultFlavour flavour = Failures::get().ask("APIDraftingInterfaces::updateDrawing");
    if (flavour == FaultFlavour::nullOutput) return S_OK;
    const Document document = documentBehind(iDocument);
    if (flavour != FaultFlavour::none || !document || document.type() != "CATDrawing") return E_FAIL;
    Session::current().updatedDrawings().push_back(document.name() + (iSaveDetailSheet ? "+details" : ""));
    return S_OK;
}
