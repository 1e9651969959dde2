#ifndef VornToolsAssyConfig_H
#define VornToolsAssyConfig_H

#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/** Recognises products that carry an assembly configuration: the user properties "MaroAssyConfigItemRevUID",
 * "MaroAssyConfigDatasetUID", "MaroAssyConfigNamedRefUID" and "MaroAssyConfigFileName". */
class ExportedByVornTools VornToolsAssyConfig {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** 1 when a product has one of the four properties. Each output is the value of its property, empty without it. */
    static unsigned char hasMaroAssyConfigProperty(CATIProduct* ipi_product, CATUnicodeString& o_itemrev_uid,
                                                   CATUnicodeString& o_dataset_uid, CATUnicodeString& o_named_ref_uid,
                                                   CATUnicodeString& o_file_name);
    /** 1 when a product has the identifier of a dataset: it is the root of the configuration. */
    static unsigned char isAssyConfigRootProduct(CATIProduct* ipi_product);
};

#endif
