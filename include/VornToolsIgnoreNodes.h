#ifndef VornToolsIgnoreNodes_H
#define VornToolsIgnoreNodes_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;
class TYPVectorCATUnicodeString;

/**
 * Recognises ignore nodes: components that the PDM's save and load leave out, told by a prefix of their names (the
 * prefixes stand in a configuration file, one a line) or by the marker in their instance description.
 * docs/special-nodes.md tells when which counts.
 *
 * Answers are 1 for yes; an operation on a null product fails. An answer is 0 whenever the code is negative.
 *
 * @par Example
 * @snippet nodes.cpp VornToolsIgnoreNodes
 */
class ExportedByVornTools VornToolsIgnoreNodes {
public:
    /** "VornToolsIgnoreNodes::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** What isAnIgnoreNode looks at, in this order. Any other value is an element. */
    enum EnumNodeKind {
        NodeKindElement = 0,        ///< description, part number, file name, instance name
        NodeKindActiveDocument = 1, ///< part number, file name; without prefixes as an element
        NodeKindBrokenIcon = 2,     ///< description, instance name
        NodeKindComponent = 3       ///< description, part number, instance name
    };

    /** Loads the prefixes. Without a usable file only the instance descriptions count, for the life of the object. */
    VornToolsIgnoreNodes();
    /** Forgets the prefixes. */
    ~VornToolsIgnoreNodes();
    VornToolsIgnoreNodes(const VornToolsIgnoreNodes&) = delete;
    VornToolsIgnoreNodes& operator=(const VornToolsIgnoreNodes&) = delete;

    /**
     * Starts over, as the constructor does.
     * @return S_OK; E_FAIL, journalled, without a file of prefixes, and for one that cannot be read or has none
     */
    HRESULT initClassVariables();

    /**
     * Whether a product is an ignore node. While neither prefixes nor descriptions count nothing is, be the product
     * null.
     * @param product null is reported
     * @param fileName file name of the product's document, without directory
     * @param mode an EnumNodeKind: which of the product's texts are looked at
     * @param result 1 or 0
     * @return S_OK; E_FAIL, reported, for a null product and for a broken icon that does not tell its name
     */
    HRESULT isAnIgnoreNode(CATIProduct* product, CATUnicodeString fileName, int mode, unsigned char& result);
    /**
     * Whether an ancestor of a product is an ignore node; the product itself does not count.
     * @param product null is reported
     * @param result 1 or 0
     * @return S_OK; E_FAIL, reported, for a null product; else the code of what failed on the way to the root
     */
    HRESULT hasAnIgnoreNode(CATIProduct* product, unsigned char& result);
    /**
     * Marks a product's instance as an ignore node, in the description that VornToolsCommon::getInstanceDescription
     * reads.
     * @param product what keeps its instance from being marked is reported, no more
     * @return S_OK, also when the instance was not marked; E_FAIL, reported, for a null product, and for want of memory
     */
    HRESULT updateInstanceDescription(CATIProduct* product);

private:
    friend struct VornToolsIgnoreNodesTestAccess;

    HRESULT loadPrefixIgnoreNodes();
    HRESULT isStartedByPrefix(CATUnicodeString text, unsigned char& result);
    HRESULT isActiveDocumentAnIgnoreNode(CATIProduct* product, CATUnicodeString fileName, unsigned char& result);
    HRESULT isBrokenIconAnIgnoreNode(CATIProduct* product, const CATUnicodeString& description, unsigned char& result);
    HRESULT isComponentAnIgnoreNode(CATIProduct* product, const CATUnicodeString& description, unsigned char& result);
    HRESULT setFormatInstanceDescription(CATUnicodeString& description);

    unsigned char m_prefixesManaged;
    unsigned char m_instanceDescriptionManaged;
    TYPVectorCATUnicodeString* m_prefixes; ///< owned
};

#endif
