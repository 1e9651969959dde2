#ifndef VornToolsAssyConfig_H
#define VornToolsAssyConfig_H

#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/**
 * Recognises products that carry an assembly configuration: the user properties "MaroAssyConfigItemRevUID",
 * "MaroAssyConfigDatasetUID", "MaroAssyConfigNamedRefUID" and "MaroAssyConfigFileName". All static.
 *
 * @par Example
 * @snippet properties.cpp VornToolsAssyConfig
 */
class ExportedByVornTools VornToolsAssyConfig {
public:
    /** "VornToolsAssyConfig::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * Reads the configuration that a product carries.
     * @param ipi_product null, or one that cannot be read, has none
     * @param o_itemrev_uid value of its property, empty without it; so are the other outputs, and all of them for a
     * product that cannot be read
     * @param o_dataset_uid the dataset, empty without that property
     * @param o_named_ref_uid the named reference, empty without that property
     * @param o_file_name the file, empty without that property
     * @return 1 when the product has one of the four properties, else 0
     */
    static unsigned char hasMaroAssyConfigProperty(CATIProduct* ipi_product, CATUnicodeString& o_itemrev_uid,
                                                   CATUnicodeString& o_dataset_uid, CATUnicodeString& o_named_ref_uid,
                                                   CATUnicodeString& o_file_name);
    /**
     * Whether a product is the root of a configuration.
     * @param ipi_product null, or one that cannot be read, is none
     * @return 1 when it has the property of the dataset, be that empty, else 0
     */
    static unsigned char isAssyConfigRootProduct(CATIProduct* ipi_product);
};

#endif
