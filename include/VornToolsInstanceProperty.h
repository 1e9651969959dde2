#ifndef VornToolsInstanceProperty_H
#define VornToolsInstanceProperty_H

#include "CATBaseUnknown.h"
#include "CATErrorDef.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATICkeParameterSet;
class CATICkeParm;
class CATIProduct;
class CATISpecAttrAccess;
class CATISpecAttrKey;

/**
 * Properties that the PDM side attaches to the instances of an assembly. They are the parameters of a set named
 * "UserInstanceProperties" in the instance's attribute "_Maro"; docs/instance-properties.md describes them.
 *
 * An instance has such properties only when it is stored where its reference is stored, as a component is. Values are
 * texts as VornToolsCADDOCProperties takes them, several values joined by "@=@". All operations are static, and a null
 * instance gives E_INVALIDARG.
 *
 * @par Example
 * @snippet properties.cpp VornToolsInstanceProperty
 */
class ExportedByVornTools VornToolsInstanceProperty : public CATBaseUnknown {
public:
    /** "VornToolsInstanceProperty::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** What a property holds; every other value counts as a string. Kept because callers tell two kinds of text apart:
     * both are stored alike. */
    enum EnumPropertyType : int {
        PropertyString = 0,
        PropertyReal = 1,
        PropertyInteger = 2,
        PropertyText = 3,
        PropertyBoolean = 4
    };

    /** An object without state; nobody needs one. */
    VornToolsInstanceProperty();
    /** Nothing to end. */
    ~VornToolsInstanceProperty() override;

    /**
     * Makes a property, or updates the one that exists.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param i_type how the value is to be read
     * @param i_name letter case included
     * @param i_value as VornToolsCADDOCProperties takes it
     * @param i_create_if_empty 0: an empty value makes nothing and gives E_FAIL
     * @param o_created 0 when a property of that name existed, else 1, also on failure
     * @return S_OK, or E_FAIL for an empty name, when the reference is stored elsewhere, when the value does not fit
     * and when what is there cannot be read: nothing gets a second property of a name. An attribute and a set made on
     * the way stay; the next call finds them
     */
    static HRESULT createMaroInstanceProperty(CATIProduct* ipi_instance, const EnumPropertyType& i_type,
                                              const CATUnicodeString& i_name, const CATUnicodeString& i_value,
                                              unsigned char i_create_if_empty, unsigned char& o_created);
    /**
     * Updates a property.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param i_type how the value is to be read
     * @param i_name letter case included
     * @param i_value as VornToolsCADDOCProperties takes it
     * @return S_OK; E_FAIL when there is none of that name, or the value does not fit
     */
    static HRESULT updateMaroInstanceProperty(CATIProduct* ipi_instance, const EnumPropertyType& i_type,
                                              const CATUnicodeString& i_name, const CATUnicodeString& i_value);

    /**
     * The properties, each a CATICkeParm.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param op_properties deleted by the caller; empty for an instance without properties, null on failure
     * @return E_FAIL when they cannot be read
     */
    static HRESULT getAllMaroInstanceProperties(CATIProduct* ipi_instance,
                                                CATListValCATBaseUnknown_var*& op_properties);
    /**
     * The properties in the order of their names, compared byte by byte; equal names keep their order.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param op_properties as getAllMaroInstanceProperties gives them
     * @return S_OK; E_FAIL when they cannot be read
     */
    static HRESULT getAllMaroInstancePropertiesOrderedByName(CATIProduct* ipi_instance,
                                                             CATListValCATBaseUnknown_var*& op_properties);
    /**
     * The properties as two parallel lists.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param o_names in the order of the set; empty on failure
     * @param o_values a real number has up to 16 digits and is in the MKS unit, a truth value is "1" or "0", a property
     * without a value is empty
     * @return S_OK; E_FAIL when they cannot be read
     */
    static HRESULT getAllMaroInstancePropertiesNamesAndValues(CATIProduct* ipi_instance,
                                                              CATListValCATUnicodeString& o_names,
                                                              CATListValCATUnicodeString& o_values);

    /**
     * Reads one property. A real number has up to six digits.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param i_name letter case included
     * @param o_found 0 when there is none of that name, which is S_OK; type and value are then PropertyString and
     * empty, as on failure
     * @param o_type what the property holds
     * @param o_value text of the value
     * @return S_OK; E_FAIL when the properties cannot be read
     */
    static HRESULT getAttribute(CATIProduct* ipi_instance, const CATUnicodeString& i_name, unsigned char& o_found,
                                EnumPropertyType& o_type, CATUnicodeString& o_value);
    /**
     * Writes one property, and makes it when there is none.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param i_name letter case included
     * @param i_type what the property holds
     * @param i_value as VornToolsCADDOCProperties takes it
     * @return S_OK; E_FAIL, and the property keeps its value, when the value is no such number or the property is of
     * another type; making one fails as createMaroInstanceProperty does
     */
    static HRESULT setAttribute(CATIProduct* ipi_instance, const CATUnicodeString& i_name,
                                const EnumPropertyType& i_type, const CATUnicodeString& i_value);

    /**
     * Replaces the text behind the integration's lines of the instance description. Kept because mappings rely on it:
     * of those lines only identities, "BrokenIcon" and the ignore marker stay.
     * @param ipi_instance null gives E_INVALIDARG, unreported
     * @param i_mapping the new text; empty: only those lines stay
     * @return S_OK; E_FAIL when the reference is stored elsewhere, and, reported, when the description cannot be read
     * or is refused
     */
    static HRESULT updateDescriptionInstMapping(CATIProduct* ipi_instance, const CATUnicodeString& i_mapping);

private:
    friend struct VornToolsInstancePropertyTestAccess;

    /** The set of properties in a list of components, with a reference for the caller; null when there is none. */
    static CATICkeParameterSet* getUserInstancePropertiesParameterSet(CATISpecAttrAccess* ipi_access,
                                                                      CATISpecAttrKey* ipi_key);
    /** The first parameter of a name, with a reference for the caller; null when there is none. */
    static CATICkeParm* getParameter(CATICkeParameterSet* ipi_set, const CATUnicodeString& i_name);
    /** The letter of a type; "s" for an unknown one. */
    static CATUnicodeString propertyTypeToString(EnumPropertyType i_type);
};

#endif
