#include "embedded/tables/CellTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace embedded {

namespace {

constexpr long long kSecondsOfDay = 86400;

std::string plainNumber(double value, char decimalMark) {
    if (!std::isfinite(value)) return "#NUM!";
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.15g", value + 0.0); // no sign in front of zero
    std::string text = buffer.data();
    std::replace_if(
        text.begin(), text.end(), [](char one) { return one == ',' || one == '.'; }, decimalMark);
    return text;
}

/** Year-month-day of a day in the Gregorian calendar, counted from 0000-03-01, where leap days end the years. */
std::string civilDate(long long day) {
    const long long era = day / 146097;
    const long long dayOfEra = day % 146097;
    const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long month = (5 * dayOfYear + 2) / 153;
    const int monthOfYear = static_cast<int>(month < 10 ? month + 3 : month - 9);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04lld-%02d-%02d", yearOfEra + era * 400 + (monthOfYear <= 2 ? 1 : 0),
                  monthOfYear, static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1));
    return text.data();
}

std::string dateText(long long day, bool since1904) {
    constexpr long long from1904 = 695361;
    constexpr long long from1900 = 693900; // 1899-12-31
    constexpr long long dayThatWasNot = 60;
    if (since1904) return civilDate(from1904 + day);
    if (day == dayThatWasNot) return "1900-02-29";
    return civilDate(from1900 + day - (day > dayThatWasNot ? 1 : 0));
}

std::string timeText(long long second) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", static_cast<int>(second / 3600),
                  static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
    return text.data();
}

/** Whether brackets hold hours, minutes or seconds that count on beyond a day, and no colour or language. */
bool isElapsedTime(std::string_view inBrackets) {
    return !inBrackets.empty() && inBrackets.find_first_not_of("hmsHMS") == std::string_view::npos;
}

/** The letters of a code that stand for parts of a date or time, each run of one letter once; "e" stands for an elapsed
 * time. What is quoted or escaped counts for nothing. */
std::string partsOf(std::string_view code) {
    std::string parts;
    for (std::size_t i = 0; i < code.size() && code[i] != ';'; ++i) {
        const char letter = static_cast<char>(code[i] | 0x20);
        if (code[i] == '"') {
            i = std::min(code.find('"', i + 1), code.size());
        } else if (code[i] == '[') {
            const std::size_t end = std::min(code.find(']', i), code.size());
            if (isElapsedTime(code.substr(i + 1, end - i - 1))) parts += 'e';
            i = end;
        } else if (code[i] == '\\' || code[i] == '_' || code[i] == '*') {
            ++i;
        } else if (code.substr(i, 5) == "AM/PM") {
            i += 4;
        } else if (std::string_view("ymdhs").find(letter) != std::string_view::npos &&
                   (parts.empty() || parts.back() != letter)) {
            parts += letter;
        }
    }
    return parts;
}

} // namespace

NumberKind kindOfFormat(int number) {
    if (number == 22) return NumberKind::dateAndTime;
    if ((number >= 14 && number <= 17) || (number >= 27 && number <= 31) || number == 36 ||
        (number >= 50 && number <= 58))
        return NumberKind::date;
    const bool isTime =
        (number >= 18 && number <= 21) || (number >= 32 && number <= 35) || number == 45 || number == 47;
    return isTime ? NumberKind::time : NumberKind::number;
}

NumberKind kindOfFormat(std::string_view code) {
    const std::string parts = partsOf(code);
    bool isDate = false;
    bool isTime = false;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i] == 'e') return NumberKind::number;
        // Between hours and seconds the letter of months stands for minutes.
        const bool isMinutes =
            parts[i] == 'm' && ((i > 0 && parts[i - 1] == 'h') || (i + 1 < parts.size() && parts[i + 1] == 's'));
        (isMinutes || parts[i] == 'h' || parts[i] == 's' ? isTime : isDate) = true;
    }
    if (isDate) return isTime ? NumberKind::dateAndTime : NumberKind::date;
    return isTime ? NumberKind::time : NumberKind::number;
}

std::string numberText(double value, NumberKind kind, const NumberRules& rules) {
    const double firstDay = rules.since1904 || kind == NumberKind::time ? 0 : 1;
    const double behindLastDay = rules.since1904 ? 2957004 : 2958466; // 10000-01-01
    if (kind == NumberKind::number || !(value >= firstDay) || !(value < behindLastDay))
        return plainNumber(value, rules.decimalMark);
    const long long seconds = std::llround(value * static_cast<double>(kSecondsOfDay));
    const std::string time = timeText(seconds % kSecondsOfDay);
    if (kind == NumberKind::time) return time;
    const std::string date = dateText(seconds / kSecondsOfDay, rules.since1904);
    return kind == NumberKind::date ? date : date + " " + time;
}

std::string booleanText(bool value) { return value ? "TRUE" : "FALSE"; }

} // namespace embedded
