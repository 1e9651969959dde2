#ifndef ExportedByCatia_H
#define ExportedByCatia_H

// Linkage of everything the platform offers. On a workstation the platform's own headers stand in the place of
// this folder; here the in-memory platform of embedded/ is one shared library behind the same names. Proposed: whole;
// the published headers have a macro a module.
#if defined(_WIN32)
#if defined(VORN_PLATFORM_BUILD)
#define ExportedByCatia __declspec(dllexport)
#else
#define ExportedByCatia __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define ExportedByCatia __attribute__((visibility("default")))
#else
#define ExportedByCatia
#endif

#if !defined(_WIN32) && !defined(__stdcall)
#define __stdcall
#endif

#endif
