#ifndef VornToolsDocumentLinks_H
#define VornToolsDocumentLinks_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"
#include "VornToolsDocumentFile.h"

class VornToolsFolderMemory;

/**
 * Everything that the file of one document tells of other documents, read at once: the file is opened once, as
 * VornToolsDocumentFile opens it, what holds the links is read and searched once, and each name is looked for once.
 *
 *     VornToolsDocumentLinks links;
 *     VornToolsFolderMemory folders; // for all documents
 *     if (SUCCEEDED(links.read(path, "", directory, folders))) {
 *         unsigned int count = 0;
 *         const VornToolsDocumentLinks::Link* const list = links.getLinks(count);
 *         ...
 *     }
 *
 * The answers are those of VornToolsLinks (getVersion, getLinkedDocName, getOtherDocuments, getGhosts,
 * getExternalReference, getLinks, getMMLDrawingLinks) on the whole file, in the same order. They belong to the object
 * and last until its next read. An object that has read nothing, or could not, answers with nothing.
 *
 * @par Example
 * @snippet links.cpp VornToolsDocumentLinks
 */
class ExportedByVornTools VornToolsDocumentLinks {
public:
    /** "VornToolsDocumentLinks::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** How one document is named by another. */
    enum EnumDocumentKind : int {
        KindPartFile = 0,       ///< a part, as a whole
        KindContextProduct = 1, ///< a product whose objects are pointed to
        KindContextPart = 2,    ///< a part whose objects are pointed to
        KindDrawing = 3,        ///< a drawing whose objects are pointed to
        KindOther = 4           ///< anything else; the type tells what
    };

    /** Bytes with a NUL behind them; bytes of the text may be NUL as well. Never null. */
    struct Text {
        const char* bytes;   ///< the object's, until its next read
        unsigned int length; ///< without the NUL behind them
    };

    /** A record of a document that is named. Names are in the platform's 8-bit form. */
    struct NamedDocument {
        EnumDocumentKind kind; ///< how it is named
        Text type;             ///< KindOther: as the record tells it; else empty
        Text storedName;       ///< as the record tells it
        Text foundName;        ///< where the document was found; the stored name where it was not or was not looked for
        Text identity;         ///< 16 bytes of the container pointed to; empty for a document that is named as a whole
        int uses;              ///< how often the document points there; 0: the target was deleted or renamed since
        unsigned char isFound; ///< 1 when there is a file of the found name
    };

    /** A link as VornToolsLink has it. */
    struct Link {
        Text type;                ///< as VornToolsLink::get_type
        Text storedName;          ///< of the document linked to; empty for a link that only says which element it means
        Text foundName;           ///< as in NamedDocument
        Text reference;           ///< as VornToolsLink::get_reference
        unsigned char isFound;    ///< 1 when there is a file of the found name
        unsigned char isTagFound; ///< as VornToolsLink::get_link_tag_found
    };

    /** Nothing has been read. */
    VornToolsDocumentLinks();
    /** Ends what the answers point to. */
    ~VornToolsDocumentLinks();
    VornToolsDocumentLinks(const VornToolsDocumentLinks&) = delete;
    VornToolsDocumentLinks& operator=(const VornToolsDocumentLinks&) = delete;

    /**
     * Whether the next reads also read the picture that is stored with a document; at first they do not.
     * @param i_is_read 1 or 0
     */
    void setPreviewRead(unsigned char i_is_read);
    /**
     * Reads a document file; what was read before is forgotten.
     * @param i_path name on disk
     * @param i_link_type which links: "MML", "MMLASSY", "MMLDrawing" or anything else, as in
     * VornToolsLinks::searchLinks
     * @param i_directory where documents that are named without directory are looked for
     * @param io_folders folders known from other documents
     * @param i_find_unused whether documents that are not in use any more are looked for as well
     * @return E_FAIL, reported as a file that cannot be opened, when there is no such file; E_FAIL, reported as a
     * failed "read", when it cannot be read, has to be read whole and has 2 GiB or more, or memory gives out. S_OK also
     * for an empty file and for one that is no document
     */
    HRESULT read(const CATUnicodeString& i_path, const CATUnicodeString& i_link_type,
                 const CATUnicodeString& i_directory, VornToolsFolderMemory& io_folders,
                 unsigned char i_find_unused = 0);

    /**
     * Whether the file that was read is intact.
     * @return DocumentNotOpen when none was read
     */
    VornToolsDocumentFile::EnumDocumentCondition getCondition() const;
    /**
     * Length of the file that was read.
     * @return bytes; 0 when none was read
     */
    unsigned long long getSize() const;
    /**
     * Of the program that saved the document last; zeros where it does not tell.
     * @param o_version for example 5
     * @param o_release for example 30
     * @param o_service_pack from 0
     * @return 0; 1 when it tells only a part, which is the code of VornToolsLinks::getVersion
     */
    int getVersion(int& o_version, int& o_release, int& o_service_pack) const;
    /**
     * Where the document itself lay when it was saved last.
     * @return in the platform's 8-bit form; empty where the document does not tell
     */
    Text getSavedPath() const;
    /**
     * What the last save of the document left as its own: copies of one save share it, other files hardly ever do.
     * @return bytes that are only good for comparing; empty where the file has no directory that fits
     */
    Text getSave() const;
    /**
     * The picture that is stored with the document, if it was to be read: as VornToolsDocumentFile::readPreview gives
     * it.
     * @return its bytes; empty for none
     */
    Text getPreview() const;
    /**
     * The documents that are named: parts, products and drawings in the order of the file, then the others that are in
     * use in their order.
     * @param o_count how many
     * @return the first of them; null for none
     */
    const NamedDocument* getDocuments(unsigned int& o_count) const;
    /**
     * The links of the type that was asked for, in the order of VornToolsLinks::getLinks.
     * @param o_count how many
     * @return the first of them; null for none
     */
    const Link* getLinks(unsigned int& o_count) const;
    /**
     * The external references, whatever links were asked for.
     * @param o_count how many
     * @return the first of them; null for none
     */
    const Text* getExternalReferences(unsigned int& o_count) const;
    /**
     * Whether a multi-model link lacks what the PDM needs of it.
     * @return 1 when multi-model links alone were asked for and one of them has no tag or no document, else 0
     */
    unsigned char getMissingTag() const;

private:
    struct Content;
    Content* m_content;
    unsigned char m_isPreviewRead;
};

#endif
