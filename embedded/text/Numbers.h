#ifndef EMBEDDED_TEXT_NUMBERS_H
#define EMBEDDED_TEXT_NUMBERS_H

#include <cstddef>
#include <string>

namespace embedded {

/** "." or ",": what the session writes between the whole and the decimal places. */
char sessionDecimalMark();

/** Whether a printf format has one conversion, of a real number. */
bool isRealFormat(const char* format);

/** A number in a printf format, with the session's decimal mark; empty when the format is not fit for one. */
std::string realText(double value, const char* format);

/** A number in as few digits as it takes to read the same number back, with the session's decimal mark. */
std::string shortestText(double value);

/** A number with so many decimals, as far as they are no zeros, with the session's decimal mark. */
std::string shownText(double value, int decimals);

/**
 * Reads the number at the beginning of a text; blanks may stand in front.
 * @param rest where the number ends. @return false when there is none or when it is too large
 */
bool readReal(const std::string& text, char decimalMark, double& value, std::size_t& rest);

} // namespace embedded

#endif
