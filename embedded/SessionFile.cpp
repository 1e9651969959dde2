#include "embedded/SessionFile.h"

#include "embedded/Characters.h"
#include "embedded/JsonReader.h"
#include "embedded/Session.h"
#include "embedded/SessionData.h"
#include "embedded/SessionSections.h"
#include "embedded/SystemFiles.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <system_error>

namespace embedded {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t(256) << 20U;
constexpr int kDeepestComponent = 320;
static_assert(3 * kDeepestComponent + 8 <= static_cast<int>(kDeepestJson), "what is written can be read");

struct FlagField {
    const char* key;
    bool Environment::*field;
};
constexpr FlagField kFlags[] = {
    {"initialized", &Environment::initialized},
    {"uses_logical_names", &Environment::usesLogicalNames},
    {"manual_part_number_input", &Environment::manualPartNumberInput},
    {"instance_description_marks_ignore_nodes", &Environment::instanceDescriptionMarksIgnoreNodes},
    {"update_drawing", &Environment::updateDrawing},
    {"update_drawing_in_last_update_state", &Environment::updateDrawingInLastUpdateState},
    {"save_detail_sheet", &Environment::saveDetailSheet},
    {"check_for_update_part", &Environment::checkForUpdatePart},
    {"debug_mode", &Environment::debugMode},
    {"manages_status_on_root", &Environment::managesStatusOnRoot},
    {"command_create_spreadsheet", &Environment::commandCreateSpreadsheet},
    {"command_import", &Environment::commandImport},
    {"command_brr", &Environment::commandBrr},
    {"process_life_cycle_factory", &Environment::processLifeCycleFactory},
    {"keeps_intermediate_files", &Environment::keepsIntermediateFiles},
    {"command_highlight_item_revision", &Environment::commandHighlightItemRevision},
    {"command_highlight_hosted", &Environment::commandHighlightHosted},
    {"command_state_details_update", &Environment::commandStateDetailsUpdate},
    {"deletes_status_window_files", &Environment::deletesStatusWindowFiles},
    {"platform_pdm_connection", &Environment::platformPdmConnection},
    {"creates_properties", &Environment::createsProperties},
    {"ignores_oem_properties", &Environment::ignoresOemProperties},
};

struct DirectoryField {
    const char* key;
    std::string Environment::*field;
};
constexpr DirectoryField kDirectories[] = {
    {"staging_directory", &Environment::stagingDirectory},
    {"files_directory", &Environment::filesDirectory},
    {"reference_path", &Environment::referencePath},
    {"local_cache_directory", &Environment::localCacheDirectory},
    {"configuration_directory", &Environment::configurationDirectory},
    {"temp_directory", &Environment::tempDirectory},
    {"spreadsheet_path", &Environment::spreadsheetPath},
    {"import_path", &Environment::importPath},
};

constexpr const char* kManagers[] = {"ENVManager", "PROCManager", "VornEnvConfig"};

// Reading.

bool isSeparator(char character) { return character == '/' || character == '\\'; }

/** Whether a name says by itself where it begins: from a root, a drive or a logical name. */
bool isAbsolute(const std::string& name) {
    return !name.empty() && (isSeparator(name[0]) || name[0] == '\x01' || (name.size() > 1 && name[1] == ':'));
}

/** The folder of a file, with a separator at its end. */
std::string folderOf(const std::string& path) {
    std::error_code error;
    const fs::path file = fs::absolute(fs::u8path(path), error);
    std::string folder = (error ? fs::u8path(path) : file).parent_path().u8string();
    if (!folder.empty() && !isSeparator(folder.back())) folder += systemSeparator();
    return folder;
}

/** Fills the session from the tree of a session file. Throws JsonFault. */
class Loader {
public:
    Loader(Session& session, const std::string& path) : m_session(session), m_reader(session, folderOf(path)) {}

    void load(const JsonField& root) {
        const std::vector<JsonField> members = root.members();
        expectSections(members);
        if (const auto environment = root.optional("environment")) readEnvironment(*environment);
        if (const auto documents = root.optional("documents")) readDocuments(*documents);
        for (const SessionSection* section : SessionSection::all())
            if (const auto field = root.optional(section->key)) section->read(*field, m_reader);
    }

private:
    static void expectSections(const std::vector<JsonField>& members) {
        std::set<std::string> seen;
        for (const JsonField& member : members) {
            const std::string& key = member.key();
            if (key != "environment" && key != "documents" && !SessionSection::find(key)) member.fail("unknown key");
            if (!seen.insert(key).second) member.fail("given twice");
        }
    }

    void readDocuments(const JsonField& list) {
        const std::vector<JsonField> documents = list.elements();
        for (const JsonField& document : documents) readDocument(document);
        for (std::size_t i = 0; i < documents.size(); ++i) {
            m_components.clear();
            readChildren(documents[i], m_session.documentAt(i).root());
        }
        for (std::size_t i = 0; i < documents.size(); ++i)
            readOccurrences(documents[i], m_session.documentAt(i).root());
    }

    std::string path(const JsonField& field) const { return m_reader.path(field); }

    void readEnvironment(const JsonField& field) {
        Environment& environment = m_session.environment();
        for (const JsonField& member : field.members()) readEnvironmentField(member, environment);
    }

    void readEnvironmentField(const JsonField& member, Environment& environment) {
        if (!m_environmentKeys.emplace(member.key(), true).second) member.fail("given twice");
        for (const FlagField& flag : kFlags)
            if (member.key() == flag.key) return void(environment.*flag.field = member.flag());
        for (const DirectoryField& directory : kDirectories)
            if (member.key() == directory.key) return void(environment.*directory.field = path(member));
        if (member.key() == "reference_prefix") return void(environment.referencePrefix = member.text());
        if (member.key() == "separator") return readSeparator(member, environment);
        if (member.key() == "variables") return readVariables(member, environment);
        if (member.key() == "logical_names") return readLogicalNames(member, environment);
        if (member.key() == "missing_managers") return readMissingManagers(member, environment);
        if (member.key() == "decimal_separator") return readDecimalSeparator(member, environment);
        if (member.key() == "properties_read_only_on_create") {
            for (const JsonField& name : member.elements())
                environment.propertiesReadOnlyOnCreate.push_back(name.text());
            return;
        }
        if (member.key() != "release_cache_directories") member.fail("unknown key");
        for (const JsonField& directory : member.elements())
            environment.releaseCacheDirectories.push_back(path(directory));
    }

    static void readSeparator(const JsonField& field, Environment& environment) {
        environment.separator = field.text();
        const bool one = environment.separator.size() == 1 && isSeparator(environment.separator[0]);
        if (!one && !environment.separator.empty()) field.fail("a slash or a backslash is expected");
    }

    static void readDecimalSeparator(const JsonField& field, Environment& environment) {
        environment.decimalSeparator = field.text();
        if (field.text() != "." && field.text() != ",") field.fail("a point or a comma is expected");
    }

    void readLogicalNames(const JsonField& field, Environment& environment) const {
        for (const JsonField& name : field.members())
            if (!environment.logicalNames.emplace(name.key(), path(name)).second) name.fail("given twice");
    }

    static void readVariables(const JsonField& field, Environment& environment) {
        for (const JsonField& variable : field.members())
            if (!environment.variables.emplace(variable.key(), variable.text()).second) variable.fail("given twice");
    }

    static void readMissingManagers(const JsonField& field, Environment& environment) {
        for (const JsonField& manager : field.elements()) {
            const std::string& name = manager.text();
            if (std::find(std::begin(kManagers), std::end(kManagers), name) == std::end(kManagers))
                manager.fail("no manager is named '" + name + "'");
            environment.missingManagers.push_back(name);
        }
    }

    void readDocument(const JsonField& field) {
        field.expectKeys({"name", "type", "uuid", "saved", "on_disk", "up_to_date", "part_number", "description_ref",
                          "master_shape", "shapes", "children", "without"});
        const JsonField nameField = field.required("name");
        const std::string name = path(nameField);
        if (m_session.find(name)) nameField.fail("a second document named '" + name + "'");
        Document document = m_session.document(name);
        if (const auto type = field.optional("type")) document.type(type->text());
        if (const auto uuid = field.optional("uuid")) readIdentifier(*uuid, document);
        if (const auto saved = field.optional("saved")) document.saved(saved->flag());
        if (const auto onDisk = field.optional("on_disk")) document.onDisk(onDisk->flag());
        if (const auto upToDate = field.optional("up_to_date")) document.upToDate(upToDate->flag());
        readDocumentWithout(field, document);
        if (Product root = document.root()) return readReference(field, root);
        for (const char* key : {"part_number", "description_ref", "master_shape", "shapes", "children"})
            if (const auto member = field.optional(key))
                member->fail("a document of type '" + document.type() + "' has no product");
    }

    static void readIdentifier(const JsonField& field, Document& document) {
        document.uuid(field.text());
        if (document.uuid() == "0_0_0_0" && field.text() != "0_0_0_0")
            field.fail("four hexadecimal numbers joined by '_' are expected");
    }

    static void readDocumentWithout(const JsonField& field, Document& document) {
        const auto without = field.optional("without");
        if (!without) return;
        for (const JsonField& what : without->elements()) {
            Product root = document.root();
            if (what.text() == "descriptor")
                document.withoutDescriptor();
            else if (what.text() == "automation")
                document.withoutAutomation();
            else if (what.text() == "roots")
                document.withoutRoots();
            else
                readWithout(what, root, true);
        }
    }

    static void readWithout(const JsonField& what, Product& product, bool isReference) {
        if (what.text() == "properties" && product)
            product.withoutProperties();
        else if (what.text() == "linkable_object" && product && isReference)
            product.withoutLinkableObject();
        else
            what.fail("nothing named '" + what.text() + "' can be missing here");
    }

    static void readAllWithout(const JsonField& field, Product& product, bool isReference) {
        const auto without = field.optional("without");
        if (!without) return;
        for (const JsonField& what : without->elements()) readWithout(what, product, isReference);
    }

    void readReference(const JsonField& field, Product& product) const {
        if (const auto partNumber = field.optional("part_number")) product.partNumber(partNumber->text());
        if (const auto description = field.optional("description_ref"))
            product.referenceDescription(description->text());
        if (const auto masterShape = field.optional("master_shape")) product.masterShape(path(*masterShape));
        const auto shapes = field.optional("shapes");
        if (!shapes) return;
        for (const JsonField& shape : shapes->elements()) {
            shape.expectKeys({"name", "path"});
            product.shape(shape.required("name").text(), path(shape.required("path")));
        }
    }

    void readChildren(const JsonField& field, const Product& father) {
        const auto children = field.optional("children");
        if (!children) return;
        for (const JsonField& child : children->elements()) readChild(child, father);
    }

    void readChild(const JsonField& field, const Product& father) {
        field.expectKeys({"instance", "document", "component", "unresolved", "description", "occurrences", "without"});
        const JsonField nameField = field.required("instance");
        const std::string& name = nameField.text();
        if (father.at({name})) nameField.fail("a second instance named '" + name + "'");
        const auto document = field.optional("document");
        const auto component = field.optional("component");
        const auto unresolved = field.optional("unresolved");
        if (int(document.has_value()) + int(component.has_value()) + int(unresolved.has_value()) != 1)
            field.fail("one of \"document\", \"component\" and \"unresolved\" is expected");
        Product instance;
        if (document) instance = addDocument(*document, father, name);
        if (component) instance = addComponent(*component, father, name);
        if (unresolved) instance = addUnresolved(*unresolved, father, name);
        readPlace(field, instance);
        if (!component || component->value().kind != JsonValue::Kind::object) return;
        if (++m_depth > kDeepestComponent) component->fail("components nested too deeply");
        readChildren(*component, instance.reference());
        --m_depth;
    }

    Product addDocument(const JsonField& field, const Product& father, const std::string& name) {
        const std::string documentName = path(field);
        const Document document = m_session.find(documentName);
        if (!document) field.fail("no document named '" + documentName + "'");
        if (!document.root()) field.fail("a document of type '" + document.type() + "' has no product");
        const Product instance = father.add(document, name);
        if (!instance) field.fail("'" + documentName + "' would contain itself");
        return instance;
    }

    Product addComponent(const JsonField& field, const Product& father, const std::string& name) {
        if (field.value().kind == JsonValue::Kind::text) return addKnownComponent(field, father, name);
        field.expectKeys({"id", "part_number", "description_ref", "master_shape", "shapes", "children", "without"});
        const Product instance = father.addComponent("", name);
        Product component = instance.reference();
        readReference(field, component);
        readAllWithout(field, component, true);
        if (const auto id = field.optional("id"))
            if (!m_components.emplace(id->text(), component).second)
                id->fail("a second component '" + id->text() + "' in this document");
        return instance;
    }

    Product addKnownComponent(const JsonField& field, const Product& father, const std::string& name) {
        const auto known = m_components.find(field.text());
        if (known == m_components.end()) field.fail("no component '" + field.text() + "' before it in this document");
        const Product instance = father.add(known->second, name);
        if (!instance) field.fail("component '" + field.text() + "' would contain itself");
        return instance;
    }

    static Product addUnresolved(const JsonField& field, const Product& father, const std::string& name) {
        if (!field.flag()) field.fail("true is expected");
        return father.addUnresolved(name);
    }

    static void readPlace(const JsonField& field, Product& place) {
        if (const auto description = field.optional("description")) place.description(description->text());
        readAllWithout(field, place, false);
    }

    /** Occurrences stand behind everything else: their way leads through other documents. */
    void readOccurrences(const JsonField& field, const Product& father) {
        const auto children = field.optional("children");
        if (!children) return;
        const std::vector<JsonField> list = children->elements();
        for (std::size_t i = 0; i < list.size(); ++i) {
            const Product instance(father.object()->child(i));
            if (const auto occurrences = list[i].optional("occurrences"))
                for (const JsonField& occurrence : occurrences->elements()) readOccurrence(occurrence, instance);
            const auto component = list[i].optional("component");
            if (component && component->value().kind == JsonValue::Kind::object)
                readOccurrences(*component, instance.reference());
        }
    }

    static void readOccurrence(const JsonField& field, const Product& instance) {
        field.expectKeys({"path", "description", "without"});
        const JsonField pathField = field.required("path");
        std::vector<std::string> names;
        for (const JsonField& name : pathField.elements()) names.push_back(name.text());
        Product place = names.empty() ? Product() : instance.at(names);
        if (!place) pathField.fail("no such occurrence");
        readPlace(field, place);
    }

    Session& m_session;
    const SectionReader m_reader;
    std::map<std::string, bool> m_environmentKeys;
    std::map<std::string, Product> m_components; ///< of the document being read, by their ids
    int m_depth = 0;                             ///< components around the one being read
};

// Writing.

/** Makes the tree of a session file. What has its default is left out. Throws SaveFault. */
class Saver {
public:
    explicit Saver(const SessionData& session) : m_session(session), m_own(ownOccurrences(session)) {}

    Json save() {
        Json root = Json::object();
        Json environment = writeEnvironment();
        if (!environment.empty()) root["environment"] = std::move(environment);
        Json documents = Json::array();
        for (const auto& document : m_session.documents) {
            m_place = "documents[" + std::to_string(documents.size()) + "]";
            documents.push_back(writeDocument(*document));
        }
        root["documents"] = std::move(documents);
        for (const SessionSection* section : SessionSection::all()) {
            Json written = writeSection(*section);
            if (!written.is_null()) root[section->key] = std::move(written);
        }
        return root;
    }

private:
    static Json writeSection(const SessionSection& section) {
        try {
            return section.write(Session::current());
        } catch (const SaveFault& fault) {
            throw SaveFault{std::string(section.key) + ": " + fault.message};
        }
    }
    const std::string& checked(const std::string& text) const {
        if (!isWellFormed(text)) throw SaveFault{m_place + ": a text is not UTF-8"};
        return text;
    }
    void write(Json& object, const char* key, const std::string& text, const std::string& usual = {}) const {
        if (text != usual) object[key] = checked(text);
    }
    static void write(Json& object, const char* key, bool flag, bool usual) {
        if (flag != usual) object[key] = flag;
    }
    static void writeWithout(Json& object, std::initializer_list<std::pair<bool, const char*>> parts) {
        for (const auto& part : parts)
            if (!part.first) object["without"].push_back(part.second);
    }
    void writeList(Json& object, const char* key, const std::vector<std::string>& texts) const {
        for (const std::string& text : texts) object[key].push_back(checked(text));
    }

    Json writeEnvironment() {
        m_place = "environment";
        const Environment& environment = m_session.environment;
        const Environment usual;
        Json object = Json::object();
        for (const FlagField& flag : kFlags) write(object, flag.key, environment.*flag.field, usual.*flag.field);
        for (const DirectoryField& directory : kDirectories) write(object, directory.key, environment.*directory.field);
        write(object, "reference_prefix", environment.referencePrefix);
        writeList(object, "release_cache_directories", environment.releaseCacheDirectories);
        for (const auto& name : environment.logicalNames)
            object["logical_names"][checked(name.first)] = checked(name.second);
        write(object, "separator", environment.separator);
        for (const auto& variable : environment.variables)
            object["variables"][checked(variable.first)] = checked(variable.second);
        writeList(object, "missing_managers", environment.missingManagers);
        write(object, "decimal_separator", environment.decimalSeparator, usual.decimalSeparator);
        writeList(object, "properties_read_only_on_create", environment.propertiesReadOnlyOnCreate);
        return object;
    }

    Json writeDocument(DocumentObject& document) {
        Json object = Json::object();
        object["name"] = checked(document.name());
        write(object, "type", document.type(), suffixOf(document.name()));
        object["uuid"] = document.uuidText();
        write(object, "saved", document.saved, true);
        write(object, "on_disk", document.onDisk, hasDirectory(document.name()));
        write(object, "up_to_date", document.upToDate, true);
        writeWithout(object, {{document.hasDescriptor, "descriptor"},
                              {document.hasAutomation, "automation"},
                              {document.hasRoots, "roots"}});
        m_components.clear();
        if (const ProductObject* const root = document.rootProduct()) writeReference(object, *root->reference(), 0);
        return object;
    }

    void writeReference(Json& object, const Reference& reference, int depth) {
        if (depth > kDeepestComponent) throw SaveFault{m_place + ": components nested too deeply"};
        object["part_number"] = checked(reference.partNumber);
        write(object, "description_ref", reference.description);
        write(object, "master_shape", reference.masterShape);
        for (const auto& shape : reference.shapes)
            object["shapes"].push_back(Json{{"name", checked(shape.first)}, {"path", checked(shape.second)}});
        writeWithout(object,
                     {{reference.node->hasProperties(), "properties"}, {reference.linkable, "linkable_object"}});
        if (reference.node->childCount() == 0) return;
        Json& children = object["children"] = Json::array();
        for (std::size_t i = 0; i < reference.node->childCount(); ++i)
            children.push_back(writeInstance(*reference.node->child(i), depth));
    }

    Json writeInstance(const ProductObject& instance, int depth) {
        Json object = Json::object();
        object["instance"] = checked(instance.instanceName());
        const Reference* const reference = instance.reference();
        if (!reference)
            object["unresolved"] = true;
        else if (!reference->component)
            object["document"] = checked(reference->document->name());
        else
            object["component"] = writeComponent(*reference, depth);
        write(object, "description", instance.description());
        writeWithout(object, {{instance.hasProperties(), "properties"}});
        const auto own = m_own.find(&instance);
        if (own == m_own.end()) return object;
        for (const ProductObject* occurrence : own->second)
            object["occurrences"].push_back(writeOccurrence(*occurrence));
        return object;
    }

    /** The first time all about a component, later its id. */
    Json writeComponent(const Reference& reference, int depth) {
        const auto known = m_components.find(&reference);
        if (known != m_components.end()) return known->second;
        Json object = Json::object();
        if (reference.usedIn.size() > 1)
            object["id"] =
                m_components.emplace(&reference, "c" + std::to_string(m_components.size() + 1)).first->second;
        writeReference(object, reference, depth + 1);
        return object;
    }

    Json writeOccurrence(const ProductObject& occurrence) const {
        Json object = Json::object();
        writeList(object, "path", pathBelowInstance(occurrence));
        if (occurrence.ownDescription()) object["description"] = checked(*occurrence.ownDescription());
        writeWithout(object, {{occurrence.hasProperties(), "properties"}});
        return object;
    }

    const SessionData& m_session;
    const std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> m_own;
    std::map<const Reference*, std::string> m_components; ///< ids of the document being written
    std::string m_place;
};

SessionFileResult failure(const std::string& error) { return {false, error}; }

/** Reads a whole file; the error, empty when there is none. */
std::string readFile(const std::string& path, std::string& text) {
    SystemFile file;
    if (!file.open(path)) return "cannot be opened";
    std::vector<char> buffer(std::size_t(1) << 16U);
    for (;;) {
        const long count = file.read(buffer.data(), buffer.size());
        if (count < 0) return "cannot be read";
        if (count == 0) return std::string();
        if (text.size() + static_cast<std::size_t>(count) > kLargestFile) return "larger than 256 MiB";
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

/** Writes a new file beside the old one and puts it in its place. */
bool replaceFile(const fs::path& path, const std::string& text) {
    fs::path beside = path;
    beside += ".new";
    std::ofstream file(beside, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    std::error_code error;
    if (file) fs::rename(beside, path, error);
    if (file && !error) return true;
    std::error_code ignored;
    fs::remove(beside, ignored);
    return false;
}

std::vector<const SessionSection*>& sections() {
    static std::vector<const SessionSection*> list;
    return list;
}

} // namespace

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

const std::string& checkedText(const std::string& text) {
    if (!isWellFormed(text)) throw SaveFault{"a text is not UTF-8"};
    return text;
}

Json placeOf(const Product& product) {
    std::vector<std::string> names;
    const ProductObject* place = product.object();
    for (; place && place->father(); place = place->father()) names.push_back(place->instanceName());
    if (!place || place->reference()->component) throw SaveFault{"a component has no place of its own"};
    Json json{{"document", checkedText(place->reference()->document->name())}};
    for (auto name = names.rbegin(); name != names.rend(); ++name) json["path"].push_back(checkedText(*name));
    return json;
}

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

SessionFileResult loadSessionText(const std::string& path, const std::string& text) {
    Session& session = Session::current();
    session.reset();
    SessionFileResult result;
    try {
        const JsonValue root = parseJson(text);
        Loader(session, path).load(JsonField(root));
        return result;
    } catch (const JsonFault& fault) {
        result = failure(path + ":" + std::to_string(fault.line) + ": " + fault.message);
    } catch (const std::exception& exception) {
        result = failure(path + ": " + exception.what());
    }
    session.reset();
    return result;
}

SessionFileResult loadSession(const std::string& path) {
    std::string text;
    const std::string error = readFile(path, text);
    if (error.empty()) return loadSessionText(path, text);
    Session::current().reset();
    return failure(path + ": " + error);
}

SessionFileResult sessionText(std::string& text) {
    text.clear();
    try {
        text = Saver(Session::current().data()).save().dump(2) + "\n";
        return {};
    } catch (const SaveFault& fault) {
        return failure(fault.message);
    } catch (const std::exception& exception) {
        return failure(exception.what());
    }
}

SessionFileResult saveSession(const std::string& path) {
    std::string text;
    const SessionFileResult result = sessionText(text);
    if (!result.ok) return failure(path + ": " + result.error);
    try {
        if (replaceFile(fs::u8path(path), text)) return result;
    } catch (const std::exception&) {
        // A name that the system cannot even spell.
    }
    return failure(path + ": cannot be written");
}

} // namespace embedded
