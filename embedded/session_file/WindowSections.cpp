#include "embedded/documents/SessionObject.h"
#include "embedded/frame/Frame.h"
#include "embedded/session_file/SessionSections.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <utility>

namespace embedded {

namespace {

constexpr const char* kKinds[] = {"graphic", "plain", "desk"};

/** What is missing: a name and the flag that says so when it is false. */
using Part = std::pair<const char*, bool*>;

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

// The application around the windows.

void readFrame(const JsonField& field, const SectionReader& reader) {
    FrameData& data = reader.session().data().part<FrameData>();
    field.expectKeys({"without", "messages", "locks"});
    readWithout(field, {{"session", &reader.session().data().part<SessionDocuments>().exists},
                        {"layout", &data.hasLayout},
                        {"current_editor", &data.hasCurrentEditor}});
    if (const auto messages = field.optional("messages")) {
        data.messages.clear();
        for (const JsonField& message : messages->elements()) {
            message.expectKeys({"catalogue", "key", "text"});
            data.messages[{message.required("catalogue").text(), message.required("key").text()}] =
                message.required("text").text();
        }
    }
    if (const auto locks = field.optional("locks"))
        for (const JsonField& lock : locks->elements()) ++data.locks[reader.document(lock).object()];
}

Json writeFrame(Session& session) {
    const FrameData& data = session.data().part<FrameData>();
    Json object = Json::object();
    writeWithout(object, {{"session", session.data().part<SessionDocuments>().exists},
                          {"layout", data.hasLayout},
                          {"current_editor", data.hasCurrentEditor}});
    if (data.messages != FrameData::usualMessages()) {
        object["messages"] = Json::array();
        for (const auto& message : data.messages)
            object["messages"].push_back(Json{{"catalogue", checkedText(message.first.first)},
                                              {"key", checkedText(message.first.second)},
                                              {"text", checkedText(message.second)}});
    }
    for (const auto& document : session.data().documents) {
        const auto lock = data.locks.find(document.get());
        for (int i = 0; lock != data.locks.end() && i < lock->second; ++i)
            object["locks"].push_back(checkedText(document->name()));
    }
    return object.empty() ? Json() : object;
}

// Windows.

WindowKind readKind(const JsonField& field) {
    const auto isIt = [&field](const char* kind) { return field.text() == kind; };
    const auto* const found = std::find_if(std::begin(kKinds), std::end(kKinds), isIt);
    if (found == std::end(kKinds)) field.fail("\"graphic\", \"plain\" or \"desk\" is expected");
    return static_cast<WindowKind>(found - std::begin(kKinds));
}

void readWindow(const JsonField& field, const SectionReader& reader, WindowObject*& active) {
    FrameData& data = reader.session().data().part<FrameData>();
    field.expectKeys({"document", "kind", "minimised", "active", "without"});
    const auto document = field.optional("document");
    const auto kind = field.optional("kind");
    bool hasEditor = true;
    bool holds = true;
    bool hasBox = true;
    readWithout(field, {{"editor", &hasEditor}, {"hold", &holds}, {"navigation_box", &hasBox}});
    if (document && !hasEditor) document->fail("a window without editor shows no document");
    DocumentObject* const shown = document ? reader.document(*document).object() : nullptr;
    WindowObject& window =
        data.openWindow(kind ? readKind(*kind) : WindowKind::graphic, hasEditor ? &data.editorOf(shown) : nullptr);
    window.holdsDocument = holds;
    window.hasNavigationBox = hasBox;
    if (const auto minimised = field.optional("minimised")) window.minimised = minimised->flag();
    const auto isActive = field.optional("active");
    if (!isActive || !isActive->flag()) return;
    if (active) isActive->fail("a second active window");
    active = &window;
}

void readWindows(const JsonField& field, const SectionReader& reader) {
    WindowObject* active = nullptr;
    for (const JsonField& window : field.elements()) readWindow(window, reader, active);
    if (active) reader.session().data().part<FrameData>().active = active;
}

Json writeWindows(Session& session) {
    const FrameData& data = session.data().part<FrameData>();
    Json list = Json::array();
    for (const auto& window : data.windows) {
        Json object = Json::object();
        if (window->document()) object["document"] = checkedText(window->document()->name());
        if (window->kind != WindowKind::graphic) object["kind"] = kKinds[static_cast<int>(window->kind)];
        if (window->minimised) object["minimised"] = true;
        if (window.get() == data.active) object["active"] = true;
        writeWithout(object, {{"editor", window->editor != nullptr},
                              {"hold", window->holdsDocument},
                              {"navigation_box", window->hasNavigationBox}});
        list.push_back(std::move(object));
    }
    return list.empty() ? Json() : list;
}

// What is selected.

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

const SessionSection frameSection("frame", readFrame, writeFrame);
const SessionSection selectionSection("selection", readSelection, writeSelection, kRankBehindDesignTables);
const SessionSection windowsSection("windows", readWindows, writeWindows);

} // namespace

} // namespace embedded
