#ifndef ExportedByVornTools_H
#define ExportedByVornTools_H

// Linkage of the exported classes.
#if defined(_WIN32)
#if defined(VornTools_EXPORTS)
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
