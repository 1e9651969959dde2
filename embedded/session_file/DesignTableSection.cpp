#include "embedded/session_file/SessionSections.h"
#include "embedded/tables/DesignTableObjects.h"

#include <algorithm>
#include <cstdlib>

namespace embedded {

namespace {

constexpr int kRankBehindParameters = 1;

Node* childNamed(const Node& node, const std::string& name) {
    const Attribute* const children = node.children();
    if (!children) return nullptr;
    for (Node* const child : children->objects)
        if (child->displayName() == name) return child;
    return nullptr;
}

Node* below(Node* node, const std::vector<std::string>& names) {
    for (const std::string& name : names) node = node ? childNamed(*node, name) : nullptr;
    return node;
}

/** The object that stands above a node and everything below it, with the names from there to the node. */
struct Way {
    const Node* root;
    std::vector<std::string> names;
};

Way wayTo(const Node& node) {
    Way way{&node, {}};
    const auto isRoot = [](const Node& one) {
        const auto* const product = dynamic_cast<const ProductNode*>(one.parent);
        return !one.parent || (product && product->userProperties == &one);
    };
    while (!isRoot(*way.root)) {
        way.names.push_back(way.root->displayName());
        way.root = way.root->parent;
    }
    std::reverse(way.names.begin(), way.names.end());
    return way;
}

Json writeRoot(const Node& root) {
    if (const auto* const product = dynamic_cast<const ProductNode*>(&root))
        return Json{{"product", placeOf(Product(&product->product()))}};
    if (const auto* const product = dynamic_cast<const ProductNode*>(root.parent))
        return Json{{"user_properties", placeOf(Product(&product->product()))}};
    const auto* const feature = dynamic_cast<const FeatureNode*>(&root);
    if (!feature) throw SaveFault{"'" + root.displayName() + "' stands nowhere"};
    return Json{{"document", checkedText(feature->document()->name())}, {"feature", checkedText(feature->type())}};
}

/** Where a node stands. Two of one name below the same object cannot be told apart. */
Json writeWay(const Node& node) {
    const Way way = wayTo(node);
    if (below(const_cast<Node*>(way.root), way.names) != &node)
        throw SaveFault{"'" + node.displayName() + "' has the name of another object beside it"};
    Json json = writeRoot(*way.root);
    for (const std::string& name : way.names) json["path"].push_back(checkedText(name));
    return json;
}

Node* userPropertiesOf(const Product& reference) {
    return reference ? nodeOf(*reference.object()).userProperties : nullptr;
}

Node* readRoot(const JsonField& field, const SectionReader& reader) {
    if (const auto product = field.optional("product")) return &nodeOf(*reader.place(*product).object());
    if (const auto product = field.optional("user_properties"))
        return userPropertiesOf(reader.place(*product).reference());
    DocumentObject* const document = reader.document(field.required("document")).object();
    const auto& roots = KnowledgeData::get().roots;
    const auto found = roots.find({document, field.required("feature").text()});
    return found == roots.end() ? nullptr : found->second;
}

Node& readWay(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"product", "user_properties", "document", "feature", "path"});
    std::vector<std::string> names;
    if (const auto path = field.optional("path"))
        for (const JsonField& name : path->elements()) names.push_back(name.text());
    Node* const found = below(readRoot(field, reader), names);
    if (!found || !found->document()) field.fail("no such object");
    return *found;
}

Json writeRows(const SheetRows& rows) {
    Json json = Json::array();
    for (const auto& row : rows) {
        Json cells = Json::array();
        for (const std::string& cell : row) cells.push_back(cell);
        json.push_back(std::move(cells));
    }
    return json;
}

SheetRows readRows(const JsonField& field) {
    SheetBuilder sheet;
    std::size_t row = 0;
    for (const JsonField& line : field.elements()) {
        std::size_t column = 0;
        for (const JsonField& cell : line.elements())
            if (!sheet.put(row, column++, cell.text())) field.fail("too many cells");
        ++row;
    }
    return sheet.take();
}

/** Whether reading the file now gives what the table holds. */
bool isOfFile(const SheetState& sheet) {
    SheetState other;
    other.file = sheet.file;
    other.index = sheet.index;
    other.read();
    return other.rows == sheet.rows && other.date == sheet.date;
}

Json writeState(const DesignTableObject& table) {
    Json json{{"name", table.displayName()}, {"file", table.sheet.file}};
    if (table.sheet.index != 1) json["sheet"] = table.sheet.index;
    if (table.configuration != 1) json["configuration"] = table.configuration;
    if (!table.hasAutomation) json["without"].push_back("automation");
    if (!table.hasSheet) json["without"].push_back("sheet");
    if (table.sheet.isOpenElsewhere) json["open_elsewhere"] = true;
    return json;
}

void writeCells(const DesignTableObject& table, Json& json) {
    json["date"] = std::to_string(table.sheet.date);
    json["rows"] = writeRows(table.sheet.rows);
}

Json writeTable(const DesignTableObject& table) {
    checkedText(table.displayName());
    checkedText(table.sheet.file);
    Json json = writeState(table);
    json["below"] = writeWay(*table.parent);
    if (!isOfFile(table.sheet)) writeCells(table, json);
    for (const Association& one : table.associations)
        json["associations"].push_back({{"title", checkedText(one.title)}, {"parameter", writeWay(*one.parameter)}});
    return json;
}

Json writeDesignTables(Session& session) {
    Json json;
    for (const auto& table : session.data().part<DesignTablesData>().tables) json.push_back(writeTable(*table));
    return json;
}

void readCells(const JsonField& field, SheetState& sheet) {
    const auto rows = field.optional("rows");
    const auto date = field.optional("date");
    if (rows.has_value() != date.has_value()) field.fail("\"rows\" and \"date\" go together");
    if (!rows) {
        sheet.read();
        return;
    }
    sheet.date = std::strtoll(date->text().c_str(), nullptr, 10);
    if (std::to_string(sheet.date) != date->text()) date->fail("a number of seconds is expected");
    sheet.rows = readRows(*rows);
}

void readWithout(const JsonField& field, DesignTableObject& table) {
    const auto without = field.optional("without");
    if (!without) return;
    for (const JsonField& what : without->elements()) {
        if (what.text() == "automation")
            table.hasAutomation = false;
        else if (what.text() == "sheet")
            table.hasSheet = false;
        else
            what.fail("\"automation\" or \"sheet\" is expected");
    }
}

void readTable(const JsonField& field, const SectionReader& reader) {
    constexpr int kMost = 0x7FFFFFFF;
    field.expectKeys({"name", "file", "sheet", "configuration", "without", "open_elsewhere", "below", "date", "rows",
                      "associations"});
    Node& parent = readWay(field.required("below"), reader);
    DesignTableObject& table =
        DesignTablesData::get().add(parent, field.required("name").text(), reader.path(field.required("file")));
    if (const auto index = field.optional("sheet")) table.sheet.index = index->integer(-kMost, kMost);
    if (const auto number = field.optional("configuration")) table.configuration = number->integer(-kMost, kMost);
    readWithout(field, table);
    readCells(field, table.sheet);
    if (const auto isOpen = field.optional("open_elsewhere")) table.sheet.isOpenElsewhere = isOpen->flag();
    const auto associations = field.optional("associations");
    if (!associations) return;
    for (const JsonField& one : associations->elements()) {
        one.expectKeys({"title", "parameter"});
        const JsonField place = one.required("parameter");
        auto* const parameter = dynamic_cast<ParameterObject*>(&readWay(place, reader));
        if (!parameter) place.fail("a parameter is expected");
        if (!table.associate(one.required("title").text(), *parameter)) one.fail("associated already");
    }
}

void readDesignTables(const JsonField& field, const SectionReader& reader) {
    for (const JsonField& table : field.elements()) readTable(table, reader);
}

const SessionSection designTablesSection("design_tables", readDesignTables, writeDesignTables, kRankBehindParameters);

} // namespace

void DesignTablesData::addToDigest(std::string& text) const {
    for (const auto& table : tables) {
        Json json = writeState(*table);
        writeCells(*table, json);
        json["document"] = table->document()->name();
        json["below"] = table->parent->path(nullptr);
        for (const Association& one : table->associations)
            json["associations"].push_back(Json{{one.title, one.parameter->path(nullptr)}});
        text += "design table " + json.dump() + "\n";
    }
}

} // namespace embedded
