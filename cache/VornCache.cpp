#include "VornCache.h"

#include "cache/DatFields.h"
#include "cache/DatLines.h"
#include "cache/StagingDirectory.h"
#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATIADocument.h"
#include "UTILFile.h"
#include "UTILTime.h"
#include "VornToolsCommon.h"

#include <cstring>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

using namespace vorntools;

const CATUnicodeString VornCache::_CteCLASS_NAME("VornCache::");

namespace {

using Texts = CATListValCATUnicodeString;
using TextMap = TYPMapCATUnicodeStringPVoid;

Texts listOf(std::initializer_list<const char*> i_texts) {
    Texts list;
    for (const char* const text : i_texts) list.Append(text);
    return list;
}

const Texts kPositionalTags = listOf({"<ItemId>", "<ItemRevId>", "<ItemRevName>", "<DatasetUID>", "<DatasetVersion>",
                                      "<LoadType>", "<DatasetType>", "<LocalLastModDate>", "<DbLastModDate>"});
const Texts kTaggedTags = listOf({"<ItemRevUID>", "<DatasetUID>", "<NamedRefUID>", "<LoadType>", "<LocalLastModDate>"});

constexpr DatTag kBlocks[] = {DatTag::Configuration,     DatTag::LinkedDocs,         DatTag::DesignTableFiles,
                              DatTag::DesignTableSheets, DatTag::DesignTableConfigs, DatTag::DesignTableCksums,
                              DatTag::StructLastModDate, DatTag::SkippedOcc};

// Filling a field map ---------------------------------------------------------------------------------------------

void storeText(TextMap& io_fields, const CATUnicodeString& i_tag, const CATUnicodeString& i_value) {
    io_fields.insert(i_tag, new CATUnicodeString(i_value), kTextClass);
}

void storeSingleValues(TextMap& io_fields, const DatLines& i_dat, const Texts& i_positional_tags,
                       const Texts& i_tagged_tags) {
    const Texts& tags = i_dat.isPositional() ? i_positional_tags : i_tagged_tags;
    for (int i = 1; i <= tags.Size(); ++i)
        storeText(io_fields, tags[i], i_dat.isPositional() ? i_dat.fileLine(i) : i_dat.valueOf(tags[i]));
    storeText(io_fields, tagText(DatTag::DatFileVersion), i_dat.valueOf(DatTag::DatFileVersion));
}

/** The lines of a block, exactly as many as it has. Nobody else reads lines that stand apart: they are moved. */
std::unique_ptr<Texts> takeLines(Texts& io_lines, const DatRange& i_range, bool i_apart) {
    auto values = std::make_unique<Texts>();
    values->Size(i_range.size());
    for (int i = 1; i <= i_range.size(); ++i) {
        CATUnicodeString& line = io_lines[i_range.first + i - 1];
        (*values)[i] = i_apart ? std::move(line) : line;
    }
    return values;
}

void storeBlocks(TextMap& io_fields, const DatLines& i_dat, Texts& io_lines) {
    const bool apart = i_dat.blocksStandApart();
    for (const DatTag tag : kBlocks) {
        if (!i_dat.has(tag)) continue;
        const DatRange range = i_dat.block(tag);
        if (range.size() == 1)
            storeText(io_fields, tagText(tag), io_lines[range.first]);
        else
            io_fields.insert(tagText(tag), takeLines(io_lines, range, apart).release(), kListClass);
    }
}

void storeDesignTableMaps(TextMap& io_fields, const DatLines& i_dat) {
    auto maps = std::make_unique<Texts>();
    if (!i_dat.designTableMaps(*maps)) return;
    if (maps->Size() == 1)
        storeText(io_fields, tagText(DatTag::DesignTableMaps), (*maps)[1]);
    else
        io_fields.insert(tagText(DatTag::DesignTableMaps), maps.release(), kListClass);
}

// Status ----------------------------------------------------------------------------------------------------------

/** The one way in which a status enters the map: the latest counts. */
void storeStatus(TextMap& io_statuses, const CATUnicodeString& i_name, VornCache::EnumModifiedFlag i_status) {
    if (int* const p_status = valueIn<int>(io_statuses, i_name, kStatusClass))
        *p_status = i_status;
    else
        io_statuses.insert(i_name, new int(i_status), kStatusClass);
}

/** The automation view of a document; a success without one counts as failure. */
HRESULT automationView(CATDocument* ip_document, InterfacePtr<CATIADocument>& o_view) {
    const HRESULT code = o_view.receive([ip_document](CATIADocument*& op_view) {
        void* p_found = nullptr;
        const HRESULT asked = ip_document->QueryInterface(IID_CATIADocument, &p_found);
        op_view = static_cast<CATIADocument*>(p_found);
        return asked;
    });
    return SUCCEEDED(code) && !o_view ? E_FAIL : code;
}

/** A document that does not tell counts as unsaved: nobody loses work to a wrong "not modified". */
bool isSaved(const InterfacePtr<CATIADocument>& i_view) {
    CAT_VARIANT_BOOL saved = 0;
    return SUCCEEDED(i_view->get_Saved(saved)) && saved;
}

/** What the status is decided from. */
struct StatusQuestion {
    const CATUnicodeString& directory;
    const CATUnicodeString& name;
    const CATUnicodeString& date; ///< of the document's file when its DAT file was written
    bool has_document;
    const InterfacePtr<CATIADocument>& view;
};

/** @return false when nobody can tell */
bool decideStatus(const JournalFrame& i_frame, const StatusQuestion& i_question,
                  VornCache::EnumModifiedFlag& o_status) {
    o_status = VornCache::ModifiedFlagModified;
    if (i_question.directory.IsNull()) {
        i_frame.write("Modified Status to Modified for %s (dynamic seed)", i_question.name);
        return true;
    }
    if (UTILTime::compareFileTime(i_question.name, i_question.date) != 0) {
        i_frame.write("Modified Status to Modified Case 1 for %s ", i_question.name);
        return true;
    }
    if (i_question.has_document && !i_question.view) return false;
    if (i_question.has_document && !isSaved(i_question.view)) {
        i_frame.write("Modified Status to Modified Case 2 for %s ", i_question.name);
        return true;
    }
    i_frame.write("Modified Status to Not Modified for %s ", i_question.name);
    o_status = VornCache::ModifiedFlagNotModified;
    return true;
}

// Reading ---------------------------------------------------------------------------------------------------------

/** Lines of the DAT file that belongs to a document or, without one, to a name. */
HRESULT readLinesOf(const JournalFrame& i_frame, const CATUnicodeString& i_name, CATDocument* ip_document,
                    Texts& o_lines) {
    CATUnicodeString uuid;
    if (FAILED(VornToolsCommon::getDocUUID(ip_document, uuid))) {
        i_frame.write("ERROR : getDocUUID is failed.");
        uuid = "";
    }
    return VornToolsCommon::readDatTools(i_name, uuid, o_lines);
}

/** Whether a DAT file waits in the staging directory for a document of which there is no file yet. */
bool isOnlyStaged(const JournalFrame& i_frame, const CATUnicodeString& i_file_name) {
    CATUnicodeString staged =
        environmentText(&ENVManager::getStagingDirectory) + UTILFile::getPathSeparator() + i_file_name;
    if (environmentSays(&ENVManager::getCATIAIsUsingDLName) && FAILED(makePhysical(staged)))
        i_frame.write("ERROR : getPhysicalPathFromDLName is failed.");
    return UTILFile::existingFile(staged + ".dat") && !UTILFile::existingFile(staged);
}

// Ownership -------------------------------------------------------------------------------------------------------

void deleteFields(TextMap* ip_fields) {
    if (!ip_fields) return;
    for (int i = 0; i < ip_fields->size(); ++i) {
        if (std::strcmp(ip_fields->classNameAt(i), kListClass) == 0)
            delete static_cast<Texts*>(ip_fields->valueAt(i));
        else
            delete static_cast<CATUnicodeString*>(ip_fields->valueAt(i));
    }
    delete ip_fields;
}

// The parameter is what the map gives back.
// NOLINTNEXTLINE(readability-non-const-parameter)
void deleteStatus(int* ip_status) { delete ip_status; }

/** Frees every value and leaves its key behind without one, so that a second call finds nothing to free. */
template <class Value>
void releaseValues(TextMap& io_map, const char* i_class, void (*i_delete)(Value*)) {
    std::vector<CATUnicodeString> keys;
    keys.reserve(static_cast<std::size_t>(io_map.size()));
    for (int i = 0; i < io_map.size(); ++i) {
        keys.push_back(io_map.keyAt(i));
        i_delete(static_cast<Value*>(io_map.valueAt(i)));
    }
    for (const CATUnicodeString& key : keys) io_map.insert(key, nullptr, i_class);
}

/** Moves an entry to another key; the value that it replaces there is freed. */
template <class Value>
void moveEntry(TextMap& io_map, const char* i_class, const CATUnicodeString& i_old_key,
               const CATUnicodeString& i_new_key, void (*i_delete)(Value*)) {
    if (!io_map.contains(i_old_key)) return;
    Value* const p_moved = valueIn<Value>(io_map, i_old_key, i_class);
    i_delete(valueIn<Value>(io_map, i_new_key, i_class));
    io_map.insert(i_new_key, p_moved, i_class);
    io_map.erase(i_old_key);
}

} // namespace

VornCache::VornCache()
    : m_cacheMap(new TYPMapCATUnicodeStringPVoid), m_statusMap(new TYPMapCATUnicodeStringPVoid),
      m_documentMap(new TYPMapCATUnicodeStringPVoid) {}

VornCache::~VornCache() {
    release();
    delete m_cacheMap;
    delete m_statusMap;
    delete m_documentMap;
}

HRESULT VornCache::release() {
    const JournalFrame frame(_CteCLASS_NAME, "release");
    releaseValues(*m_cacheMap, kFieldMapClass, deleteFields);
    releaseValues(*m_statusMap, kStatusClass, deleteStatus);
    return S_OK;
}

HRESULT VornCache::addDocument(CATUnicodeString name, CATDocument* doc) {
    const JournalFrame frame(_CteCLASS_NAME, "addDocument");
    if (!m_cacheMap->contains(name)) {
        auto sp_fields = std::make_unique<TYPMapCATUnicodeStringPVoid>();
        readDataInDATFile(name, sp_fields.get(), doc);
        m_cacheMap->insert(name, sp_fields.release(), kFieldMapClass);
    }
    if (doc) m_documentMap->insert(name, doc, kDocumentClass);
    return S_OK;
}

HRESULT VornCache::readDataInDATFile(const CATUnicodeString& name, TYPMapCATUnicodeStringPVoid* fieldMap,
                                     CATDocument* doc) {
    const JournalFrame frame(_CteCLASS_NAME, "ReadDataInDATFile");
    CATUnicodeString directory, fileName;
    if (FAILED(splitFullName(name, directory, fileName))) return frame.callFailed("splitPathAndFileName");

    if (!directory.IsNull() || !doc) {
        if (FAILED(readLinesOf(frame, name, doc, m_lines))) {
            frame.write("Modified Status to New Case 1 for %s ", name);
            storeStatus(*m_statusMap, name, ModifiedFlagNew);
            return E_FAIL;
        }
        fillDatMapFromStringList(directory, fileName, name, doc, m_lines, kPositionalTags, kTaggedTags, fieldMap);
        return S_OK;
    }
    if (!stagingDirectoryCounts()) return S_OK;
    if (isOnlyStaged(frame, fileName) && SUCCEEDED(readLinesOf(frame, name, doc, m_lines)))
        fillDatMapFromStringList(directory, fileName, name, doc, m_lines, kPositionalTags, kTaggedTags, fieldMap);
    storeStatus(*m_statusMap, name, ModifiedFlagNew);
    return S_OK;
}

HRESULT VornCache::fillDatMapFromStringList(const CATUnicodeString& directory, const CATUnicodeString& /*fileName*/,
                                            const CATUnicodeString& name, CATDocument* doc,
                                            CATListValCATUnicodeString& lines,
                                            const CATListValCATUnicodeString& positionalTags,
                                            const CATListValCATUnicodeString& taggedTags,
                                            TYPMapCATUnicodeStringPVoid* fieldMap) {
    const JournalFrame frame(_CteCLASS_NAME, "fillDatMapFromStringList");
    const DatLines dat(lines);
    storeSingleValues(*fieldMap, dat, positionalTags, taggedTags);

    const CATUnicodeString& date = dat.localLastModDate();
    if (date.IsNull()) {
        frame.write("Modified Status to New Case 2 for %s ", name);
        storeStatus(*m_statusMap, name, ModifiedFlagNew);
    }
    InterfacePtr<CATIADocument> sp_view;
    const HRESULT code = doc ? automationView(doc, sp_view) : S_OK;
    EnumModifiedFlag status;
    if (decideStatus(frame, {directory, name, date, doc != nullptr, sp_view}, status))
        storeStatus(*m_statusMap, name, status);

    storeBlocks(*fieldMap, dat, lines);
    storeDesignTableMaps(*fieldMap, dat);
    return code;
}

HRESULT VornCache::getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag) {
    const JournalFrame frame(_CteCLASS_NAME, "getModifiedStatus");
    flag = statusOf(name);
    return S_OK;
}

HRESULT VornCache::getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag, CATDocument*& doc) {
    const JournalFrame frame(_CteCLASS_NAME, "getModifiedStatus");
    flag = statusOf(name);
    doc = valueIn<CATDocument>(*m_documentMap, name, kDocumentClass);
    return S_OK;
}

HRESULT VornCache::isNew(CATUnicodeString name, unsigned char& answer) {
    const JournalFrame frame(_CteCLASS_NAME, "isNew");
    answer = statusOf(name) == ModifiedFlagNew;
    return S_OK;
}

HRESULT VornCache::isOpen(CATUnicodeString name, unsigned char& answer) {
    const JournalFrame frame(_CteCLASS_NAME, "isOpen");
    answer = statusOf(name) == ModifiedFlagNotModified;
    return S_OK;
}

HRESULT VornCache::isModified(CATUnicodeString name, unsigned char& answer) {
    const JournalFrame frame(_CteCLASS_NAME, "isModified");
    answer = statusOf(name) == ModifiedFlagModified;
    return S_OK;
}

VornCache::EnumModifiedFlag VornCache::statusOf(const CATUnicodeString& name) const {
    const int* const p_status = valueIn<int>(*m_statusMap, name, kStatusClass);
    return p_status ? static_cast<EnumModifiedFlag>(*p_status) : ModifiedFlagNew;
}

HRESULT VornCache::setNewFullFileName(const CATUnicodeString& oldName, const CATUnicodeString& newName) {
    const JournalFrame frame(_CteCLASS_NAME, "setNewFullFileName", 0);
    constexpr int kIdentical = 2;
    if (oldName.Compare(newName) == kIdentical) return S_OK;
    moveEntry(*m_cacheMap, kFieldMapClass, oldName, newName, deleteFields);
    moveEntry(*m_statusMap, kStatusClass, oldName, newName, deleteStatus);
    moveEntry<CATDocument>(*m_documentMap, kDocumentClass, oldName, newName, [](CATDocument*) {});
    return S_OK;
}
