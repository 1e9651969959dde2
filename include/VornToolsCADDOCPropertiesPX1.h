#ifndef VornToolsCADDOCPropertiesPX1_H
#define VornToolsCADDOCPropertiesPX1_H

#include "VornToolsCADDOCProperties.h"

/**
 * Writes a reference's properties through the item of the platform's own PDM connection, the source included.
 * VornToolsCADDOCProperties::getInstance makes it where the environment says that there is such a connection.
 *
 * @par Example
 * @snippet properties.cpp VornToolsCADDOCPropertiesPX1
 */
class ExportedByVornTools VornToolsCADDOCPropertiesPX1 : public VornToolsCADDOCProperties {
public:
    /** "VornToolsCADDOCPropertiesPX1::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * Writes a part number, then the named properties except "partNumber".
     * @param ipi_product its item takes the properties; null is reported
     * @param i_part_number written first
     * @param i_names as for setReferenceProperties
     * @param i_values parallel to i_names
     * @return S_OK; E_FAIL when one of them was refused, which is reported; the others are written all the same
     */
    HRESULT setProductProperties(CATIProduct* ipi_product, CATUnicodeString i_part_number,
                                 const CATListValCATUnicodeString& i_names, const CATListValCATUnicodeString& i_values);
    /**
     * Writes the named properties except "partNumber".
     * @param ipi_product its item takes the properties; null is reported
     * @param i_names as for setReferenceProperties
     * @param i_values parallel to i_names
     * @return S_OK; E_FAIL when one of them was refused, which is reported; the others are written all the same
     */
    HRESULT setProductProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                 const CATListValCATUnicodeString& i_values);
    /**
     * Writes the properties to the item, the part number and the source included.
     * @param ipi_product its item takes the properties
     * @param i_names letter case included
     * @param i_values parallel to i_names
     * @return S_OK; E_FAIL when one of them was refused, which is reported; the others are written all the same
     */
    HRESULT setReferenceProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                   const CATListValCATUnicodeString& i_values) override;
    /**
     * Writes the properties to the item, the part number left out.
     * @param ipi_product its item takes the properties
     * @param i_names letter case included
     * @param i_values parallel to i_names
     * @return as setReferenceProperties
     */
    HRESULT setReferencePropertiesForForeignFile(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                                 const CATListValCATUnicodeString& i_values) override;
    /**
     * Writes the part number to the item.
     * @param ipi_product its item takes the part number
     * @param i_part_number as it is to be
     * @return S_OK; E_FAIL, reported, when it was refused or there is no item
     */
    HRESULT updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) override;

private:
    friend class VornToolsCADDOCProperties;
    VornToolsCADDOCPropertiesPX1() = default;
};

#endif
