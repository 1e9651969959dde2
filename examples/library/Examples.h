#ifndef EXAMPLES_LIBRARY_EXAMPLES_H
#define EXAMPLES_LIBRARY_EXAMPLES_H

// One example a class: each stands in the reference on its class's page, and all of them run in the tests.

#include "CATIProduct.h"
#include "CATUnicodeString.h"

#include <memory>

// What the examples have in common -----------------------------------------------------------------------------------

/** Gives back a reference that a call left to its caller. */
struct Release {
    void operator()(CATBaseUnknown* object) const { object->Release(); }
};
using ProductPtr = std::unique_ptr<CATIProduct, Release>;

/** The product in the active document that shows a file; null when there is none. */
ProductPtr productShowing(const char* fileName);
/** What stands behind the last separator of a path. */
CATUnicodeString fileNameOf(const CATUnicodeString& path);

// bytes.cpp
void useVornToolsString();
void useVornToolsVector();

// session.cpp
void useVornCache();
void useVornToolsCommon();
void useVornToolsSwitchMgt();
void useVornToolsWorkModeServices();

// links.cpp
void useVornToolsDocument();
void useVornToolsDocumentFile();
void useVornToolsDocumentLinks();
void useVornToolsFolderMemory();
void useVornToolsLink();
void useVornToolsLinks();

// nodes.cpp
void useVornToolsDummyPart();
void useVornToolsExportAsReference();
void useVornToolsIgnoreNodes();
void useVornToolsMask();
void useVornToolsScenes();

// properties.cpp
void useVornToolsAssyConfig();
void useVornToolsCADDOCProperties();
void useVornToolsCADDOCPropertiesDflt();
void useVornToolsCADDOCPropertiesPX1();
void useVornToolsInstanceProperty();
void useVornToolsLibraryLoader();
void useVornToolsSpreadsheet();

#endif
