#include "embedded/session_file/SessionSections.h"

#include "embedded/documents/SessionData.h"
#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/structure/Places.h"
#include "embedded/text/Characters.h"

#include <algorithm>
#include <cstring>

namespace embedded {

namespace {

std::vector<const SessionSection*>& sections() {
    static auto& list = *new std::vector<const SessionSection*>;
    return list;
}

/** Whether a name says by itself where it begins: from a root, a drive or a logical name. */
bool isAbsolute(const std::string& name) {
    return !name.empty() && (isSeparator(name[0]) || name[0] == '\x01' || (name.size() > 1 && name[1] == ':'));
}

} // namespace

SessionSection::SessionSection(const char* sectionKey, Read readSection, Write writeSection, int sectionRank)
    : key(sectionKey), read(readSection), write(writeSection), rank(sectionRank) {
    const auto after = [](const SessionSection* left, const SessionSection* right) {
        return left->rank != right->rank ? left->rank < right->rank : std::strcmp(left->key, right->key) < 0;
    };
    sections().insert(std::upper_bound(sections().begin(), sections().end(), this, after), this);
}

const SessionSection* SessionSection::find(const std::string& key) {
    for (const SessionSection* section : sections())
        if (key == section->key) return section;
    return nullptr;
}

const std::vector<const SessionSection*>& SessionSection::all() { return sections(); }

std::string SectionReader::path(const JsonField& field) const {
    std::string name = field.text();
    if (!hasDirectory(name) || isAbsolute(name)) return name;
    if (name[0] == '.' && isSeparator(name[1])) name.erase(0, 2);
    for (char& character : name)
        if (isSeparator(character)) character = *systemSeparator();
    return m_folder + name;
}

Document SectionReader::document(const JsonField& field) const {
    const std::string name = path(field);
    const Document document = m_session.find(name);
    if (!document) field.fail("no document named '" + name + "'");
    return document;
}

Product SectionReader::place(const JsonField& field) const {
    field.expectKeys({"document", "path"});
    Product product = document(field.required("document")).root();
    if (!product) field.fail("the document has no product");
    const auto names = field.optional("path");
    if (!names) return product;
    for (const JsonField& name : names->elements()) {
        product = product.at({name.text()});
        if (!product) name.fail("no such instance");
    }
    return product;
}

void readWithout(const JsonField& field, std::initializer_list<Part> parts) {
    const auto without = field.optional("without");
    if (!without) return;
    for (const JsonField& what : without->elements()) {
        const auto isIt = [&what](const Part& part) { return what.text() == part.first; };
        const Part* const found = std::find_if(parts.begin(), parts.end(), isIt);
        if (found == parts.end()) what.fail("nothing named '" + what.text() + "' can be missing here");
        *found->second = false;
    }
}

void writeWithout(Json& object, std::initializer_list<std::pair<const char*, bool>> parts) {
    for (const auto& part : parts)
        if (!part.second) object["without"].push_back(part.first);
}

const std::string& checkedText(const std::string& text) {
    if (!isWellFormed(text)) throw SaveFault{"a text is not UTF-8"};
    return text;
}

Json placeOf(const Product& product) {
    const Reference* const root = product ? rootOf(*product.object()).reference() : nullptr;
    if (!root || root->component) throw SaveFault{"a component has no place of its own"};
    Json json{{"document", checkedText(root->document->name())}};
    for (const std::string& name : namesBelowRoot(*product.object())) json["path"].push_back(checkedText(name));
    return json;
}

} // namespace embedded
