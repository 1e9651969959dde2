#include "embedded/session_file/ParameterSection.h"

#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/structure/Places.h"
#include "embedded/text/Numbers.h"

#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace embedded {

namespace {

std::string pointed(double value) {
    std::string text = shortestText(value);
    for (char& character : text)
        if (character == ',') character = '.';
    return text;
}

// Texts are checked when the whole is there: the digest takes the same tree as it is.

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
    if (std::isfinite(parameter.least)) json["least"] = pointed(parameter.least);
    if (std::isfinite(parameter.most)) json["most"] = pointed(parameter.most);
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

Json listOf(const std::vector<std::string>& texts) {
    Json json = Json::array();
    for (const std::string& text : texts) json.push_back(text);
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
    const Reference& root = *rootOf(product).reference();
    Json json{{"document", root.document->name()}};
    const ProductObject* const shown = root.component ? instanceOf(root) : nullptr;
    const Json names = listOf(namesBelowRoot(product));
    if (shown) {
        json["path"] = listOf(namesBelowRoot(*shown));
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

} // namespace

Json writeParameters(Session& session) {
    Json json = writeAll(session.data().part<KnowledgeData>());
    if (!json.isWellFormed()) throw SaveFault{"a text is not UTF-8"};
    return json;
}

void KnowledgeData::addToDigest(std::string& text) const {
    const Json json = writeAll(*this);
    if (!json.isNull()) text += "parameters " + json.dump() + "\n";
}

} // namespace embedded
