#ifndef TESTS_SUPPORT_KNOWN_WORDS_H
#define TESTS_SUPPORT_KNOWN_WORDS_H

#include <string>
#include <vector>

// What the library may tell: a letter changed in one of its many texts is seen wherever a test comes by.

/** Checks that the entries of a journal name exported methods. */
void checkJournalNames(const std::vector<std::string>& lines);

/** Checks that error reports of a sweep stand in tests/support/known_reports.txt. */
void checkReports(const std::vector<std::string>& reports);

/** The running test sweeps a method: it shall meet every report that the list has of it. */
void expectReportsOf(const std::string& method);

/** Checks at the end of a test that it met what was expected: a report that is left out is seen like an odd one. */
void checkExpectedReports();

#endif
