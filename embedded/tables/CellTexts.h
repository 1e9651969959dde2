// Texts of a spreadsheet's cells, the same for both kinds of files.

#ifndef EMBEDDED_TABLES_CELL_TEXTS_H
#define EMBEDDED_TABLES_CELL_TEXTS_H

#include <string>
#include <string_view>

namespace embedded {

/** What a number in a cell stands for. */
enum class NumberKind { number, date, time, dateAndTime };

/** By the number of a format that files do not spell out. */
NumberKind kindOfFormat(int number);
/** By the code of a format, such as "dd/mm/yyyy"; its first section decides. A time that counts beyond a day, such as
 * "[h]:mm", is a number. */
NumberKind kindOfFormat(std::string_view code);

/** How a workbook's numbers become texts. */
struct NumberRules {
    char decimalMark = '.';
    bool since1904 = false; ///< what dates count from; else 1900, whose February has 29 days there
};

/** Up to fifteen digits; dates as year-month-day, times as hours:minutes:seconds. A date that the calendar does not
 * have is a number. */
std::string numberText(double value, NumberKind kind, const NumberRules& rules);
std::string booleanText(bool value);

} // namespace embedded

#endif
