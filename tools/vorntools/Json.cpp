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

void writeNumber(long long number, std::string& text) { text += std::to_string(number); }

void writeTruth(bool truth, std::string& text) { text += truth ? "true" : "false"; }

/** @param write writes an element */
template <class Elements, class Write>
void writeList(const Elements& elements, std::string& text, Write write) {
    text += '[';
    for (const auto& element : elements) {
        if (&element != elements.data()) text += ',';
        write(element);
    }
    text += ']';
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

void Json::add(std::string_view key, const JsonView& value) {
    std::string& text = std::get<Object>(m_value).text;
    if (text.size() > 1) text += ',';
    writeText(key, text);
    text += ':';
    value.write(text);
}

void Json::write(std::string& text) const {
    if (const auto* const own = std::get_if<std::string>(&m_value))
        writeText(*own, text);
    else if (elements())
        writeList(*elements(), text, [&](const Json& element) { element.write(text); });
    else if (const Object* const object = std::get_if<Object>(&m_value))
        (text += object->text) += '}';
    else if (const bool* const truth = std::get_if<bool>(&m_value))
        writeTruth(*truth, text);
    else if (const long long* const number = std::get_if<long long>(&m_value))
        writeNumber(*number, text);
    else
        text += "null";
}

void JsonView::write(std::string& text) const {
    if (const auto* const own = std::get_if<std::string_view>(&m_value))
        writeText(*own, text);
    else if (const auto* const texts = std::get_if<const std::vector<std::string>*>(&m_value))
        writeList(**texts, text, [&](const std::string& element) { writeText(element, text); });
    else if (const auto* const value = std::get_if<const Json*>(&m_value))
        (*value)->write(text);
    else if (const bool* const truth = std::get_if<bool>(&m_value))
        writeTruth(*truth, text);
    else
        writeNumber(std::get<long long>(m_value), text);
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
