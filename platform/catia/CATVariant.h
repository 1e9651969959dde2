#ifndef CATVariant_H
#define CATVariant_H

/** Automation Boolean: 0 false, anything else true; -1 is the canonical true. */
typedef short CAT_VARIANT_BOOL;

#endif
