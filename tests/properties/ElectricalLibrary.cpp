// The two libraries of the electrical parameters, as small as they can be. Built once with the function that
// VornToolsLibraryLoader looks for and once without.

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"

#if defined(_WIN32)
#define TEST_LIBRARY_EXPORT extern "C" __declspec(dllexport)
#else
#define TEST_LIBRARY_EXPORT extern "C"
#endif

class CATIProduct;

#if defined(WITH_FUNCTION)
static bool isBroken = false;

/** From now on the function fails in the middle of its work. */
TEST_LIBRARY_EXPORT void breakDown() { isBroken = true; }

TEST_LIBRARY_EXPORT HRESULT VornAPIOptGetElectricalparameters(CATIProduct* product,
                                                              CATListValCATUnicodeString* parameters) {
    if (!product || !parameters) return E_FAIL;
    parameters->Append("Wire");
    if (isBroken) return E_FAIL;
    parameters->Append("0.5");
    return S_FALSE;
}
#else
TEST_LIBRARY_EXPORT int testLibraryMark() { return 1; }
#endif
