#ifndef CATDataType_H
#define CATDataType_H

#if defined(_WIN32)
typedef long CATLONG32;
#else
typedef int CATLONG32;
#endif
static_assert(sizeof(CATLONG32) == 4, "the platform's counts are 32 bits wide");

typedef unsigned short CATUC2Bytes;

#endif
