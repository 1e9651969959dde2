// The text of JSON: what stands between it and the values of Json.h and JsonReader.h.
#ifndef EMBEDDED_SESSION_FILE_JSON_TEXT_H
#define EMBEDDED_SESSION_FILE_JSON_TEXT_H

#include <string>

namespace embedded {

/** A text in quotes, with what JSON wants escaped. Of what is no UTF-8, U+FFFD takes the place. */
std::string jsonString(const std::string& text);
/** A number in as few digits as it takes to read it back; null for what is none. */
std::string jsonNumber(double number);

} // namespace embedded

#endif
