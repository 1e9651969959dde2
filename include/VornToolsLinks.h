#ifndef VornToolsLinks_H
#define VornToolsLinks_H

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"
#include "VornToolsLink.h"
#include "VornToolsString.h"
#include "VornToolsVector.h"

class VornToolsFolderMemory;

/**
 * Finds the documents that a document of the platform points to. The document is not opened: its file is read as bytes
 * ("image") and searched for what the platform writes into every document. docs/links.md describes what is read.
 * VornToolsDocumentLinks asks all of it at once.
 *
 * Every operation is static and takes any bytes: damage ends a group early and keeps what was found before it, a
 * missing stream leaves its group empty. Positions are byte positions in the image, from 0; -1 means "not there" and is
 * a valid input. A null image is bad input: reported, with an empty answer; a null file name counts as an empty one.
 * Vectors and lists are cleared first. File names are in the platform's 8-bit encoding. The same document named by two
 * records is named twice. Work and memory are bounded by the size of the image; where memory gives out, an operation
 * answers as for a document that cannot be read. Nothing is remembered from one call to the next: where an operation
 * takes a VornToolsFolderMemory, that object keeps the folders that were read.
 *
 * @par Example
 * @snippet links.cpp VornToolsLinks
 */
class ExportedByVornTools VornToolsLinks {
public:
    /** "VornToolsLinks::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** An object without state; nobody needs one. */
    VornToolsLinks();
    /** Nothing to end. */
    virtual ~VornToolsLinks();

    /** @name Whole documents
     * @{ */

    /**
     * Reads a document file and lists its links in parallel lists, one entry a link.
     * @param filePath name of the file; a logical name is read where it lies
     * @param linkType "MML", "MMLASSY", "MMLDrawing" or anything else: "MMLDrawing" as getMMLDrawingLinks, the others
     * as in getLinks
     * @param directory where documents that are named without directory are looked for
     * @param count number of links
     * @param linkedFileNames as VornToolsLink::get_linkedFileName
     * @param types as VornToolsLink::get_type
     * @param references as VornToolsLink::get_reference
     * @param sixth for the caller's own use: an empty text a link
     * @param seventh for the caller's own use: an empty text a link
     * @param tagFound whether the tag of a multi-model link is known
     * @param missingTag as in getLinks
     * @return always 0; a file that cannot be read leaves every output empty
     */
    static int searchLinks(CATUnicodeString filePath, CATUnicodeString linkType, CATUnicodeString directory,
                           double& count, CATListValCATUnicodeString& linkedFileNames,
                           CATListValCATUnicodeString& types, CATListValCATUnicodeString& references,
                           CATListValCATUnicodeString& sixth, CATListValCATUnicodeString& seventh,
                           VornToolsVector<unsigned char>& tagFound, unsigned char& missingTag);
    /**
     * The same for one of many documents.
     * @copydetails searchLinks
     * @param folders folders known from the others
     */
    static int searchLinks(CATUnicodeString filePath, CATUnicodeString linkType, CATUnicodeString directory,
                           double& count, CATListValCATUnicodeString& linkedFileNames,
                           CATListValCATUnicodeString& types, CATListValCATUnicodeString& references,
                           CATListValCATUnicodeString& sixth, CATListValCATUnicodeString& seventh,
                           VornToolsVector<unsigned char>& tagFound, unsigned char& missingTag,
                           VornToolsFolderMemory& folders);
    /**
     * Links in the order assembly context, external references, unpublished imports, multi-model links.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param linkType "MML": multi-model links only; "MMLASSY": all but them; anything else: all
     * @param fileName where the document lies now: linked documents are looked for beside it
     * @param directory where documents that are named without directory are looked for
     * @param missingTag 1 when linkType is "MML" and a multi-model link has no tag or no document, else 0
     * @return the links; none for an image without any
     */
    static VornToolsVector<VornToolsLink> getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                   VornToolsString* fileName, CATUnicodeString directory,
                                                   unsigned char& missingTag);
    /**
     * The same for one of many documents.
     * @copydetails getLinks
     * @param folders folders known from the others
     */
    static VornToolsVector<VornToolsLink> getLinks(VornToolsString* image, CATUnicodeString linkType,
                                                   VornToolsString* fileName, CATUnicodeString directory,
                                                   unsigned char& missingTag, VornToolsFolderMemory& folders);
    /**
     * The multi-model links, then all others.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return the links; none for an image without any
     */
    static VornToolsVector<VornToolsLink> getAllLinks(VornToolsString* image, VornToolsString* fileName,
                                                      CATUnicodeString directory);
    /** @} */

    /** @name One kind of link
     * @{ */

    /**
     * "MMLAssy_Context": the products in whose context a part was designed. In a product, its child products; in a
     * drawing, the products it shows.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return a link a product
     */
    static VornToolsVector<VornToolsLink> getContextLinks(VornToolsString* image, VornToolsString* fileName,
                                                          CATUnicodeString directory);
    /**
     * Published, then unpublished imports.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return links of the types "MMLAssy_Ref" and "MMLAssy_ImportNotPub"
     */
    static VornToolsVector<VornToolsLink> getImportLinks(VornToolsString* image, VornToolsString* fileName,
                                                         CATUnicodeString directory);
    /**
     * "MMLAssy_ImportNotPub": parts of which geometry was imported that is no publication.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return a link a part
     */
    static VornToolsVector<VornToolsLink> getImportLinksWithoutPub(VornToolsString* image, VornToolsString* fileName,
                                                                   CATUnicodeString directory);
    /**
     * "MMLAssy_Ref": published elements of the assembly, by their external references.
     * @param image the whole file
     * @return a link a reference, without a document
     */
    static VornToolsVector<VornToolsLink> getImportLinksWithPub(VornToolsString* image);
    /**
     * The multi-model links: getLinks with "MML".
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return the links of type "MML"
     */
    static VornToolsVector<VornToolsLink> getMMLLinks(VornToolsString* image, VornToolsString* fileName,
                                                      CATUnicodeString directory);
    /**
     * All but the multi-model links: getLinks with "MMLASSY".
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return the links
     */
    static VornToolsVector<VornToolsLink> getMMLAssyLinks(VornToolsString* image, VornToolsString* fileName,
                                                          CATUnicodeString directory);
    /**
     * "MMLDrawing": the products, parts and drawings that a drawing shows, each once.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @return a link a document
     */
    static VornToolsVector<VornToolsLink> getMMLDrawingLinks(VornToolsString* image, VornToolsString* fileName,
                                                             CATUnicodeString directory);
    /**
     * The same for one of many documents.
     * @copydetails getMMLDrawingLinks
     * @param folders folders known from the others
     */
    static VornToolsVector<VornToolsLink> getMMLDrawingLinks(VornToolsString* image, VornToolsString* fileName,
                                                             CATUnicodeString directory,
                                                             VornToolsFolderMemory& folders);
    /** @} */

    /** @name What the links are made of
     * @{ */

    /**
     * Documents that the document-property stream names and the document uses.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param position of "CATDocumentProperty"
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @param partFiles parts pointed to as a whole
     * @param contextProducts products whose objects are pointed to
     * @param contextParts parts whose objects are pointed to
     * @param contextPartReferences parallel to contextParts: eight bytes, any values, NUL included
     * @return 0
     */
    static int getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                VornToolsVector<VornToolsString>& contextProducts,
                                VornToolsVector<VornToolsString>& contextParts,
                                VornToolsVector<VornToolsString>& contextPartReferences);
    /**
     * The same for one of many documents.
     * @copydetails getLinkedDocName
     * @param folders folders known from the others
     */
    static int getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                VornToolsVector<VornToolsString>& contextProducts,
                                VornToolsVector<VornToolsString>& contextParts,
                                VornToolsVector<VornToolsString>& contextPartReferences,
                                VornToolsFolderMemory& folders);
    /**
     * Documents that the stream still names although nothing uses them: deleted or renamed targets.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param position of "CATDocumentProperty"
     * @param ghosts names as stored, since nobody is to find them
     * @return 0
     */
    static int getGhosts(VornToolsString* image, int position, VornToolsVector<VornToolsString>& ghosts);
    /**
     * Whatever else the document-property stream names and the document uses: records that are none of
     * getLinkedDocName's and no drawing. Design tables and other files of the operating system have the kind
     * "CATUnloadable"; products of a catalog, models of version 4, analysis results and materials have their own. The
     * catalogs that belong to the platform itself (kinds "feat", "CATfct") are left out.
     * @param image as for getLinks
     * @param position of "CATDocumentProperty"
     * @param fileName where the document lies now: the others are looked for beside it
     * @param directory where those that are named without directory are looked for
     * @param names of the files that were found, else as stored; a document that two records name is named twice
     * @param kinds parallel to names: the type as stored
     * @param uses parallel to names: how many pointers of the document go through the record, never 0
     * @param folders keeps the folders that were read
     * @return 0
     */
    static int getOtherDocuments(VornToolsString* image, int position, VornToolsString* fileName,
                                 CATUnicodeString directory, VornToolsVector<VornToolsString>& names,
                                 VornToolsVector<VornToolsString>& kinds, VornToolsVector<int>& uses,
                                 VornToolsFolderMemory& folders);
    /**
     * External references between the application container and the document-property stream, each once.
     * @param image as for getLinks
     * @param release not used: the form is the same in all
     * @param applicationPosition of "AppliCont"
     * @param propertyPosition of "CATDocumentProperty"
     * @param references as the document writes them
     * @return 0
     */
    static int getExternalReference(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                                    VornToolsVector<VornToolsString>& references);
    /**
     * Version, release and service pack of the program that saved the document last.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param version for example 5
     * @param release for example 30
     * @param servicePack from 0
     * @return 0, also without a summary, with three zeros; 1 when the summary lacks one of them, which is then 0
     */
    static int getVersion(VornToolsString* image, int& version, int& release, int& servicePack);
    /**
     * Identifiers of five bytes behind the first occurrence of a key: first those led in by D3 B5, then those led in by
     * two zeros, duplicates kept.
     * @param image the whole file
     * @param key any bytes
     * @return strings of five bytes
     */
    static VornToolsVector<VornToolsString> findKey(VornToolsString* image, VornToolsString& key);
    /**
     * Whether the document publishes one of some elements, imports left out.
     * @param image the whole file
     * @param keys such as findKey gives; any bytes
     * @return 1 or 0
     */
    static int isKeyInFile(VornToolsString& image, VornToolsVector<VornToolsString>& keys);
    /** @} */

    /** @name Multi-model links
     * @{ */

    /**
     * Tags of the imported elements, parallel to getMmlPublication: ten letters for geometry, the name of a parameter.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param release of getVersion: up to 12 the elements of the older form come last
     * @param applicationPosition of "AppliCont"
     * @param propertyPosition of "CATDocumentProperty"
     * @param tags one an element
     * @return 0
     */
    static int getMMLTag(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                         VornToolsVector<VornToolsString>& tags);
    /**
     * Imported elements in stream order, repeats kept, as the document names them ("InputToDoc:Doc!Geometry:...!"). The
     * older form names them by the tag alone.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param release as in getMMLTag
     * @param applicationPosition of "AppliCont"
     * @param propertyPosition of "CATDocumentProperty"
     * @param publications one an element
     * @return 0
     */
    static int getMmlPublication(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                                 VornToolsVector<VornToolsString>& publications);
    /**
     * The documents of getMmlPublication, by index, an empty name where none is known; then the documents that are
     * linked to without a publication. As the names of updateMMLLink they make the links of getLinks.
     * @param image the whole file, or VornToolsDocumentFile::readLinkImage of it
     * @param release as in getMMLTag
     * @param applicationPosition of "AppliCont"
     * @param propertyPosition of "CATDocumentProperty"
     * @param fileName as in getLinks
     * @param directory as in getLinks
     * @param documents names of the files that were found, else as stored
     * @return 0
     */
    static int getMmlDocuments(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                               VornToolsString* fileName, CATUnicodeString directory,
                               VornToolsVector<VornToolsString>& documents);
    /**
     * The same for one of many documents.
     * @copydetails getMmlDocuments
     * @param folders folders known from the others
     */
    static int getMmlDocuments(VornToolsString* image, int release, int applicationPosition, int propertyPosition,
                               VornToolsString* fileName, CATUnicodeString directory,
                               VornToolsVector<VornToolsString>& documents, VornToolsFolderMemory& folders);
    /**
     * Makes the "MML" links.
     * @param tags of getMMLTag
     * @param publications of getMmlPublication
     * @param names of the document of each publication, by index; an empty one makes no link. Names behind the last
     * publication are documents without any: a link each, without reference
     * @param links reference: the tag; tag found: when there is one
     * @return 0
     */
    static int updateMMLLink(VornToolsVector<VornToolsString>& tags, VornToolsVector<VornToolsString>& publications,
                             VornToolsVector<VornToolsString>& names, VornToolsVector<VornToolsLink>& links);
    /**
     * Splits the context parts of a part into unpublished imports and multi-model links of the older form. Parts that
     * are neither (neighbours in the assembly) are in no list, nor is anything of a document that is no part.
     * @param image as for getLinks
     * @param release as in getMMLTag
     * @param applicationPosition of "AppliCont"
     * @param propertyPosition of "CATDocumentProperty"
     * @param names contextParts of getLinkedDocName
     * @param references contextPartReferences of getLinkedDocName
     * @param unpublished those of names from which something unpublished was imported
     * @param olderForm those of names that are multi-model links
     * @return 0
     */
    static int sortImportUnpublished_and_MMLR12(VornToolsString* image, int release, int applicationPosition,
                                                int propertyPosition, VornToolsVector<VornToolsString>& names,
                                                VornToolsVector<VornToolsString>& references,
                                                VornToolsVector<VornToolsString>& unpublished,
                                                VornToolsVector<VornToolsString>& olderForm);
    /** @} */

    /** @name Names and paths
     * @{ */

    /**
     * Whether a name is bare.
     * @param name in the platform's 8-bit encoding
     * @return 1 when it has neither slash nor backslash, else 0
     */
    static unsigned char isAFilename(const VornToolsString& name);
    /**
     * Looks for a file in a directory and below, past entries that begin with a dot. All searches since the last
     * resolution of a name read at most 260 entries.
     * @param fileName without directory
     * @param directory where the search begins; null for either is reported
     * @return the path, the platform's own until its next search, or null
     */
    static const char* findFileInPath(const char* fileName, const char* directory);
    /**
     * Turns every slash into a backslash.
     * @param path any bytes
     * @return 0
     */
    static int replaceSeparatorInString(VornToolsString& path);
    /**
     * Where a linked document is to be looked for: a name without directory in `directory`; a path as stored, then
     * moved along with the document, then by its last name below the document's directory.
     * @param ownPath of the document when it was saved
     * @param fileName where it is now
     * @param linkedName as stored; null is reported and gives the empty string
     * @param directory for a name without directory
     * @return a new string that the caller deletes: the first candidate that is a file, else the name as stored;
     * null when there is no memory for it
     */
    static VornToolsString* realLinkedDocPath(VornToolsString* ownPath, VornToolsString* fileName,
                                              VornToolsString* linkedName, CATUnicodeString directory);
    /**
     * The same as realLinkedDocPath, under the other name that callers have for it.
     * @param ownPath of the document when it was saved
     * @param fileName where it is now
     * @param linkedName as stored; null is reported and gives the empty string
     * @param directory for a name without directory
     * @return as realLinkedDocPath
     */
    static VornToolsString* realLinkedDocPath_2(VornToolsString* ownPath, VornToolsString* fileName,
                                                VornToolsString* linkedName, CATUnicodeString directory);
    /** @} */
};

#endif
