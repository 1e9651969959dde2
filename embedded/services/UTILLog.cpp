#include "UTILLog.h"

#include "embedded/Parameters.h"
#include "embedded/documents/SessionData.h"
#include "embedded/object/Answers.h"

using namespace embedded;

HRESULT UTILLog::writeInLogFile(const CATUnicodeString& iTitle, const CATUnicodeString& iText) {
    if (fails("UTILLog::writeInLogFile")) return E_FAIL;
    logFile().push_back(toBytes(iTitle) + "\n" + toBytes(iText));
    return S_OK;
}

std::vector<std::string>& embedded::logFile() { return Session::current().data().logLines; }
