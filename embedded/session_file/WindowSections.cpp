#include "embedded/documents/SessionObject.h"
#include "embedded/frame/FrameData.h"
#include "embedded/session_file/SessionSections.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace embedded {

namespace {

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
    if (data.messages != usualMessages()) {
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

constexpr const char* kKinds[] = {"graphic", "plain", "desk"};
constexpr int kMostWindows = 1000000;

WindowKind readKind(const JsonField& field) {
    const auto isIt = [&field](const char* kind) { return field.text() == kind; };
    const auto* const found = std::find_if(std::begin(kKinds), std::end(kKinds), isIt);
    if (found == std::end(kKinds)) field.fail("\"graphic\", \"plain\" or \"desk\" is expected");
    return static_cast<WindowKind>(found - std::begin(kKinds));
}

/** Windows with the places that they have in the order of activation. */
using Activations = std::vector<std::pair<int, WindowObject*>>;

void readWindow(const JsonField& field, const SectionReader& reader, WindowObject*& active, Activations& order) {
    FrameData& data = reader.session().data().part<FrameData>();
    field.expectKeys({"document", "kind", "minimised", "active", "activated", "without"});
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
    const auto place = field.optional("activated");
    order.emplace_back(place ? place->integer(1, kMostWindows) : 0, &window);
    const auto isActive = field.optional("active");
    if (!isActive || !isActive->flag()) return;
    if (active) isActive->fail("a second active window");
    active = &window;
}

void readWindows(const JsonField& field, const SectionReader& reader) {
    WindowObject* active = nullptr;
    Activations order;
    for (const JsonField& window : field.elements()) readWindow(window, reader, active, order);
    std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    if (active) order.emplace_back(0, active);
    for (const auto& window : order) reader.session().data().part<FrameData>().activate(*window.second);
}

/** The windows as they were activated; empty when that is the order of opening, but for the active one. */
std::vector<const WindowObject*> activationsToWrite(const FrameData& data) {
    std::vector<const WindowObject*> order;
    for (const auto& window : data.windows)
        if (window.get() != data.active) order.push_back(window.get());
    const auto isEarlier = [](const WindowObject* a, const WindowObject* b) { return a->activated < b->activated; };
    if (std::is_sorted(order.begin(), order.end(), isEarlier)) return {};
    std::sort(order.begin(), order.end(), isEarlier);
    return order;
}

Json writeWindows(Session& session) {
    const FrameData& data = session.data().part<FrameData>();
    const std::vector<const WindowObject*> order = activationsToWrite(data);
    Json list = Json::array();
    for (const auto& window : data.windows) {
        Json object = Json::object();
        if (window->document()) object["document"] = checkedText(window->document()->name());
        if (window->kind != WindowKind::graphic) object["kind"] = kKinds[static_cast<int>(window->kind)];
        if (window->minimised) object["minimised"] = true;
        if (window.get() == data.active) object["active"] = true;
        const auto place = std::find(order.begin(), order.end(), window.get());
        if (place != order.end()) object["activated"] = static_cast<int>(place - order.begin()) + 1;
        writeWithout(object, {{"editor", window->editor != nullptr},
                              {"hold", window->holdsDocument},
                              {"navigation_box", window->hasNavigationBox}});
        list.push_back(std::move(object));
    }
    return list.empty() ? Json() : list;
}

const SessionSection frameSection("frame", readFrame, writeFrame);
const SessionSection windowsSection("windows", readWindows, writeWindows);

} // namespace

} // namespace embedded
