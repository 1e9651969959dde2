#ifndef EMBEDDED_ENVIRONMENT_H
#define EMBEDDED_ENVIRONMENT_H

#include <map>
#include <string>
#include <vector>

namespace embedded {

/** Everything that the companion environment answers; plain values, set by a test or a session file. */
struct Environment {
    bool initialized = true;
    bool usesLogicalNames = false;
    bool manualPartNumberInput = false;
    bool instanceDescriptionMarksIgnoreNodes = false;
    bool updateDrawing = false;
    bool updateDrawingInLastUpdateState = false;
    bool saveDetailSheet = false;
    bool checkForUpdatePart = false;
    bool debugMode = false;
    bool managesStatusOnRoot = false;

    bool platformPdmConnection = false; ///< PX1
    bool createsProperties = false;     ///< those that a document lacks
    bool ignoresOemProperties = false;
    std::vector<std::string> propertiesReadOnlyOnCreate;
    std::string decimalSeparator = "."; ///< of numbers in texts: "." or ","

    std::string stagingDirectory;
    std::string filesDirectory; ///< ends with a separator
    std::string referencePath;  ///< ends with a separator
    std::string referencePrefix;
    std::string localCacheDirectory;                  ///< ends with a separator
    std::vector<std::string> releaseCacheDirectories; ///< each ends with a separator
    std::string spreadsheetPath;                      ///< the import spreadsheet
    std::string importPath;                           ///< directory of the files that are imported
    std::string configurationDirectory;               ///< where configuration files lie; empty: nowhere
    std::map<std::string, std::string> logicalNames;  ///< logical name to directory
    std::string separator;                            ///< for joining names; empty: the system's own

    bool commandCreateSpreadsheet = false;
    bool commandImport = false;
    bool commandBrr = false;
    bool processLifeCycleFactory = false;

    std::string tempDirectory; ///< of the exchange files; ends with a separator
    bool keepsIntermediateFiles = false;
    bool commandHighlightItemRevision = false;
    bool commandHighlightHosted = false;
    bool commandStateDetailsUpdate = false;
    bool deletesStatusWindowFiles = false;

    /** Environment variables of the process, before the real ones; an empty value means not set. */
    std::map<std::string, std::string> variables;

    /** Companion managers that getInstance() does not find: "ENVManager", "PROCManager", "VornEnvConfig", "JNLManager",
     * "EMHManager". */
    std::vector<std::string> missingManagers;
};

} // namespace embedded

#endif
