#ifndef VornToolsLibraryLoader_H
#define VornToolsLibraryLoader_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;
class CATListValCATUnicodeString;

/** Finds the optional library that reads electrical parameters: once a process, also when it is not there. What was
 * loaded stays loaded. */
class ExportedByVornTools VornToolsLibraryLoader {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    typedef HRESULT (*ElectricalParametersFunc)(CATIProduct*, CATListValCATUnicodeString*);

    /** Handle of the platform's electrical library, as the system gives it; null when it is not installed. */
    static void* getElectricalInterfacesModule();
    /** The function that reads electrical parameters; null without one of the two libraries or without the function. */
    static ElectricalParametersFunc getElectricalParametersFuncPtr();

private:
    friend struct VornToolsLibraryLoaderTestAccess;

    static void* _electrical_interfaces_module;
    static bool _electrical_interfaces_module_initialized;
    static ElectricalParametersFunc _electrical_parameters_func;
    static bool _electrical_parameters_func_initialized;
};

#endif
