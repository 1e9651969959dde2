#include "VornToolsCommon.h"

#include "cache/ExchangeFile.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "UTILFile.h"

using namespace vorntools;

namespace {

const CATUnicodeString kSessionFileName("CADFilesInSession.txt");

/** Makes an empty session file in place of an existing one. */
HRESULT createSessionFile(const JournalFrame& i_frame, NewTextFile& o_file) {
    CATUnicodeString name;
    const HRESULT found = findExchangeFile(i_frame, kSessionFileName, name);
    if (FAILED(found)) return found;
    // A file that cannot be deleted may still be written.
    deleteFile(name);
    return o_file.create(name) ? S_OK : i_frame.callFailed("fopen");
}

/** @return the last name's code; names that cannot be split are reported */
HRESULT writeFileNames(const JournalFrame& i_frame, const CATListPtrCATDocument& i_documents, NewTextFile& io_file) {
    HRESULT code = S_OK;
    for (int i = 1; i <= i_documents.Size(); ++i) {
        CATUnicodeString file_name;
        code = fileNameOf(i_documents[i]->StorageName(), file_name);
        if (SUCCEEDED(code))
            io_file.writeLine(file_name);
        else
            i_frame.callFailed("UTILFile::splitPathAndFileName");
    }
    return code;
}

} // namespace

HRESULT VornToolsCommon::writeCADFilesInSessionFile() {
    const JournalFrame frame(_CteCLASS_NAME, "writeCADFilesInSessionFile");
    const auto work = [&]() -> HRESULT {
        NewTextFile file;
        const HRESULT created = createSessionFile(frame, file);
        if (FAILED(created)) return created;
        CATListPtrCATDocument documents;
        const HRESULT listed = getDocumentsInSession(documents, "");
        if (FAILED(listed)) {
            frame.callFailed("VornToolsCommon::getDocumentsInSession(...)");
            return listed;
        }
        const HRESULT code = writeFileNames(frame, documents, file);
        return file.finish() ? code : frame.callFailed("fwrite");
    };
    return guarded(work, E_FAIL);
}
