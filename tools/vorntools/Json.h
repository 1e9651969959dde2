#ifndef TOOLS_VORNTOOLS_JSON_H
#define TOOLS_VORNTOOLS_JSON_H

#include "CATListOfCATUnicodeString.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

struct JsonField;
class JsonView;

/** A value that is printed: null, a truth value, a number, a text, a list, or an object whose members keep their order.
 */
class Json {
public:
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
    void add(std::string_view key, const JsonView& value);
    /** Of a list; null for another value. */
    const std::vector<Json>* elements() const { return std::get_if<std::vector<Json>>(&m_value); }

    /** As JSON on one line; its texts are printable(). */
    std::string dump() const;
    /** For a table's cell: "-" for null and for an empty list, "yes" and "no", elements of a list one behind the other.
     */
    std::string cell(const char* between = ", ") const;

private:
    friend class JsonView;

    /** As it is printed: nobody looks into an object, and a listing of a large folder has many. */
    struct Object {
        std::string text; ///< without the brace behind it
    };

    void write(std::string& text) const;

    std::variant<std::monostate, bool, long long, std::string, std::vector<Json>, Object> m_value;
};

/** What a member of an object is made from. Refers to texts and values, which have to last until it is written: a
 * listing of a large folder has too many to copy each. */
class JsonView {
public:
    JsonView(bool value) : m_value(value) {}
    template <class Number, std::enable_if_t<std::is_integral_v<Number> && !std::is_same_v<Number, bool>, int> = 0>
    JsonView(Number value) : m_value(static_cast<long long>(value)) {}
    JsonView(std::string_view text) : m_value(text) {}
    JsonView(const std::string& text) : m_value(std::string_view(text)) {}
    JsonView(const char* text) : m_value(std::string_view(text)) {}
    JsonView(const std::vector<std::string>& texts) : m_value(&texts) {}
    JsonView(const Json& value) : m_value(&value) {}

    void write(std::string& text) const;

private:
    std::variant<bool, long long, std::string_view, const std::vector<std::string>*, const Json*> m_value;
};

struct JsonField {
    std::string_view key;
    JsonView value;
};

Json arrayOf(const CATListValCATUnicodeString& list);
/** Null for an empty text. */
Json textOrNull(const std::string& text);

#endif
