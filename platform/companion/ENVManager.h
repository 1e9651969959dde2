#ifndef ENVManager_H
#define ENVManager_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/**
 * The integration's environment. Directories that the names say "end with a separator" do; the texts are empty when the
 * value is not set.
 */
class ExportedByCatia ENVManager {
public:
    /** The one environment of the process, owned by the companion library; null is possible. */
    static ENVManager* getInstance();

    virtual unsigned char isEnvInitilized() = 0;
    /** 1 when the platform names documents by logical directory. */
    virtual unsigned char getCATIAIsUsingDLName() = 0;
    /** 1 when users type part numbers themselves. */
    virtual unsigned char get_catia_pn_manual_input() = 0;
    /** Directory of documents on their way to the PDM, without a separator at its end. */
    virtual CATUnicodeString getStagingDirectory() = 0;
    /** Directory of the documents loaded from the PDM; ends with a separator. */
    virtual CATUnicodeString getFilesDirectory() = 0;
    /** Directory of the reference library; ends with a separator. */
    virtual CATUnicodeString getReferencePath() = 0;
    /** Prefix of the file names of the reference library. */
    virtual CATUnicodeString getReferencePrefix() = 0;
    /** Directory of the platform's visualisation cache; ends with a separator. */
    virtual CATUnicodeString getLocalCacheDirectory() = 0;
    /** Shared visualisation caches, in order of search; each ends with a separator. @param oDirectories emptied first.
     * @return S_OK or a failure with an empty list */
    virtual HRESULT getReleaseCacheDirectories(CATListValCATUnicodeString& oDirectories) = 0;
    /** 1 when instance descriptions mark ignore nodes. */
    virtual unsigned char isInstDescManagedForIgnoreNode() = 0;
    virtual unsigned char updateDrawing() = 0;
    virtual unsigned char isUpdateDrawingInLUS() = 0;
    virtual unsigned char saveDetailSheet() = 0;
    virtual unsigned char checkForUpdatePart() = 0;
    /** Directory of the files exchanged with the PDM client; ends with a separator. */
    virtual CATUnicodeString getTempDirectory() = 0;
    /** 1 when the integration keeps its intermediate files for those who look for a fault. */
    virtual unsigned char isDebugModeEnable() = 0;
    /** Full name of the import spreadsheet. */
    virtual CATUnicodeString getSpreadSheetPath() = 0;
    /** Directory of the files that are imported; may end with a separator. */
    virtual CATUnicodeString getImportPath() = 0;
    /** 1 when the root product, too, shows the status of its document. */
    virtual unsigned char isManageCatiaStatusOnRoot() = 0;

    /** 1 when the session runs with the platform's own PDM connection. */
    virtual unsigned char isPX1Available() = 0;
    /** 1 when properties that a document lacks are created. */
    virtual unsigned char createPropsForMapping() = 0;
    /** Names of the properties that are created read-only. @param oNames emptied first. @return S_OK or a failure with
     * an empty list */
    virtual HRESULT getReadOnlyPropertiesOnCreate(CATListValCATUnicodeString& oNames) = 0;

protected:
    ~ENVManager() = default;
};

#endif
