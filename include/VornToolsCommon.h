#ifndef VornToolsCommon_H
#define VornToolsCommon_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATBaseUnknown;
class CATCSO;
class CATDocument;
class CATFrmWindow;
class CATIADocument;
class CATICkeParm_var;
class CATICkeSheet_var;
class CATIDesignTable;
class CATIDrawing;
class CATIParmPublisher;
class CATIProduct;
class CATISpecObject_var;
class CATListPtrCATBaseUnknown; // CATListOfCATBaseUnknown.h
class CATListPtrCATDocument;    // CATDocumentsInSession.h
class CATListPtrCATIProduct;
class CATListValCATISpecObject_var;
class CATPathElement;
class CATRawCollint;
class TYPMapCATUnicodeStringPVoid;
class TYPVectorCATUnicodeString;
class VornCache;
class VornToolsString;
class VornToolsSwitchMgt;

/**
 * The integration's services on documents and products, all static. Outputs are cleared first and stay empty on
 * failure. A product that comes out as a pointer carries a reference for the caller; a document never does. Null inputs
 * are reported and give E_FAIL (or the answer 0) unless a method says otherwise; so, unreported, do want of memory and
 * errors that the platform throws. Main thread only.
 *
 * @par Example
 * @snippet session.cpp VornToolsCommon
 */
class ExportedByVornTools VornToolsCommon {
public:
    /** "VornToolsCommon::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** Kind of document that a file suffix stands for. */
    enum EnumDocumentType {
        DocumentTypeUnknown = -1,    ///< no document of the platform: a foreign file
        DocumentTypeProduct = 1,     ///< "CATProduct"
        DocumentTypePart = 2,        ///< "CATPart"
        DocumentTypeDrawing = 3,     ///< "CATDrawing"
        DocumentTypeProcess = 4,     ///< "CATProcess"
        DocumentTypeAnalysis = 5,    ///< "CATAnalysis"
        DocumentTypeDesignTable = 7, ///< "designtable"; 6 is taken by no suffix
        DocumentTypeCatalog = 8,     ///< "catalog"
        DocumentTypeText = 9,        ///< "txt"
        DocumentTypeXls = 10,        ///< "xls"
        DocumentTypeXlsx = 11,       ///< "xlsx"
        DocumentTypeXlsm = 12        ///< "xlsm"
    };

    /** How a request to the PDM client ended. */
    enum EnumResultStatus {
        ResultStatusFailed = -1,  ///< also while the result file cannot be read
        ResultStatusOk = 0,       ///< ":ok"
        ResultStatusCancelled = 1 ///< ":cancel" or ":user_cancel"
    };

    /** @name Instance descriptions
     * @{ */

    /**
     * Reads the description from the instance that carries it: the product itself when its father is a reference, else
     * its instance in the first product parent.
     * @param ipi_product an instance; a root has none that carries it
     * @param o_description all of it, the integration's lines in front
     * @return S_OK; E_INVALIDARG for a null product, E_FAIL without a carrier; neither is reported
     */
    static HRESULT getInstanceDescription(CATIProduct* ipi_product, CATUnicodeString& o_description);
    /**
     * Writes the description where getInstanceDescription reads it.
     * @param ipi_product as for getInstanceDescription
     * @param i_description all of it, the integration's lines in front
     * @return as getInstanceDescription
     */
    static HRESULT setInstanceDescription(CATIProduct* ipi_product, const CATUnicodeString& i_description);
    /**
     * Reads the description of exactly the given product.
     * @param ipi_cati_product the very product that is read
     * @param o_description all of it, the integration's lines in front
     * @return S_OK; E_FAIL, reported, when it cannot be read
     */
    static HRESULT getProductInstanceDescription(CATIProduct* ipi_cati_product, CATUnicodeString& o_description);
    /**
     * Removes the integration's own lines from the front of a description (see docs/instance-descriptions.md).
     * @param io_description what users wrote stays
     * @return S_OK
     */
    static HRESULT cleanInstanceDescription(CATUnicodeString& io_description);
    /**
     * Cleans the description of the product's occurrence relative to its parent's reference, as
     * cleanInstanceDescription does.
     * @param ipi_catiproduct a product below a component
     * @return S_OK; E_FAIL, reported, when the occurrence is not reached or its description cannot be read or written
     */
    static HRESULT cleanDescriptionForRelativeOccUnderComponent(CATIProduct* ipi_catiproduct);
    /**
     * Puts the secondary-part marker in front of the product's own description, once; an ignore node stays as it is.
     * @param ipi_cati_product the very product that is marked
     * @return S_OK, also when nothing had to change; E_FAIL, reported, when the description cannot be read or written
     */
    static HRESULT addSecondaryPartInInstanceDescription(CATIProduct* ipi_cati_product);
    /**
     * Whether the product is a secondary part: marked as one, and unknown to the PDM (no DAT file or no item revision).
     * @param ipi_product an instance, whose description is read by getInstanceDescription
     * @param i_dat_file_missing 1 when the product's document has no DAT file
     * @param i_item_rev_uid what its DAT file records; empty: nothing
     * @param o_is_secondary_part 1 or 0
     * @return the code of reading the description
     */
    static HRESULT isElementSecondaryPart(CATIProduct* ipi_product, unsigned char i_dat_file_missing,
                                          CATUnicodeString i_item_rev_uid, unsigned char& o_is_secondary_part);
    /**
     * The instance name with every CR LF pair removed.
     * @param ipi_product an instance
     * @param o_name single CR and LF characters stay
     * @return S_OK when one was removed, S_FALSE when there was none, E_FAIL, unreported, for a null product, else the
     * platform's code
     */
    static HRESULT getPrdInstanceNameWithoutNewLines(CATIProduct* ipi_product, CATUnicodeString& o_name);
    /** @} */

    /** @name DAT files and identity
     * @{ */

    /**
     * Lines of the DAT file of a document; positional files get the three lines of version 0 at their end.
     * @param i_file_name full file name of the document, or bare: see getDatFileFullFileName
     * @param i_catia_uuid the document's identifier, compared with the file's in debug mode (the journal tells)
     * @param o_lines without line ends
     * @return S_OK; E_FAIL when no DAT file was found, it cannot be read or memory does not suffice for it
     */
    static HRESULT readDatTools(CATUnicodeString i_file_name, const CATUnicodeString& i_catia_uuid,
                                CATListValCATUnicodeString& o_lines);
    /**
     * Name of the DAT file for a document's file name. The file need not exist.
     * @param i_file_name with directory: ".dat" is appended. Bare: the reference library or the files directory is put
     * in front, there the life-cycle folder when that has such a DAT file
     * @param o_dat_name may be the same text as the input; empty on failure
     * @return S_OK; E_FAIL when the name cannot be split (reported) or memory does not suffice
     */
    static HRESULT getDatFileFullFileName(const CATUnicodeString& i_file_name, CATUnicodeString& o_dat_name);
    /**
     * Identity that the DAT file of a document records.
     * @param i_file_name full file name; a logical name is looked up where it lies
     * @param ip_cache reads the file; without one an existing DAT file gives E_FAIL
     * @param o_item_rev_uid item revision
     * @param o_dataset_uid dataset
     * @param o_named_ref_uid named reference
     * @param o_exist_in_ov 1 when a DAT file exists, whatever the code
     * @return S_OK, also without a DAT file: the identifiers are empty then; E_FAIL, reported, for an empty name
     */
    static HRESULT getOrvaneInformationsFromDatFile(const CATUnicodeString& i_file_name, VornCache* ip_cache,
                                                    CATUnicodeString& o_item_rev_uid, CATUnicodeString& o_dataset_uid,
                                                    CATUnicodeString& o_named_ref_uid, unsigned char& o_exist_in_ov);
    /**
     * Identity that the DAT file of the document which a product shows records.
     * @param ipi_product one without a document goes by the file that shows it
     * @param ip_cache reads the file; without one an existing DAT file gives E_FAIL
     * @param o_item_rev_uid item revision
     * @param o_dataset_uid dataset
     * @param o_named_ref_uid named reference
     * @param o_file_name the document's physical file name
     * @param o_exist_in_ov 1 when a DAT file exists, whatever the code
     * @return S_OK, also without a DAT file; E_FAIL, reported, for a product without a file
     */
    static HRESULT getOrvaneInformations(CATIProduct* ipi_product, VornCache* ip_cache,
                                         CATUnicodeString& o_item_rev_uid, CATUnicodeString& o_dataset_uid,
                                         CATUnicodeString& o_named_ref_uid, CATUnicodeString& o_file_name,
                                         unsigned char& o_exist_in_ov);
    /**
     * Whether the DAT file of a document records an item revision.
     * @param i_file_name as for readDatTools
     * @param ip_document the file's document, for its identifier; may be null
     * @param o_exists 1 or 0
     * @return the code of reading the file
     */
    static HRESULT itemRevUIDExistsInDatFile(CATUnicodeString i_file_name, CATDocument* ip_document,
                                             unsigned char& o_exists);
    /**
     * Whether the DAT file of a document describes a design table: sheets, configurations and checksums are all
     * recorded.
     * @param i_file_name as for readDatTools
     * @param ip_document the file's document, for its identifier; may be null
     * @param o_is_design_table 1 or 0
     * @return the code of reading the file
     */
    static HRESULT isDesignTableInfoInDatFile(CATUnicodeString i_file_name, CATDocument* ip_document,
                                              unsigned char& o_is_design_table);
    /**
     * Checksums of the configurations of a document's design table (see docs/checksums.md). Sheet and configuration of
     * the table and the bytes of its file are afterwards what they were.
     * @param ip_document where the table is looked for, as getDesignTableList does
     * @param i_design_table_file full name of the table's file
     * @param ip_switcher as for getDesignTableList
     * @param i_switch_flag as for getDesignTableList
     * @param iop_sheets sheet of each entry, decimal numbers from 1; a text that begins with none counts as 0, which is
     * no sheet
     * @param iop_configurations configuration of each entry, decimal numbers from 1; a text that begins with none
     * counts as 0, the row of titles
     * @param iop_checksums empty: a checksum is appended for each entry, an empty one where the sheet or its cells
     * cannot be read, none where a file without sheets is asked for another one than 1. Not empty: parallel to the
     * other two; each "ERROR" is replaced, and entries whose sheet or cells cannot be read leave all three lists
     * @param o_found whether the document has a design table with that file
     * @return always S_OK. A null list is reported, and so is a file that is not as it was; lists stay as they were,
     * journalled, where the table does not show its sheet
     */
    static HRESULT calculateCheckSums(CATDocument* ip_document, CATUnicodeString i_design_table_file,
                                      VornToolsSwitchMgt* ip_switcher, unsigned char i_switch_flag,
                                      CATListValCATUnicodeString*& iop_sheets,
                                      CATListValCATUnicodeString*& iop_configurations,
                                      CATListValCATUnicodeString*& iop_checksums, unsigned char& o_found);
    /**
     * Identifier of this session, made on first demand.
     * @return the same until the library is unloaded; empty for want of memory
     */
    static CATUnicodeString getCATIA_UUID();
    /**
     * Identifier of a document.
     * @param ip_document null has none, which is S_OK
     * @param o_uuid "0_0_0_0" for none
     * @return S_OK; E_FAIL, reported, when the document has no descriptor
     */
    static HRESULT getDocUUID(CATDocument* ip_document, CATUnicodeString& o_uuid);
    /**
     * Whether the integration manages documents of this kind.
     * @param ip_cat_document what keeps it from telling its kind is reported
     * @return 1 or 0
     */
    static unsigned char isDocumentInSessionManagedByMaro(CATDocument* ip_cat_document);
    /**
     * Whether the session holds a file's document with unsaved changes.
     * @param i_file_name full file name
     * @param o_modified 0 also for a file that is not there and for one whose document is not loaded
     * @return S_OK; the code of the look-up
     */
    static HRESULT isModifiedStatusInCATIA(CATUnicodeString i_file_name, unsigned char& o_modified);
    /**
     * Name of the source file of a cached visualisation file.
     * @param i_cache_name with or without directory
     * @param o_file_name a name that is none comes back unchanged; empty on failure
     * @return S_OK; E_FAIL when the name cannot be split (reported) or memory does not suffice; the environment's code
     * when it does not tell its caches
     */
    static HRESULT extractFileNameFromCacheFileName(CATUnicodeString i_cache_name, CATUnicodeString& o_file_name);
    /**
     * Whether a document holds changes.
     * @param ip_document null does not report itself saved; it is no error
     * @param o_to_be_saved 1 unless the document reports itself saved
     * @return S_OK
     */
    static HRESULT isDocumentToBeSaved(CATDocument* ip_document, unsigned char& o_to_be_saved);
    /**
     * Brings a drawing up to date, or queues a message when a part is not: both only when the environment wants it so.
     * Other documents are left alone.
     * @param ip_document a drawing or a part
     * @param i_document_type an EnumDocumentType, the document's
     * @return S_OK, whatever came of it
     */
    static HRESULT documentIsUpToDate(CATDocument* ip_document, int i_document_type);
    /**
     * Whether the PDM manages a file: its DAT file exists.
     * @param ip_document null, or the file's document: that of one never saved is looked for in the staging directory
     * @param i_file_name full file name; of a document that was never saved, its bare name
     * @param o_managed_name the name whose DAT file was found; empty without one
     * @return 1 or 0
     */
    static unsigned char isAOvElement(CATDocument* ip_document, CATUnicodeString i_file_name,
                                      CATUnicodeString& o_managed_name);
    /** @} */

    /** @name Documents and product structure
     * @{ */

    /**
     * Kind of document that a suffix stands for.
     * @param i_extension in upper case, without its dot; null gives DocumentTypeUnknown, unreported
     * @return DocumentTypeUnknown for any other suffix
     */
    static EnumDocumentType getDocumentTypeFromExtension(char* i_extension);
    /**
     * Kind of document by the suffix of a file name.
     * @param i_file_name letter case is ignored; a name without a dot counts as the suffix
     * @return an EnumDocumentType; DocumentTypeUnknown also for want of memory
     */
    static int returnDocumentType(CATUnicodeString i_file_name);
    /**
     * File name of the document that a product shows; the product path when no document can be reached.
     * @param ipi_the_product its reference need not be loaded
     * @param op_document the document; null without a reference, untouched when the reference lies in none
     * @param o_file_name full name
     * @return S_OK whenever a product was given; a null one is journalled, not reported
     */
    static HRESULT getDocumentFileName(CATIProduct* ipi_the_product, CATDocument*& op_document,
                                       CATUnicodeString& o_file_name);
    /**
     * The product one level up.
     * @param ipi_product an instance, or a root
     * @param opi_parent with a reference for the caller; null at the root, which is S_OK
     * @return S_OK
     */
    static HRESULT getParent(CATIProduct* ipi_product, CATIProduct*& opi_parent);
    /**
     * The instance that stands for the product directly under the reference of its father: the product itself when its
     * father is a reference.
     * @param ipi_product an instance
     * @param opi_instance with a reference for the caller
     * @return S_OK; E_FAIL at a root (unreported), and, reported, when there is none
     */
    static HRESULT getInstanceInFirstProductParent(CATIProduct* ipi_product, CATIProduct*& opi_instance);
    /**
     * Whether the product is a component: its reference lies in the same document as its father's.
     * @param ipi_product an instance, or a root
     * @param o_is_component 1 or 0; 0 for a root and while the reference is not loaded
     * @return S_OK; E_FAIL, reported, when a document cannot be reached
     */
    static HRESULT isComponent(CATIProduct* ipi_product, unsigned char& o_is_component);
    /**
     * Whether a file is no document of the platform, by its suffix.
     * @param i_file_name an empty name is bad input, which is reported
     * @param o_is_foreign 1 or 0
     * @return S_OK
     */
    static HRESULT isAForeignFile(CATUnicodeString i_file_name, unsigned char& o_is_foreign);
    /**
     * Whether a product is shown by a file that is no document of the platform.
     * @param ipi_product goes by the file that shows it
     * @param o_is_foreign 1 or 0; 0 for a product that no file shows
     * @return S_OK; E_FAIL, reported, when the product does not tell its file
     */
    static HRESULT isAForeignFile(CATIProduct* ipi_product, unsigned char& o_is_foreign);
    /**
     * Path of the file that shows the product.
     * @param ipi_product one that no file shows fails
     * @param o_path as the platform tells it
     * @return S_OK; E_FAIL, unreported, when it has no master shape representation, and, reported, when it does not
     * tell
     */
    static HRESULT getMasterShapeRepresentationPathName(CATIProduct* ipi_product, CATUnicodeString& o_path);
    /**
     * Path of the file behind a named shape representation.
     * @param ipi_product one that is only seen may not tell
     * @param i_shape_name empty asks for the default one; may be the same text as the output
     * @param o_path as the platform tells it
     * @return S_OK; E_FAIL, reported, when there is no such representation or it does not tell
     */
    static HRESULT getShapePathName(CATIProduct* ipi_product, const CATUnicodeString& i_shape_name,
                                    CATUnicodeString& o_path);
    /**
     * Names the product by its chain of instances: the root's part number and the instance names down to it.
     * @param ipi_product an instance, or a root, whose path is its part number
     * @param o_path joined by backslashes whatever the system
     * @return S_OK; E_FAIL, reported, when one of the names cannot be read
     */
    static HRESULT getProductPath(CATIProduct* ipi_product, CATUnicodeString& o_path);
    /** @} */

    /** @name Exchange files
     * @{ */

    /**
     * The bytes of a whole file.
     * @param i_file_name full name; a logical name is read where it lies
     * @return a new string that the caller deletes; null when the file is missing, empty, longer than a string can be
     * or cannot be read
     */
    static VornToolsString* readBinaryFile(CATUnicodeString i_file_name);
    /**
     * Writes a text and a line end as the whole result file.
     * @param i_text written in the platform's 8-bit form
     * @return S_OK also when the file cannot be created; E_FAIL, reported, without an environment or when the text
     * cannot be written: then no file is left
     */
    static HRESULT createResultFile(CATUnicodeString i_text);
    /**
     * Whether the request succeeded and whether the hosted workspace client answered it.
     * @param o_ok 1 for the status ":ok", letter case ignored. Kept because clients wrote it in capitals; getResultInfo
     * is strict
     * @param o_hosted_client never 1 without o_ok
     * @return S_OK; E_FAIL when the file is missing, begins with an empty line or cannot be read
     */
    static HRESULT readResultFileAndGetClient(unsigned char& o_ok, unsigned char& o_hosted_client);
    /**
     * Status of the result file, letter case included, and all lines behind it. A line end at the end of the file gives
     * one empty line more. Kept because callers drop the last line.
     * @param o_status ResultStatusFailed on failure and for any other text
     * @param o_lines without line ends; none on failure
     * @return S_OK; E_FAIL when the file is missing or cannot be read
     */
    static HRESULT getResultInfo(EnumResultStatus& o_status, TYPVectorCATUnicodeString& o_lines);
    /**
     * The status of the result file alone.
     * @return ResultStatusFailed also when the file is missing or cannot be read
     */
    static EnumResultStatus getResultStatus();
    /**
     * Writes the file names of the documents in session, one a line, into a new session file.
     * @return the code of the last step; E_FAIL, reported, when the file cannot be written. A document whose name
     * cannot be split is reported and left out
     */
    static HRESULT writeCADFilesInSessionFile();
    /**
     * Reads what the PDM client wants highlighted. The file is deleted afterwards when the process asks for that.
     * @param i_any_command 1 reads one value a selection whatever the command; the highlight commands read up to three
     * @param o_contexts the context line, if any
     * @param o_part_numbers what a selection does not name is empty
     * @param o_file_names parallel to o_part_numbers
     * @return S_OK; E_FAIL for a wrong command, a missing file and a wrong form; selections in front of the wrong place
     * keep their values in the lists
     */
    static HRESULT readHighlightFile(unsigned char i_any_command, CATListValCATUnicodeString& o_contexts,
                                     CATListValCATUnicodeString& o_part_numbers,
                                     CATListValCATUnicodeString& o_file_names);
    /**
     * Part numbers and file names of one selection.
     * @param ip_block the lines between the selection's tags; may be one of the outputs
     * @param op_part_numbers in their order; empty on failure
     * @param op_file_names in their order; empty on failure
     * @return S_OK; E_FAIL for a null argument (unreported), a value without closing tag, and when neither the first
     * part number nor the first file name has a text
     */
    static HRESULT readSelectionBalise(TYPVectorCATUnicodeString* ip_block, TYPVectorCATUnicodeString* op_part_numbers,
                                       TYPVectorCATUnicodeString* op_file_names);
    /**
     * An integer of 1 to 4 bytes, each `gap + 1` bytes behind the one before it. Four bytes are signed, fewer are not;
     * bytes outside are 0.
     * @param ip_data null is not reported
     * @param i_offset of the first byte, from 0
     * @param i_byte_count 1 to 4
     * @param i_little_endian 0 when the first byte is the most significant
     * @param i_gap bytes between two of the number
     * @return 0 also for null data and any other count
     */
    static int getInt(VornToolsString* ip_data, unsigned int i_offset, unsigned int i_byte_count,
                      unsigned int i_little_endian, unsigned int i_gap);
    /**
     * Guesses the byte order of the four bytes at an offset.
     * @param ip_data null is not reported
     * @param i_offset from 0
     * @return 1 when the little-endian reading gives the smaller positive number, or the other one is negative; else 0,
     * also for null data
     */
    static unsigned int isLittleEndian(VornToolsString* ip_data, int i_offset);
    /**
     * The decimal number that a text begins with: blanks, a sign, digits.
     * @param ip_text its bytes are read as ASCII
     * @param op_value 0 when there are no digits, the nearest int when there are too many
     * @return 0; -1, unreported, for a null text or value
     */
    static int stringToInt(VornToolsString* ip_text, int* op_value);
    /** @} */

    /** @name Documents in session
     * @{ */

    /**
     * Documents of the session in its order.
     * @param o_documents no references are added
     * @param i_type class name such as "CATPart", letter case included; empty asks for the documents that the
     * integration manages
     * @return S_OK, also when there are none
     */
    static HRESULT getDocumentsInSession(CATListPtrCATDocument& o_documents, const CATUnicodeString& i_type);
    /**
     * The first managed document of a name, letter case ignored.
     * @param i_name with a directory it is compared as a whole, a bare one with file names
     * @param op_document null when none; no reference is added
     * @param o_found 1 or 0
     * @return normally S_OK, found or not; the code of the last step when reading a name failed
     */
    static HRESULT getDocumentInSession(CATUnicodeString i_name, CATDocument*& op_document, unsigned char& o_found);
    /**
     * The document that a product's reference lies in.
     * @param ipi_the_product its reference has to be loaded
     * @param op_document no reference is added
     * @return S_OK; E_FAIL, reported, when it cannot be reached
     */
    static HRESULT getCATDocument(CATIProduct* ipi_the_product, CATDocument*& op_document);
    /**
     * The document behind its automation object.
     * @param ipi_document null is reported
     * @return no reference is added; null when there is no way to it
     */
    static CATDocument* getCATDocument(CATIADocument* ipi_document);
    /**
     * The document of the current editor.
     * @param op_document no reference is added; null when there is none
     * @param i_tell_user 1 shows a message when there is none
     * @return S_OK with an editor, even one without a document; else E_FAIL, unreported
     */
    static HRESULT getActiveCATDocument(CATDocument*& op_document, unsigned char i_tell_user);
    /**
     * The main root of a document.
     * @param ip_active_document any document, active or not
     * @param opi_active_product with a reference for the caller; null for a document without roots, which is S_OK
     * @return S_OK; E_FAIL, reported, when the document tells no roots or the first one is no product
     */
    static HRESULT getActiveCATIProduct(CATDocument* ip_active_document, CATIProduct*& opi_active_product);
    /**
     * The nearest product above the given one that the PDM knows: not a component, and with an item revision in its DAT
     * file. Passes over secondary parts.
     * @param ipi_product where the search begins; it does not count itself
     * @param ip_cache reads the DAT files; without one nothing is found
     * @param o_file_name physical file name of that product's document
     * @param opi_primary_product with a reference for the caller
     * @return S_OK; E_FAIL, unreported, when there is none
     */
    static HRESULT getPrimaryDocument(CATIProduct* ipi_product, VornCache* ip_cache, CATUnicodeString& o_file_name,
                                      CATIProduct*& opi_primary_product);
    /**
     * The document that a product's reference lies in; a product that is not loaded is switched to design mode first.
     * @param ipi_the_product loaded or not
     * @param ip_switcher remembers what it switched and holds the product by a reference; null is reported
     * @param op_document no reference is added
     * @return S_OK, also without a document when it cannot be loaded, which is reported; E_FAIL when the reference lies
     * in no document
     */
    static HRESULT getAndSwitchdocument(CATIProduct* ipi_the_product, VornToolsSwitchMgt* ip_switcher,
                                        CATDocument*& op_document);
    /**
     * Opens a file in a window, as the user would.
     * @param i_path name on disk
     * @param op_document no reference is added
     * @return S_OK; E_FAIL, reported with the path, when it cannot be opened
     */
    static HRESULT openDocument(const CATUnicodeString& i_path, CATDocument*& op_document);
    /**
     * The first product below a root, in the order of the tree, whose document has the given name. A product that is
     * not loaded goes by its picture.
     * @param ipi_root_product where the search begins; it does not count itself
     * @param i_file_name letter case is ignored; a bare name is compared with file names. An empty one is reported
     * @param opi_product with a reference for the caller; null when there is none
     * @param o_found 1 or 0
     * @return S_OK, found or not; E_FAIL, reported, when the tree cannot be read
     */
    static HRESULT getProductInSession(CATIProduct* ipi_root_product, CATUnicodeString i_file_name,
                                       CATIProduct*& opi_product, unsigned char& o_found);
    /**
     * The first product below a root that a file shows, by its shape representation. A product that is only seen and
     * does not tell its representations is loaded for a look and put back at once; the one found stays loaded then.
     * @param ipi_root_product where the search begins; it does not count itself
     * @param i_file_name letter case is ignored; a bare name is compared with file names. An empty one is reported
     * @param i_shape_name the representation; empty asks for each product's default one
     * @param ip_switcher required: it remembers what stays loaded; while it is disabled nothing is loaded
     * @param opi_product with a reference for the caller; null when there is none
     * @param o_found 1 or 0
     * @return S_OK, found or not; E_FAIL, reported, when the tree cannot be read
     */
    static HRESULT getForeignFileInSession(CATIProduct* ipi_root_product, CATUnicodeString i_file_name,
                                           CATUnicodeString i_shape_name, VornToolsSwitchMgt* ip_switcher,
                                           CATIProduct*& opi_product, unsigned char& o_found);
    /** @} */

    /** @name Windows
     * @{ */

    /**
     * Managed documents shown in windows, in the order of the windows.
     * @param i_name_filter file name without directory, letter case ignored; empty for all
     * @param o_documents no references are added
     * @param i_keep_duplicates 1 lists a document once a window
     * @return S_OK when something was found; else the code of the last window. E_FAIL, reported, without a layout
     */
    static HRESULT getAllRootDocuments(CATUnicodeString i_name_filter, CATListPtrCATDocument& o_documents,
                                       unsigned char i_keep_duplicates);
    /**
     * File names of all windows' documents, newest window first.
     * @param o_names without directory; a document with two windows stands twice
     * @return S_OK; a missing layout is reported
     */
    static HRESULT getAllRootDocNameFromWindows(CATListValCATUnicodeString& o_names);
    /**
     * The document that a window shows.
     * @param ip_window of any kind
     * @param op_document no reference is added
     * @return S_OK; E_FAIL, unreported, when it shows none
     */
    static HRESULT getDocumentFromWindow(CATFrmWindow* ip_window, CATDocument*& op_document);
    /**
     * File name of the document that a window shows.
     * @param ip_window of any kind
     * @param o_name without directory
     * @return S_OK; E_FAIL when the window shows no document or that has no name
     */
    static HRESULT getDocumentNameFromWindow(CATFrmWindow* ip_window, CATUnicodeString& o_name);
    /**
     * The document that a window shows, and its file name.
     * @param ip_window of any kind
     * @param o_name without directory
     * @param op_document no reference is added; null for one without a name
     * @return as getDocumentNameFromWindow
     */
    static HRESULT getDocumentAndNameFromWindow(CATFrmWindow* ip_window, CATUnicodeString& o_name,
                                                CATDocument*& op_document);
    /**
     * Whether a window shows a managed document.
     * @return 1 or 0
     */
    static unsigned char isADocumentWindowOpened();
    /**
     * Whether the current window is the desk.
     * @param o_is_desktop 1 or 0
     * @return S_OK
     */
    static HRESULT desktopIsActiveWindow(unsigned char& o_is_desktop);
    /**
     * Brings the first window that shows a file to the front.
     * @param i_file_name without directory, compared as names of files are
     * @return S_OK; E_FAIL when none does; nothing changes then
     */
    static HRESULT activateWindowInCATIA(CATUnicodeString i_file_name);
    /**
     * Looks for a file in the structure of one root document, the root included.
     * @param ip_root_document null, which is reported, and one without a root product have no structure
     * @param i_file_name without directory, letter case ignored
     * @param i_shape_name see getForeignFileInSession; for files that are no document of the platform
     * @param ip_switcher see getForeignFileInSession
     * @param opi_product the product that shows the file, with a reference for the caller; null when there is none
     * @param o_found 1 or 0
     * @return S_OK, found or not; the code of the search below the root when that failed
     */
    static HRESULT analyzeSingleWindow(CATDocument* ip_root_document, CATUnicodeString i_file_name,
                                       CATUnicodeString i_shape_name, VornToolsSwitchMgt* ip_switcher,
                                       CATIProduct*& opi_product, unsigned char& o_found);
    /**
     * Looks for a file in the structure of a given root document or, without one, of each window's document, and loads
     * what it finds so far that it has a document. The switcher keeps what was loaded. Every window's document is
     * unlocked once it was looked at.
     * @param i_file_name without directory, letter case ignored
     * @param i_shape_name see getForeignFileInSession
     * @param ip_switcher null is reported
     * @param op_document the file's document; no reference is added
     * @param o_found 0 also for a file of the platform that was found and has no document, which is reported: the next
     * two outputs tell all the same where it is
     * @param iop_root_document in: where to look, null for all windows; out: the root document below which it was found
     * @param opi_product the product that shows the file, with a reference for the caller
     * @return the code of the last step; S_OK, with nothing done, without a switcher. On failure nothing is found
     */
    static HRESULT analyzeWindowsInSession(CATUnicodeString i_file_name, CATUnicodeString i_shape_name,
                                           VornToolsSwitchMgt* ip_switcher, CATDocument*& op_document,
                                           unsigned char& o_found, CATDocument*& iop_root_document,
                                           CATIProduct*& opi_product);
    /** @} */

    /** @name Selection
     * @{ */

    /**
     * The current editor's selection; it may have none.
     * @param op_cso owned by the editor
     * @return S_OK; E_FAIL, unreported, without an editor
     */
    static HRESULT getCSO(CATCSO*& op_cso);
    /**
     * The product that a selected path leads to: its last object, or else the deepest product above a feature or above
     * a document of a visualisation file.
     * @param ip_path_element null leads to none
     * @param opi_product with a reference for the caller
     * @return S_OK; E_FAIL, unreported, when it leads to none
     */
    static HRESULT getSelectedProduct(CATPathElement* ip_path_element, CATIProduct*& opi_product);
    /**
     * The one selected product.
     * @param opi_selected_catiproduct with a reference for the caller
     * @return S_OK; E_FAIL when anything else than one product is selected, and the user is told; E_FAIL, reported,
     * without an editor or its selection
     */
    static HRESULT getSelectedElement(CATIProduct*& opi_selected_catiproduct);
    /**
     * The selected products, each once, in the order of selection.
     * @param o_products each pointer is a CATIProduct and carries a reference for the caller
     * @return S_OK; E_FAIL, unreported, without an editor or its selection
     */
    static HRESULT getSelectedProducts(CATListPtrCATBaseUnknown& o_products);
    /**
     * The one selected object.
     * @param opi_object with a reference for the caller
     * @return S_OK, with null for an editor without a selection; E_FAIL when not exactly one object is selected, and
     * the user is told; E_FAIL, unreported, without an editor
     */
    static HRESULT getSelectedObjectFromPathElement(CATBaseUnknown*& opi_object);
    /**
     * File names of the selected products' documents; a component is named by the last part of its product path.
     * @param o_names without directory. A document selected twice stands twice. Kept because callers count on it: a
     * name is left out only when its whole text is in the list already
     * @return the code of the last step; the names of all other selected objects are in the list all the same. E_FAIL,
     * unreported, without an editor or its selection
     */
    static HRESULT getAllDocNameFromSelection(CATListValCATUnicodeString& o_names);
    /**
     * Whether the document of a selected product has a file name.
     * @param i_file_name without directory, letter case included
     * @return 1 or 0
     */
    static unsigned char isSelectedInCatia(CATUnicodeString i_file_name);
    /**
     * Whether the root itself is selected. Kept because commands count on it: asking clears the selection.
     * @return 1 or 0
     */
    static unsigned char isCatiaDocumentSelected();
    /**
     * Whether a selected object is of a class or of one that derives from it.
     * @param i_class_name as the platform names it
     * @return 1 or 0
     */
    static unsigned char isElementSelectedInProcessDocument(const char* i_class_name);
    /**
     * Moves the tree of a window so that the selection stands in its middle.
     * @param ip_active_window null is journalled, not reported
     * @return S_OK; E_FAIL, reported, for a window without a tree, and when the platform does not move it
     */
    static HRESULT centerGraphOnSelection(CATFrmWindow* ip_active_window);
    /**
     * Moves the tree of the current window so that the selection stands in its middle.
     * @return as for a given window; E_FAIL, reported, without a current window
     */
    static HRESULT centerGraphOnSelection();
    /**
     * Starts the platform's command that reframes the view on the selection.
     * @return the code of asking for the application; S_OK when the command has no title; E_FAIL, reported, without the
     * platform's frame
     */
    static HRESULT reframeOn();
    /** @} */

    /** @name Work modes
     * @{ */

    /** What the PDM client loaded a document for. */
    enum EnumLoadedFor {
        LoadedForNothing = 0,           ///< any other load type, or none
        LoadedForLifeCycle = 1,         ///< "LFC"
        LoadedForConsultation = 2,      ///< "consult"
        LoadedForLifeCycleAsCgr = 3,    ///< "LFCCgr"
        LoadedForConsultationAsCgr = 4, ///< "consultCgr"
        LoadedAsCgr = 5                 ///< "Cgr"
    };

    /**
     * Whether the platform tells the product's work mode. Kept because callers only ask whether there is one: the mode
     * itself does not matter.
     * @param ipi_product null is reported
     * @param o_is_active 1 or 0
     * @return S_OK
     */
    static HRESULT isCATPartInVisuModeAnActivateNode(CATIProduct* ipi_product, unsigned char& o_is_active);
    /**
     * Whether a file is only seen: no document of the session shows it with more than a ".cgr" file.
     * @param i_file_name searched for within the documents' names, letter case included
     * @param o_is_in_visu 0 when the name of a document of the session holds it and not "cgr"; else 1
     * @return S_OK
     */
    static HRESULT isFileNameInVisu(CATUnicodeString i_file_name, unsigned char& o_is_in_visu);
    /**
     * What the DAT file of a document says it was loaded for.
     * @param i_file_name as for readDatTools
     * @param ip_document the file's document, for its identifier; may be null
     * @param o_loaded_for LoadedForNothing also for a load type of another kind
     * @return 1 when the DAT file tells a load type; 0 when it cannot be read or does not tell
     */
    static unsigned char isLoadedForLFCOrConsultOrAsCGR(CATUnicodeString i_file_name, CATDocument* ip_document,
                                                        EnumLoadedFor& o_loaded_for);
    /** @} */

    /** @name The process
     * @{ */

    /**
     * Whether the directories that the environment variables "TEMP" and "TMP" name can be opened.
     * @return 1, or 0 after a message to the user that names the first variable at fault
     */
    static unsigned char checkTempDirectories();
    /**
     * Opens the window of the hosted workspace client, or brings it to the front.
     * @return E_FAIL, with a message to the user, where the client is not installed; else the client's code
     */
    static HRESULT startSkylane();
    /** @} */

    /** @name Parameters and user properties
     * @{ */

    /**
     * The user properties of a product's reference. Properties without a value are left out.
     * @param ipi_catiproduct its reference has the properties
     * @param o_names without path
     * @param o_values parallel to o_names: a truth value is "1" or "0"; line breaks of other values become blanks and
     * characters 26 "_"
     * @return S_OK, with empty lists for a product without user properties; E_FAIL, unreported, for null and a product
     * without a reference
     */
    static HRESULT getUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString& o_names,
                                     CATListValCATUnicodeString& o_values);
    /**
     * Updates user properties by name and, when the environment wants it so, creates those that are missing.
     * @param ipi_catiproduct its reference has the properties
     * @param i_names a name with a backslash in it is the whole name of a property
     * @param i_values parallel to i_names, as VornToolsCADDOCProperties takes them
     * @param i_types parallel to i_names: "s", "i", "b" or "d"
     * @return the code of the last property; those before it stay as they were written. E_FAIL, reported, for a missing
     * one while another does not tell its name: no name gets a second property
     */
    static HRESULT setUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString i_names,
                                     CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    /**
     * Removes the first user property of a name.
     * @param ipi_catiproduct its reference has the properties
     * @param i_name as for setUserProperties
     * @return S_OK; S_FALSE when there is none; E_FAIL, reported, when it may be one that does not tell its name, or is
     * there still
     */
    static HRESULT RemoveProperty(CATIProduct* ipi_catiproduct, CATUnicodeString i_name);
    /**
     * Removes the user properties that the integration owns: "EBS_DatasetUid", "EBS_DatasetLastVersion" and
     * "EBS_ItemRevName".
     * @param ipi_catiproduct its reference has to be loaded
     * @return S_OK also when there are none; E_FAIL, reported, when a property does not tell its name or is there
     * still; the others are removed all the same
     */
    static HRESULT removeEBSProperties(CATIProduct* ipi_catiproduct);
    /**
     * Changes who may change a user property.
     * @param ipi_catiproduct its reference has the properties
     * @param i_name as for setUserProperties
     * @param i_user_access_mode 0 nobody, 1 everybody, 2 everybody, and the property is the users' own
     * @return S_OK; S_FALSE when there is no property of that name, E_FAIL, reported, for another mode, when the
     * platform does not take it and when a property does not tell its name, E_FAIL, journalled, without user properties
     */
    static HRESULT changePropertyAccess(CATIProduct* ipi_catiproduct, CATUnicodeString i_name, int i_user_access_mode);
    /**
     * Name of a parameter without its path.
     * @param i_parameter null is reported
     * @param o_name what stands behind the last backslash
     * @return S_OK; E_FAIL, reported, when the parameter does not tell its name
     */
    static HRESULT getNameProperty(CATICkeParm_var i_parameter, CATUnicodeString& o_name);
    /** @} */

    /** @name Parameters of drawings
     * @{ */

    /**
     * The parameters of a drawing, at any depth.
     * @param ip_document of a drawing
     * @param ipi_drawing that of the document
     * @param o_parameters each a CATICkeParm whose name may be a path
     * @return S_OK; E_FAIL, reported, when the drawing has no parameters to ask for
     */
    static HRESULT getDrawingParameters(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                        CATListValCATISpecObject_var& o_parameters);
    /**
     * The parameters of a drawing and its parameter sets, at any depth.
     * @param ip_document of a drawing
     * @param ipi_drawing that of the document
     * @param o_parameters each a CATICkeParm whose name may be a path
     * @param o_parameter_sets each a CATICkeParameterSet
     * @return as getDrawingParameters
     */
    static HRESULT getDrawingParametersAndParameterSets(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                                        CATListValCATISpecObject_var& o_parameters,
                                                        CATListValCATISpecObject_var& o_parameter_sets);
    /**
     * Updates parameters at any depth by name and, when the environment wants it so, creates those that are missing
     * directly below the drawing.
     * @param ip_document of a drawing
     * @param i_names last segments of names; one with a backslash in it is the whole name of a parameter
     * @param i_values parallel to i_names, as VornToolsCADDOCProperties takes them
     * @param i_types parallel to i_names: "s", "i", "b" or "d"
     * @return as setUserProperties; E_FAIL, reported, for a document without a drawing
     */
    static HRESULT setDrawingParameters(CATDocument* ip_document, CATListValCATUnicodeString i_names,
                                        CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    /**
     * Removes the first parameter of a name from where it stands.
     * @param ip_document of a drawing
     * @param i_name as for setDrawingParameters
     * @return as RemoveProperty; E_FAIL, reported, for a document without a drawing
     */
    static HRESULT removeDrawingParameter(CATDocument* ip_document, CATUnicodeString i_name);
    /**
     * Changes who may change a parameter of a drawing.
     * @param ip_document of a drawing
     * @param i_name as for setDrawingParameters
     * @param i_user_access_mode as for changePropertyAccess
     * @return as changePropertyAccess; E_FAIL, reported, for a document without a drawing
     */
    static HRESULT changeDrawingParameterAccess(CATDocument* ip_document, CATUnicodeString i_name,
                                                int i_user_access_mode);
    /** @} */

    /** @name Design tables
     * @{ */

    /**
     * Appends a document's design tables. Where they are looked for depends on the suffix of the document's name: that
     * of an analysis, a process, a part, a product or a drawing; other documents have none.
     *
     * A part is read in design mode: its root product is switched there and back afterwards. A part that goes back to
     * visualisation takes its tables with it: whoever wants to ask them anything keeps it in design mode meanwhile.
     * @param ip_document its kind follows from its suffix
     * @param ip_switcher switches the part; null: it is switched without one
     * @param i_switch_flag 1 switches also while the switcher is disabled
     * @param iop_design_tables what it holds stays
     * @return S_OK also without a table; E_FAIL, reported, when the document does not lead to them
     */
    static HRESULT getDesignTableList(CATDocument* ip_document, VornToolsSwitchMgt* ip_switcher,
                                      unsigned char i_switch_flag, CATListValCATISpecObject_var* iop_design_tables);
    /**
     * Appends the tables that stand directly in a set below the analysis.
     * @param ip_document an analysis
     * @param iop_design_tables what it holds stays
     * @return as getDesignTableList
     */
    static HRESULT getDesignTableInAnalysisDocument(CATDocument* ip_document,
                                                    CATListValCATISpecObject_var* iop_design_tables);
    /**
     * Appends the tables that stand directly in a set below the first process.
     * @param ip_document a process document
     * @param iop_design_tables what it holds stays
     * @return as getDesignTableList; no process is reported
     */
    static HRESULT getDesignTableInProcessDocument(CATDocument* ip_document,
                                                   CATListValCATISpecObject_var* iop_design_tables);
    /**
     * Appends the tables among the part's relations, at any depth.
     * @param ip_document a part
     * @param ip_switcher as for getDesignTableList
     * @param i_switch_flag as for getDesignTableList
     * @param iop_design_tables what it holds stays
     * @return as getDesignTableList
     */
    static HRESULT getDesignTableInPartDocument(CATDocument* ip_document, VornToolsSwitchMgt* ip_switcher,
                                                unsigned char i_switch_flag,
                                                CATListValCATISpecObject_var* iop_design_tables);
    /**
     * Full name of a table's file as automation tells it.
     * @param ipi_design_table null is reported
     * @param o_full_file_name it may be a logical name
     * @return S_OK; E_FAIL, reported, when the table does not tell it
     */
    static HRESULT getDesignTableFullFilename(CATIDesignTable* ipi_design_table, CATUnicodeString& o_full_file_name);
    /**
     * The name property of a table's automation object; getDesignTableName tells the name that users see.
     * @param ipi_design_table null is reported
     * @param o_name as automation tells it
     * @return S_OK; E_FAIL, reported, when the table does not tell it
     */
    static HRESULT getDesignTableNameProperty(CATIDesignTable* ipi_design_table, CATUnicodeString& o_name);
    /**
     * A table's own name: the one that users see in the tree.
     * @param ipi_design_table null is reported
     * @param o_name never empty on success
     * @return S_OK; E_FAIL, reported, when the table does not tell it
     */
    static HRESULT getDesignTableName(CATIDesignTable* ipi_design_table, CATUnicodeString& o_name);
    /**
     * What the PDM has to know of a document's design tables: seven parallel lists, one entry a table that could be
     * read; see readDesignTableInformation. For products and other documents without a place of their own for tables,
     * the files of the parts whose parameters a table sets are told, too.
     * @param ip_document as for getDesignTableList
     * @param ip_switcher as for getDesignTableList
     * @param i_switch_flag as for getDesignTableList
     * @param o_file_paths on disk
     * @param o_file_names without directory and extension
     * @param o_sheets current sheets, from 1
     * @param o_configurations current ones, from 1; 0 for none
     * @param o_configuration_texts checksums of the current configurations' values
     * @param o_associated_files "!!!" in front of each
     * @param o_names of the tables
     * @return S_OK also without a table; E_FAIL, reported, when the document does not lead to them
     */
    static HRESULT getDesignTableSheet(CATDocument* ip_document, VornToolsSwitchMgt* ip_switcher,
                                       unsigned char i_switch_flag, CATListValCATUnicodeString& o_file_paths,
                                       CATListValCATUnicodeString& o_file_names, CATRawCollint& o_sheets,
                                       CATRawCollint& o_configurations,
                                       CATListValCATUnicodeString& o_configuration_texts,
                                       CATListValCATUnicodeString& o_associated_files,
                                       CATListValCATUnicodeString& o_names);
    /**
     * What the PDM has to know of a design table.
     * @param isp_design_table what is no design table is reported
     * @param i_document_name its document, for the journal in debug mode
     * @param ip_part_number_to_file_name part number to file name (new CATUnicodeString, class "CATUnicodeString");
     * null leaves the associated files empty
     * @param o_file_path path on disk
     * @param o_file_name without directory and extension
     * @param o_sheet current sheet, from 1; 1 for a text file
     * @param o_configuration current one, from 1; 0 while the table has none, whose values are the titles
     * @param o_configuration_text checksum of the current configuration's values
     * @param o_associated_files file of each part that the table sets a parameter of, "!!!" in front of each
     * @param o_name empty when the table has none
     * @return S_OK; E_FAIL, outputs empty, when the file is not there or the table does not tell its file, sheet or
     * values
     */
    static HRESULT readDesignTableInformation(CATISpecObject_var isp_design_table, CATUnicodeString i_document_name,
                                              TYPMapCATUnicodeStringPVoid* ip_part_number_to_file_name,
                                              CATUnicodeString& o_file_path, CATUnicodeString& o_file_name,
                                              int& o_sheet, int& o_configuration,
                                              CATUnicodeString& o_configuration_text,
                                              CATUnicodeString& o_associated_files, CATUnicodeString& o_name);
    /**
     * Whether a file is one of design tables, by its suffix.
     * @param i_file_name looked at when there is no extension
     * @param i_extension the suffix; empty: what stands behind the file name's last dot
     * @return 1 for "txt", "xls", "xlsx" and "xlsm", letter case included, else 0
     */
    static unsigned char isACatdesigntable(CATUnicodeString i_file_name, CATUnicodeString i_extension);
    /**
     * The documents that an assembly shows, at every level, each once; a component is named by its product path. Other
     * documents have none.
     * @param ip_activ_document null is journalled, not reported
     * @param ip_switcher as for getDesignTableList
     * @param i_with_design_tables 1: also the files of all these documents' design tables, each once
     * @param o_file_names full names, the root's first
     * @param o_products parallel to o_file_names; each carries a reference for the caller
     * @param o_design_table_files as getDesignTableFullFilename
     * @return S_OK; E_FAIL when the root cannot be reached
     */
    static HRESULT getAllProductsAndDesignTablesNames(CATDocument* ip_activ_document, VornToolsSwitchMgt* ip_switcher,
                                                      unsigned char i_with_design_tables,
                                                      CATListValCATUnicodeString& o_file_names,
                                                      CATListPtrCATIProduct& o_products,
                                                      CATListValCATUnicodeString& o_design_table_files);
    /**
     * The files of selected design tables, and the products of all other selected objects; each once.
     * @param o_products each pointer is a CATIProduct and carries a reference for the caller
     * @param o_design_table_files as getDesignTableFullFilename
     * @return S_OK; E_FAIL, unreported, without an editor or its selection
     */
    static HRESULT getSelectedProductsAndDesignTables(CATListPtrCATBaseUnknown& o_products,
                                                      CATListValCATUnicodeString& o_design_table_files);
    /** @} */

    /** @name Instance properties
     * @{ */

    /**
     * Sets the name ("InstanceName") and the description ("DescriptionInst") of an instance; other names are passed
     * over. The integration's lines of a description below a component go first; when that fails, which is journalled,
     * the description is written all the same.
     * @param ipi_catiproduct an instance
     * @param i_names of the two properties
     * @param i_values parallel to i_names
     * @return S_OK; E_FAIL when one of them was refused or a product below a component has no parent, which is
     * reported; the others are written all the same
     */
    static HRESULT setInstanceProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString i_names,
                                         CATListValCATUnicodeString i_values);
    /** @} */

private:
    friend struct VornToolsCommonTestAccess;

    /** The design tables that stand directly in the sets below a publisher. */
    static HRESULT getDirectDesignTablesChildren(CATIParmPublisher* ipi_publisher,
                                                 CATListValCATISpecObject_var& o_design_tables);
    /**
     * The first of a document's design tables with a file; names are compared as names of files.
     * @param opi_design_table with a reference for the caller; null when there is none
     * @return 1 when found
     */
    static unsigned char getDesignTable(CATDocument* ip_document, CATUnicodeString i_full_file_name,
                                        VornToolsSwitchMgt* ip_switcher, unsigned char i_switch_flag,
                                        CATIDesignTable*& opi_design_table);
    /** Texts of a configuration's cells, one a parameter that the table sets, one behind the other; configuration 0 is
     * the row of titles. */
    static CATUnicodeString getConfigurationValues(CATIDesignTable* ipi_design_table, int i_configuration);
    /**
     * Has a sheet read its file again.
     * @return E_FAIL when it cannot, or for a null sheet
     */
    static HRESULT updateDesignTableCurrentSheet(CATICkeSheet_var isp_sheet);

    /**
     * A new description from an old one: value "BrokenIcon" marks it, an empty value removes the identity, any other
     * value is the identity to set.
     * @param i_mode 0 sets it, else it also removes the markers
     */
    static HRESULT processInstanceDescription(CATUnicodeString i_value, CATUnicodeString& io_description,
                                              unsigned char i_mode);
};

#endif
