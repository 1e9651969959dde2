#ifndef VornToolsCADDOCPropertiesPX1_H
#define VornToolsCADDOCPropertiesPX1_H

#include "VornToolsCADDOCProperties.h"

/** Writes a reference's properties through the item of the platform's own PDM connection, the source included. */
class ExportedByVornTools VornToolsCADDOCPropertiesPX1 : public VornToolsCADDOCProperties {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** Writes a part number, then the named properties except "partNumber". */
    HRESULT setProductProperties(CATIProduct* ipi_product, CATUnicodeString i_part_number,
                                 const CATListValCATUnicodeString& i_names, const CATListValCATUnicodeString& i_values);
    /** The same without a part number. */
    HRESULT setProductProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                 const CATListValCATUnicodeString& i_values);
    HRESULT setReferenceProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                   const CATListValCATUnicodeString& i_values) override;
    HRESULT setReferencePropertiesForForeignFile(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                                 const CATListValCATUnicodeString& i_values) override;
    HRESULT updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) override;

private:
    friend class VornToolsCADDOCProperties;
    VornToolsCADDOCPropertiesPX1() = default;
};

#endif
