#ifndef VornToolsCADDOCPropertiesDflt_H
#define VornToolsCADDOCPropertiesDflt_H

#include "VornToolsCADDOCProperties.h"

/** Writes a reference's properties through the product itself. The source is not written. */
class ExportedByVornTools VornToolsCADDOCPropertiesDflt : public VornToolsCADDOCProperties {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    HRESULT setReferenceProperties(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                   const CATListValCATUnicodeString& i_values) override;
    HRESULT setReferencePropertiesForForeignFile(CATIProduct* ipi_product, const CATListValCATUnicodeString& i_names,
                                                 const CATListValCATUnicodeString& i_values) override;
    HRESULT updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) override;

private:
    friend class VornToolsCADDOCProperties;
    VornToolsCADDOCPropertiesDflt() = default;
};

#endif
