#include "cache/DatFile.h"

#include "cache/DatLines.h"
#include "cache/DatPlaces.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"

#include "UTILFile.h"
#include "VornToolsCommon.h"

using namespace vorntools;

namespace {

const CATUnicodeString kConformingVersion("2");
const CATUnicodeString kNullUuid("0_0_0_0");

/** The name on disk where the platform may be speaking of logical names; otherwise, and where nobody knows it, the name
 * itself. */
CATUnicodeString physicalName(const JournalFrame& i_frame, const CATUnicodeString& i_name) {
    if (environmentSays(&ENVManager::isEnvInitilized) && !environmentSays(&ENVManager::getCATIAIsUsingDLName))
        return i_name;
    CATUnicodeString name(i_name);
    if (FAILED(makePhysical(name))) i_frame.write("ERROR : getPhysicalPathFromDLName is failed.");
    return name;
}

/**
 * Where else the DAT file of a document may be when it is not beside it: in the staging directory for a document that
 * has no directory yet, in the files directory for a foreign file.
 * @param io_dat_name the name that was looked for last
 * @param o_found whether that file exists and counts
 */
HRESULT findElsewhere(const JournalFrame& i_frame, const CATUnicodeString& i_file_name, CATUnicodeString& io_dat_name,
                      bool& o_found) {
    o_found = false;
    CATUnicodeString directory, name;
    if (FAILED(splitFullName(i_file_name, directory, name)))
        return i_frame.callFailed("UTILFile::splitPathAndFileName");

    if (VornToolsCommon::returnDocumentType(i_file_name) == VornToolsCommon::DocumentTypeUnknown) {
        const CATUnicodeString foreign = environmentText(&ENVManager::getFilesDirectory) + name;
        io_dat_name = foreign + kDatSuffix;
        o_found = hasDatFile(foreign);
    } else if (directory.IsNull() && stagingDirectoryCounts()) {
        const CATUnicodeString staged = inStagingDirectory(name);
        io_dat_name = staged + kDatSuffix;
        o_found = isOnlyStaged(staged);
    }
    return S_OK;
}

/** Opens the DAT file of a document. Trying to open it first spares every file that is there a look-up of its name. */
HRESULT openDatFile(const JournalFrame& i_frame, const CATUnicodeString& i_file_name, UTILFile& o_file,
                    CATUnicodeString& o_dat_name) {
    o_dat_name = physicalName(i_frame, i_file_name) + kDatSuffix;
    if (SUCCEEDED(o_file.open(o_dat_name, "r"))) return S_OK;

    bool exists = UTILFile::existingFile(o_dat_name) != 0;
    if (!exists && environmentSays(&ENVManager::isEnvInitilized)) {
        const HRESULT code = findElsewhere(i_frame, i_file_name, o_dat_name, exists);
        if (FAILED(code)) return code;
        if (exists && SUCCEEDED(o_file.open(nameOnDisk(o_dat_name), "r"))) return S_OK;
    }
    i_frame.write(exists ? "Failed to open %s " : " file : %s does not exists  ", o_dat_name);
    return E_FAIL;
}

/** Reads straight into the list's elements; appending each line would copy it once more. */
HRESULT readLines(UTILFile& i_file, CATListValCATUnicodeString& o_lines) {
    constexpr int kUsualCount = 64;
    int count = 0;
    HRESULT code = S_OK;
    do {
        if (count == o_lines.Size()) o_lines.Size(2 * count + kUsualCount);
        code = i_file.readLine(o_lines[count + 1]);
        count += code == S_OK;
    } while (code == S_OK);
    o_lines.Size(count);
    return code;
}

bool isKnownUuid(const CATUnicodeString& i_uuid) { return !i_uuid.IsNull() && i_uuid != kNullUuid; }

/** Tells the journal when a DAT file belongs to another document than the one in session. */
void checkConformity(const JournalFrame& i_frame, const CATUnicodeString& i_file_name,
                     const CATUnicodeString& i_dat_name, const CATUnicodeString& i_session_uuid,
                     const CATUnicodeString& i_file_uuid) {
    const bool known = VornToolsCommon::returnDocumentType(i_file_name) != VornToolsCommon::DocumentTypeUnknown;
    if (!known || !isKnownUuid(i_session_uuid) || !isKnownUuid(i_file_uuid)) {
        i_frame.write("Impossible to verify the conformity of the .dat relative to the document %s", i_file_name);
        return;
    }
    if (i_session_uuid == i_file_uuid) return;
    i_frame.write("The file %s does not match with the document %s in session", i_dat_name, i_file_name);
    i_frame.write("CATIA UUID are different - from document : %s / from .dat %s", i_session_uuid, i_file_uuid);
    if (i_session_uuid.SearchSubString(i_file_uuid) < 0 && i_file_uuid.SearchSubString(i_session_uuid) < 0)
        i_frame.write("It seems to be a truncate issue");
}

/** Reads the DAT file and names its version, if need be. @param o_lines empty */
HRESULT readVersionedLines(const JournalFrame& i_frame, const CATUnicodeString& i_file_name,
                           const CATUnicodeString& i_catia_uuid, CATListValCATUnicodeString& o_lines) {
    UTILFile file;
    CATUnicodeString dat_name;
    const HRESULT opened = openDatFile(i_frame, i_file_name, file, dat_name);
    if (FAILED(opened)) return opened;
    if (FAILED(readLines(file, o_lines))) {
        i_frame.write("Failed to read %s ", dat_name);
        return E_FAIL;
    }
    const CATUnicodeString& version_tag = tagText(DatTag::DatFileVersion);
    const int version = o_lines.Locate(version_tag);
    if (!version) {
        o_lines.Append(version_tag);
        o_lines.Append("0");
        o_lines.Append("</DatFileVersion>");
    } else if (version < o_lines.Size() && o_lines[version + 1] == kConformingVersion &&
               VornDebugOptions::getDebugModeValue()) {
        checkConformity(i_frame, i_file_name, dat_name, i_catia_uuid, DatLines(o_lines).valueOf(DatTag::CatiaUUID));
    }
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::readDatTools(CATUnicodeString i_file_name, const CATUnicodeString& i_catia_uuid,
                                      CATListValCATUnicodeString& o_lines) {
    const JournalFrame frame(_CteCLASS_NAME, "readDatTools");
    const auto read = [&] {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the caller's may be an element of the list
        const CATUnicodeString catia_uuid(i_catia_uuid);
        o_lines.RemoveAll(CATCollec::KeepAllocation);
        return readVersionedLines(frame, i_file_name, catia_uuid, o_lines);
    };
    const HRESULT code = guarded(read, E_FAIL);
    if (FAILED(code)) o_lines.RemoveAll();
    return code;
}

HRESULT vorntools::readDatFile(const JournalFrame& i_frame, const CATUnicodeString& i_name, CATDocument* ip_document,
                               const char* i_without_identifier, CATListValCATUnicodeString& o_lines) {
    CATUnicodeString uuid;
    if (FAILED(VornToolsCommon::getDocUUID(ip_document, uuid))) {
        i_frame.write(i_without_identifier);
        uuid = "";
    }
    return VornToolsCommon::readDatTools(i_name, uuid, o_lines);
}
