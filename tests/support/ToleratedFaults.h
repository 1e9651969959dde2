#ifndef TESTS_SUPPORT_TOLERATED_FAULTS_H
#define TESTS_SUPPORT_TOLERATED_FAULTS_H

#include <string>

/** What a method did in spite of a fault. */
struct SurvivedFault {
    std::string method;
    std::string call;
    std::string flavour;     ///< in one word
    std::string differences; ///< from the undisturbed run, blanks between the words; empty when there are none
};

/** Why tests/support/tolerated_faults.txt does not allow it; empty when it does. Notes which words are needed: when the
 * whole suite ran and passed, one that was not fails it. */
std::string objectionTo(const SurvivedFault& fault);

/** Adds the method to the record of swept ones, when the environment variable VORNTOOLS_SWEPT names a file for it. */
void recordSweepOf(const std::string& method);

#endif
