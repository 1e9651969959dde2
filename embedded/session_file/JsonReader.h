#ifndef EMBEDDED_SESSION_FILE_JSON_READER_H
#define EMBEDDED_SESSION_FILE_JSON_READER_H

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

/** A JSON value that knows the line it stands on. */
struct JsonValue {
    enum class Kind { null, boolean, number, text, list, object };

    Kind kind = Kind::null;
    bool flag = false;
    double number = 0;
    int line = 0;                 ///< from 1; of a list or an object that of its opening bracket
    std::string key;              ///< of a member of an object
    std::string text;             ///< of a text
    std::vector<JsonValue> items; ///< elements of a list, members of an object in their order, repeated keys included
};

/** What is wrong with a JSON text, thrown by everything in this header. */
struct JsonFault {
    int line = 0;
    std::string message; ///< "documents[3].name: a text is expected"
};

/** The value that a text holds. Throws JsonFault for anything but one well-formed value of UTF-8 text, and for lists
 * and objects nested more than kDeepestJson times. */
JsonValue parseJson(std::string_view text);

/** Deeper nesting than any session needs; small enough for every recursion over a value. */
constexpr std::size_t kDeepestJson = 1000;

/** A value with its place in the whole, for reading with messages that name the place. Refers to its parent. */
class JsonField {
public:
    explicit JsonField(const JsonValue& value) : m_value(value) {}

    /** Throws a JsonFault at this place. */
    [[noreturn]] void fail(const std::string& what) const;

    const JsonValue& value() const { return m_value; }
    const std::string& text() const;
    bool flag() const;
    double number() const;
    /** A number without fraction from the least to the greatest one allowed. */
    int integer(int least, int greatest) const;
    /** The elements of a list. Like everything below, only for a field with a name: its parts refer to it. */
    std::vector<JsonField> elements() const&;
    std::vector<JsonField> elements() const&& = delete;
    /** The members of an object, each with its key. */
    std::vector<JsonField> members() const&;
    std::vector<JsonField> members() const&& = delete;
    const std::string& key() const { return m_value.key; }

    /** Makes sure that this is an object with these keys only, each given once at most. */
    void expectKeys(std::initializer_list<const char*> keys) const;
    std::optional<JsonField> optional(const char* key) const&;
    std::optional<JsonField> optional(const char* key) const&& = delete;
    /** The member of an object; a fault of the object when it is missing. */
    JsonField required(const char* key) const&;
    JsonField required(const char* key) const&& = delete;

private:
    JsonField(const JsonValue& value, const JsonField& parent, std::size_t index)
        : m_value(value), m_parent(&parent), m_index(index) {}
    void expect(JsonValue::Kind kind, const char* what) const;
    std::string place() const;

    const JsonValue& m_value;
    const JsonField* m_parent = nullptr;
    std::size_t m_index = 0;
};

} // namespace embedded

#endif
