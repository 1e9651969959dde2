#ifndef EMBEDDED_PRODUCT_HABITS_H
#define EMBEDDED_PRODUCT_HABITS_H

#include "ExportedByCatia.h"

namespace embedded {

/** What products do where nobody has published it; the usual way at first. */
struct ProductHabits {
    /** In visualisation a product tells neither names nor paths of its shapes, that of the master shape included. */
    bool picturesAreSilent = false;
    /** A root product has no instance name to tell; otherwise an empty one. */
    bool rootsRefuseInstanceName = false;
    /** A product without children gives no list of them; otherwise an empty one. */
    bool childlessGiveNoList = false;
    /** Instance names and part numbers that users may not type are refused: empty ones, those with "!" or ":", those
     * that end with a blank. */
    bool oddNamesAreRefused = false;
};
/** The session's own. */
ExportedByCatia ProductHabits& productHabits();

} // namespace embedded

#endif
