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
 * What was made or changed stays when a later step fails. Null inputs give E_FAIL, reported unless a method says
 * otherwise, and so does want of memory. Every entry in the journal closes with the result code.
 *
 * @par Example
 * @snippet properties.cpp VornToolsCADDOCProperties
 */
class ExportedByVornTools VornToolsCADDOCProperties : public CATBaseUnknown {
public:
    /** "VornToolsCADDOCProperties::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * The one service, made on first use; which variant follows from the environment.
     * @return owned by the class: its last reference is given back with Release, and a later call makes a new one. Null
     * when there is no memory
     */
    static VornToolsCADDOCProperties* getInstance();
    /** For Release: the next getInstance makes a new service. */
    ~VornToolsCADDOCProperties() override;
    VornToolsCADDOCProperties(const VornToolsCADDOCProperties&) = delete;
    VornToolsCADDOCProperties& operator=(const VornToolsCADDOCProperties&) = delete;

    /** @name Parameter sets
     * @{ */

    /**
     * Makes a set named "Parameters.1" below a feature.
     * @param ipi_spec_object the feature; null is reported
     * @param opi_set carries a reference for the caller; null on failure
     * @return S_OK with a set that the feature shows, else E_FAIL
     */
    static HRESULT createParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set);
    /**
     * The set that a feature keeps in its attribute "_AttrForLiterals", else "_FtrList", else "UserParameters"; never
     * the one named "ExternalParameterSet".
     * @param ipi_spec_object the feature; null is reported
     * @param opi_set carries a reference for the caller; null when there is none, whatever the code
     * @return the code of the last look-up: S_OK is possible without a set when there were others to pass over
     */
    HRESULT getParameterSet(CATISpecObject* ipi_spec_object, CATICkeParameterSet*& opi_set);
    /**
     * Has the tree show what is new in a set.
     * @param ipi_set null is reported
     * @return S_OK; E_FAIL for null or a set without a node
     */
    static HRESULT redrawParametersNode(CATICkeParameterSet* ipi_set);
    /** @} */

    /** @name Parameters
     * @{ */

    /**
     * Makes a parameter and puts it below a publisher.
     * @param ipi_param_factory of the container that the publisher stands in
     * @param ipi_param_publisher a parameter set, for example
     * @param i_name of the parameter; whether another one has it is not asked
     * @param i_value of its type; several, joined by "@=@", become a list
     * @param i_type "s", "i", "b" or "d"
     * @param i_read_only 1: users cannot change it, whatever i_user_access says
     * @param i_user_access 1: it is marked as the users' own
     * @param i_rename_to_name 1: it bears the name instead of a path
     * @return S_OK; E_FAIL when the value does not fit the type, and, reported, when the publisher does not show the
     * parameter or a flag was not taken; nothing stands below the publisher then
     */
    static HRESULT createParameter(CATICkeParmFactory* ipi_param_factory, CATIParmPublisher* ipi_param_publisher,
                                   CATUnicodeString i_name, CATUnicodeString i_value, CATUnicodeString i_type,
                                   unsigned char i_read_only, unsigned char i_user_access,
                                   unsigned char i_rename_to_name);
    /**
     * Gives a parameter another value. A single value for one that keeps several comes in front of those. A dimension
     * takes a number in the unit that users see, or a text with a unit.
     * @param ipi_parameter null is reported
     * @param i_name for the journal
     * @param i_value of the parameter's type
     * @param i_type letter for the kind of list that several values are kept in
     * @return S_OK; E_FAIL when the value is none of its type, and, reported and journalled, when reading back shows
     * that the platform did not take it; nothing changes then
     */
    static HRESULT updateParameter(CATICkeParm* ipi_parameter, CATUnicodeString i_name, CATUnicodeString i_value,
                                   CATUnicodeString i_type);
    /**
     * Whether a text holds several values.
     * @param i_value as createParameter takes it
     * @return 1 when "@=@" is in it, else 0
     */
    static unsigned char isMultipleValuesParameter(const CATUnicodeString& i_value);
    /**
     * Writes a list of texts to an attribute of an object; the attribute is added when there is none of that name.
     * There is no result; the journal tells how far it came.
     * @param ipi_spec_object null is reported
     * @param i_key name of the attribute
     * @param i_values all that the list holds from now on
     */
    static void setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                             CATListValCATUnicodeString i_values);
    /**
     * Writes a list of real numbers, as the form for texts does.
     * @param ipi_spec_object null is reported
     * @param i_key name of the attribute
     * @param i_values all that the list holds from now on
     */
    static void setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                             CATRawColldouble i_values);
    /**
     * Writes a list of integers, as the form for texts does.
     * @param ipi_spec_object null is reported
     * @param i_key name of the attribute
     * @param i_values all that the list holds from now on
     */
    static void setAttributeOnCATISpecObject(CATISpecObject* ipi_spec_object, CATUnicodeString i_key,
                                             CATRawCollint i_values);
    /** @} */

    /** @name Reading sets
     * @{ */

    /**
     * The parameters of a set; the four lists are parallel, one entry a parameter.
     * @param ipi_set null is not reported
     * @param op_parameters everything that stands in the set, deleted by the caller; null on failure, when all lists
     * are empty
     * @param o_names within the set
     * @param o_values as users see them
     * @param o_types names of the platform's types
     * @param o_flags "true" for a parameter that users cannot change, else "false"
     * @return S_OK; E_FAIL when the set cannot be listed
     */
    HRESULT getListOfParameters(CATICkeParameterSet* ipi_set, CATListValCATBaseUnknown_var*& op_parameters,
                                CATListValCATUnicodeString& o_names, CATListValCATUnicodeString& o_values,
                                CATListValCATUnicodeString& o_types, CATListValCATUnicodeString& o_flags);
    /**
     * Appends two texts a parameter: the prefix, a dot and the name; the value, several joined by "@=@", a truth value
     * as "1" or "0"; several are read by the kind of list that keeps them.
     * @param ipi_set null is not reported
     * @param i_prefix may be empty; the dot stays
     * @param io_pairs keeps what it has, and that alone on failure
     * @return S_OK; E_FAIL when the set cannot be listed
     */
    HRESULT appendAttributesWithParamsList(CATICkeParameterSet* ipi_set, CATUnicodeString i_prefix,
                                           CATListValCATUnicodeString& io_pairs);
    /** @} */

    /** @name Attributes of documents, by kind of document
     * @{ */

    /**
     * Writes attributes to the parameter set of an analysis document: its own, whatever sets other features have.
     * Parameters that exist are updated; those that lack, and the set, are created when the environment wants it so,
     * each name once.
     * @param ip_catdocument an analysis; null is reported
     * @param i_names within the set
     * @param i_values parallel to i_names
     * @param i_types parallel to i_names: "s", "i", "b" or "d"
     * @return S_OK also without a set when none may be created; E_FAIL, reported, when the set cannot be read; else the
     * code of the last parameter, or of showing new ones; those before it stay as they were written
     */
    static HRESULT setAnalysisParameters(CATDocument* ip_catdocument, CATListValCATUnicodeString i_names,
                                         CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    /**
     * Writes attributes to the parameter set of the root process of a process document, as setAnalysisParameters does.
     * @param ip_catdocument a process document; null is reported
     * @param i_names within the set
     * @param i_values parallel to i_names
     * @param i_types parallel to i_names: "s", "i", "b" or "d"
     * @return as setAnalysisParameters
     */
    static HRESULT setProcessParameters(CATDocument* ip_catdocument, CATListValCATUnicodeString i_names,
                                        CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types);
    /**
     * Writes attributes to the parameter set of the part of a part document, as setAnalysisParameters does. A parameter
     * that is read-only or refuses its value is named in the integration's log file.
     * @param i_document_name for the log file
     * @param ipi_spec_obj_ref the part
     * @param i_names within the set
     * @param i_values parallel to i_names
     * @param i_types parallel to i_names: "s", "i", "b" or "d"
     * @param o_need_update 1 when the part is not up to date; else left as it was
     * @return as setAnalysisParameters
     */
    HRESULT setMechanicalPartParameters(CATUnicodeString i_document_name, CATISpecObject* ipi_spec_obj_ref,
                                        CATListValCATUnicodeString i_names, CATListValCATUnicodeString i_values,
                                        CATListValCATUnicodeString i_types, unsigned char& o_need_update);
    /**
     * Writes attributes to the parameter set of a reference product, as setMechanicalPartParameters does.
     * @param i_document_name for the log file
     * @param ipi_spec_obj_ref the product
     * @param i_names within the set
     * @param i_values parallel to i_names
     * @param i_types parallel to i_names: "s", "i", "b" or "d"
     * @return as setAnalysisParameters
     */
    HRESULT setReferenceProductParameters(CATUnicodeString i_document_name, CATISpecObject* ipi_spec_obj_ref,
                                          CATListValCATUnicodeString i_names, CATListValCATUnicodeString i_values,
                                          CATListValCATUnicodeString i_types);
    /**
     * Reads the attributes of an analysis document (docs/document-attributes.md).
     * @param ip_catdocument an analysis
     * @param o_pairs names and values by turns, each name once; empty on failure
     * @return S_OK; E_FAIL also for a document of another kind, without a parameter set or with a parameter that cannot
     * be read
     */
    static HRESULT retrieveAnalysisAttributes(CATDocument* ip_catdocument, CATListValCATUnicodeString& o_pairs);
    /**
     * Reads the attributes of a process document: those of its root process.
     * @param ip_catdocument a process document
     * @param o_pairs names and values by turns, each name once; empty on failure
     * @return as retrieveAnalysisAttributes
     */
    static HRESULT retrieveProcessAttributes(CATDocument* ip_catdocument, CATListValCATUnicodeString& o_pairs);
    /**
     * Reads the attributes of a drawing document: the parameters of the drawing.
     * @param ip_catdocument a drawing
     * @param o_pairs names and values by turns, each name once; empty on failure
     * @return as retrieveAnalysisAttributes
     */
    static HRESULT retrieveDrawingAttributes(CATDocument* ip_catdocument, CATListValCATUnicodeString& o_pairs);
    /** @} */

    /** @name Electrical parameters
     * @{ */

    /**
     * The electrical parameters of a part, from an optional library.
     * @param ip_document a part
     * @param o_parameters as the library gives them; empty without it, and on failure
     * @return E_INVALIDARG, unreported, for anything but a part; E_FAIL for a part without a product; else the code of
     * the library, or S_OK without it
     */
    static HRESULT getElectricalParameters(CATDocument* ip_document, CATListValCATUnicodeString& o_parameters);
    /** @} */

    /** @name Properties of a product's reference
     * @{ */

    /**
     * Writes the properties "partNumber", "definition", "revision", "nomenclature", "source" and "DescriptionRef";
     * other names are passed over.
     * @param ipi_product its reference takes the properties
     * @param i_names letter case included
     * @param i_values parallel to i_names
     * @return S_OK; E_FAIL when one of them was refused, which is reported; the others are written all the same
     */
    virtual HRESULT setReferenceProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                           const CATListValCATUnicodeString& i_values) = 0;
    /**
     * Writes the same properties without the part number, which for a foreign file follows from the file.
     * @param ipi_product its reference takes the properties
     * @param i_names letter case included
     * @param i_values parallel to i_names
     * @return as setReferenceProperties
     */
    virtual HRESULT setReferencePropertiesForForeignFile(CATIProduct* ipi_product,
                                                         const CATListValCATUnicodeString& i_names,
                                                         const CATListValCATUnicodeString& i_values) = 0;
    /**
     * Writes the part number of a product's reference.
     * @param ipi_product its reference takes the part number
     * @param i_part_number whether the platform took it is asked
     * @return S_OK; E_FAIL, reported, when it was refused
     */
    virtual HRESULT updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) = 0;
    /** @} */

protected:
    /** For the variants. */
    VornToolsCADDOCProperties();

    /**
     * Gives back what the service holds: nothing.
     * @return S_OK
     */
    HRESULT releaseClassVariables();
    /**
     * The set behind one attribute.
     * @param ipi_key of the attribute; null is journalled, as is a null ipi_access
     * @param ipi_access to the object that has the attribute
     * @param opi_set carries a reference for the caller; null when there is none
     * @return as getParameterSet
     */
    HRESULT getParameterSetByAttributKey(CATISpecAttrKey* ipi_key, CATISpecAttrAccess* ipi_access,
                                         CATICkeParameterSet*& opi_set);
    /**
     * The values that a parameter keeps.
     * @param ipi_access to the parameter
     * @param ipi_key of its list of values
     * @param i_parameter_name for the journal
     * @param i_type of the parameter
     * @param i_current_value the value it shows
     * @param o_joined joined by "@=@"; empty when there are none
     * @return S_OK; E_FAIL when there are none
     */
    static HRESULT getParamMultipleValues(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                                          const CATUnicodeString& i_parameter_name, const CATICkeType_var& i_type,
                                          const CATUnicodeString& i_current_value, CATUnicodeString& o_joined);
    /**
     * A number of the storage unit as text in the unit that users see. The storage unit is the MKS unit.
     * @param ipi_magnitude null is reported: the number stays as it is
     * @param i_value in the storage unit
     * @param o_text empty when a unit is missing
     * @return S_OK
     */
    static HRESULT getParamValueInCurrentUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                              CATUnicodeString& o_text);
    /**
     * A number of the unit that users see as text in the storage unit, the MKS unit.
     * @param ipi_magnitude null is reported: the number stays as it is
     * @param i_value in the unit that users see
     * @param o_text empty when a unit is missing
     * @return S_OK
     */
    static HRESULT getParamValueInStorageUnit(CATICkeMagnitude* ipi_magnitude, const double& i_value,
                                              CATUnicodeString& o_text);

private:
    friend struct VornToolsCADDOCPropertiesTestAccess;

    static VornToolsCADDOCProperties* _singleton;
};

#endif
