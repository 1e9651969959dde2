#include "tools/vorntools/RunCommand.h"

#include "tools/vorntools/JournalFile.h"

#include "VornToolsCommon.h"
#include "VornToolsWorkModeServices.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

/** Loads the session and runs a topic; the exit code. */
int runTopic(const CommonOptions& options, const std::function<int()>& run) {
    if (!options.loadSession()) return ExitUnusable;
    JournalFile journal(options.journal);
    VornToolsWorkModeServices::setCatiaCacheActivated(1); // parts that are only seen can be loaded
    const int code = run();
    return journal.finish() ? code : int{ExitUnusable};
}

} // namespace

Topics::Topics(Command& command) : m_command(command), m_options(std::make_shared<CommonOptions>()) {
    m_command.value("session", "SESSION", "Session file", &m_options->session).required();
}

Command& Topics::add(const std::string& name, const std::string& description, std::function<int()> run) {
    Command& topic = m_command.command(name, description,
                                       [options = m_options, run = std::move(run)] { return runTopic(*options, run); });
    m_options->addOutputTo(topic);
    return topic;
}

void Listing::add(std::vector<Json> values) {
    if (m_json) {
        Json object = Json::object();
        for (std::size_t i = 0; i < m_keys.size(); ++i) object.add(m_keys[i], std::move(values[i]));
        printJson(object);
        return;
    }
    m_rows.emplace_back();
    for (const Json& value : values) m_rows.back().push_back(value.cell());
}

void Listing::print() const {
    std::vector<Table::Column> columns;
    for (std::string heading : m_keys) {
        for (char& letter : heading)
            letter =
                letter == '_' ? ' ' : static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
        columns.push_back({heading});
    }
    Table table(columns);
    for (const auto& row : m_rows) table.add(row);
    table.print();
}

namespace {

void listBelow(const embedded::Product& product, std::vector<ListedProduct>& list) {
    CATUnicodeString path;
    VornToolsCommon::getProductPath(product.get(), path);
    list.push_back({product, bytesOf(path)});
    for (const embedded::Product& child : product.children()) listBelow(child, list);
}

/** Root products of documents that no other one of the session uses. */
std::vector<embedded::Product> rootsOfSession() {
    const embedded::Session& session = embedded::Session::current();
    std::vector<embedded::Product> roots;
    std::set<const embedded::ProductObject*> used;
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const embedded::Product root = session.documentAt(i).root();
        if (!root) continue;
        roots.push_back(root);
        std::vector<embedded::Product> open = root.children();
        while (!open.empty()) {
            const embedded::Product reference = open.back().reference();
            open.pop_back();
            if (!reference || !used.insert(reference.object()).second) continue;
            const std::vector<embedded::Product> below = reference.children();
            open.insert(open.end(), below.begin(), below.end());
        }
    }
    const auto isUsed = [&](const embedded::Product& root) { return used.count(root.object()) > 0; };
    roots.erase(std::remove_if(roots.begin(), roots.end(), isUsed), roots.end());
    return roots;
}

} // namespace

std::vector<ListedProduct> allProducts() {
    std::vector<ListedProduct> list;
    for (const embedded::Product& root : rootsOfSession()) listBelow(root, list);
    return list;
}

embedded::Product findProduct(const std::string& path) {
    for (const ListedProduct& listed : allProducts())
        if (listed.path == path) return listed.product;
    complain("no product " + path);
    return embedded::Product();
}

void addRunCommand(Command& program) {
    Topics topics(program.command("run", "The library's services on a session that a file describes", {}));
    addSessionTopics(topics);
    addModeTopics(topics);
    addSceneTopics(topics);
    addPropertyTopics(topics);
    addAttributeTopics(topics);
    addDesignTableTopics(topics);
}
