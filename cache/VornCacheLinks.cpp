#include "VornCache.h"

#include "cache/DatFields.h"
#include "cache/DatLines.h"
#include "foundation/FileNames.h"
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

/**
 * Full names of files that a DAT file gives without a directory: beside its document when they exist there, else in a
 * given directory.
 */
class FullNames {
public:
    FullNames(const CATUnicodeString& i_document, const CATUnicodeString& i_directory,
              CATListValCATUnicodeString& o_list)
        : m_document(i_document), m_directory(i_directory), m_list(o_list) {}

    void append(const CATUnicodeString& i_file) {
        if (!m_begun) begin();
        CATUnicodeString name;
        if (!m_beside.IsNull()) name = m_beside + i_file;
        if (m_beside.IsNull() || !UTILFile::existingFile(name)) name = m_given + i_file;
        const int position = m_list.Size() + 1;
        m_list.Size(position);
        m_list[position] = std::move(name);
    }
    /** Of splitting the document's name; S_OK when there was nothing to append. */
    HRESULT code() const { return m_code; }

private:
    /** Everything that the names have in common. */
    void begin() {
        m_begun = true;
        const CATUnicodeString separator = UTILFile::getPathSeparator();
        m_given = m_directory + separator;
        CATUnicodeString document_directory, ignored;
        m_code = splitFullName(m_document, document_directory, ignored);
        if (SUCCEEDED(m_code) && !document_directory.IsNull() && document_directory != m_directory)
            m_beside = document_directory + separator;
    }

    const CATUnicodeString& m_document;
    const CATUnicodeString& m_directory;
    CATListValCATUnicodeString& m_list;
    CATUnicodeString m_given;
    CATUnicodeString m_beside;
    HRESULT m_code = S_OK;
    bool m_begun = false;
};

} // namespace

template <class Visit>
void VornCache::forEachLink(const CATUnicodeString& name, Visit&& visit) const {
    DatField(fieldsOf(*m_cacheMap, name), tagText(DatTag::LinkedDocs)).forEach(visit);
}

HRESULT VornCache::getDesignTableFiles(CATUnicodeString name, const CATUnicodeString& dir,
                                       CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableFiles");
    list.RemoveAll();
    FullNames full_names(name, dir, list);
    DatField(fieldsOf(*m_cacheMap, name), tagText(DatTag::DesignTableFiles))
        .forEach([&](const CATUnicodeString& i_file) { full_names.append(i_file); });
    return S_OK;
}

HRESULT VornCache::getLinkedDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedDoc");
    list.RemoveAll();
    FullNames full_names(name, dir, list);
    forEachLink(name, [&](const CATUnicodeString& i_entry) { full_names.append(i_entry); });
    return S_OK;
}

HRESULT VornCache::getLinkedMMLDoc(CATUnicodeString name, const CATUnicodeString& dir,
                                   CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedMMLDoc");
    list.RemoveAll();
    FullNames full_names(name, dir, list);
    forEachLink(name, [&](const CATUnicodeString& i_entry) {
        if (beginsWith(i_entry, kMultiModel) && i_entry.SearchSubString(kMultiModelAssembly) < 0)
            full_names.append(behindWord(i_entry, kMultiModel));
    });
    return S_OK;
}

HRESULT VornCache::getLinkedMMLAssyDoc(CATUnicodeString name, const CATUnicodeString& dir,
                                       CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedMMLAssyDoc");
    list.RemoveAll();
    FullNames full_names(name, dir, list);
    forEachLink(name, [&](const CATUnicodeString& i_entry) {
        if (beginsWith(i_entry, kMultiModelAssembly)) full_names.append(behindWord(i_entry, kMultiModelAssembly));
    });
    if (FAILED(full_names.code())) list.RemoveAll();
    return full_names.code();
}

HRESULT VornCache::getExistingMMLAssyContextDocName(CATUnicodeString name, CATUnicodeString& ctx) {
    const JournalFrame frame(_CteCLASS_NAME, "getExistingMMLAssyContextDocName");
    ctx = "";
    forEachLink(name, [&](const CATUnicodeString& i_entry) {
        if (!ctx.IsNull() || !beginsWith(i_entry, kMultiModelAssembly)) return;
        const CATUnicodeString context = behindWord(i_entry, kMultiModelAssembly);
        if (UTILFile::getExtension(context).Compare("CATProduct") != 0) ctx = context;
    });
    return S_OK;
}

HRESULT VornCache::getLinkedUnresolvedDoc(CATUnicodeString name, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedUnresolvedDoc");
    list.RemoveAll();
    for (int count = countUnresolved(name); count > 0; --count) list.Append(CATUnicodeString());
    return S_OK;
}

HRESULT VornCache::hasLinkedUnresolvedDoc(CATUnicodeString name, unsigned char& has) {
    const JournalFrame frame(_CteCLASS_NAME, "hasLinkedUnresolvedDoc");
    has = countUnresolved(name) > 0;
    if (has) frame.write("file [%s] has unresolved context", name);
    return S_OK;
}

int VornCache::countUnresolved(const CATUnicodeString& name) {
    int count = 0;
    forEachLink(name, [&](const CATUnicodeString& i_entry) { count += beginsWith(i_entry, kUnresolved); });
    return count;
}
