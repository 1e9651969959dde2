#include "VornCache.h"

#include "cache/DatFields.h"
#include "cache/DatFile.h"
#include "cache/DatLines.h"
#include "cache/DatPlaces.h"
#include "cache/SavedState.h"
#include "foundation/FileNames.h"
#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "UTILTime.h"

#include <memory>
#include <utility>

using namespace vorntools;

namespace {

using Texts = CATListValCATUnicodeString;
using TextMap = TYPMapCATUnicodeStringPVoid;

constexpr DatTag kBlocks[] = {DatTag::Configuration,     DatTag::LinkedDocs,         DatTag::DesignTableFiles,
                              DatTag::DesignTableSheets, DatTag::DesignTableConfigs, DatTag::DesignTableCksums,
                              DatTag::StructLastModDate, DatTag::SkippedOcc};

/** The map takes the value over once it holds it. */
template <class Value>
void store(TextMap& io_map, const CATUnicodeString& i_key, std::unique_ptr<Value> isp_value, const char* i_class) {
    io_map.insert(i_key, isp_value.get(), i_class);
    static_cast<void>(isp_value.release());
}

void storeText(TextMap& io_fields, const CATUnicodeString& i_tag, const CATUnicodeString& i_value) {
    store(io_fields, i_tag, std::make_unique<CATUnicodeString>(i_value), kTextClass);
}

void storeSingleValues(TextMap& io_fields, const DatLines& i_dat, const Texts& i_positional_tags,
                       const Texts& i_tagged_tags) {
    const Texts& tags = i_dat.isPositional() ? i_positional_tags : i_tagged_tags;
    for (int i = 1; i <= tags.Size(); ++i)
        storeText(io_fields, tags[i], i_dat.isPositional() ? i_dat.fileLine(i) : i_dat.valueOf(tags[i]));
    storeText(io_fields, tagText(DatTag::DatFileVersion), i_dat.valueOf(DatTag::DatFileVersion));
}

/** Lines of a block, exactly as many as it has. */
std::unique_ptr<Texts> copyOf(const Texts& i_lines, const DatRange& i_range) {
    auto values = std::make_unique<Texts>();
    values->Size(i_range.size());
    for (int i = 1; i <= i_range.size(); ++i) (*values)[i] = i_lines[i_range.first + i - 1];
    return values;
}

void storeBlocks(TextMap& io_fields, const DatLines& i_dat, const Texts& i_lines) {
    for (const DatTag tag : kBlocks) {
        if (!i_dat.has(tag)) continue;
        const DatRange range = i_dat.block(tag);
        if (range.size() == 1)
            storeText(io_fields, tagText(tag), i_lines[range.first]);
        else
            store(io_fields, tagText(tag), copyOf(i_lines, range), kListClass);
    }
}

void storeDesignTableMaps(TextMap& io_fields, const DatLines& i_dat) {
    auto maps = std::make_unique<Texts>();
    if (!i_dat.designTableMaps(*maps)) return;
    if (maps->Size() == 1)
        storeText(io_fields, tagText(DatTag::DesignTableMaps), (*maps)[1]);
    else
        store(io_fields, tagText(DatTag::DesignTableMaps), std::move(maps), kListClass);
}

/** The one way in which a status enters the map: the latest counts. */
void storeStatus(TextMap& io_statuses, const CATUnicodeString& i_name, VornCache::EnumModifiedFlag i_status) {
    if (int* const p_status = valueIn<int>(io_statuses, i_name, kStatusClass))
        *p_status = i_status;
    else
        store(io_statuses, i_name, std::make_unique<int>(i_status), kStatusClass);
}

/** Asks for the automation view of a document. */
HRESULT automationView(CATDocument* ip_document, InterfacePtr<CATIADocument>& o_view) {
    return o_view.receive([ip_document](CATIADocument*& op_view) {
        void* p_found = nullptr;
        const HRESULT asked = ip_document->QueryInterface(IID_CATIADocument, &p_found);
        op_view = static_cast<CATIADocument*>(p_found);
        return asked;
    });
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
    if (UTILTime::compareFileTime(nameOnDisk(i_question.name), i_question.date) != 0) {
        i_frame.write("Modified Status to Modified Case 1 for %s ", i_question.name);
        return true;
    }
    if (i_question.has_document && !i_question.view) return false;
    if (i_question.has_document && holdsChanges(i_question.view)) {
        i_frame.write("Modified Status to Modified Case 2 for %s ", i_question.name);
        return true;
    }
    i_frame.write("Modified Status to Not Modified for %s ", i_question.name);
    o_status = VornCache::ModifiedFlagNotModified;
    return true;
}

HRESULT readLinesOf(const JournalFrame& i_frame, const CATUnicodeString& i_name, CATDocument* ip_document,
                    Texts& o_lines) {
    return readDatFile(i_frame, i_name, ip_document, "ERROR : getDocUUID is failed.", o_lines);
}

/** Name of a document in the staging directory as the file services know it. */
CATUnicodeString stagedName(const JournalFrame& i_frame, const CATUnicodeString& i_file_name) {
    CATUnicodeString name = inStagingDirectory(i_file_name);
    if (FAILED(makePhysicalIfLogical(name))) i_frame.write("ERROR : getPhysicalPathFromDLName is failed.");
    return name;
}

} // namespace

HRESULT VornCache::readDataInDATFile(const CATUnicodeString& name, TYPMapCATUnicodeStringPVoid* fieldMap,
                                     CATDocument* doc) {
    const JournalFrame frame(_CteCLASS_NAME, "ReadDataInDATFile");
    CATUnicodeString directory, fileName;
    if (FAILED(splitFullName(name, directory, fileName))) return frame.callFailed("splitPathAndFileName");

    CATListValCATUnicodeString lines;
    const Texts& positional = positionalTags();
    const Texts& tagged = taggedTags();
    if (!directory.IsNull() || !doc) {
        if (FAILED(readLinesOf(frame, name, doc, lines))) {
            frame.write("Modified Status to New Case 1 for %s ", name);
            storeStatus(made(m_statusMap), name, ModifiedFlagNew);
            return E_FAIL;
        }
        fillDatMapFromStringList(directory, fileName, name, doc, lines, positional, tagged, fieldMap);
        return S_OK;
    }
    if (!stagingDirectoryCounts()) return S_OK;
    if (isOnlyStaged(stagedName(frame, fileName)) && SUCCEEDED(readLinesOf(frame, name, doc, lines)))
        fillDatMapFromStringList(directory, fileName, name, doc, lines, positional, tagged, fieldMap);
    storeStatus(made(m_statusMap), name, ModifiedFlagNew);
    return S_OK;
}

HRESULT VornCache::fillDatMapFromStringList(const CATUnicodeString& directory, const CATUnicodeString& /*fileName*/,
                                            const CATUnicodeString& name, CATDocument* doc,
                                            const CATListValCATUnicodeString& lines,
                                            const CATListValCATUnicodeString& positionalTags,
                                            const CATListValCATUnicodeString& taggedTags,
                                            TYPMapCATUnicodeStringPVoid* fieldMap) {
    const JournalFrame frame(_CteCLASS_NAME, "fillDatMapFromStringList");
    const DatLines dat(lines);
    storeSingleValues(*fieldMap, dat, positionalTags, taggedTags);

    const CATUnicodeString& date = dat.localLastModDate();
    if (date.IsNull()) {
        frame.write("Modified Status to New Case 2 for %s ", name);
        storeStatus(made(m_statusMap), name, ModifiedFlagNew);
    }
    InterfacePtr<CATIADocument> sp_view;
    const HRESULT code = doc ? automationView(doc, sp_view) : S_OK;
    EnumModifiedFlag status;
    if (decideStatus(frame, {directory, name, date, doc != nullptr, sp_view}, status))
        storeStatus(made(m_statusMap), name, status);

    storeBlocks(*fieldMap, dat, lines);
    storeDesignTableMaps(*fieldMap, dat);
    return code;
}
