#include "VornCache.h"

#include "cache/DatFields.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "UTILFile.h"

using namespace vorntools;

namespace {

VornCache::EnumModifiedFlag statusIn(const TYPMapCATUnicodeStringPVoid* ip_statuses, const CATUnicodeString& i_name) {
    const int* const p_status = valueIn<int>(ip_statuses, i_name, kStatusClass);
    return p_status ? static_cast<VornCache::EnumModifiedFlag>(*p_status) : VornCache::ModifiedFlagNew;
}

} // namespace

HRESULT VornCache::getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag) {
    const JournalFrame frame(_CteCLASS_NAME, "getModifiedStatus");
    flag = statusIn(m_statusMap, name);
    return S_OK;
}

HRESULT VornCache::getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag, CATDocument*& doc) {
    const JournalFrame frame(_CteCLASS_NAME, "getModifiedStatus");
    flag = statusIn(m_statusMap, name);
    doc = valueIn<CATDocument>(m_documentMap, name, kDocumentClass);
    return S_OK;
}

HRESULT VornCache::isNew(CATUnicodeString name, unsigned char& answer) {
    const JournalFrame frame(_CteCLASS_NAME, "isNew");
    answer = statusIn(m_statusMap, name) == ModifiedFlagNew;
    return S_OK;
}

HRESULT VornCache::isOpen(CATUnicodeString name, unsigned char& answer) {
    const JournalFrame frame(_CteCLASS_NAME, "isOpen");
    answer = statusIn(m_statusMap, name) == ModifiedFlagNotModified;
    return S_OK;
}

HRESULT VornCache::isModified(CATUnicodeString name, unsigned char& answer) {
    const JournalFrame frame(_CteCLASS_NAME, "isModified");
    answer = statusIn(m_statusMap, name) == ModifiedFlagModified;
    return S_OK;
}

HRESULT VornCache::getLocalLastModifiedDate(CATUnicodeString path, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getLocalLastModifiedDate");
    if (guarded([&] { value.BuildFromNum(UTILFile::getLastModificationDateOnFile(nameOnDisk(path)), "%d"); }))
        return S_OK;
    value = "";
    return E_FAIL;
}

HRESULT VornCache::getLastModificationDateOnFile(const char* path, int* date) {
    *date = UTILFile::getLastModificationDateOnFile(path);
    return S_OK;
}
