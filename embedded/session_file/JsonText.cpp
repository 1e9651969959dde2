// The one file that needs the whole JSON package: it is dear to compile.
#include "embedded/session_file/JsonText.h"

#include "embedded/session_file/JsonReader.h"

#include <nlohmann/json.hpp>

#include <climits>
#include <cstdint>
#include <iterator>

namespace embedded {

namespace {

/** The reading position. A line ends behind its line feed, so that a number's line is right although the parser reads
 * one character more to find its end. */
struct Position {
    const char* next;
    const char* end;
    int line = 1;
    bool lineEnds = false;
};

/** Reads characters and counts lines. All copies share one position, as input iterators may. */
class LineIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    explicit LineIterator(Position* position) : m_position(position) {}
    const char& operator*() const { return *m_position->next; }
    LineIterator& operator++() {
        if (m_position->lineEnds && m_position->line < INT_MAX) ++m_position->line;
        m_position->lineEnds = *m_position->next++ == '\n';
        return *this;
    }
    LineIterator operator++(int) {
        const LineIterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const LineIterator& left, const LineIterator& right) {
        return left.atEnd() == right.atEnd();
    }
    friend bool operator!=(const LineIterator& left, const LineIterator& right) { return !(left == right); }

private:
    bool atEnd() const { return !m_position || m_position->next == m_position->end; }

    Position* m_position;
};

/** Makes values from the parser's events. */
class TreeBuilder : public nlohmann::json_sax<nlohmann::json> {
public:
    TreeBuilder(const Position& position, JsonValue& root) : m_position(position), m_open{&root} {}

    bool null() override { return add(JsonValue::Kind::null), true; }
    bool boolean(bool value) override { return add(JsonValue::Kind::boolean).flag = value, true; }
    bool number_integer(std::int64_t value) override { return addNumber(static_cast<double>(value)); }
    bool number_unsigned(std::uint64_t value) override { return addNumber(static_cast<double>(value)); }
    bool number_float(double value, const std::string&) override { return addNumber(value); }
    bool string(std::string& value) override { return add(JsonValue::Kind::text).text.swap(value), true; }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open(JsonValue::Kind::object); }
    bool key(std::string& value) override { return m_key.swap(value), true; }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(JsonValue::Kind::list); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& exception) override {
        const std::string what = exception.what();
        const std::size_t column = what.find("column ");
        const std::size_t cause = what.find(": ", column);
        throw JsonFault{m_position.line, column == std::string::npos || cause == std::string::npos
                                             ? "a JSON value is expected"
                                             : what.substr(cause + 2)};
    }

private:
    /** Adds a value where the innermost open list or object stands. Only the innermost one ever grows: pointers to the
     * outer ones stay valid. */
    JsonValue& add(JsonValue::Kind kind) {
        JsonValue* value = m_open.back();
        if (m_open.size() > 1 || m_started) {
            value->items.emplace_back();
            value = &value->items.back();
        }
        m_started = true;
        value->kind = kind;
        value->line = m_position.line;
        value->key.swap(m_key);
        m_key.clear();
        return *value;
    }
    bool addNumber(double value) { return add(JsonValue::Kind::number).number = value, true; }
    bool open(JsonValue::Kind kind) {
        if (m_open.size() > kDeepestJson) throw JsonFault{m_position.line, "nested too deeply"};
        m_open.push_back(&add(kind));
        return true;
    }
    bool close() {
        m_open.pop_back();
        return true;
    }

    const Position& m_position;
    std::vector<JsonValue*> m_open;
    std::string m_key;
    bool m_started = false;
};

} // namespace

JsonValue parseJson(std::string_view text) {
    JsonValue root;
    Position position{text.data(), text.data() + text.size()};
    TreeBuilder builder(position, root);
    nlohmann::json::sax_parse(LineIterator(&position), LineIterator(nullptr), &builder);
    return root;
}

std::string jsonString(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string jsonNumber(double number) { return nlohmann::json(number).dump(); }

} // namespace embedded
