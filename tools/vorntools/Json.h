#ifndef TOOLS_VORNTOOLS_JSON_H
#define TOOLS_VORNTOOLS_JSON_H

#include "CATListOfCATUnicodeString.h"

#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

struct JsonField;

/** A value that is printed: null, a truth value, a number, a text, a list, or an object whose members keep their order.
 */
class Json {
public:
    using Member = std::pair<std::string, Json>;

    Json() = default;
    Json(bool value) : m_value(value) {}
    template <class Number, std::enable_if_t<std::is_integral_v<Number> && !std::is_same_v<Number, bool>, int> = 0>
    Json(Number value) : m_value(static_cast<long long>(value)) {}
    Json(std::string text) : m_value(std::move(text)) {}
    Json(const char* text) : m_value(std::string(text)) {}
    static Json array(std::vector<Json> elements = {});
    static Json object(std::initializer_list<JsonField> fields = {});

    bool isNull() const { return std::holds_alternative<std::monostate>(m_value); }
    /** Adds to a list. */
    void push_back(Json value) { std::get<std::vector<Json>>(m_value).push_back(std::move(value)); }
    /** Adds a member, which is not there yet, to an object. */
    void add(std::string key, Json value) {
        std::get<std::vector<Member>>(m_value).emplace_back(std::move(key), std::move(value));
    }
    /** Of a list; null for another value. */
    const std::vector<Json>* elements() const { return std::get_if<std::vector<Json>>(&m_value); }
    /** Of an object; null for another value. */
    const std::vector<Member>* members() const { return std::get_if<std::vector<Member>>(&m_value); }

    /** As JSON on one line; its texts are printable(). */
    std::string dump() const;
    /** The same, behind a text. */
    void write(std::string& text) const;
    /** For a table's cell: "-" for null and for an empty list, "yes" and "no", elements of a list one behind the other.
     */
    std::string cell(const char* between = ", ") const;

private:
    std::variant<std::monostate, bool, long long, std::string, std::vector<Json>, std::vector<Member>> m_value;
};

/** What a member of an object is made from. Lists in braces hand out what they hold only as constants: a value that may
 * be moved out of one all the same is not copied at each depth of an object. */
struct JsonField {
    const char* key;
    mutable Json value;
};

Json arrayOf(const CATListValCATUnicodeString& list);
/** Null for an empty text. */
Json textOrNull(const std::string& text);

#endif
