#ifndef CATVariant_H
#define CATVariant_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

class IDispatch;

/** Automation Boolean: 0 false, anything else true; -1 is the canonical true. Proposed: that it stands here. */
typedef short CAT_VARIANT_BOOL;

/** What an automation value holds. */
enum CATVariantType { VT_EMPTY = 0, VT_R8 = 5, VT_DISPATCH = 9 };

/** A value of automation: its type and the value, laid out as on Windows. It owns the object that it holds. */
typedef struct tagVARIANT {
    unsigned short vt;
    unsigned short wReserved1;
    unsigned short wReserved2;
    unsigned short wReserved3;
    union {
        double dblVal;
        IDispatch* pdispVal;
        void* words[2];
    };
} CATVariant;
static_assert(sizeof(CATVariant) == 24 || sizeof(void*) != 8, "values cross the boundary by layout");

/** Gives back what a value holds; the value is then empty. */
ExportedByCatia HRESULT CATVariantClear(CATVariant* ioVariant);

#endif
