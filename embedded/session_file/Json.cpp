#include "embedded/session_file/Json.h"

#include "embedded/session_file/JsonText.h"
#include "embedded/text/Characters.h"

#include <algorithm>
#include <utility>

namespace embedded {

Json::Json(double number) : m_kind(Kind::leaf), m_text(jsonNumber(number)) {}

Json::Json(const std::string& text)
    : m_kind(Kind::leaf), m_wellFormed(embedded::isWellFormed(text)), m_text(jsonString(text)) {}

Json::Json(std::initializer_list<JsonMember> members) : m_kind(Kind::object) {
    for (const JsonMember& member : members) (*this)[member.key] = member.value;
}

Json& Json::operator[](const std::string& key) {
    if (isNull()) m_kind = Kind::object;
    const auto found = std::find(m_keys.begin(), m_keys.end(), key);
    if (found != m_keys.end()) return m_items[static_cast<std::size_t>(found - m_keys.begin())];
    m_keys.push_back(key);
    return m_items.emplace_back();
}

void Json::push_back(Json element) {
    if (isNull()) m_kind = Kind::list;
    m_items.push_back(std::move(element));
}

bool Json::isWellFormed() const {
    return m_wellFormed && std::all_of(m_keys.begin(), m_keys.end(), embedded::isWellFormed) &&
           std::all_of(m_items.begin(), m_items.end(), [](const Json& item) { return item.isWellFormed(); });
}

std::string Json::dump() const {
    std::string text;
    write(text, nullptr);
    return text;
}

std::string Json::dumpLines() const {
    std::string text;
    const std::string lineStart = "\n";
    write(text, &lineStart);
    return text;
}

/** @param lineStart what begins a line at the value's own level; null when there are no lines */
void Json::write(std::string& text, const std::string* lineStart) const {
    if (m_kind == Kind::null) {
        text += "null";
    } else if (m_kind == Kind::leaf) {
        text += m_text;
    } else {
        const bool isObject = m_kind == Kind::object;
        const std::string inside = lineStart ? *lineStart + "  " : std::string();
        text += isObject ? '{' : '[';
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            if (i > 0) text += ',';
            text += inside;
            if (isObject) text += jsonString(m_keys[i]) + (lineStart ? ": " : ":");
            m_items[i].write(text, lineStart ? &inside : nullptr);
        }
        if (lineStart && !m_items.empty()) text += *lineStart;
        text += isObject ? '}' : ']';
    }
}

} // namespace embedded
