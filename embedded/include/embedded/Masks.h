#ifndef EMBEDDED_MASKS_H
#define EMBEDDED_MASKS_H

#include "ExportedByCatia.h"
#include "embedded/Session.h"

namespace embedded {

/** The mask that exactly this product shows: its reference and each instance have their own. 0 for none. */
ExportedByCatia int maskOf(const Product& product);
/** From 1 to 10; 0 takes the mask off. Any other value changes nothing. */
ExportedByCatia void setMask(const Product& product, int mask);
/** From now on the session has no mask manager. */
ExportedByCatia void withoutMaskManager();

} // namespace embedded

#endif
