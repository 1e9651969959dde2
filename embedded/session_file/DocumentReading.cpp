#include "embedded/session_file/DocumentSection.h"

#include "embedded/documents/SessionData.h"

#include <map>
#include <string>
#include <vector>

namespace embedded {

namespace {

class DocumentReader {
public:
    explicit DocumentReader(const SectionReader& reader) : m_session(reader.session()), m_reader(reader) {}

    void read(const JsonField& list) {
        const std::vector<JsonField> documents = list.elements();
        for (const JsonField& document : documents) readDocument(document);
        for (std::size_t i = 0; i < documents.size(); ++i) {
            m_components.clear();
            readChildren(documents[i], m_session.documentAt(i).root());
        }
        for (std::size_t i = 0; i < documents.size(); ++i)
            readOccurrences(documents[i], m_session.documentAt(i).root());
    }

private:
    void readDocument(const JsonField& field) {
        field.expectKeys({"name", "type", "uuid", "saved", "on_disk", "up_to_date", "part_number", "description_ref",
                          "master_shape", "shapes", "children", "without"});
        const JsonField nameField = field.required("name");
        const std::string name = m_reader.path(nameField);
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
        if (const auto masterShape = field.optional("master_shape")) product.masterShape(m_reader.path(*masterShape));
        const auto shapes = field.optional("shapes");
        if (!shapes) return;
        for (const JsonField& shape : shapes->elements()) {
            shape.expectKeys({"name", "path"});
            product.shape(shape.required("name").text(), m_reader.path(shape.required("path")));
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
        const std::string documentName = m_reader.path(field);
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
    const SectionReader& m_reader;
    std::map<std::string, Product> m_components; ///< of the document being read, by their ids
    int m_depth = 0;                             ///< components around the one being read
};

constexpr int kDocumentsRank = -1;

const SessionSection documentsSection("documents", readDocuments, writeDocuments, kDocumentsRank);

} // namespace

void readDocuments(const JsonField& field, const SectionReader& reader) { DocumentReader(reader).read(field); }

} // namespace embedded
