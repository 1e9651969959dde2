#ifndef TESTS_SUPPORT_WORKBOOK_H
#define TESTS_SUPPORT_WORKBOOK_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/** A number in some bytes, the lowest one first. */
std::string littleEndian(std::uint64_t value, int size);

/** A zip archive of the given names and contents, stored as they are. */
std::string archiveOf(const std::vector<std::pair<std::string, std::string>>& parts);

/** Rows of texts of one sheet. */
using WorkbookSheet = std::vector<std::vector<std::string>>;

/** The bytes of an xlsx file with the given sheets. Texts stand in it as they are: no markup. */
std::string workbook(const std::vector<WorkbookSheet>& sheets);

/** The same from the content of each sheet's XML part. */
std::string workbookOfParts(const std::vector<std::string>& sheetParts);

/** A compound file with one stream. */
std::string compoundFile(const std::string& name, const std::string& content);
/** A record of the stream "Workbook" of an xls file. */
std::string xlsRecord(unsigned type, const std::string& data);
/** The record that begins the workbook (5), a sheet of cells (0x10) or a chart (0x20). */
std::string xlsBegin(unsigned content, unsigned version = 0x600);
/** Such a stream from the records of the workbook and of its sheets. */
std::string xlsStream(const std::string& workbook, const std::vector<std::string>& sheets, unsigned version = 0x600);

#endif
