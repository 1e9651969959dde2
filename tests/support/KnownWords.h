#ifndef TESTS_SUPPORT_KNOWN_WORDS_H
#define TESTS_SUPPORT_KNOWN_WORDS_H

#include <string>
#include <vector>

// What the library may tell: a letter changed in one of its many texts is seen wherever a test comes by.

/** Checks that the entries of a journal name exported methods. */
void checkJournalNames(const std::vector<std::string>& lines);

/** Checks that error reports stand in tests/support/known_reports.txt. */
void checkReports(const std::vector<std::string>& reports);

#endif
