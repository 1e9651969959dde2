#ifndef ExportedByVornTools_H
#define ExportedByVornTools_H

// Linkage of the exported classes. Who builds the library says so by a macro: the platform's own build tools define
// __VornTools, the module's name behind two underscores, CMake defines VornTools_EXPORTS.
#if defined(_WINDOWS_SOURCE) || defined(_WIN32)
#if defined(__VornTools) || defined(VornTools_EXPORTS)
#define ExportedByVornTools __declspec(dllexport)
#else
#define ExportedByVornTools __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define ExportedByVornTools __attribute__((visibility("default")))
#else
#define ExportedByVornTools
#endif

#endif
