#include "VornCache.h"

#include "cache/DatFields.h"
#include "cache/DatLines.h"
#include "foundation/FileNames.h"
#include "foundation/JournalFrame.h"

#include "UTILFile.h"

using namespace vorntools;

namespace {

using TextMap = TYPMapCATUnicodeStringPVoid;

/** The first value of an identifier; `i_what` is its name in the journal's lines. */
void readIdentifier(const JournalFrame& i_frame, const DatField& i_field, const char* i_what,
                    const CATUnicodeString& i_name, CATUnicodeString& o_value) {
    o_value = "";
    const CATUnicodeString* const p_value = i_field.first();
    if (p_value) o_value = *p_value;
    if (!i_field.exists())
        i_frame.write("%s balise in cache file is NULL for file [%s]", i_what, i_name);
    else if (o_value.IsNull())
        i_frame.write("%s balise in cache file is empty for file [%s]", i_what, i_name);
}

/** An attribute as the PDM calls it and the tag that it comes from. */
struct AttributeRule {
    const char* attribute;
    const char* tag;
};
constexpr AttributeRule kPositionalAttributes[] = {{"Definition", "<ItemId>"},
                                                   {"Revision", "<ItemRevId>"},
                                                   {"EBS_ItemRevName", "<ItemRevName>"},
                                                   {"EBS_DatasetUid", "<DatasetUID>"},
                                                   {"EBS_DatasetLastVersion", "<DatasetVersion>"}};
constexpr AttributeRule kTaggedAttributes[] = {
    {"ItemRevUID", "<ItemRevUID>"}, {"EBS_DatasetUid", "<DatasetUID>"}, {"NamedRefUID", "<NamedRefUID>"}};

template <std::size_t N>
void appendAttributes(const TextMap* ip_fields, const AttributeRule (&i_rules)[N],
                      CATListValCATUnicodeString& io_list) {
    for (const AttributeRule& rule : i_rules) {
        const CATUnicodeString* const p_value = DatField(ip_fields, rule.tag).first();
        if (!p_value) continue;
        io_list.Append(rule.attribute);
        io_list.Append(*p_value);
    }
}

bool isPositional(const TextMap* ip_fields) {
    const CATUnicodeString* const p_version = DatField(ip_fields, tagText(DatTag::DatFileVersion)).text();
    return p_version && *p_version == CATUnicodeString("0");
}

CATUnicodeString fileNameWithoutExtension(const JournalFrame& i_frame, const CATUnicodeString& i_full_name) {
    CATUnicodeString directory, name;
    if (FAILED(splitFullName(i_full_name, directory, name))) {
        i_frame.callFailed("UTILFile::splitPathAndFileName");
        return CATUnicodeString();
    }
    const CATUnicodeString extension = UTILFile::getExtension(name);
    if (extension.IsNull()) return name;
    return name.SubString(0, name.GetLengthInChar() - extension.GetLengthInChar() - 1);
}

/** The part number of the PDM's item; without one the file's name stands for it. */
CATUnicodeString partNumber(const JournalFrame& i_frame, const TextMap* ip_fields, const CATUnicodeString& i_name) {
    const CATUnicodeString* const p_item = DatField(ip_fields, "<ItemId>").first();
    const CATUnicodeString* const p_revision = DatField(ip_fields, "<ItemRevId>").first();
    return p_item && p_revision ? *p_item + "_" + *p_revision : fileNameWithoutExtension(i_frame, i_name);
}

} // namespace

HRESULT VornCache::fileHasCache(CATUnicodeString name, unsigned char& has) {
    const JournalFrame frame(_CteCLASS_NAME, "fileHasCache");
    has = m_cacheMap->contains(name);
    return S_OK;
}

unsigned char VornCache::isInCache(const CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isInCache");
    return m_cacheMap->contains(name);
}

HRESULT VornCache::getDataAtLine(CATUnicodeString name, CATUnicodeString tag, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getDataAtLine");
    value = "";
    const TYPMapCATUnicodeStringPVoid* const p_fields = fieldsOf(*m_cacheMap, name);
    if (!p_fields) {
        frame.write("failed to get file name [%s]", name);
        return S_OK;
    }
    if (const CATUnicodeString* const p_value = DatField(p_fields, tag).text())
        value = *p_value;
    else
        frame.write("failed to get line [%s]", tag);
    return S_OK;
}

HRESULT VornCache::getDataListAtLine(const CATUnicodeString& name, const CATUnicodeString& tag,
                                     CATListValCATUnicodeString& list) {
    list.RemoveAll();
    const DatField field(fieldsOf(*m_cacheMap, name), tag);
    if (!field.exists()) return E_FAIL;
    field.appendTo(list);
    return S_OK;
}

HRESULT VornCache::getItemRevUID(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getItemRevUID");
    const DatField field(fieldsOf(*m_cacheMap, name), tagText(DatTag::ItemRevUID));
    readIdentifier(frame, field, "ItemRevUID", name, value);
    return S_OK;
}

HRESULT VornCache::getDatasetUID(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getDatasetUID");
    const DatField field(fieldsOf(*m_cacheMap, name), tagText(DatTag::DatasetUID));
    readIdentifier(frame, field, "DatasetUID", name, value);
    return S_OK;
}

HRESULT VornCache::getCacheLastModifiedDate(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getCacheLastModifiedDate");
    return getDataAtLine(name, tagText(DatTag::LocalLastModDate), value);
}

HRESULT VornCache::getBVRDate(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getBVRDate");
    value = "";
    const CATUnicodeString* const p_first =
        DatField(fieldsOf(*m_cacheMap, name), tagText(DatTag::StructLastModDate)).first();
    if (p_first) value = *p_first;
    return S_OK;
}

HRESULT VornCache::getConfiguration(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getConfiguration");
    getDataListAtLine(name, tagText(DatTag::Configuration), list);
    return S_OK;
}

HRESULT VornCache::getSkippedOccList(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getSkippedOccList");
    getDataListAtLine(name, tagText(DatTag::SkippedOcc), list);
    return S_OK;
}

HRESULT VornCache::getDesignTableSheets(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableSheets");
    getDataListAtLine(name, tagText(DatTag::DesignTableSheets), list);
    return S_OK;
}

HRESULT VornCache::getDesignTableConfigs(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableConfigs");
    getDataListAtLine(name, tagText(DatTag::DesignTableConfigs), list);
    return S_OK;
}

HRESULT VornCache::getDesignTableCksums(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableCksums");
    getDataListAtLine(name, tagText(DatTag::DesignTableCksums), list);
    return S_OK;
}

HRESULT VornCache::getDesignTableMaps(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableMaps");
    getDataListAtLine(name, tagText(DatTag::DesignTableMaps), list);
    return S_OK;
}

unsigned char VornCache::isCatalogComp(const CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isCatalogComp");
    const CATUnicodeString* const p_load_type = DatField(fieldsOf(*m_cacheMap, name), tagText(DatTag::LoadType)).text();
    return p_load_type && *p_load_type == CATUnicodeString("CatalogComp");
}

unsigned char VornCache::isDesignTable(const CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isDesignTable");
    const TYPMapCATUnicodeStringPVoid* const p_fields = fieldsOf(*m_cacheMap, name);
    if (!p_fields) {
        frame.write("failed to get file name [%s]", name);
        return 0;
    }
    return p_fields->contains(tagText(DatTag::DesignTableSheets)) &&
           p_fields->contains(tagText(DatTag::DesignTableConfigs)) &&
           p_fields->contains(tagText(DatTag::DesignTableCksums));
}

HRESULT VornCache::getAttributeList(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getAttributeList");
    const TYPMapCATUnicodeStringPVoid* const p_fields = fieldsOf(*m_cacheMap, name);
    if (isPositional(p_fields))
        appendAttributes(p_fields, kPositionalAttributes, list);
    else
        appendAttributes(p_fields, kTaggedAttributes, list);
    list.Append("PartNumber");
    list.Append(partNumber(frame, p_fields, name));
    return S_OK;
}

HRESULT VornCache::getLocalLastModifiedDate(CATUnicodeString path, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getLocalLastModifiedDate");
    int date = -1;
    getLastModificationDateOnFile(path.ConvertToChar(), &date);
    value.BuildFromNum(date, "%d");
    return S_OK;
}

HRESULT VornCache::getLastModificationDateOnFile(const char* path, int* date) {
    *date = UTILFile::getLastModificationDateOnFile(path);
    return S_OK;
}

unsigned char VornCache::cgrFileNameContainsLastModificationDateField(CATUnicodeString name) {
    const JournalFrame frame(_CteCLASS_NAME, "cgrFileNameContainsLastModificationDateField");
    constexpr char kPattern[] = ".dddd-dd-dd-dd.dd.dd.cgr";
    constexpr int kLength = sizeof kPattern - 1;
    const int surplus = name.GetLengthInByte() - kLength;
    if (surplus <= 0) return 0;
    const char* const p_field = name.ConvertToChar() + surplus;
    for (int i = 0; i < kLength; ++i) {
        const bool digit = kPattern[i] == 'd' && p_field[i] >= '0' && p_field[i] <= '9';
        if (!digit && p_field[i] != kPattern[i]) return 0;
    }
    return 1;
}
