#include "embedded/Parameters.h"
#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/session_file/SessionSections.h"
#include "embedded/text/Numbers.h"

#include <functional>

namespace embedded {

namespace {

constexpr const char* kAccess[] = {"not_seen", "read_only", "write_only", "read_write", "user"};
constexpr int kUsualAccess = CATICkeParm::ReadWrite;

// Numbers stand as texts with a decimal point, so that not one digit is lost.

std::string pointed(double value) {
    std::string text = shortestText(value);
    for (char& character : text)
        if (character == ',') character = '.';
    return text;
}

double realOf(const JsonField& field) {
    double value = 0.0;
    std::size_t rest = 0;
    if (!readReal(field.text(), '.', value, rest) || rest != field.text().size()) field.fail("a number is expected");
    return value;
}

int integerOf(const JsonField& field) {
    int value = 0;
    if (!toText(field.text()).ConvertToNum(&value) || std::to_string(value) != field.text())
        field.fail("an integer is expected");
    return value;
}

// Writing. Texts are checked when the whole is there: the digest takes the same tree as it is.

Json writeObject(const Node& node);

Json writeAttribute(const Attribute& attribute) {
    Json json{{"name", attribute.key->name}};
    if (attribute.key->kind == tk_string) {
        json["text"] = attribute.texts.empty() ? std::string() : attribute.texts.front();
        return json;
    }
    if (attribute.key->kind == tk_component) {
        json["object"] = attribute.objects.empty() ? Json() : writeObject(*attribute.objects.front());
        return json;
    }
    const char* const key = attribute.isListOf(tk_string)    ? "texts"
                            : attribute.isListOf(tk_integer) ? "integers"
                            : attribute.isListOf(tk_double)  ? "reals"
                                                             : "objects";
    Json& list = json[key] = Json::array();
    for (const std::string& text : attribute.texts) list.push_back(text);
    for (const int value : attribute.integers) list.push_back(std::to_string(value));
    for (const double value : attribute.reals) list.push_back(pointed(value));
    for (const Node* object : attribute.objects) list.push_back(writeObject(*object));
    return json;
}

void writeAttributes(Json& json, const Node& node) {
    for (const auto& attribute : node.attributes) json["attributes"].push_back(writeAttribute(*attribute));
}

Json writeParameter(const ParameterObject& parameter) {
    Json json{{"parameter", parameter.role}, {"type", parameter.type().name()}};
    if (parameter.isSet)
        json["value"] = parameter.type().isReal()             ? pointed(parameter.real)
                        : parameter.type().name() == "String" ? parameter.text
                                                              : std::to_string(parameter.integer);
    if (!parameter.userName.empty()) json["user_name"] = parameter.userName;
    if (parameter.access != kUsualAccess) json["access"] = kAccess[parameter.access];
    if (parameter.driven) json["driven"] = true;
    writeAttributes(json, parameter);
    return json;
}

Json writeFeature(const FeatureNode& feature) {
    Json json{{"set", feature.displayName()}};
    writeAttributes(json, feature);
    return json;
}

Json writeObject(const Node& node) {
    if (const auto* const parameter = dynamic_cast<const ParameterObject*>(&node)) return writeParameter(*parameter);
    return writeFeature(dynamic_cast<const FeatureNode&>(node));
}

/** Names from below a reference, which is the root of its tree, down to a place. */
Json namesBelowReference(const ProductObject& product) {
    std::vector<std::string> names;
    for (const ProductObject* place = &product; place->father(); place = place->father())
        names.push_back(place->instanceName());
    Json json = Json::array();
    for (auto name = names.rbegin(); name != names.rend(); ++name) json.push_back(*name);
    return json;
}

/** An instance that shows a component, in the tree of its document's root product. */
const ProductObject* instanceOf(const Reference& component) {
    if (component.usedIn.empty()) return nullptr;
    const Reference& user = *component.usedIn.front();
    for (std::size_t i = 0; i < user.node->childCount(); ++i) {
        const ProductObject* const child = user.node->child(i);
        if (child->reference() != &component) continue;
        if (!user.component) return child;
        const ProductObject* const above = instanceOf(user);
        return above ? above->child(i) : nullptr;
    }
    return nullptr;
}

/** Where a product stands. What lies in a component is named by an instance that shows the component and by the way
 * from there. */
Json writePlace(const ProductObject& product) {
    const ProductObject* root = &product;
    while (root->father()) root = root->father();
    Json json{{"document", root->reference()->document->name()}};
    const ProductObject* const shown = root->reference()->component ? instanceOf(*root->reference()) : nullptr;
    const Json names = namesBelowReference(product);
    if (shown) {
        json["path"] = namesBelowReference(*shown);
        json["inside"] = names;
    } else if (!names.empty()) {
        json["path"] = names;
    }
    return json;
}

Json writeProduct(const ProductNode& node) {
    Json json{{"product", writePlace(node.product())}};
    if (!node.definition.empty()) json["definition"] = node.definition;
    if (!node.revision.empty()) json["revision"] = node.revision;
    if (!node.nomenclature.empty()) json["nomenclature"] = node.nomenclature;
    for (const auto& property : node.item.properties) json["pdm_properties"][property.first] = property.second;
    if (node.userProperties) {
        json["user_properties"] = Json::object();
        writeAttributes(json["user_properties"], *node.userProperties);
    }
    writeAttributes(json, node);
    return json;
}

/** The products that have something of their own, in an order that does not depend on who asked for them first. */
std::map<std::string, Json> writeProducts(const SessionData& session) {
    std::map<std::string, Json> products;
    for (const auto& product : session.products) {
        const ProductNode* const node = existingExtension<ProductNode>(*product);
        if (!node || node->isEmpty()) continue;
        Json json = writeProduct(*node);
        const std::string place = json["product"].dump();
        products.emplace(place, std::move(json));
    }
    return products;
}

Json writeAll(const KnowledgeData& data) {
    Json json;
    for (const auto& type : data.types)
        if (type->isMagnitude() && !type->isUsual()) json["units"][type->name()] = type->current().symbol();
    std::map<std::pair<std::string, std::string>, const FeatureNode*> roots;
    for (const auto& root : data.roots) {
        const FeatureNode& feature = *root.second;
        if (feature.implied && feature.attributes.empty() && feature.relations.empty()) continue;
        roots[{root.first.first->name(), root.first.second}] = &feature;
    }
    for (const auto& root : roots) {
        Json feature{{"document", root.first.first}, {"type", root.first.second}, {"name", root.second->displayName()}};
        writeAttributes(feature, *root.second);
        json["features"].push_back(std::move(feature));
    }
    for (auto& product : writeProducts(data.session)) json["products"].push_back(std::move(product.second));
    return json;
}

Json write(Session& session) {
    Json json = writeAll(session.data().part<KnowledgeData>());
    if (!json.isWellFormed()) throw SaveFault{"a text is not UTF-8"};
    return json;
}

// Reading.

void readAttributes(const JsonField& field, Node& node);

void readParameterState(const JsonField& field, ParameterObject& parameter) {
    if (const auto name = field.optional("user_name")) parameter.userName = name->text();
    if (const auto driven = field.optional("driven")) parameter.driven = driven->flag();
    if (const auto access = field.optional("access")) {
        int mode = 0;
        while (mode <= CATICkeParm::User && access->text() != kAccess[mode]) ++mode;
        if (mode > CATICkeParm::User) access->fail("no access is named '" + access->text() + "'");
        parameter.access = static_cast<CATICkeParm::UserAccessMode>(mode);
    }
    const auto value = field.optional("value");
    parameter.isSet = value.has_value();
    if (!value) return;
    if (parameter.type().isReal())
        parameter.real = realOf(*value);
    else if (parameter.type().name() == "String")
        parameter.text = value->text();
    else
        parameter.integer = integerOf(*value);
}

Node& readObject(const JsonField& field, Node& parent) {
    KnowledgeData& data = KnowledgeData::get();
    if (const auto set = field.optional("set")) {
        field.expectKeys({"set", "attributes"});
        FeatureNode& made = data.newFeature(*parent.document(), FeatureNode::kSet, set->text());
        return made;
    }
    field.expectKeys({"parameter", "type", "value", "user_name", "access", "driven", "attributes"});
    const JsonField role = field.required("parameter");
    const JsonField type = field.required("type");
    if (!data.type(type.text())) type.fail("no type is named '" + type.text() + "'");
    ParameterObject& made = data.newParameter(*parent.document(), type.text(), role.text());
    readParameterState(field, made);
    return made;
}

void readChild(const JsonField& field, Node& node, Attribute& attribute) {
    Node& child = readObject(field, node);
    if (!node.adopt(attribute, child)) field.fail("sets nested too deeply");
    readAttributes(field, child);
}

Attribute& addedAttribute(const JsonField& field, Node& node, CATAttrKind kind, CATAttrKind listKind) {
    const JsonField name = field.required("name");
    Attribute* const attribute = node.addAttribute(name.text(), kind, listKind);
    if (!attribute) name.fail("a second attribute named '" + name.text() + "'");
    return *attribute;
}

void readAttribute(const JsonField& field, Node& node) {
    field.expectKeys({"name", "text", "object", "texts", "integers", "reals", "objects"});
    if (const auto text = field.optional("text")) {
        addedAttribute(field, node, tk_string, tk_list).texts = {text->text()};
    } else if (const auto object = field.optional("object")) {
        Attribute& attribute = addedAttribute(field, node, tk_component, tk_list);
        if (object->value().kind != JsonValue::Kind::null) readChild(*object, node, attribute);
    } else if (const auto texts = field.optional("texts")) {
        Attribute& attribute = addedAttribute(field, node, tk_list, tk_string);
        for (const JsonField& item : texts->elements()) attribute.texts.push_back(item.text());
    } else if (const auto integers = field.optional("integers")) {
        Attribute& attribute = addedAttribute(field, node, tk_list, tk_integer);
        for (const JsonField& item : integers->elements()) attribute.integers.push_back(integerOf(item));
    } else if (const auto reals = field.optional("reals")) {
        Attribute& attribute = addedAttribute(field, node, tk_list, tk_double);
        for (const JsonField& item : reals->elements()) attribute.reals.push_back(realOf(item));
    } else {
        const JsonField objects = field.required("objects");
        Attribute& attribute = addedAttribute(field, node, tk_list, tk_component);
        for (const JsonField& item : objects.elements()) readChild(item, node, attribute);
    }
}

void readAttributes(const JsonField& field, Node& node) {
    const auto attributes = field.optional("attributes");
    if (!attributes) return;
    for (const JsonField& attribute : attributes->elements()) readAttribute(attribute, node);
}

ProductObject& readPlace(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"document", "path", "inside"});
    Product product = reader.document(field.required("document")).root();
    if (!product) field.fail("the document has no product");
    for (const char* const key : {"path", "inside"}) {
        const auto names = field.optional(key);
        if (!names) continue;
        if (key[0] == 'i') product = product.reference();
        for (const JsonField& name : names->elements()) {
            product = product.at({name.text()});
            if (!product) name.fail("no such instance");
        }
    }
    if (!product.reference()) field.fail("the product is not loaded");
    return *product.object();
}

void readProduct(const JsonField& field, const SectionReader& reader) {
    field.expectKeys(
        {"product", "definition", "revision", "nomenclature", "pdm_properties", "user_properties", "attributes"});
    ProductNode& node = nodeOf(readPlace(field.required("product"), reader));
    if (const auto definition = field.optional("definition")) node.definition = definition->text();
    if (const auto revision = field.optional("revision")) node.revision = revision->text();
    if (const auto nomenclature = field.optional("nomenclature")) node.nomenclature = nomenclature->text();
    if (const auto properties = field.optional("pdm_properties"))
        for (const JsonField& property : properties->members())
            if (!node.item.properties.emplace(property.key(), property.text()).second) property.fail("given twice");
    if (const auto properties = field.optional("user_properties")) {
        properties->expectKeys({"attributes"});
        readAttributes(*properties, KnowledgeData::get().userProperties(node));
    }
    readAttributes(field, node);
}

void readFeature(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"document", "type", "name", "attributes"});
    DocumentObject& document = *reader.document(field.required("document")).object();
    const std::string type = field.required("type").text();
    if (KnowledgeData::get().roots.count({&document, type})) field.fail("given twice");
    const auto name = field.optional("name");
    readAttributes(field, KnowledgeData::get().feature(document, type, name ? name->text() : type));
}

void readUnits(const JsonField& field) {
    for (const JsonField& unit : field.members()) {
        TypeObject* const type = KnowledgeData::get().type(unit.key());
        if (!type || !type->isMagnitude()) unit.fail("no magnitude has that name");
        if (!type->select(unit.text())) unit.fail("no unit of it is named '" + unit.text() + "'");
    }
}

void read(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"units", "features", "products"});
    if (const auto units = field.optional("units")) readUnits(*units);
    if (const auto features = field.optional("features"))
        for (const JsonField& feature : features->elements()) readFeature(feature, reader);
    if (const auto products = field.optional("products"))
        for (const JsonField& product : products->elements()) readProduct(product, reader);
}

const SessionSection section("parameters", read, write);

} // namespace

void KnowledgeData::addToDigest(std::string& text) const {
    const Json json = writeAll(*this);
    if (!json.isNull()) text += "parameters " + json.dump() + "\n";
}

} // namespace embedded
