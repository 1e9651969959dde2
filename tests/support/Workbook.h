#ifndef TESTS_SUPPORT_WORKBOOK_H
#define TESTS_SUPPORT_WORKBOOK_H

#include <string>
#include <utility>
#include <vector>

/** A zip archive of the given names and contents, stored as they are. */
std::string archiveOf(const std::vector<std::pair<std::string, std::string>>& parts);

/** Rows of texts of one sheet. */
using WorkbookSheet = std::vector<std::vector<std::string>>;

/** The bytes of an xlsx file with the given sheets. Texts stand in it as they are: no markup. */
std::string workbook(const std::vector<WorkbookSheet>& sheets);

/** The same from the content of each sheet's XML part. */
std::string workbookOfParts(const std::vector<std::string>& sheetParts);

#endif
