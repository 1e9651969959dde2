#include "VornToolsLibraryLoader.h"

#include "foundation/DynamicLibrary.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

using namespace vorntools;

const CATUnicodeString VornToolsLibraryLoader::_CteCLASS_NAME("VornToolsLibraryLoader::");

void* VornToolsLibraryLoader::_electrical_interfaces_module = nullptr;
bool VornToolsLibraryLoader::_electrical_interfaces_module_initialized = false;
VornToolsLibraryLoader::ElectricalParametersFunc VornToolsLibraryLoader::_electrical_parameters_func = nullptr;
bool VornToolsLibraryLoader::_electrical_parameters_func_initialized = false;

void* VornToolsLibraryLoader::getElectricalInterfacesModule() {
    const JournalFrame frame(_CteCLASS_NAME, "getElectricalInterfacesModule");
    if (!_electrical_interfaces_module_initialized) {
        _electrical_interfaces_module_initialized =
            guarded([] { _electrical_interfaces_module = loadLibrary("CATElectricalInterfaces"); });
    }
    return _electrical_interfaces_module;
}

VornToolsLibraryLoader::ElectricalParametersFunc VornToolsLibraryLoader::getElectricalParametersFuncPtr() {
    const JournalFrame frame(_CteCLASS_NAME, "getElectricalParametersFuncPtr");
    if (_electrical_parameters_func_initialized) return _electrical_parameters_func;
    // The optional library needs the platform's: without that one it is not even tried.
    const bool is_tried = getElectricalInterfacesModule() != nullptr;
    _electrical_parameters_func_initialized =
        _electrical_interfaces_module_initialized && guarded([&] {
            if (void* const p_optional = is_tried ? loadLibrary("VornAPIOptElectricalInterfaces") : nullptr)
                _electrical_parameters_func = reinterpret_cast<ElectricalParametersFunc>(
                    functionOf(p_optional, "VornAPIOptGetElectricalparameters"));
        });
    return _electrical_parameters_func;
}
