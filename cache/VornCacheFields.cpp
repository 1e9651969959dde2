#include "VornCache.h"

#include "cache/DatFields.h"
#include "cache/DatTags.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "UTILFile.h"

using namespace vorntools;

namespace {

using TextMap = TYPMapCATUnicodeStringPVoid;

const CATUnicodeString kCatalogComponent("CatalogComp");

/** Hands a value out; without one the output is empty. */
HRESULT giveValue(const CATUnicodeString* ip_value, CATUnicodeString& o_value) {
    o_value = "";
    return !ip_value || guarded([&] { o_value = *ip_value; }) ? S_OK : E_FAIL;
}

/** Hands the first value of an identifier out; `i_what` is its name in the journal's lines. */
HRESULT giveIdentifier(const JournalFrame& i_frame, const DatField& i_field, const char* i_what,
                       const CATUnicodeString& i_name, CATUnicodeString& o_value) {
    const CATUnicodeString* const p_value = i_field.first();
    if (!i_field.exists())
        i_frame.write("%s balise in cache file is NULL for file [%s]", i_what, i_name);
    else if (!p_value)
        i_frame.write("%s balise in cache file is empty for file [%s]", i_what, i_name);
    return giveValue(p_value, o_value);
}

/** Hands the single value of a field out. */
HRESULT readData(const TextMap* ip_cache, const CATUnicodeString& i_name, const CATUnicodeString& i_tag,
                 CATUnicodeString& o_value) {
    const JournalFrame frame(VornCache::_CteCLASS_NAME, "getDataAtLine");
    o_value = "";
    const TextMap* const p_fields = fieldsOf(ip_cache, i_name);
    if (!p_fields) {
        frame.write("failed to get file name [%s]", i_name);
        return S_OK;
    }
    const CATUnicodeString* const p_value = DatField(p_fields, i_tag).text();
    if (!p_value) frame.write("failed to get line [%s]", i_tag);
    return giveValue(p_value, o_value);
}

/** The lines of a field. @return E_FAIL, and none, when the document or the field is not there */
HRESULT readLines(const TextMap* ip_cache, const CATUnicodeString& i_name, const CATUnicodeString& i_tag,
                  CATListValCATUnicodeString& o_list) {
    o_list.RemoveAll();
    const DatField field(fieldsOf(ip_cache, i_name), i_tag);
    if (!field.exists()) return E_FAIL;
    field.appendTo(o_list);
    return S_OK;
}

/** A method that answers with the lines of a block. What is not there has none. */
HRESULT answerBlock(const char* i_method, const TextMap* ip_cache, const CATUnicodeString& i_name, DatTag i_tag,
                    CATListValCATUnicodeString& o_list) {
    const JournalFrame frame(VornCache::_CteCLASS_NAME, i_method);
    const bool read = guarded([&] { readLines(ip_cache, i_name, tagText(i_tag), o_list); });
    if (!read) o_list.RemoveAll();
    return read ? S_OK : E_FAIL;
}

/** An attribute as the PDM calls it and the tag that it comes from. */
struct AttributeRule {
    const char* attribute;
    DatTag tag;
};
constexpr AttributeRule kPositionalAttributes[] = {{"Definition", DatTag::ItemId},
                                                   {"Revision", DatTag::ItemRevId},
                                                   {"EBS_ItemRevName", DatTag::ItemRevName},
                                                   {"EBS_DatasetUid", DatTag::DatasetUID},
                                                   {"EBS_DatasetLastVersion", DatTag::DatasetVersion}};
constexpr AttributeRule kTaggedAttributes[] = {
    {"ItemRevUID", DatTag::ItemRevUID}, {"EBS_DatasetUid", DatTag::DatasetUID}, {"NamedRefUID", DatTag::NamedRefUID}};

template <std::size_t N>
void appendAttributes(const TextMap* ip_fields, const AttributeRule (&i_rules)[N],
                      CATListValCATUnicodeString& io_list) {
    for (const AttributeRule& rule : i_rules) {
        const CATUnicodeString* const p_value = DatField(ip_fields, tagText(rule.tag)).first();
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
    CATUnicodeString name;
    if (FAILED(fileNameOf(i_full_name, name))) {
        i_frame.callFailed("UTILFile::splitPathAndFileName");
        return CATUnicodeString();
    }
    const CATUnicodeString extension = UTILFile::getExtension(name);
    if (extension.IsNull()) return name;
    return name.SubString(0, name.GetLengthInChar() - extension.GetLengthInChar() - 1);
}

/** The part number of the PDM's item; without one the file's name stands for it. */
CATUnicodeString partNumber(const JournalFrame& i_frame, const TextMap* ip_fields, const CATUnicodeString& i_name) {
    const CATUnicodeString* const p_item = DatField(ip_fields, tagText(DatTag::ItemId)).first();
    const CATUnicodeString* const p_revision = DatField(ip_fields, tagText(DatTag::ItemRevId)).first();
    return p_item && p_revision ? *p_item + "_" + *p_revision : fileNameWithoutExtension(i_frame, i_name);
}

} // namespace

HRESULT VornCache::getDataAtLine(CATUnicodeString name, CATUnicodeString tag, CATUnicodeString& value) {
    return readData(m_cacheMap, name, tag, value);
}

HRESULT VornCache::getDataListAtLine(const CATUnicodeString& name, const CATUnicodeString& tag,
                                     CATListValCATUnicodeString& list) {
    return readLines(m_cacheMap, name, tag, list);
}

HRESULT VornCache::getItemRevUID(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getItemRevUID");
    const DatField field(fieldsOf(m_cacheMap, name), tagText(DatTag::ItemRevUID));
    return giveIdentifier(frame, field, "ItemRevUID", name, value);
}

HRESULT VornCache::getDatasetUID(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getDatasetUID");
    const DatField field(fieldsOf(m_cacheMap, name), tagText(DatTag::DatasetUID));
    return giveIdentifier(frame, field, "DatasetUID", name, value);
}

HRESULT VornCache::getCacheLastModifiedDate(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getCacheLastModifiedDate");
    return readData(m_cacheMap, name, tagText(DatTag::LocalLastModDate), value);
}

HRESULT VornCache::getBVRDate(CATUnicodeString name, CATUnicodeString& value) {
    const JournalFrame frame(_CteCLASS_NAME, "getBVRDate");
    return giveValue(DatField(fieldsOf(m_cacheMap, name), tagText(DatTag::StructLastModDate)).first(), value);
}

HRESULT VornCache::getConfiguration(CATUnicodeString name, CATListValCATUnicodeString& list) {
    return answerBlock("getConfiguration", m_cacheMap, name, DatTag::Configuration, list);
}

HRESULT VornCache::getSkippedOccList(CATUnicodeString name, CATListValCATUnicodeString& list) {
    return answerBlock("getSkippedOccList", m_cacheMap, name, DatTag::SkippedOcc, list);
}

HRESULT VornCache::getDesignTableSheets(CATUnicodeString name, CATListValCATUnicodeString& list) {
    return answerBlock("getDesignTableSheets", m_cacheMap, name, DatTag::DesignTableSheets, list);
}

HRESULT VornCache::getDesignTableConfigs(CATUnicodeString name, CATListValCATUnicodeString& list) {
    return answerBlock("getDesignTableConfigs", m_cacheMap, name, DatTag::DesignTableConfigs, list);
}

HRESULT VornCache::getDesignTableCksums(CATUnicodeString name, CATListValCATUnicodeString& list) {
    return answerBlock("getDesignTableCksums", m_cacheMap, name, DatTag::DesignTableCksums, list);
}

HRESULT VornCache::getDesignTableMaps(CATUnicodeString name, CATListValCATUnicodeString& list) {
    return answerBlock("getDesignTableMaps", m_cacheMap, name, DatTag::DesignTableMaps, list);
}

unsigned char VornCache::isCatalogComp(const CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isCatalogComp");
    const CATUnicodeString* const p_load_type = DatField(fieldsOf(m_cacheMap, name), tagText(DatTag::LoadType)).text();
    return p_load_type && *p_load_type == kCatalogComponent;
}

unsigned char VornCache::isDesignTable(const CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isDesignTable");
    const TYPMapCATUnicodeStringPVoid* const p_fields = fieldsOf(m_cacheMap, name);
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
    const TYPMapCATUnicodeStringPVoid* const p_fields = fieldsOf(m_cacheMap, name);
    const auto append = [&] {
        if (isPositional(p_fields))
            appendAttributes(p_fields, kPositionalAttributes, list);
        else
            appendAttributes(p_fields, kTaggedAttributes, list);
        list.Append("PartNumber");
        list.Append(partNumber(frame, p_fields, name));
    };
    return guarded(append) ? S_OK : E_FAIL;
}
