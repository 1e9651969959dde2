#include "embedded/frame/FrameData.h"
#include "embedded/session_file/SessionSections.h"

#include <string>
#include <utility>

namespace embedded {

namespace {

constexpr int kRankBehindDesignTables = 2;

void readItem(const JsonField& field, const SectionReader& reader, SelectionPath& path) {
    field.expectKeys({"product", "document", "feature", "object", "derived", "design_table"});
    if (const auto product = field.optional("product"))
        path.product(reader.place(*product));
    else if (const auto table = field.optional("design_table"))
        path.designTable(reader.document(field.required("document")), table->text());
    else if (const auto document = field.optional("document"))
        path.document(reader.document(*document));
    else if (const auto feature = field.optional("feature"))
        path.feature(feature->text());
    else if (const auto object = field.optional("object")) {
        const auto derived = field.optional("derived");
        path.object(object->text(), derived ? derived->text() : std::string());
    } else
        field.fail("one of \"product\", \"document\", \"feature\" and \"object\" is expected");
}

void readSelection(const JsonField& field, const SectionReader& reader) {
    FrameData& data = reader.session().data().part<FrameData>();
    for (const JsonField& entry : field.elements()) {
        entry.expectKeys({"document", "elements", "without"});
        const auto document = entry.optional("document");
        EditorObject& editor = data.editorOf(document ? reader.document(*document).object() : nullptr);
        readWithout(entry, {{"selection", &editor.hasSelection}});
        const auto elements = entry.optional("elements");
        if (!elements) continue;
        for (const JsonField& element : elements->elements()) {
            SelectionPath path;
            for (const JsonField& item : element.elements()) readItem(item, reader, path);
            editor.selection.add(path);
        }
    }
}

Json writeItem(const SelectionPath::Item& item) {
    using Kind = SelectionPath::Item::Kind;
    if (item.kind == Kind::product) return Json{{"product", placeOf(item.shown)}};
    if (item.kind == Kind::document) return Json{{"document", checkedText(item.opened.name())}};
    if (item.kind == Kind::designTable)
        return Json{{"design_table", checkedText(item.type)}, {"document", checkedText(item.opened.name())}};
    Json object{{item.kind == Kind::feature ? "feature" : "object", checkedText(item.type)}};
    if (!item.derived.empty()) object["derived"] = checkedText(item.derived);
    return object;
}

Json writeSelection(Session& session) {
    Json list = Json::array();
    for (const auto& editor : session.data().part<FrameData>().editors) {
        Json object = Json::object();
        if (editor->document) object["document"] = checkedText(editor->document->name());
        writeWithout(object, {{"selection", editor->hasSelection}});
        for (const auto& element : editor->selection.elements()) {
            Json path = Json::array();
            for (const SelectionPath::Item& item : element->path().items()) path.push_back(writeItem(item));
            object["elements"].push_back(std::move(path));
        }
        if (!editor->hasSelection || !editor->selection.elements().empty()) list.push_back(std::move(object));
    }
    return list.empty() ? Json() : list;
}

const SessionSection selectionSection("selection", readSelection, writeSelection, kRankBehindDesignTables);

} // namespace

} // namespace embedded
