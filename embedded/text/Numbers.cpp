#include "embedded/text/Numbers.h"

#include "embedded/Session.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace embedded {

namespace {

/** Not every runtime library spells these alike. */
const char* nameOfSpecial(double value) {
    if (std::isnan(value)) return "nan";
    return value > 0 ? "inf" : "-inf";
}

} // namespace

char sessionDecimalMark() { return Session::current().environment().decimalSeparator == "," ? ',' : '.'; }

bool isRealFormat(const char* format) {
    if (!format) return false;
    int found = 0;
    for (const char* at = format; *at; ++at) {
        if (*at != '%') continue;
        if (*++at == '%') continue;
        at += std::strspn(at, "-+ #0123456789.");
        if (*at == 'l') ++at;
        if (!*at || !std::strchr("eEfFgG", *at)) return false;
        ++found;
    }
    return found == 1;
}

std::string realText(double value, const char* format) {
    if (!isRealFormat(format)) return std::string();
    if (!std::isfinite(value)) return nameOfSpecial(value);
    const int length = std::snprintf(nullptr, 0, format, value);
    if (length <= 0) return std::string();
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(&text[0], text.size(), format, value);
    text.pop_back();
    if (sessionDecimalMark() != '.') std::replace(text.begin(), text.end(), '.', sessionDecimalMark());
    return text;
}

std::string shortestText(double value) {
    std::string text;
    for (const char* const format : {"%.15g", "%.16g", "%.17g"}) {
        double back = 0.0;
        std::size_t rest = 0;
        text = realText(value, format);
        if (!std::isfinite(value) ||
            (readReal(text, sessionDecimalMark(), back, rest) && !(back < value) && !(back > value)))
            break;
    }
    return text;
}

std::string shownText(double value, int decimals) {
    if (!std::isfinite(value)) return nameOfSpecial(value);
    std::string text = realText(value, ("%." + std::to_string(decimals) + "f").c_str());
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == sessionDecimalMark()) text.pop_back();
    return text == "-0" ? "0" : text;
}

bool readReal(const std::string& text, char decimalMark, double& value, std::size_t& rest) {
    std::string plain = text.substr(0, text.find('\0'));
    // The other mark ends a number: it becomes a character that none contains.
    for (char& character : plain) {
        if (character == decimalMark)
            character = '.';
        else if (character == '.')
            character = '\x01';
    }
    char* end = nullptr;
    errno = 0;
    const double read = std::strtod(plain.c_str(), &end);
    rest = static_cast<std::size_t>(end - plain.c_str());
    const bool tooLarge = errno == ERANGE && (read > 1.0 || read < -1.0);
    if (rest == 0 || tooLarge) return false;
    value = read;
    return true;
}

} // namespace embedded
