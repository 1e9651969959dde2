#include "embedded/session_file/ParameterSection.h"

#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/text/Numbers.h"

#include <string>

namespace embedded {

namespace {

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

void readAttributes(const JsonField& field, Node& node);

void readParameterState(const JsonField& field, ParameterObject& parameter) {
    if (const auto name = field.optional("user_name")) parameter.userName = name->text();
    if (const auto driven = field.optional("driven")) parameter.driven = driven->flag();
    if (const auto least = field.optional("least")) parameter.least = realOf(*least);
    if (const auto most = field.optional("most")) parameter.most = realOf(*most);
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
    field.expectKeys({"parameter", "type", "value", "user_name", "access", "driven", "least", "most", "attributes"});
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

const SessionSection parametersSection("parameters", readParameters, writeParameters);

} // namespace

void readParameters(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"units", "features", "products"});
    if (const auto units = field.optional("units")) readUnits(*units);
    if (const auto features = field.optional("features"))
        for (const JsonField& feature : features->elements()) readFeature(feature, reader);
    if (const auto products = field.optional("products"))
        for (const JsonField& product : products->elements()) readProduct(product, reader);
}

} // namespace embedded
