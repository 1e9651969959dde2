#include "embedded/session_file/JsonReader.h"

#include <algorithm>

namespace embedded {

void JsonField::fail(const std::string& what) const {
    const std::string name = place();
    throw JsonFault{m_value.line, name.empty() ? what : name + ": " + what};
}

std::string JsonField::place() const {
    if (!m_parent) return std::string();
    const std::string parent = m_parent->place();
    if (m_parent->m_value.kind == JsonValue::Kind::list) return parent + "[" + std::to_string(m_index) + "]";
    return parent.empty() ? m_value.key : parent + "." + m_value.key;
}

void JsonField::expect(JsonValue::Kind kind, const char* what) const {
    if (m_value.kind != kind) fail(std::string(what) + " is expected");
}

const std::string& JsonField::text() const {
    expect(JsonValue::Kind::text, "a text");
    return m_value.text;
}

bool JsonField::flag() const {
    expect(JsonValue::Kind::boolean, "true or false");
    return m_value.flag;
}

double JsonField::number() const {
    expect(JsonValue::Kind::number, "a number");
    return m_value.number;
}

int JsonField::integer(int least, int greatest) const {
    const double value = number();
    if (!(value >= least && value <= greatest) || value != static_cast<int>(value))
        fail("a whole number from " + std::to_string(least) + " to " + std::to_string(greatest) + " is expected");
    return static_cast<int>(value);
}

std::vector<JsonField> JsonField::elements() const& {
    expect(JsonValue::Kind::list, "a list");
    std::vector<JsonField> fields;
    fields.reserve(m_value.items.size());
    for (std::size_t i = 0; i < m_value.items.size(); ++i) fields.push_back(JsonField(m_value.items[i], *this, i));
    return fields;
}

std::vector<JsonField> JsonField::members() const& {
    expect(JsonValue::Kind::object, "an object");
    std::vector<JsonField> fields;
    fields.reserve(m_value.items.size());
    for (std::size_t i = 0; i < m_value.items.size(); ++i) fields.push_back(JsonField(m_value.items[i], *this, i));
    return fields;
}

void JsonField::expectKeys(std::initializer_list<const char*> keys) const {
    expect(JsonValue::Kind::object, "an object");
    std::vector<bool> given(keys.size());
    for (std::size_t i = 0; i < m_value.items.size(); ++i) {
        const JsonField member(m_value.items[i], *this, i);
        const auto* const known = std::find(keys.begin(), keys.end(), member.key());
        if (known == keys.end()) member.fail("unknown key");
        const auto index = static_cast<std::size_t>(known - keys.begin());
        if (given[index]) member.fail("given twice");
        given[index] = true;
    }
}

std::optional<JsonField> JsonField::optional(const char* key) const& {
    for (std::size_t i = 0; i < m_value.items.size(); ++i)
        if (m_value.items[i].key == key) return JsonField(m_value.items[i], *this, i);
    return std::nullopt;
}

JsonField JsonField::required(const char* key) const& {
    if (auto field = optional(key)) return *field;
    fail(std::string("\"") + key + "\" is missing");
}

} // namespace embedded
