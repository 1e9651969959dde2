#include "foundation/DynamicLibrary.h"

#include <cstring>
#include <string>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace vorntools {

using Function = void (*)();

#if defined(_WIN32)

void* loadLibrary(const char* i_name) {
    const std::wstring name(i_name, i_name + std::strlen(i_name));
    return LoadLibraryW((name + L".dll").c_str());
}

Function functionOf(void* ip_library, const char* i_name) {
    const FARPROC found = GetProcAddress(static_cast<HMODULE>(ip_library), i_name);
    Function function = nullptr;
    static_assert(sizeof function == sizeof found, "both are the address of a function");
    std::memcpy(&function, &found, sizeof function);
    return function;
}

#else

void* loadLibrary(const char* i_name) { return dlopen((std::string(i_name) + ".so").c_str(), RTLD_NOW | RTLD_LOCAL); }

Function functionOf(void* ip_library, const char* i_name) {
    void* const p_found = dlsym(ip_library, i_name);
    Function function = nullptr;
    static_assert(sizeof function == sizeof p_found, "both are the address of a function");
    std::memcpy(&function, &p_found, sizeof function);
    return function;
}

#endif

} // namespace vorntools
