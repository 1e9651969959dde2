#include "VornToolsCommon.h"

#include "cache/DatTags.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "VornCache.h"

#include <utility>

using namespace vorntools;

namespace {

/** What the DAT file of one document records of its identity. */
struct RecordedIdentity {
    CATUnicodeString item_rev_uid;
    CATUnicodeString dataset_uid;
    CATUnicodeString named_ref_uid;
    unsigned char exists = 0;
};

HRESULT readRecordedFields(const JournalFrame& i_frame, VornCache& io_cache, const CATUnicodeString& i_name,
                           RecordedIdentity& o_identity) {
    if (FAILED(io_cache.addDocument(i_name, nullptr))) return i_frame.callFailed("VornCache::::addDocument");
    if (FAILED(io_cache.getDataAtLine(i_name, tagText(DatTag::ItemRevUID), o_identity.item_rev_uid)) ||
        FAILED(io_cache.getDataAtLine(i_name, tagText(DatTag::DatasetUID), o_identity.dataset_uid)) ||
        FAILED(io_cache.getDataAtLine(i_name, tagText(DatTag::NamedRefUID), o_identity.named_ref_uid)))
        return i_frame.callFailed("VornCache::getDataAtLine");
    return S_OK;
}

/** @param io_name full name of a document; becomes its name on disk where the platform uses logical names */
HRESULT readIdentity(const JournalFrame& i_frame, CATUnicodeString& io_name, VornCache* ip_cache,
                     RecordedIdentity& o_identity) {
    if (io_name.IsNull()) return i_frame.badInput("VornToolsCommon::getPhysicalPathFromDLName");
    if (FAILED(makePhysicalIfLogical(io_name))) return i_frame.callFailed("VornToolsCommon::getPhysicalPathFromDLName");

    CATUnicodeString dat_name;
    if (FAILED(VornToolsCommon::getDatFileFullFileName(io_name, dat_name)))
        return i_frame.callFailed("VornToolsCommon::::getDatFileFullFileName");
    if (!fileExists(dat_name)) return S_OK;

    o_identity.exists = 1;
    if (!ip_cache) return E_FAIL;
    return readRecordedFields(i_frame, *ip_cache, io_name, o_identity);
}

/** Hands the identity out, the identifiers only after a success. @return the code */
HRESULT giveIdentity(const JournalFrame& i_frame, HRESULT i_code, RecordedIdentity& io_identity,
                     CATUnicodeString& o_item_rev_uid, CATUnicodeString& o_dataset_uid,
                     CATUnicodeString& o_named_ref_uid, unsigned char& o_exist_in_ov) {
    const auto give = [&] {
        o_item_rev_uid = std::move(io_identity.item_rev_uid);
        o_dataset_uid = std::move(io_identity.dataset_uid);
        o_named_ref_uid = std::move(io_identity.named_ref_uid);
    };
    const HRESULT code = FAILED(i_code) || guarded(give) ? i_code : E_FAIL;
    if (FAILED(code)) o_item_rev_uid = o_dataset_uid = o_named_ref_uid = "";
    o_exist_in_ov = io_identity.exists;
    i_frame.writeInDebug(
        "%s : rc=[%d], o_itemrev_uid=[%s], o_dataset_uid=[%s], o_named_ref_uid=[%s], o_exist_in_ov=[%s]",
        i_frame.name(), static_cast<int>(code), o_item_rev_uid, o_dataset_uid, o_named_ref_uid,
        o_exist_in_ov ? "TRUE" : "FALSE");
    return code;
}

/** The file of a product's document; without a document, the file that shows the product. */
HRESULT readFileNameOfProduct(const JournalFrame& i_frame, CATIProduct* ipi_product, CATUnicodeString& o_name) {
    CATDocument* p_document = nullptr;
    if (FAILED(VornToolsCommon::getDocumentFileName(ipi_product, p_document, o_name)))
        return i_frame.callFailed("VornToolsCommon::getDocumentFileName");
    if (p_document) return S_OK;
    if (FAILED(VornToolsCommon::getMasterShapeRepresentationPathName(ipi_product, o_name)))
        return i_frame.callFailed("VornToolsCommon::getMasterShapeRepresentationPathName");
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::getOrvaneInformationsFromDatFile(const CATUnicodeString& i_file_name, VornCache* ip_cache,
                                                          CATUnicodeString& o_item_rev_uid,
                                                          CATUnicodeString& o_dataset_uid,
                                                          CATUnicodeString& o_named_ref_uid,
                                                          unsigned char& o_exist_in_ov) {
    const JournalFrame frame(_CteCLASS_NAME, "getOrvaneInformationsFromDatFile");
    RecordedIdentity identity;
    const auto read = [&] {
        CATUnicodeString file_name(i_file_name); // the caller's text may be one of the outputs
        o_item_rev_uid = o_dataset_uid = o_named_ref_uid = "";
        return readIdentity(frame, file_name, ip_cache, identity);
    };
    const HRESULT code = guarded(read, E_FAIL);
    return giveIdentity(frame, code, identity, o_item_rev_uid, o_dataset_uid, o_named_ref_uid, o_exist_in_ov);
}

HRESULT VornToolsCommon::getOrvaneInformations(CATIProduct* ipi_product, VornCache* ip_cache,
                                               CATUnicodeString& o_item_rev_uid, CATUnicodeString& o_dataset_uid,
                                               CATUnicodeString& o_named_ref_uid, CATUnicodeString& o_file_name,
                                               unsigned char& o_exist_in_ov) {
    const JournalFrame frame(_CteCLASS_NAME, "getOrvaneInformations");
    o_item_rev_uid = o_dataset_uid = o_named_ref_uid = o_file_name = "";
    o_exist_in_ov = 0;
    if (!ipi_product) return frame.badInput("ipi_product");

    CATUnicodeString file_name;
    RecordedIdentity identity;
    const auto read = [&] {
        const HRESULT named = readFileNameOfProduct(frame, ipi_product, file_name);
        const HRESULT read_code = SUCCEEDED(named) ? readIdentity(frame, file_name, ip_cache, identity) : named;
        if (SUCCEEDED(read_code)) o_file_name = file_name;
        return read_code;
    };
    const HRESULT code = guarded(read, E_FAIL);
    if (FAILED(code)) o_file_name = "";
    return giveIdentity(frame, code, identity, o_item_rev_uid, o_dataset_uid, o_named_ref_uid, o_exist_in_ov);
}
