#ifndef VornToolsDocumentFile_H
#define VornToolsDocumentFile_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class VornToolsString;

/**
 * A document file of the platform, read without opening the document: a container of named streams with a directory at
 * its end. docs/document-file.md describes the layout.
 *
 *     VornToolsDocumentFile file;
 *     if (SUCCEEDED(file.open(path))) {
 *         VornToolsString* image = file.readLinkImage();
 *         ... VornToolsLinks::getLinks(image, ...) ...
 *         delete image;
 *     }
 *
 * The file stays open, for reading, from open to close. What is read of it is kept until then, so that nothing is read
 * twice; of a file larger than 32 KiB little more than what is asked for is read. Any bytes are taken: a directory with
 * anything in it that does not fit is not believed, and the file then has no entries.
 *
 * Entries are the storages and streams of the directory, counted from 1 in its order. The directory has 32-bit
 * positions: a file is never larger than 4 GiB. An object serves one file at a time; it is not copied.
 *
 * @par Example
 * @snippet links.cpp VornToolsDocumentFile
 */
class ExportedByVornTools VornToolsDocumentFile {
public:
    /** "VornToolsDocumentFile::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** Whether a file is what it should be. */
    enum EnumDocumentCondition : int {
        DocumentIntact = 0,     ///< nothing is missing
        DocumentCutOff = 1,     ///< its directory would lie behind its end: a copy that was not finished
        DocumentDamaged = 2,    ///< its directory does not end it, or the list of documents it names is not complete
        DocumentNoDocument = 3, ///< neither a document's beginning nor the list of documents that each one has
        DocumentNotOpen = 4     ///< no file is open
    };

    /** No file is open. */
    VornToolsDocumentFile();
    /** Closes the file. Strings that were read belong to the caller and stay. */
    ~VornToolsDocumentFile();
    VornToolsDocumentFile(const VornToolsDocumentFile&) = delete;
    VornToolsDocumentFile& operator=(const VornToolsDocumentFile&) = delete;

    /**
     * Opens a file and reads its directory; a file that was open is closed first.
     * @param i_path name on disk
     * @return S_OK, also for a file that is no document; E_FAIL, reported as a file that cannot be opened, when there
     * is no such file or it cannot be read: none is open then
     */
    HRESULT open(const CATUnicodeString& i_path);
    /**
     * Closes the file and forgets what was read.
     * @return S_OK, also when none is open
     */
    HRESULT close();

    /**
     * Length of the open file.
     * @return bytes; 0 when none is open
     */
    unsigned long long getSize() const;
    /**
     * Whether the open file is intact. Reads what tells that; a file of another layout than the known one is intact
     * when its list of documents is.
     * @return DocumentNotOpen without a file
     */
    EnumDocumentCondition getCondition();

    /**
     * Number of storages and streams.
     * @return 0 without a file, and without a directory that fits
     */
    int getEntryCount() const;
    /**
     * One entry.
     * @param i_index from 1
     * @param o_name characters as stored: those of properties begin with the character 3, that of the preview with 5
     * @param o_parent index of the storage that holds the entry; 0 for one on top, and for one whose storage is not
     * there
     * @param o_is_stream 1 for a stream, 0 for a storage
     * @param o_size in bytes
     * @param o_pieces number of pieces in the file
     * @return S_OK; E_FAIL, reported as out of range, with empty outputs for an index that no entry has
     */
    HRESULT getEntry(int i_index, CATUnicodeString& o_name, int& o_parent, unsigned char& o_is_stream,
                     unsigned int& o_size, int& o_pieces) const;
    /**
     * A date of an entry. Storages have up to three; what tells them apart is not known.
     * @param i_index of the entry, from 1
     * @param i_which 1 to 3
     * @param o_date "2026-01-31 12:00:00", universal time; empty when the file has none, and on failure
     * @return S_OK; E_FAIL, reported as out of range, for an index or number outside
     */
    HRESULT getEntryDate(int i_index, int i_which, CATUnicodeString& o_date) const;

    /**
     * The bytes of a stream, its pieces put together in its own order.
     * @param i_index of its entry, from 1
     * @param i_from first byte, from 0
     * @param i_count at most so many; those beyond the end are left out
     * @return a new string that the caller deletes, empty for a part outside the stream; null, reported, for an index
     * that no entry has and when the file cannot be read any more
     */
    VornToolsString* readStream(int i_index, unsigned int i_from = 0, unsigned int i_count = 0xFFFFFFFF);

    /**
     * An image for VornToolsLinks: getLinks, getAllLinks and each kind of links alone, getLinkedDocName,
     * getExternalReference, getVersion, getGhosts and the operations on multi-model links give on it what they give on
     * the whole file. It is made of the streams that hold the links; where the file does not tell which these are it is
     * the whole file. findKey, isKeyInFile and getImportLinksWithPub ask for more than links and want the whole file.
     * @return a new string that the caller deletes; null when no file is open, when it is empty, and when it cannot be
     * read any more; null as well, journalled, for a whole file of 2 GiB and more
     */
    VornToolsString* readLinkImage();
    /**
     * The picture that the platform stores with a document, a JPEG.
     * @return a new string that the caller deletes; null when the document has none, or an empty one
     */
    VornToolsString* readPreview();

private:
    struct Content;
    Content* m_content;
};

#endif
