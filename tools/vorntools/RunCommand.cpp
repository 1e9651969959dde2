#include "tools/vorntools/RunCommand.h"

#include "VornToolsCommon.h"
#include "VornToolsWorkModeServices.h"

#include "embedded/SessionFile.h"

#include <algorithm>
#include <set>

CLI::App& Topics::add(const std::string& name, const std::string& description, std::function<int()> run) {
    CLI::App* const topic = m_command.add_subcommand(name, description);
    topic->add_flag("--json", m_options->json, "One JSON object a line instead of a table");
    topic->add_option("--journal", m_options->journal, "File that receives the journal")->type_name("FILE");
    m_topics.emplace_back(topic, std::move(run));
    return *topic;
}

int Topics::run() const {
    const embedded::SessionFileResult result = embedded::loadSession(m_options->session);
    if (!result.ok) {
        complain(result.error);
        return ExitUnusable;
    }
    JournalFile journal(m_options->journal);
    VornToolsWorkModeServices::setCatiaCacheActivated(1); // parts that are only seen can be loaded
    for (const auto& topic : m_topics) {
        if (!topic.first->parsed()) continue;
        const int code = topic.second();
        return journal.finish() ? code : ExitUnusable;
    }
    return ExitUnusable;
}

namespace {

/** A list of texts as one text; "-" for none. */
std::string joined(const Json& texts) {
    std::string all;
    for (const Json& text : texts) all += (all.empty() ? "" : ", ") + text.get<std::string>();
    return all.empty() ? "-" : all;
}

} // namespace

void Listing::add(std::vector<Json> values) {
    if (m_json) {
        Json object = Json::object();
        for (std::size_t i = 0; i < m_keys.size(); ++i) object[m_keys[i]] = values[i];
        printJson(object);
        return;
    }
    std::vector<std::string> row;
    for (const Json& value : values) {
        if (value.is_string())
            row.push_back(value.get<std::string>());
        else if (value.is_array())
            row.push_back(joined(value));
        else if (value.is_boolean())
            row.emplace_back(value.get<bool>() ? "yes" : "no");
        else
            row.push_back(value.is_null() ? std::string("-")
                                          : value.dump(-1, ' ', false, Json::error_handler_t::replace));
    }
    m_rows.push_back(std::move(row));
}

void Listing::print() const {
    std::vector<std::string> headings;
    std::vector<Table::Column> columns;
    headings.reserve(m_keys.size());
    for (const char* key : m_keys) {
        headings.emplace_back(key);
        for (char& letter : headings.back())
            letter =
                letter == '_' ? ' ' : static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
        columns.push_back({headings.back().c_str()});
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

void addRunCommand(Program& program) {
    const auto topics = std::make_shared<std::unique_ptr<Topics>>();
    CLI::App& command = program.add("run", "The library's services on a session that a file describes",
                                    [topics] { return (*topics)->run(); });
    *topics = std::make_unique<Topics>(command);
    addSessionTopics(**topics);
    addModeTopics(**topics);
    addSceneTopics(**topics);
    addPropertyTopics(**topics);
    addAttributeTopics(**topics);
    addDesignTableTopics(**topics);
}
