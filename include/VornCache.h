#ifndef VornCache_H
#define VornCache_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATDocument;
class TYPMapCATUnicodeStringPVoid;

/**
 * What the PDM client recorded of each managed document: its DAT file, read once a document and kept in memory, with
 * the decision whether the document is new, modified or unchanged since it was loaded.
 *
 * Documents are named by their full file name exactly as given to addDocument: letter case and separators count. Unless
 * its comment says otherwise a method returns S_OK, and an output that has no value is empty. When memory runs out, for
 * a DAT file may have any size, a method returns E_FAIL and its outputs are empty.
 */
class ExportedByVornTools VornCache {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    enum EnumModifiedFlag { ModifiedFlagNotModified = 0, ModifiedFlagModified = 1, ModifiedFlagNew = 3 };

    VornCache();
    ~VornCache();
    VornCache(const VornCache&) = delete;
    VornCache& operator=(const VornCache&) = delete;

    /** Reads the document's DAT file unless the name is known already, and records the document when one is given. The
     * cache does not own it. A missing or unreadable DAT file makes the document new. */
    HRESULT addDocument(CATUnicodeString name, CATDocument* doc);
    HRESULT fileHasCache(CATUnicodeString name, unsigned char& has);
    unsigned char isInCache(const CATUnicodeString& name);

    /** The single-line value of a tag (written with its angle brackets). */
    HRESULT getDataAtLine(CATUnicodeString name, CATUnicodeString tag, CATUnicodeString& value);
    HRESULT getItemRevUID(CATUnicodeString name, CATUnicodeString& value);
    HRESULT getDatasetUID(CATUnicodeString name, CATUnicodeString& value);
    /** Date of the file when its DAT file was written: decimal seconds since 1970. */
    HRESULT getCacheLastModifiedDate(CATUnicodeString name, CATUnicodeString& value);
    /** Date of the product structure when it was loaded. */
    HRESULT getBVRDate(CATUnicodeString name, CATUnicodeString& value);

    HRESULT getConfiguration(CATUnicodeString name, CATListValCATUnicodeString& list);
    /** Occurrences that the PDM skipped. */
    HRESULT getSkippedOccList(CATUnicodeString name, CATListValCATUnicodeString& list);
    HRESULT getDesignTableSheets(CATUnicodeString name, CATListValCATUnicodeString& list);
    HRESULT getDesignTableConfigs(CATUnicodeString name, CATListValCATUnicodeString& list);
    HRESULT getDesignTableCksums(CATUnicodeString name, CATListValCATUnicodeString& list);
    /** One element a mapping; each of its lines is preceded by "!!!". */
    HRESULT getDesignTableMaps(CATUnicodeString name, CATListValCATUnicodeString& list);
    /** Full names of the design tables' files: beside the document when they exist there, else in `dir`. */
    HRESULT getDesignTableFiles(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);

    /** Every linked document, resolved as the design-table files are; the entries' prefixes stay. */
    HRESULT getLinkedDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);
    /** Targets of multi-model links. */
    HRESULT getLinkedMMLDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);
    /** Multi-model assembly contexts. @return the last name resolution's result */
    HRESULT getLinkedMMLAssyDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);
    /** The first multi-model assembly context that is a product document, without a directory. */
    HRESULT getExistingMMLAssyContextDocName(CATUnicodeString name, CATUnicodeString& ctx);
    /** One empty text for every link that the PDM could not resolve. Kept because callers only count them. */
    HRESULT getLinkedUnresolvedDoc(CATUnicodeString name, CATListValCATUnicodeString& list);
    HRESULT hasLinkedUnresolvedDoc(CATUnicodeString name, unsigned char& has);

    unsigned char isCatalogComp(const CATUnicodeString& name);
    unsigned char isDesignTable(const CATUnicodeString& name);
    /** Attribute names and values in turn, for the PDM; appended to the list. */
    HRESULT getAttributeList(CATUnicodeString name, CATListValCATUnicodeString& list);

    /** ModifiedFlagNew for a name that the cache does not know. */
    HRESULT getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag);
    /** @param doc the document recorded for the name, or null; no reference is added */
    HRESULT getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag, CATDocument*& doc);
    HRESULT isNew(CATUnicodeString name, unsigned char& answer);
    HRESULT isOpen(CATUnicodeString name, unsigned char& answer);
    HRESULT isModified(CATUnicodeString name, unsigned char& answer);

    /** Decimal seconds since 1970 of a file's last change; "-1" when it cannot be examined. */
    HRESULT getLocalLastModifiedDate(CATUnicodeString path, CATUnicodeString& value);
    /** 1 when a visualisation file's name ends with ".dddd-dd-dd-dd.dd.dd.cgr", digits for d, and something stands in
     * front. */
    static unsigned char cgrFileNameContainsLastModificationDateField(CATUnicodeString name);

    /** Moves everything known of a document to its new name, after a rename or a save under another name. Of a document
     * that had this name before nothing stays; an unknown old name changes nothing. */
    HRESULT setNewFullFileName(const CATUnicodeString& oldName, const CATUnicodeString& newName);
    /** Frees every value held. Afterwards the cache may only be destroyed. */
    HRESULT release();

private:
    friend struct VornCacheTestAccess;

    HRESULT readDataInDATFile(const CATUnicodeString& name, TYPMapCATUnicodeStringPVoid* fieldMap, CATDocument* doc);
    HRESULT fillDatMapFromStringList(const CATUnicodeString& directory, const CATUnicodeString& fileName,
                                     const CATUnicodeString& name, CATDocument* doc,
                                     const CATListValCATUnicodeString& lines,
                                     const CATListValCATUnicodeString& positionalTags,
                                     const CATListValCATUnicodeString& taggedTags,
                                     TYPMapCATUnicodeStringPVoid* fieldMap);
    HRESULT getDataListAtLine(const CATUnicodeString& name, const CATUnicodeString& tag,
                              CATListValCATUnicodeString& list);
    HRESULT getLastModificationDateOnFile(const char* path, int* date);

    TYPMapCATUnicodeStringPVoid* m_cacheMap;    ///< name to its field map (owned), "MAP_CACHE"
    TYPMapCATUnicodeStringPVoid* m_statusMap;   ///< name to its status (an int, owned), "MAP_OF_MF"
    TYPMapCATUnicodeStringPVoid* m_documentMap; ///< name to its document (not owned), "MAP_OF_CATDOCUMENT"
};

#endif
