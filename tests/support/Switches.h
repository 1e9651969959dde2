#ifndef TESTS_SUPPORT_SWITCHES_H
#define TESTS_SUPPORT_SWITCHES_H

#include "embedded/Profile.h"

/** Lets the session's platform behave one way or the other, whatever its profile says. */
inline void choose(bool embedded::Switches::*behaviour, bool value) {
    embedded::Switches switches = embedded::switches();
    switches.*behaviour = value;
    embedded::setSwitches(switches);
}

/** The same for all four that concern products. */
inline void chooseForProducts(bool value) {
    for (const auto behaviour : {&embedded::Switches::picturesAreSilent, &embedded::Switches::rootsRefuseInstanceName,
                                 &embedded::Switches::childlessGiveNoList, &embedded::Switches::oddNamesAreRefused})
        choose(behaviour, value);
}

#endif
