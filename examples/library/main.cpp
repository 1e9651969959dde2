// Runs the examples, each in a fresh session of the in-memory platform: library_examples, in the folder that run.sh
// makes. Inside CATIA the session is the user's.

#include "examples/library/Examples.h"

#include "UTILFile.h"
#include "VornToolsCommon.h"
#include "VornToolsWorkModeServices.h"

#include "embedded/Accounting.h"
#include "embedded/Session.h"
#include "embedded/SessionFile.h"

#include <cstdio>

namespace {

struct Example {
    const char* name;
    void (*run)();
};
#define EXAMPLE_OF(name)                                                                                               \
    { #name, &use##name }
constexpr Example kExamples[] = {EXAMPLE_OF(VornToolsString),
                                 EXAMPLE_OF(VornToolsVector),
                                 EXAMPLE_OF(VornCache),
                                 EXAMPLE_OF(VornToolsCommon),
                                 EXAMPLE_OF(VornToolsSwitchMgt),
                                 EXAMPLE_OF(VornToolsWorkModeServices),
                                 EXAMPLE_OF(VornToolsDocument),
                                 EXAMPLE_OF(VornToolsDocumentFile),
                                 EXAMPLE_OF(VornToolsDocumentLinks),
                                 EXAMPLE_OF(VornToolsFolderMemory),
                                 EXAMPLE_OF(VornToolsLink),
                                 EXAMPLE_OF(VornToolsLinks),
                                 EXAMPLE_OF(VornToolsDummyPart),
                                 EXAMPLE_OF(VornToolsExportAsReference),
                                 EXAMPLE_OF(VornToolsIgnoreNodes),
                                 EXAMPLE_OF(VornToolsMask),
                                 EXAMPLE_OF(VornToolsScenes),
                                 EXAMPLE_OF(VornToolsAssyConfig),
                                 EXAMPLE_OF(VornToolsCADDOCProperties),
                                 EXAMPLE_OF(VornToolsCADDOCPropertiesDflt),
                                 EXAMPLE_OF(VornToolsCADDOCPropertiesPX1),
                                 EXAMPLE_OF(VornToolsInstanceProperty),
                                 EXAMPLE_OF(VornToolsLibraryLoader),
                                 EXAMPLE_OF(VornToolsSpreadsheet)};

/** The gear pump's session with the environment that the examples count on. */
bool prepare(const Example& example) {
    const embedded::SessionFileResult loaded = embedded::loadSession("gear-pump.json");
    if (!loaded.ok) std::fprintf(stderr, "%s\n", loaded.error.c_str());
    embedded::Environment& environment = embedded::Session::current().environment();
    environment.referencePrefix = "STD_";
    environment.configurationDirectory = "data";
    environment.spreadsheetPath = "data/import.txt";
    environment.platformPdmConnection = example.run == &useVornToolsCADDOCPropertiesPX1;
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
    return loaded.ok;
}

} // namespace

ProductPtr productShowing(const char* fileName) {
    CATDocument* document = nullptr;
    CATIProduct* received = nullptr;
    if (FAILED(VornToolsCommon::getActiveCATDocument(document, 0)) ||
        FAILED(VornToolsCommon::getActiveCATIProduct(document, received)))
        return nullptr;
    const ProductPtr root(received);
    unsigned char found = 0;
    VornToolsCommon::getProductInSession(root.get(), fileName, received, found);
    return ProductPtr(received);
}

CATUnicodeString fileNameOf(const CATUnicodeString& path) {
    CATUnicodeString directory, name;
    UTILFile::splitPathAndFileName(path, directory, name);
    return name;
}

int main() {
    for (const Example& example : kExamples) {
        if (!prepare(example)) return 1;
        std::printf("%s\n", example.name);
        const embedded::LiveCounts before = embedded::Accounting::get().live();
        example.run();
        if (embedded::Accounting::get().live() == before) continue;
        std::printf("... does not give back everything\n");
        return 1;
    }
}
