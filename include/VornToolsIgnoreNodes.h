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
 *
 * Answers are 1 for yes; an operation on a null product fails. An answer is 0 whenever the code is negative.
 */
class ExportedByVornTools VornToolsIgnoreNodes {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** What isAnIgnoreNode looks at. Any other value is an element: description, part number, file name, instance. */
    enum EnumNodeKind {
        NodeKindElement = 0,
        NodeKindActiveDocument = 1,
        NodeKindBrokenIcon = 2,
        NodeKindComponent = 3
    };

    /** Loads the prefixes. Without a usable file only the instance descriptions count, for the life of the object. */
    VornToolsIgnoreNodes();
    ~VornToolsIgnoreNodes();
    VornToolsIgnoreNodes(const VornToolsIgnoreNodes&) = delete;
    VornToolsIgnoreNodes& operator=(const VornToolsIgnoreNodes&) = delete;

    /** Starts over, as the constructor does. @return the code of loading the prefixes */
    HRESULT initClassVariables();

    /** @param fileName file name of the product's document, without directory. @param mode an EnumNodeKind */
    HRESULT isAnIgnoreNode(CATIProduct* product, CATUnicodeString fileName, int mode, unsigned char& result);
    /** Whether an ancestor of the product is an ignore node; the product itself does not count. */
    HRESULT hasAnIgnoreNode(CATIProduct* product, unsigned char& result);
    /** Marks the product's instance as an ignore node. S_OK in all cases but a null product and want of memory. */
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
