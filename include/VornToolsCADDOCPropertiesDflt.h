#ifndef VornToolsCADDOCPropertiesDflt_H
#define VornToolsCADDOCPropertiesDflt_H

#include "VornToolsCADDOCProperties.h"

/**
 * Writes a reference's properties through the product itself. The source is not written.
 * VornToolsCADDOCProperties::getInstance makes it where the environment says that the platform has no PDM connection of
 * its own.
 *
 * @par Example
 * @snippet properties.cpp VornToolsCADDOCPropertiesDflt
 */
class ExportedByVornTools VornToolsCADDOCPropertiesDflt : public VornToolsCADDOCProperties {
public:
    /** "VornToolsCADDOCPropertiesDflt::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * Writes the properties through the product, the part number included; "source" is journalled only.
     * @param ipi_product its reference takes the properties
     * @param i_names letter case included
     * @param i_values parallel to i_names
     * @return S_OK; E_FAIL when one of them was refused, which is reported; the others are written all the same
     */
    HRESULT setReferenceProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                   const CATListValCATUnicodeString& i_values) override;
    /**
     * Writes the properties through the product, the part number left out.
     * @param ipi_product its reference takes the properties
     * @param i_names letter case included
     * @param i_values parallel to i_names
     * @return as setReferenceProperties
     */
    HRESULT setReferencePropertiesForForeignFile(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                                 const CATListValCATUnicodeString& i_values) override;
    /**
     * Writes the part number of the reference and looks whether it was taken.
     * @param ipi_product its reference takes the part number
     * @param i_part_number the platform refuses some, which is reported
     * @return S_OK; E_FAIL, reported, when it was refused
     */
    HRESULT updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) override;

private:
    friend class VornToolsCADDOCProperties;
    VornToolsCADDOCPropertiesDflt() = default;
};

#endif
