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
 * Documents are named by their full file name exactly as given to addDocument: letter case and separators count. A name
 * that was never added is no error: it has no values, and its document is new. When memory runs out, for a DAT file may
 * have any size, a method returns E_FAIL and its outputs are empty. Main thread only. docs/dat-file.md describes the
 * file.
 *
 * @par Example
 * @snippet session.cpp VornCache
 */
class ExportedByVornTools VornCache {
public:
    /** "VornCache::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** What became of a document since its DAT file was written; decided when the file is read, not followed
     * afterwards. */
    enum EnumModifiedFlag {
        ModifiedFlagNotModified = 0, ///< as the PDM knows it
        ModifiedFlagModified = 1,    ///< its file has another date, or it holds unsaved changes
        ModifiedFlagNew = 3          ///< the PDM does not know it
    };

    /** An empty cache. */
    VornCache();
    /** Frees what the cache holds, as release does; the documents that it knows stay. */
    ~VornCache();
    VornCache(const VornCache&) = delete;
    VornCache& operator=(const VornCache&) = delete;

    /**
     * Reads the document's DAT file unless the name is known already, and records the document when one is given. A
     * missing or unreadable DAT file makes the document new.
     * @param name full file name. A bare name together with a document is that of a document that was never saved: its
     * DAT file is looked for in the staging directory, and it is new
     * @param doc asked whether it holds unsaved changes; not owned, no reference is added. Null: the file's date alone
     * decides, and a document recorded before stays
     * @return S_OK, also without a DAT file
     */
    HRESULT addDocument(CATUnicodeString name, CATDocument* doc);
    /**
     * Whether a name was added.
     * @param name letter case and separators count
     * @param has 1 for a name that was added, whether it has a DAT file or not
     * @return S_OK
     */
    HRESULT fileHasCache(CATUnicodeString name, unsigned char& has);
    /**
     * The same as fileHasCache, as an answer.
     * @param name letter case and separators count
     * @return 1 for a name that was added, else 0
     */
    unsigned char isInCache(const CATUnicodeString& name);

    /**
     * The value of a tag that has one line. What is missing is journalled.
     * @param name as given to addDocument
     * @param tag with its angle brackets, for example "<DatasetUID>"
     * @param value empty for a name or tag that is not there and for a block of several lines or none
     * @return S_OK
     */
    HRESULT getDataAtLine(CATUnicodeString name, CATUnicodeString tag, CATUnicodeString& value);
    /**
     * The PDM's identifier of the item revision. What is missing is journalled.
     * @param name as given to addDocument
     * @param value empty when the DAT file records none
     * @return S_OK
     */
    HRESULT getItemRevUID(CATUnicodeString name, CATUnicodeString& value);
    /**
     * The PDM's identifier of the dataset. What is missing is journalled.
     * @param name as given to addDocument
     * @param value empty when the DAT file records none
     * @return S_OK
     */
    HRESULT getDatasetUID(CATUnicodeString name, CATUnicodeString& value);
    /**
     * Date of the document's file when its DAT file was written; getLocalLastModifiedDate tells the present one.
     * @param name as given to addDocument
     * @param value decimal seconds since 1970; empty when there was no file yet
     * @return S_OK
     */
    HRESULT getCacheLastModifiedDate(CATUnicodeString name, CATUnicodeString& value);
    /**
     * Date of the product structure when it was loaded.
     * @param name as given to addDocument
     * @param value as the PDM wrote it; empty when the DAT file records none
     * @return S_OK
     */
    HRESULT getBVRDate(CATUnicodeString name, CATUnicodeString& value);

    /**
     * The configuration that the document was loaded with.
     * @param name as given to addDocument
     * @param list the lines of the block, in their order; empty without one
     * @return S_OK
     */
    HRESULT getConfiguration(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * Occurrences that the PDM skipped.
     * @param name as given to addDocument
     * @param list one a line of the block, in their order; empty without one
     * @return S_OK
     */
    HRESULT getSkippedOccList(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * The sheet of each configuration that the PDM knows; parallel to getDesignTableConfigs and getDesignTableCksums.
     * @param name as given to addDocument
     * @param list decimal numbers; empty without a block
     * @return S_OK
     */
    HRESULT getDesignTableSheets(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * The number of each configuration that the PDM knows, within its sheet.
     * @param name as given to addDocument
     * @param list decimal numbers; empty without a block
     * @return S_OK
     */
    HRESULT getDesignTableConfigs(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * The checksum of each configuration when the PDM saw it, see VornToolsCommon::calculateCheckSums.
     * @param name as given to addDocument
     * @param list 32 hexadecimal digits each, or "ERROR" for one that is to be computed; empty without a block
     * @return S_OK
     */
    HRESULT getDesignTableCksums(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * How columns of design tables are mapped.
     * @param name as given to addDocument
     * @param list one element a mapping; each of its lines is preceded by "!!!"
     * @return S_OK
     */
    HRESULT getDesignTableMaps(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * Full names of the design tables' files: beside the document when they exist there, else in a given directory.
     * @param name as given to addDocument
     * @param dir for files that are not beside the document, without separator at its end; whether they exist there is
     * not asked
     * @param list one a line of the block, in their order
     * @return S_OK
     */
    HRESULT getDesignTableFiles(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);

    /**
     * Every linked document, resolved as getDesignTableFiles does. The words in front of an entry ("MML", "MMLAssy",
     * "UNRESOLVED") stay: such a name is that of no file.
     * @param name as given to addDocument
     * @param dir as in getDesignTableFiles
     * @param list one a line of the block, in their order
     * @return S_OK
     */
    HRESULT getLinkedDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);
    /**
     * Targets of multi-model links: the entries behind the word "MML".
     * @param name as given to addDocument
     * @param dir as in getDesignTableFiles
     * @param list full names, in the order of the file
     * @return S_OK
     */
    HRESULT getLinkedMMLDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);
    /**
     * Multi-model assembly contexts: the entries behind the word "MMLAssy".
     * @param name as given to addDocument
     * @param dir as in getDesignTableFiles
     * @param list full names, in the order of the file
     * @return S_OK; E_FAIL, reported, when the document's name cannot be split
     */
    HRESULT getLinkedMMLAssyDoc(CATUnicodeString name, const CATUnicodeString& dir, CATListValCATUnicodeString& list);
    /**
     * The first multi-model assembly context that is a product document.
     * @param name as given to addDocument
     * @param ctx file name without a directory; empty when there is none
     * @return S_OK
     */
    HRESULT getExistingMMLAssyContextDocName(CATUnicodeString name, CATUnicodeString& ctx);
    /**
     * One empty text for every link that the PDM could not resolve. Kept because callers only count them.
     * @param name as given to addDocument
     * @param list empty texts
     * @return S_OK
     */
    HRESULT getLinkedUnresolvedDoc(CATUnicodeString name, CATListValCATUnicodeString& list);
    /**
     * Whether the PDM could not resolve a link of the document.
     * @param name as given to addDocument
     * @param has 1 when getLinkedUnresolvedDoc lists something, which is journalled
     * @return S_OK
     */
    HRESULT hasLinkedUnresolvedDoc(CATUnicodeString name, unsigned char& has);

    /**
     * Whether the document was loaded as a component of a catalog.
     * @param name as given to addDocument
     * @return 1 for the load type "CatalogComp", else 0
     */
    unsigned char isCatalogComp(const CATUnicodeString& name);
    /**
     * Whether the DAT file describes a design table.
     * @param name as given to addDocument; one that is not known is journalled
     * @return 1 when sheets, configurations and checksums are recorded, be they empty, else 0
     */
    unsigned char isDesignTable(const CATUnicodeString& name);
    /**
     * What the PDM wants to be told of a document: names and values of attributes in turn. "PartNumber" is always among
     * them: item and revision joined by "_", else the file name without extension.
     * @param name as given to addDocument
     * @param list what it holds stays; attributes without a value are left out
     * @return S_OK
     */
    HRESULT getAttributeList(CATUnicodeString name, CATListValCATUnicodeString& list);

    /**
     * What became of the document since its DAT file was written.
     * @param name as given to addDocument
     * @param flag ModifiedFlagNew also for a name that the cache does not know
     * @return S_OK
     */
    HRESULT getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag);
    /**
     * The same, and the document that was recorded.
     * @param name as given to addDocument
     * @param flag as without the document
     * @param doc null when none was recorded; no reference is added
     * @return S_OK
     */
    HRESULT getModifiedStatus(CATUnicodeString name, EnumModifiedFlag& flag, CATDocument*& doc);
    /**
     * Whether the PDM does not know the document.
     * @param name as given to addDocument
     * @param answer 1 for ModifiedFlagNew, also for a name that the cache does not know
     * @return S_OK
     */
    HRESULT isNew(CATUnicodeString name, unsigned char& answer);
    /**
     * Whether the document is as the PDM knows it.
     * @param name as given to addDocument
     * @param answer 1 for ModifiedFlagNotModified
     * @return S_OK
     */
    HRESULT isOpen(CATUnicodeString name, unsigned char& answer);
    /**
     * Whether the document has changed since the PDM saw it.
     * @param name as given to addDocument
     * @param answer 1 for ModifiedFlagModified; a new document is not modified
     * @return S_OK
     */
    HRESULT isModified(CATUnicodeString name, unsigned char& answer);

    /**
     * Date of a file's last change, as DAT files record it. The file need not have been added.
     * @param path full name of the file; a logical name is examined where it lies
     * @param value decimal seconds since 1970; "-1" when the file cannot be examined
     * @return S_OK
     */
    HRESULT getLocalLastModifiedDate(CATUnicodeString path, CATUnicodeString& value);
    /**
     * Whether the name of a visualisation file carries its source's date.
     * @param name with or without directory
     * @return 1 when the name ends with ".dddd-dd-dd-dd.dd.dd.cgr", digits for d, and something stands in front, else 0
     */
    static unsigned char cgrFileNameContainsLastModificationDateField(CATUnicodeString name);

    /**
     * Moves everything known of a document to its new name, after a rename or a save under another name. Of a document
     * that had this name before nothing stays; an unknown old name changes nothing.
     * @param oldName as given to addDocument
     * @param newName the name to ask for from now on
     * @return S_OK
     */
    HRESULT setNewFullFileName(const CATUnicodeString& oldName, const CATUnicodeString& newName);
    /**
     * Frees every value held. Afterwards the cache may only be destroyed.
     * @return S_OK
     */
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
