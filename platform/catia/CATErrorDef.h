#ifndef CATErrorDef_H
#define CATErrorDef_H

// Result codes: 32 bits, negative means failure.
#if defined(_WIN32)
typedef long HRESULT;
typedef unsigned long ULONG;
#else
typedef int HRESULT;
typedef unsigned int ULONG;
#endif
static_assert(sizeof(HRESULT) == 4 && sizeof(ULONG) == 4, "result codes and reference counts are 32 bits wide");

#ifndef S_OK
#define S_OK (static_cast<HRESULT>(0))
#define S_FALSE (static_cast<HRESULT>(1))
#define E_NOINTERFACE (static_cast<HRESULT>(0x80004002U))
#define E_POINTER (static_cast<HRESULT>(0x80004003U))
#define E_FAIL (static_cast<HRESULT>(0x80004005U))
#define E_INVALIDARG (static_cast<HRESULT>(0x80070057U))
#define SUCCEEDED(result) (static_cast<HRESULT>(result) >= 0)
#define FAILED(result) (static_cast<HRESULT>(result) < 0)
#endif

#endif
