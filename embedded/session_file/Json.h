#ifndef EMBEDDED_SESSION_FILE_JSON_H
#define EMBEDDED_SESSION_FILE_JSON_H

#include <cstddef>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

namespace embedded {

struct JsonMember;

/** A JSON value in the making, null at first. The members of an object stay in the order in which they were added. */
class Json {
public:
    Json() = default;
    template <class Flag, class = std::enable_if_t<std::is_same<Flag, bool>::value>>
    Json(Flag flag) : m_kind(Kind::leaf), m_text(flag ? "true" : "false") {}
    Json(int number) : m_kind(Kind::leaf), m_text(std::to_string(number)) {}
    Json(double number);
    Json(const std::string& text);
    Json(const char* text) : Json(std::string(text)) {}
    /** An object: `Json{{"name", "x"}, {"hidden", true}}`. */
    Json(std::initializer_list<JsonMember> members);
    static Json array() { return Json(Kind::list); }
    static Json object() { return Json(Kind::object); }

    bool isNull() const { return m_kind == Kind::null; }
    /** Whether nothing is in it. */
    bool empty() const { return m_items.empty(); }
    std::size_t size() const { return m_items.size(); }
    /** The member of an object, added as null when there is none. Null becomes an object. */
    Json& operator[](const std::string& key);
    /** Adds an element to a list. Null becomes a list. */
    void push_back(Json element);

    /** Whether every text in it, keys included, is UTF-8. */
    bool isWellFormed() const;
    /** The value as text, in one line. Of what is no UTF-8, U+FFFD takes the place. */
    std::string dump() const;
    /** The same with each value on a line of its own, set in by two blanks a level. */
    std::string dumpLines() const;

private:
    enum class Kind { null, leaf, list, object };

    explicit Json(Kind kind) : m_kind(kind) {}
    void write(std::string& text, const std::string* lineStart) const;

    Kind m_kind = Kind::null;
    bool m_wellFormed = true;
    std::string m_text; ///< of a leaf, as it is written
    std::vector<std::string> m_keys;
    std::vector<Json> m_items;
};

struct JsonMember {
    std::string key;
    Json value;
};

} // namespace embedded

#endif
