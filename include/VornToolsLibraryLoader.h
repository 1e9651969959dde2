#ifndef VornToolsLibraryLoader_H
#define VornToolsLibraryLoader_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;
class CATListValCATUnicodeString;

/**
 * Finds the optional library that reads electrical parameters: once a process, also when it is not there. What was
 * loaded stays loaded.
 *
 * @par Example
 * @snippet properties.cpp VornToolsLibraryLoader
 */
class ExportedByVornTools VornToolsLibraryLoader {
public:
    /** "VornToolsLibraryLoader::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** Appends the electrical parameters of a product to a list and answers with a result code. */
    typedef HRESULT (*ElectricalParametersFunc)(CATIProduct*, CATListValCATUnicodeString*);

    /**
     * Loads the platform's electrical library, on first call.
     * @return handle as the system gives it, owned by the class; null when the library is not installed
     */
    static void* getElectricalInterfacesModule();
    /**
     * Loads the optional library, on first call; VornToolsCADDOCProperties::getElectricalParameters calls what it
     * offers.
     * @return the function that reads electrical parameters; null without one of the two libraries or without the
     * function
     */
    static ElectricalParametersFunc getElectricalParametersFuncPtr();

private:
    friend struct VornToolsLibraryLoaderTestAccess;

    static void* _electrical_interfaces_module;
    static bool _electrical_interfaces_module_initialized;
    static ElectricalParametersFunc _electrical_parameters_func;
    static bool _electrical_parameters_func_initialized;
};

#endif
