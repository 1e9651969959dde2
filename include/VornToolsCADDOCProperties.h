#ifndef VornToolsCADDOCProperties_H
#define VornToolsCADDOCProperties_H

#include "CATBaseUnknown.h"
#include "CATErrorDef.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATListOfCATUnicodeString.h"
#include "CATListOfDouble.h"
#include "CATListOfInt.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATDocument;
class CATICkeMagnitude;
class CATICkeParameterSet;
class CATICkeParm;
class CATICkeParmFactory;
class CATICkeType_var;
class CATIParmPublisher;
class CATIProduct;
class CATISpecAttrAccess;
class CATISpecAttrKey;
class CATISpecObject;

/**
 * Parameters that the integration hangs on documents and products.
 *
 * Values are exchanged as texts with a one-letter type: "s" text, "i" integer, "b" truth value, "d" real number or
 * dimension; any other letter counts as "s". A text with "@=@" in it holds several values: the parameter takes the
 * first one and keeps them all, without repetitions, in its attribute "ListOfValues" (docs/parameters.md).
 *
 * What was made or changed stays when a later step fails. Every entry in the journal closes with the result code.
 */
class ExportedByVornTools VornToolsCADDOCProperties : public CATBaseUnknown {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** The one service, made on first use; which variant follows from the environment. Owned by the class: its last
     * reference is given back with Release, and a later call makes a new one. Null when there is no memory. */
    static VornToolsCADDOCProperties* getInstance();
    ~VornToolsCADDOCProperties() override;
    VornToolsCADDOCProperties(const VornToolsCADDOCProperties&) = delete;
    VornToolsCADDOCProperties& operator=(const VornToolsCADDOCProperties&) = delete;

    // Parameter sets --------------------------------------------------------------------------------------------------

    /** Makes a set named "Parameters.1" below a feature. @param opi_set carries a reference for the caller. @return
     * S_OK with a set that the feature shows, else E_FAIL and null */
    static HRESULT createParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set);
    /** The set that a feature keeps in its attribute "_AttrForLiterals", else "_FtrList", else "UserParameters"; never
     * the one named "ExternalParameterSet".
     * @param opi_set carries a reference for the caller; null when there is none, whatever the code
     * @return the code of the last look-up: S_OK is possible without a set when there were others to pass over */
    HRESULT getParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set);
    /** Has the tree show what is new in a set. E_FAIL for null or a set without a node. */
    static HRESULT redrawParametersNode(CATICkeParameterSet* ipi_set);

    // Parameters ------------------------------------------------------------------------------------------------------

    /** Makes a parameter and puts it below a publisher. @param i_read_only 1: users cannot change it, whatever
     * i_user_access says. @param i_user_access 1: it is marked as the users' own. @param i_rename_to_name 1: it bears
     * the name instead of a path. @return E_FAIL when the value does not fit the type, and, reported, when the
     * publisher does not show the parameter or a flag was not taken; nothing stands below the publisher then */
    static HRESULT createParameter(CATICkeParmFactory* ipi_param_factory, CATIParmPublisher* ipi_param_publisher,
                                   CATUnicodeString i_name, CATUnicodeString i_value, CATUnicodeString i_type,
                                   unsigned char i_read_only, unsigned char i_user_access,
                                   unsigned char i_rename_to_name);
    /** Gives a parameter another value. A single value for one that keeps several comes in front of those. A dimension
     * takes a number in the unit that users see, or a text with a unit. @param i_name for the journal. @return E_FAIL
     * when the value is none of its type, and, reported and journalled, when reading back shows that the platform did
     * not take it; nothing changes then */
    static HRESULT updateParameter(CATICkeParm* ipi_parameter, CATUnicodeString i_name, CATUnicodeString i_value,
                                   CATUnicodeString i_type);
    /** 1 when a text holds several values. */
    static unsigned char isMultipleValuesParameter(const CATUnicodeString& i_value);
    /** Writes a list attribute of an object; it is added when there is none of that name. */
    static void setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                             CATListValCATUnicodeString i_values);
    static void setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                             CATRawColldouble i_values);
    static void setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                             CATRawCollint i_values);

    // Reading sets ----------------------------------------------------------------------------------------------------

    /** The parameters of a set. The four lists are parallel. @param op_parameters everything that stands in the set,
     * deleted by the caller; null on failure, when all lists are empty. @param o_flags "true" for a parameter that
     * users cannot change, else "false" */
    HRESULT getListOfParameters(CATICkeParameterSet* ipi_set, CATListValCATBaseUnknown_var*& op_parameters,
                                CATListValCATUnicodeString& o_names, CATListValCATUnicodeString& o_values,
                                CATListValCATUnicodeString& o_types, CATListValCATUnicodeString& o_flags);
    /** Appends two texts a parameter: the prefix, a dot and the name; the value, several joined by "@=@", a truth value
     * as "1" or "0"; several are read by the kind of list that keeps them. @param io_pairs keeps what it has, and that
     * alone on failure */
    HRESULT appendAttributesWithParamsList(CATICkeParameterSet* ipi_set, CATUnicodeString i_prefix,
                                           CATListValCATUnicodeString& io_pairs);

    // Attributes of documents, by kind of document --------------------------------------------------------------------
    // What is written comes in three parallel lists: names, values and types. What is read is one list of names and
    // values by turns, each name once (docs/document-attributes.md).

    /** Writes attributes to the parameter set of an analysis / of the root process of a process document: its own,
     * whatever sets other features have. Parameters that exist are updated; those that lack, and the set, are created
     * when the environment wants it so, each name once.
     * @return S_OK also without a set when none may be created; E_FAIL, reported, when the set cannot be read; else the
     * code of the last parameter, or of showing new ones; those before it stay as they were written */
    static HRESULT setAnalysisParameters(CATDocument* ip_catdocument, CATListValCATUnicodeString i_names,
                                         CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    static HRESULT setProcessParameters(CATDocument* ip_catdocument, CATListValCATUnicodeString i_names,
                                        CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    /** The same for the part of a part document. A parameter that is read-only or refuses its value is named in the
     * integration's log file.
     * @param i_document_name for the log file
     * @param o_need_update 1 when the part is not up to date; else left as it was */
    HRESULT setMechanicalPartParameters(CATUnicodeString i_document_name, CATISpecObject* ipi_spec_obj_ref,
                                        CATListValCATUnicodeString i_names, CATListValCATUnicodeString i_values,
                                        CATListValCATUnicodeString i_types, unsigned char& o_need_update);
    /** The same for a reference product. */
    HRESULT setReferenceProductParameters(CATUnicodeString i_document_name, CATISpecObject* ipi_spec_obj_ref,
                                          CATListValCATUnicodeString i_names, CATListValCATUnicodeString i_values,
                                          CATListValCATUnicodeString i_types);
    /** Reads the attributes of an analysis, process or drawing document. @param o_pairs empty on failure, which is that
     * of a document of another kind, without a parameter set or with a parameter that cannot be read, too */
    static HRESULT retrieveAnalysisAttributes(CATDocument* ip_catdocument, CATListValCATUnicodeString& o_pairs);
    static HRESULT retrieveProcessAttributes(CATDocument* ip_catdocument, CATListValCATUnicodeString& o_pairs);
    static HRESULT retrieveDrawingAttributes(CATDocument* ip_catdocument, CATListValCATUnicodeString& o_pairs);

    // Electrical parameters -------------------------------------------------------------------------------------------

    /** The electrical parameters of a part, from an optional library; an empty list without it.
     * @return E_INVALIDARG, unreported, for anything but a part; else the code of the library, or S_OK without it */
    static HRESULT getElectricalParameters(CATDocument* ip_document, CATListValCATUnicodeString& o_parameters);

    // Properties of a product's reference -----------------------------------------------------------------------------

    /** Writes the properties "partNumber", "definition", "revision", "nomenclature", "source" and "DescriptionRef";
     * other names are passed over. The lists are parallel. @return E_FAIL when one of them was refused, which is
     * reported; the others are written all the same */
    virtual HRESULT setReferenceProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                           const CATListValCATUnicodeString& i_values) = 0;
    /** The same without the part number, which for a foreign file follows from the file. */
    virtual HRESULT setReferencePropertiesForForeignFile(CATIProduct* ipi_product,
                                                         const CATListValCATUnicodeString& i_names,
                                                         const CATListValCATUnicodeString& i_values) = 0;
    virtual HRESULT updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) = 0;

protected:
    VornToolsCADDOCProperties();

    HRESULT releaseClassVariables();
    /** The set behind one attribute; results as getParameterSet. */
    HRESULT getParameterSetByAttributKey(CATISpecAttrKey* ipi_key, CATISpecAttrAccess* ipi_access,
                                         CATICkeParameterSet*& opi_set);
    /** The values that a parameter keeps, joined by "@=@". @param i_current_value the value it shows. @return E_FAIL,
     * and an empty text, when there are none */
    static HRESULT getParamMultipleValues(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                                          const CATUnicodeString& i_parameter_name, const CATICkeType_var& i_type,
                                          const CATUnicodeString& i_current_value, CATUnicodeString& o_joined);
    /** A number of the storage unit as text in the unit that users see, and the other way round; empty when a unit is
     * missing. The storage unit is the MKS unit. Always S_OK. */
    static HRESULT getParamValueInCurrentUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                              CATUnicodeString& o_text);
    static HRESULT getParamValueInStorageUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                              CATUnicodeString& o_text);

private:
    friend struct VornToolsCADDOCPropertiesTestAccess;

    static VornToolsCADDOCProperties* _singleton;
};

#endif
