#include "VornToolsCommon.h"

#include "cache/ExchangeFile.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "TYPVectorCATUnicodeString.h"

using namespace vorntools;

namespace {

const CATUnicodeString kResultFileName("results");
const CATUnicodeString kOk(":ok");
const CATUnicodeString kCancel(":cancel");
const CATUnicodeString kUserCancel(":user_cancel");
const CATUnicodeString kHostedClient("SK");

using Status = VornToolsCommon::EnumResultStatus;

HRESULT openFailed(const JournalFrame& i_frame, const CATUnicodeString& i_name) {
    i_frame.write("Unable to open result file %s", i_name);
    return E_FAIL;
}

HRESULT readFailed(const JournalFrame& i_frame, const CATUnicodeString& i_name) {
    i_frame.write("ERROR while reading result file %s", i_name);
    return E_FAIL;
}

Status statusOf(const CATUnicodeString& i_first_line) {
    if (i_first_line == kCancel || i_first_line == kUserCancel) return VornToolsCommon::ResultStatusCancelled;
    return i_first_line == kOk ? VornToolsCommon::ResultStatusOk : VornToolsCommon::ResultStatusFailed;
}

/** Opens the result file and reads the status in its first line. @param o_status set on success only */
HRESULT readStatus(const JournalFrame& i_frame, LineReader& o_reader, CATUnicodeString& o_name, Status& o_status) {
    const HRESULT found = findExchangeFile(i_frame, kResultFileName, o_name);
    if (FAILED(found)) return found;
    if (o_name.IsNull()) return i_frame.missing("result_file");
    if (!o_reader.open(o_name)) return openFailed(i_frame, o_name);
    o_reader.next();
    if (o_reader.hasFailed()) return readFailed(i_frame, o_name);
    o_status = statusOf(o_reader.line());
    return S_OK;
}

/** @param o_ok, o_hosted_client set to 1 where it is so */
HRESULT readClient(const JournalFrame& i_frame, unsigned char& o_ok, unsigned char& o_hosted_client) {
    CATUnicodeString name;
    const HRESULT found = findExchangeFile(i_frame, kResultFileName, name);
    if (FAILED(found)) return found;
    LineReader reader;
    if (!reader.open(name)) return openFailed(i_frame, name);
    reader.next();
    if (reader.line().IsNull()) return readFailed(i_frame, name);
    if (!reader.line().Compare(kOk)) return S_OK;

    reader.next();
    if (reader.hasFailed()) return readFailed(i_frame, name);
    o_ok = 1;
    if (!reader.line().Compare(kHostedClient)) return S_OK;
    i_frame.write("Current client is hosted skylane");
    o_hosted_client = 1;
    return S_OK;
}

/** Reads the status and all further lines. @param o_status set on success only. @param o_lines empty */
HRESULT readInfo(const JournalFrame& i_frame, Status& o_status, TYPVectorCATUnicodeString& o_lines) {
    LineReader reader;
    CATUnicodeString name;
    Status status = VornToolsCommon::ResultStatusFailed;
    const HRESULT code = readStatus(i_frame, reader, name, status);
    if (FAILED(code)) return code;
    while (!reader.isAtEnd()) {
        reader.next();
        if (reader.hasFailed()) return readFailed(i_frame, name);
        o_lines.push_back(reader.line());
    }
    o_status = status;
    return S_OK;
}

HRESULT writeResult(const JournalFrame& i_frame, const CATUnicodeString& i_text) {
    CATUnicodeString name;
    const HRESULT found = findExchangeFile(i_frame, kResultFileName, name);
    if (FAILED(found)) return found;
    NewTextFile file;
    if (!file.create(name)) return S_OK;
    file.writeLine(i_text);
    return file.finish() ? S_OK : i_frame.callFailed("fwrite");
}

} // namespace

HRESULT VornToolsCommon::createResultFile(CATUnicodeString i_text) {
    const JournalFrame frame(_CteCLASS_NAME, "createResultFile");
    return guarded([&] { return writeResult(frame, i_text); }, E_FAIL);
}

HRESULT VornToolsCommon::readResultFileAndGetClient(unsigned char& o_ok, unsigned char& o_hosted_client) {
    const JournalFrame frame(_CteCLASS_NAME, "readResultFileAndGetClient");
    o_ok = 0;
    o_hosted_client = 0;
    return guarded([&] { return readClient(frame, o_ok, o_hosted_client); }, E_FAIL);
}

HRESULT VornToolsCommon::getResultInfo(EnumResultStatus& o_status, TYPVectorCATUnicodeString& o_lines) {
    const JournalFrame frame(_CteCLASS_NAME, "getResultInfo");
    o_status = ResultStatusFailed;
    o_lines.clear();
    const HRESULT code = guarded([&] { return readInfo(frame, o_status, o_lines); }, E_FAIL);
    if (FAILED(code)) o_lines.clear();
    return code;
}

VornToolsCommon::EnumResultStatus VornToolsCommon::getResultStatus() {
    const JournalFrame frame(_CteCLASS_NAME, "getResultStatus");
    EnumResultStatus status = ResultStatusFailed;
    guarded([&] {
        LineReader reader;
        CATUnicodeString name;
        readStatus(frame, reader, name, status);
    });
    frame.writeReturn(status);
    return status;
}
