#ifndef TESTS_SUPPORT_WORKBOOK_H
#define TESTS_SUPPORT_WORKBOOK_H

#include <string>
#include <vector>

/** Rows of texts of one sheet. */
using WorkbookSheet = std::vector<std::vector<std::string>>;

/** The bytes of an xlsx file with the given sheets. Texts stand in it as they are: no markup. */
std::string workbook(const std::vector<WorkbookSheet>& sheets);

#endif
