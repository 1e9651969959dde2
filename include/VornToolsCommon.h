#ifndef VornToolsCommon_H
#define VornToolsCommon_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATDocument;
class CATICkeParm_var;
class CATIDrawing;
class CATIProduct;
class CATListValCATISpecObject_var;
class VornCache;

/**
 * The integration's services on documents and products, all static. Outputs are cleared first and stay empty on
 * failure. A product that comes out as a pointer carries a reference for the caller; a document never does. Null inputs
 * are reported and give E_FAIL (or the answer 0) unless a method says otherwise.
 */
class ExportedByVornTools VornToolsCommon {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** Kind of document that a file suffix stands for. */
    enum EnumDocumentType {
        DocumentTypeUnknown = -1, ///< no document of the platform: a foreign file
        DocumentTypeProduct = 1,
        DocumentTypePart = 2,
        DocumentTypeDrawing = 3,
        DocumentTypeProcess = 4,
        DocumentTypeAnalysis = 5,
        DocumentTypeDesignTable = 7, ///< 6 is taken by no suffix
        DocumentTypeCatalog = 8,
        DocumentTypeText = 9,
        DocumentTypeXls = 10,
        DocumentTypeXlsx = 11,
        DocumentTypeXlsm = 12
    };

    // Instance descriptions ------------------------------------------------------------------------------------------

    /** Reads the description from the instance that carries it: the product itself when its father is a reference, else
     * its instance in the first product parent. @return E_INVALIDARG for a null product, E_FAIL without a carrier;
     * neither is reported */
    static HRESULT getInstanceDescription(CATIProduct* ipi_product, CATUnicodeString& o_description);
    /** Writes the description where getInstanceDescription reads it; the same result codes. */
    static HRESULT setInstanceDescription(CATIProduct* ipi_product, const CATUnicodeString& i_description);
    /** Reads the description of exactly the given product. */
    static HRESULT getProductInstanceDescription(CATIProduct* ipi_cati_product, CATUnicodeString& o_description);
    /** Removes the integration's own lines from the front of a description (see docs/instance-descriptions.md). */
    static HRESULT cleanInstanceDescription(CATUnicodeString& io_description);
    /** Cleans the description of the product's occurrence relative to its parent's reference. */
    static HRESULT cleanDescriptionForRelativeOccUnderComponent(CATIProduct* ipi_catiproduct);
    /** Puts the secondary-part marker in front of the product's own description; an ignore node stays as it is. */
    static HRESULT addSecondaryPartInInstanceDescription(CATIProduct* ipi_cati_product);
    /** Whether the product is a secondary part: marked as one, and unknown to the PDM (no DAT file or no item
     * revision). @return the code of reading the description */
    static HRESULT isElementSecondaryPart(CATIProduct* ipi_product, unsigned char i_dat_file_missing,
                                          CATUnicodeString i_item_rev_uid, unsigned char& o_is_secondary_part);
    /** The instance name with every CR LF pair removed. @return S_OK when one was removed, S_FALSE when there was none,
     * E_FAIL, unreported, for a null product, else the platform's code */
    static HRESULT getPrdInstanceNameWithoutNewLines(CATIProduct* ipi_product, CATUnicodeString& o_name);

    // DAT files and identity ------------------------------------------------------------------------------------------

    /** Lines of the DAT file of a document; positional files get the three lines of version 0 at their end.
     * @param i_catia_uuid the document's identifier, compared with the file's in debug mode (the journal tells)
     * @return S_OK; E_FAIL when no DAT file was found or it cannot be read */
    static HRESULT readDatTools(CATUnicodeString i_file_name, const CATUnicodeString& i_catia_uuid,
                                CATListValCATUnicodeString& o_lines);
    /** Name of the DAT file for a document's file name. The file need not exist. */
    static HRESULT getDatFileFullFileName(const CATUnicodeString& i_file_name, CATUnicodeString& o_dat_name);
    /** Identity that the DAT file of a document records. @param i_cache reads the file; without one an existing DAT
     * file gives E_FAIL. @param o_exists 1 when a DAT file exists */
    static HRESULT getOrvaneInformationsFromDatFile(const CATUnicodeString& i_file_name, VornCache* ip_cache,
                                                    CATUnicodeString& o_item_rev_uid, CATUnicodeString& o_dataset_uid,
                                                    CATUnicodeString& o_named_ref_uid, unsigned char& o_exist_in_ov);
    /** The same for the document that a product shows. @param o_file_name the document's physical file name */
    static HRESULT getOrvaneInformations(CATIProduct* ipi_product, VornCache* ip_cache,
                                         CATUnicodeString& o_item_rev_uid, CATUnicodeString& o_dataset_uid,
                                         CATUnicodeString& o_named_ref_uid, CATUnicodeString& o_file_name,
                                         unsigned char& o_exist_in_ov);
    /** Whether the DAT file of a document records an item revision. @return the code of reading it */
    static HRESULT itemRevUIDExistsInDatFile(CATUnicodeString i_file_name, CATDocument* ip_document,
                                             unsigned char& o_exists);
    /** Whether the DAT file of a document describes a design table: sheets, configurations and checksums are all
     * recorded. @return the code of reading it */
    static HRESULT isDesignTableInfoInDatFile(CATUnicodeString i_file_name, CATDocument* ip_document,
                                              unsigned char& o_is_design_table);
    /** Identifier of this session, made on first demand; the same until the library is unloaded. */
    static CATUnicodeString getCATIA_UUID();
    /** Identifier of a document; "0_0_0_0" for none. @return E_FAIL when the document has no descriptor */
    static HRESULT getDocUUID(CATDocument* ip_document, CATUnicodeString& o_uuid);
    /** 1 when the document is of a kind that the integration manages. */
    static unsigned char isDocumentInSessionManagedByMaro(CATDocument* ip_cat_document);
    /** Whether the session holds a file's document with unsaved changes. @return the code of the look-up */
    static HRESULT isModifiedStatusInCATIA(CATUnicodeString i_file_name, unsigned char& o_modified);
    /** Name of the source file of a cached visualisation file; a name that is none comes back unchanged. */
    static HRESULT extractFileNameFromCacheFileName(CATUnicodeString i_cache_name, CATUnicodeString& o_file_name);
    /** 1 unless the document reports itself saved. Always S_OK. */
    static HRESULT isDocumentToBeSaved(CATDocument* ip_document, unsigned char& o_to_be_saved);
    /** Brings a drawing up to date, or queues a message when a part is not. @param i_document_type EnumDocumentType */
    static HRESULT documentIsUpToDate(CATDocument* ip_document, int i_document_type);
    /** 1 when the PDM manages the file: its DAT file exists. @param o_managed_name the name whose DAT file was found */
    static unsigned char isAOvElement(CATDocument* ip_document, CATUnicodeString i_file_name,
                                      CATUnicodeString& o_managed_name);

    // Documents and product structure ---------------------------------------------------------------------------------

    /** @param i_extension suffix in upper case, without its dot; null gives DocumentTypeUnknown */
    static EnumDocumentType getDocumentTypeFromExtension(char* i_extension);
    /** Kind of document by the suffix of a file name, letter case ignored; a name without a dot counts as the suffix.
     */
    static int returnDocumentType(CATUnicodeString i_file_name);
    /** File name of the document that a product shows; the product path when no document can be reached.
     * @param op_document the document; null without a reference, untouched when the reference lies in none
     * @return S_OK whenever a product was given; a null one is journalled, not reported */
    static HRESULT getDocumentFileName(CATIProduct* ipi_the_product, CATDocument*& op_document,
                                       CATUnicodeString& o_file_name);
    /** The product one level up. @param opi_parent null at the root, which is S_OK */
    static HRESULT getParent(CATIProduct* ipi_product, CATIProduct*& opi_parent);
    /** The instance that stands for the product directly under the reference of its father: the product itself when its
     * father is a reference. E_FAIL at a root (unreported), and when there is none. */
    static HRESULT getInstanceInFirstProductParent(CATIProduct* ipi_product, CATIProduct*& opi_instance);
    /** Whether the product is a component: its reference lies in the same document as its father's. */
    static HRESULT isComponent(CATIProduct* ipi_product, unsigned char& o_is_component);
    /** Whether a file is no document of the platform, by its suffix. An empty name is bad input. */
    static HRESULT isAForeignFile(CATUnicodeString i_file_name, unsigned char& o_is_foreign);
    /** Whether a product is shown by a file that is no document of the platform. */
    static HRESULT isAForeignFile(CATIProduct* ipi_product, unsigned char& o_is_foreign);
    /** Path of the file that shows the product. E_FAIL when it has no master shape representation. */
    static HRESULT getMasterShapeRepresentationPathName(CATIProduct* ipi_product, CATUnicodeString& o_path);
    /** Path of the file behind a named shape representation; an empty name asks for the default one. */
    static HRESULT getShapePathName(CATIProduct* ipi_product, const CATUnicodeString& i_shape_name,
                                    CATUnicodeString& o_path);
    /** Names the product by its chain of instances: the root's part number and the instance names down to it, joined by
     * backslashes whatever the system. */
    static HRESULT getProductPath(CATIProduct* ipi_product, CATUnicodeString& o_path);

    // The main root of a document -------------------------------------------------------------------------------------

    /** The main root of a document. @param opi_active_product null for a document without roots, which is S_OK
     * @return E_FAIL, reported, when the document tells no roots or the first one is no product */
    static HRESULT getActiveCATIProduct(CATDocument* ip_active_document, CATIProduct*& opi_active_product);

    // Parameters and user properties ----------------------------------------------------------------------------------

    /** The user properties of a product's reference: two parallel lists of names without path and values. A truth value
     * is "1" or "0"; line breaks of other values become blanks and characters 26 "_". Properties without a value are
     * left out. @return E_FAIL, unreported, for null or a product without user properties */
    static HRESULT getUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString& o_names,
                                     CATListValCATUnicodeString& o_values);
    /** Updates user properties by name and, when the environment wants it so, creates those that are missing. The lists
     * are parallel; values and types are those of VornToolsCADDOCProperties.
     * @return the code of the last property; those before it stay as they were written */
    static HRESULT setUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString i_names,
                                     CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    /** Removes the first user property of a name. @return S_FALSE when there is none */
    static HRESULT RemoveProperty(CATIProduct* ipi_catiproduct, CATUnicodeString i_name);
    /** Removes the user properties that the integration owns. */
    static HRESULT removeEBSProperties(CATIProduct* ipi_catiproduct);
    /** Changes who may change a user property. @param i_user_access_mode 0 nobody, 1 everybody, 2 everybody, and the
     * property is the users' own. @return S_FALSE when there is no property of that name, E_FAIL, reported, for another
     * mode and without user properties */
    static HRESULT changePropertyAccess(CATIProduct* ipi_catiproduct, CATUnicodeString i_name, int i_user_access_mode);
    /** Name of a parameter without its path. */
    static HRESULT getNameProperty(CATICkeParm_var i_parameter, CATUnicodeString& o_name);
    /** The parameters of a drawing, at any depth. @param ipi_drawing the drawing of the document */
    static HRESULT getDrawingParameters(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                        CATListValCATISpecObject_var& o_parameters);

private:
    friend struct VornToolsCommonTestAccess;

    /** A new description from an old one: value "BrokenIcon" marks it, an empty value removes the identity, any other
     * value is the identity to set. @param i_mode 0 sets it, else it also removes the markers */
    static HRESULT processInstanceDescription(CATUnicodeString i_value, CATUnicodeString& io_description,
                                              unsigned char i_mode);
};

#endif
