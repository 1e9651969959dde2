#include "VornToolsCommon.h"

#include "cache/DatPlaces.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "UTILFile.h"
#include "VornToolsExportAsReference.h"

using namespace vorntools;

namespace {

/** The one place that relies on the platform telling whether a document has a file of its own. */
bool wasNeverSaved(const CATDocument* ip_document) { return ip_document && !ip_document->IsSaved(); }

/** Name of the DAT file for a document; reported when the document's own cannot be split. */
HRESULT makeDatName(const JournalFrame& i_frame, const CATUnicodeString& i_file_name, CATUnicodeString& o_dat_name) {
    CATUnicodeString directory, name;
    const HRESULT split = splitFullName(i_file_name, directory, name);
    if (FAILED(split)) {
        i_frame.callFailed("UTILFile::splitPathAndFileName");
        return split;
    }
    if (!directory.IsNull()) {
        o_dat_name = i_file_name + kDatSuffix;
        return S_OK;
    }

    unsigned char exported_as_reference = 0;
    const HRESULT asked = VornToolsExportAsReference().isAnExportAsReference(name, exported_as_reference);
    if (FAILED(asked)) {
        i_frame.callFailed("VornToolsExportAsReference::isAnExportAsReference");
        return asked;
    }
    if (exported_as_reference) {
        o_dat_name = environmentText(&ENVManager::getReferencePath) + name + kDatSuffix;
        return S_OK;
    }
    const CATUnicodeString files = environmentText(&ENVManager::getFilesDirectory);
    const CATUnicodeString in_life_cycle_folder = files + "LFC" + UTILFile::getPathSeparator() + name;
    o_dat_name = (hasDatFile(in_life_cycle_folder) ? in_life_cycle_folder : files + name) + kDatSuffix;
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::getDatFileFullFileName(const CATUnicodeString& i_file_name, CATUnicodeString& o_dat_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDatFileFullFileName");
    // Written at the end: it may be the very text that is asked about.
    const auto work = [&]() -> HRESULT {
        CATUnicodeString dat_name;
        const HRESULT code = makeDatName(frame, i_file_name, dat_name);
        o_dat_name = dat_name;
        return code;
    };
    const HRESULT code = guarded(work, E_FAIL);
    if (FAILED(code)) o_dat_name = "";
    return code;
}

unsigned char VornToolsCommon::isAOvElement(CATDocument* ip_document, CATUnicodeString i_file_name,
                                            CATUnicodeString& o_managed_name) {
    const JournalFrame frame(_CteCLASS_NAME, "isAOvElement");
    o_managed_name = "";
    const auto work = [&]() -> unsigned char {
        const bool never_saved = wasNeverSaved(ip_document);
        if (never_saved && !stagingDirectoryCounts()) return 0;

        CATUnicodeString candidate = never_saved ? inStagingDirectory(i_file_name) : i_file_name;
        bool managed = hasDatFile(candidate);
        if (!managed && never_saved && processSays(&PROCManager::isProcessLifeCycleFactory)) {
            candidate = inStagingDirectory("LFC" + UTILFile::getPathSeparator() + i_file_name);
            managed = hasDatFile(candidate);
        }
        if (managed) o_managed_name = candidate;
        return managed ? 1 : 0;
    };
    return guarded(work, static_cast<unsigned char>(0));
}
