#include "tools/vorntools/Json.h"

#include "tools/vorntools/Text.h"

#include <array>
#include <string_view>

namespace {

/** Whether each byte stands in a text as it is: what is printed is mostly such bytes, so that one look has to do. */
constexpr std::array<bool, 256> kStandsAsItIs = [] {
    std::array<bool, 256> stands{};
    for (char byte = ' '; byte < '\x7F'; ++byte)
        stands[static_cast<unsigned char>(byte)] = isPlainLetter(byte) && byte != '"' && byte != '\\';
    return stands;
}();

/** Between quotation marks. */
void writeText(std::string_view bytes, std::string& text) {
    text += '"';
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t begin = at;
        while (at < bytes.size() && kStandsAsItIs[static_cast<unsigned char>(bytes[at])]) ++at;
        text.append(bytes.substr(begin, at - begin));
        if (at == bytes.size()) break;
        if (bytes[at] == '"' || bytes[at] == '\\')
            (text += '\\') += bytes[at++]; // each path of the other system has many
        else
            at += appendPrintable(bytes, at, text);
    }
    text += '"';
}

/** Of an object, in bytes: a text that grows is copied. */
constexpr std::size_t kUsualLength = 256;

} // namespace

Json Json::array(std::vector<Json> elements) {
    Json json;
    json.m_value = std::move(elements);
    return json;
}

Json Json::object(std::initializer_list<JsonField> fields) {
    Json json;
    Object object;
    object.text.reserve(kUsualLength);
    object.text = '{';
    json.m_value = std::move(object);
    for (const JsonField& field : fields) json.add(field.key, field.value);
    return json;
}

void Json::add(std::string_view key, const Json& value) {
    std::string& text = std::get<Object>(m_value).text;
    if (text.size() > 1) text += ',';
    writeText(key, text);
    text += ':';
    value.write(text);
}

void Json::write(std::string& text) const {
    if (const auto* const own = std::get_if<std::string>(&m_value)) return writeText(*own, text);
    if (elements()) {
        text += '[';
        for (const Json& element : *elements()) {
            if (&element != elements()->data()) text += ',';
            element.write(text);
        }
        text += ']';
    } else if (const Object* const object = std::get_if<Object>(&m_value)) {
        (text += object->text) += '}';
    } else if (const bool* const truth = std::get_if<bool>(&m_value)) {
        text += *truth ? "true" : "false";
    } else if (const long long* const number = std::get_if<long long>(&m_value)) {
        text += std::to_string(*number);
    } else {
        text += "null";
    }
}

std::string Json::dump() const {
    std::string text;
    write(text);
    return text;
}

std::string Json::cell(const char* between) const {
    if (const auto* const own = std::get_if<std::string>(&m_value)) return *own;
    if (const bool* const truth = std::get_if<bool>(&m_value)) return *truth ? "yes" : "no";
    if (isNull()) return "-";
    if (!elements()) return dump();
    std::string text;
    for (const Json& element : *elements()) text += (&element == elements()->data() ? "" : between) + element.cell();
    return elements()->empty() ? "-" : text;
}

Json arrayOf(const CATListValCATUnicodeString& list) {
    Json array = Json::array();
    for (int i = 1; i <= list.Size(); ++i) array.push_back(bytesOf(list[i]));
    return array;
}

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }
