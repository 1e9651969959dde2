#include "VornCache.h"

#include "cache/DatLines.h"
#include "cache/PlatformAnswers.h"
#include "foundation/JournalFrame.h"

#include <cstring>

using namespace vorntools;

namespace {

// An entry of the linked documents is a file name, or one of these words, one separator character and a name.
constexpr char kMultiModel[] = "MML";
constexpr char kMultiModelAssembly[] = "MMLAssy";
constexpr char kUnresolved[] = "UNRESOLVED";

bool beginsWith(const CATUnicodeString& i_entry, const char* i_word) {
    return std::strncmp(i_entry.ConvertToChar(), i_word, std::strlen(i_word)) == 0;
}

/** The entry behind its word and the separator, which is one character of any kind. */
CATUnicodeString behindWord(const CATUnicodeString& i_entry, const char* i_word) {
    const int first = static_cast<int>(std::strlen(i_word)) + 1;
    const int count = i_entry.GetLengthInChar() - first;
    return count > 0 ? i_entry.SubString(first, count) : CATUnicodeString();
}

} // namespace

HRESULT VornCache::getFullNameOfFileFromDatFile(const CATUnicodeString& fileName, const CATUnicodeString& documentName,
                                                const CATUnicodeString& dir, CATUnicodeString& fullName) {
    const CATUnicodeString separator = UTILFile::getPathSeparator();
    fullName = dir + separator + fileName;
    CATUnicodeString documentDirectory, ignored;
    const HRESULT code = splitFullName(documentName, documentDirectory, ignored);
    if (FAILED(code)) return code;
    if (documentDirectory.IsNull() || documentDirectory == dir) return code;
    const CATUnicodeString besideDocument = documentDirectory + separator + fileName;
    if (UTILFile::existingFile(besideDocument)) fullName = besideDocument;
    return code;
}

HRESULT VornCache::appendFullNames(const CATUnicodeString& name, const CATUnicodeString& dir,
                                   const CATListValCATUnicodeString& fileNames, CATListValCATUnicodeString& list) {
    HRESULT code = S_OK;
    for (int i = 1; i <= fileNames.Size(); ++i) {
        CATUnicodeString fullName;
        code = getFullNameOfFileFromDatFile(fileNames[i], name, dir, fullName);
        list.Append(fullName);
    }
    return code;
}

HRESULT VornCache::getDesignTableFiles(CATUnicodeString name, const CATUnicodeString& dir,
                                       CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableFiles");
    list.RemoveAll();
    CATListValCATUnicodeString files;
    getDataListAtLine(name, tagText(DatTag::DesignTableFiles), files);
    appendFullNames(name, dir, files, list);
    return S_OK;
}

HRESULT VornCache::getLinkedDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedDoc");
    list.RemoveAll();
    CATListValCATUnicodeString entries;
    getDataListAtLine(name, tagText(DatTag::LinkedDocs), entries);
    appendFullNames(name, dir, entries, list);
    return S_OK;
}

HRESULT VornCache::getLinkedMMLDoc(CATUnicodeString name, const CATUnicodeString& dir,
                                   CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedMMLDoc");
    list.RemoveAll();
    CATListValCATUnicodeString entries, targets;
    getDataListAtLine(name, tagText(DatTag::LinkedDocs), entries);
    for (int i = 1; i <= entries.Size(); ++i) {
        if (beginsWith(entries[i], kMultiModel) && entries[i].SearchSubString(kMultiModelAssembly) < 0)
            targets.Append(behindWord(entries[i], kMultiModel));
    }
    appendFullNames(name, dir, targets, list);
    return S_OK;
}

HRESULT VornCache::getLinkedMMLAssyDoc(CATUnicodeString name, const CATUnicodeString& dir,
                                       CATListValCATUnicodeString& list) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedMMLAssyDoc");
    list.RemoveAll();
    CATListValCATUnicodeString contexts;
    listAssemblyContexts(name, contexts);
    const HRESULT code = appendFullNames(name, dir, contexts, list);
    if (FAILED(code)) list.RemoveAll();
    return code;
}

void VornCache::listAssemblyContexts(const CATUnicodeString& name, CATListValCATUnicodeString& list) {
    CATListValCATUnicodeString entries;
    getDataListAtLine(name, tagText(DatTag::LinkedDocs), entries);
    for (int i = 1; i <= entries.Size(); ++i) {
        if (beginsWith(entries[i], kMultiModelAssembly)) list.Append(behindWord(entries[i], kMultiModelAssembly));
    }
}

HRESULT VornCache::getExistingMMLAssyContextDocName(CATUnicodeString name, CATUnicodeString& ctx) {
    const JournalFrame frame(_CteCLASS_NAME, "getExistingMMLAssyContextDocName");
    ctx = "";
    CATListValCATUnicodeString contexts;
    listAssemblyContexts(name, contexts);
    for (int i = 1; i <= contexts.Size() && ctx.IsNull(); ++i) {
        if (UTILFile::getExtension(contexts[i]).Compare("CATProduct") != 0) ctx = contexts[i];
    }
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
    CATListValCATUnicodeString entries;
    getDataListAtLine(name, tagText(DatTag::LinkedDocs), entries);
    int count = 0;
    for (int i = 1; i <= entries.Size(); ++i) count += beginsWith(entries[i], kUnresolved);
    return count;
}
