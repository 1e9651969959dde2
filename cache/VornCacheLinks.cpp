#include "VornCache.h"

#include "cache/DatFields.h"
#include "cache/DatTags.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"

#include "UTILFile.h"

#include <cstring>
#include <utility>

using namespace vorntools;

namespace {

// An entry of the linked documents is a file name, or one of these words, one separator character and a name.
constexpr char kMultiModel[] = "MML";
constexpr char kMultiModelAssembly[] = "MMLAssy";
constexpr char kUnresolved[] = "UNRESOLVED";

/** The entry behind its word and the separator, which is one character of any kind. */
CATUnicodeString behindWord(const CATUnicodeString& i_entry, const char* i_word) {
    const int first = static_cast<int>(std::strlen(i_word)) + 1;
    const int count = i_entry.GetLengthInChar() - first;
    return count > 0 ? i_entry.SubString(first, count) : CATUnicodeString();
}

/** Which entries of a block a list takes, and the file that such an entry names. */
using Selection = bool (*)(const CATUnicodeString& i_entry, CATUnicodeString& o_file);

bool takeEvery(const CATUnicodeString& i_entry, CATUnicodeString& o_file) {
    o_file = i_entry;
    return true;
}

bool takeMultiModel(const CATUnicodeString& i_entry, CATUnicodeString& o_file) {
    if (!beginsWith(i_entry, kMultiModel) || i_entry.SearchSubString(kMultiModelAssembly) >= 0) return false;
    o_file = behindWord(i_entry, kMultiModel);
    return true;
}

bool takeMultiModelAssembly(const CATUnicodeString& i_entry, CATUnicodeString& o_file) {
    if (!beginsWith(i_entry, kMultiModelAssembly)) return false;
    o_file = behindWord(i_entry, kMultiModelAssembly);
    return true;
}

/**
 * Full names of files that a DAT file gives without a directory: beside its document when they exist there, else in a
 * given directory.
 */
class FullNames {
public:
    FullNames(const JournalFrame& i_frame, const CATUnicodeString& i_document, const CATUnicodeString& i_directory)
        : m_frame(i_frame), m_document(i_document), m_given_directory(i_directory) {}

    /** Makes the list one of the files that a selection takes from a block. @return E_FAIL when memory runs out */
    HRESULT list(const DatField& i_block, Selection i_takes, CATListValCATUnicodeString& o_list) {
        const auto append_all = [&] {
            m_directory = m_given_directory;
            o_list.RemoveAll();
            CATUnicodeString file;
            i_block.forEach([&](const CATUnicodeString& i_entry) {
                if (i_takes(i_entry, file)) append(file, o_list);
            });
        };
        if (guarded(append_all)) return S_OK;
        o_list.RemoveAll();
        return E_FAIL;
    }
    /** Of splitting the document's name, a failure is reported; S_OK while there was nothing to list. */
    HRESULT code() const { return m_code; }

private:
    void append(const CATUnicodeString& i_file, CATListValCATUnicodeString& io_list) {
        if (!m_begun) begin();
        const bool beside = !m_beside.IsNull() && UTILFile::existingFile(m_beside_on_disk + i_file);
        CATUnicodeString name = (beside ? m_beside : m_given) + i_file;
        const int position = io_list.Size() + 1;
        io_list.Size(position);
        io_list[position] = std::move(name);
    }

    /** Everything that the names have in common. */
    void begin() {
        m_begun = true;
        const CATUnicodeString separator = UTILFile::getPathSeparator();
        m_given = m_directory + separator;
        CATUnicodeString directory, directory_on_disk, ignored;
        m_code = splitFullName(m_document, directory, ignored);
        if (SUCCEEDED(m_code)) m_code = splitFullName(nameOnDisk(m_document), directory_on_disk, ignored);
        if (FAILED(m_code)) m_frame.callFailed("UTILFile::splitPathAndFileName");
        if (FAILED(m_code) || directory.IsNull() || directory == m_directory) return;
        m_beside = directory + separator;
        m_beside_on_disk = directory_on_disk + separator;
    }

    const JournalFrame& m_frame;
    const CATUnicodeString& m_document;
    const CATUnicodeString& m_given_directory;
    CATUnicodeString m_directory; ///< a copy: the given one may be an element of the list
    CATUnicodeString m_given;
    CATUnicodeString m_beside;         ///< empty unless it is another one than the given
    CATUnicodeString m_beside_on_disk; ///< the same as the file services know it
    HRESULT m_code = S_OK;
    bool m_begun = false;
};

DatField linksOf(const TYPMapCATUnicodeStringPVoid* ip_cache, const CATUnicodeString& i_name) {
    return DatField(fieldsOf(ip_cache, i_name), tagText(DatTag::LinkedDocs));
}

int countUnresolved(const TYPMapCATUnicodeStringPVoid* ip_cache, const CATUnicodeString& i_name) {
    int count = 0;
    linksOf(ip_cache, i_name).forEach([&](const CATUnicodeString& i_entry) {
        count += beginsWith(i_entry, kUnresolved);
    });
    return count;
}

} // namespace

HRESULT VornCache::getDesignTableFiles(CATUnicodeString name, const CATUnicodeString& dir,
                                       CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableFiles");
    const DatField files(fieldsOf(m_cacheMap, name), tagText(DatTag::DesignTableFiles));
    return FullNames(frame, name, dir).list(files, takeEvery, list);
}

HRESULT VornCache::getLinkedDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedDoc");
    return FullNames(frame, name, dir).list(linksOf(m_cacheMap, name), takeEvery, list);
}

HRESULT VornCache::getLinkedMMLDoc(CATUnicodeString name, const CATUnicodeString& dir,
                                   CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedMMLDoc");
    return FullNames(frame, name, dir).list(linksOf(m_cacheMap, name), takeMultiModel, list);
}

HRESULT VornCache::getLinkedMMLAssyDoc(CATUnicodeString name, const CATUnicodeString& dir,
                                       CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedMMLAssyDoc");
    FullNames full_names(frame, name, dir);
    const HRESULT listed = full_names.list(linksOf(m_cacheMap, name), takeMultiModelAssembly, list);
    if (FAILED(full_names.code())) list.RemoveAll();
    return FAILED(listed) ? listed : full_names.code();
}

HRESULT VornCache::getExistingMMLAssyContextDocName(CATUnicodeString name, CATUnicodeString& ctx) {
    const JournalFrame frame(_CteCLASS_NAME, "getExistingMMLAssyContextDocName");
    ctx = "";
    const auto look_through = [&] {
        linksOf(m_cacheMap, name).forEach([&](const CATUnicodeString& i_entry) {
            CATUnicodeString context;
            if (!ctx.IsNull() || !takeMultiModelAssembly(i_entry, context)) return;
            if (UTILFile::getExtension(context).Compare("CATProduct") != 0) ctx = context;
        });
    };
    return guarded(look_through) ? S_OK : E_FAIL;
}

HRESULT VornCache::getLinkedUnresolvedDoc(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedUnresolvedDoc");
    list.RemoveAll();
    return guarded([&] { list.Size(countUnresolved(m_cacheMap, name)); }) ? S_OK : E_FAIL;
}

HRESULT VornCache::hasLinkedUnresolvedDoc(CATUnicodeString name, unsigned char& has) {
    const JournalFrame frame(_CteCLASS_NAME, "hasLinkedUnresolvedDoc");
    has = 0;
    if (!guarded([&] { has = countUnresolved(m_cacheMap, name) > 0; })) return E_FAIL;
    if (has) frame.write("file [%s] has unresolved context", name);
    return S_OK;
}
