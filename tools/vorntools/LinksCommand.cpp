#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/archive/ArchiveOutput.h"

#include <memory>
#include <set>
#include <utility>

namespace {

struct LinksOptions {
    CommonOptions common;
    std::string type;
    bool dot = false;
    bool ghosts = false;
};

/** What a document points to, with its names as the command line writes them. */
class Listed {
public:
    Listed(const DocumentSearch& search, const std::string& document, const LinksOptions& options, LinkMemory& memory)
        : m_search(search), m_options(options), m_document(search.asGiven(document)),
          m_links(readDocumentLinks(document, options.type, memory)) {}

    const DocumentLinks& links() const { return m_links; }
    void show() const {
        if (m_options.common.json)
            printJson(json());
        else if (!m_links.read)
            complain(m_document + " cannot be read");
        else
            m_options.dot ? printDot() : printTable();
    }

private:
    Json json() const;
    Json jsonOf(const std::vector<NamedDocument>& documents) const;
    Json jsonOf(const OtherNamed& other) const;
    Json jsonOf(const TypedLink& link) const;
    void printTable() const;
    void printDot() const;

    const DocumentSearch& m_search;
    const LinksOptions& m_options;
    const std::string m_document;
    const DocumentLinks m_links;
};

Json textsOf(const std::vector<std::string>& texts) {
    Json array = Json::array();
    for (const std::string& text : texts) array.push_back(text);
    return array;
}

Json Listed::jsonOf(const std::vector<NamedDocument>& documents) const {
    Json array = Json::array();
    for (const NamedDocument& document : documents)
        array.push_back(Json::object({{"name", m_search.asGiven(document.name)}, {"exists", document.exists}}));
    return array;
}

Json Listed::jsonOf(const OtherNamed& other) const {
    return Json::object({{"kind", other.kind},
                         {"name", m_search.asGiven(other.document.name)},
                         {"exists", other.document.exists},
                         {"uses", other.uses}});
}

/** A link that says only which element it means has no document that could be there or not. */
Json Listed::jsonOf(const TypedLink& link) const {
    const bool named = !link.document.name.empty();
    return Json::object({{"type", link.type},
                         {"name", named ? Json(m_search.asGiven(link.document.name)) : Json()},
                         {"exists", named ? Json(link.document.exists) : Json()},
                         {"reference", link.reference},
                         {"tag_found", link.tagFound}});
}

Json Listed::json() const {
    if (!m_links.read) return Json::object({{"document", m_document}, {"error", "cannot be read"}});
    Json links = Json::array();
    for (const TypedLink& link : m_links.links) links.push_back(jsonOf(link));
    Json others = Json::array();
    for (const OtherNamed& other : m_links.others) others.push_back(jsonOf(other));
    Json object = Json::object({{"document", m_document},
                                {"condition", m_links.condition.json()},
                                {"version", Json::array({m_links.version, m_links.release, m_links.servicePack})},
                                {"part_files", jsonOf(m_links.partFiles)},
                                {"context_products", jsonOf(m_links.contextProducts)},
                                {"context_parts", jsonOf(m_links.contextParts)},
                                {"other_documents", std::move(others)},
                                {"external_references", textsOf(m_links.externalReferences)},
                                {"links", std::move(links)}});
    if (m_options.ghosts) object.add("ghosts", textsOf(m_links.ghosts));
    return object;
}

void Listed::printTable() const {
    print(printable(m_document) + "  V" + std::to_string(m_links.version) + " R" + std::to_string(m_links.release) +
          " SP" + std::to_string(m_links.servicePack) +
          (m_links.condition.isTold() ? "  " + m_links.condition.text : "") + "\n");
    Table table({{""}, {"LINK"}, {"DOCUMENT"}, {"ELEMENT"}});
    std::set<std::pair<std::string, std::string>> shown;
    const auto addDocuments = [&](const std::string& kind, const std::vector<NamedDocument>& documents) {
        for (const NamedDocument& document : documents)
            if (shown.insert({kind, document.name}).second)
                table.add({document.exists ? "" : "missing", kind, m_search.asGiven(document.name), ""});
    };
    addDocuments("part file", m_links.partFiles);
    addDocuments("context product", m_links.contextProducts);
    addDocuments("context part", m_links.contextParts);
    for (const OtherNamed& other : m_links.others) addDocuments(other.kind, {other.document});
    for (const TypedLink& link : m_links.links)
        table.add({link.isMissing() ? "missing" : "", link.type, m_search.asGiven(link.document.name), link.reference});
    if (m_options.ghosts)
        for (const std::string& ghost : m_links.ghosts) table.add({"unused", "ghost", ghost, ""});
    table.print();
    print("\n");
}

/** Edges to every document once, those to missing ones dashed; as text for Graphviz. */
void Listed::printDot() const {
    const std::string source = dotQuoted(m_document);
    std::string lines = "  " + source + ";\n";
    std::set<std::string> shown;
    const auto addEdge = [&](const NamedDocument& target) {
        if (target.name.empty() || !shown.insert(target.name).second) return;
        const std::string name = dotQuoted(m_search.asGiven(target.name));
        const std::string style = target.exists ? "" : " [color=red, style=dashed]";
        if (!target.exists) lines += "  " + name + style + ";\n";
        lines += "  " + source + " -> " + name + style + ";\n";
    };
    for (const auto* const list : {&m_links.partFiles, &m_links.contextProducts, &m_links.contextParts})
        for (const NamedDocument& target : *list) addEdge(target);
    for (const OtherNamed& other : m_links.others) addEdge(other.document);
    for (const TypedLink& link : m_links.links) addEdge(link.document);
    print(lines);
}

int runLinks(const LinksOptions& options) {
    if (!options.common.loadSession()) return ExitUnusable;
    DocumentSearch search;
    bool usable = search.search(options.common.names);
    const std::vector<std::string> documents = documentsOf(search, options.common.names);
    JournalFile journal(options.common.journal);
    LinkMemory memory;
    bool findings = false;
    if (options.dot) print("digraph links {\n  rankdir=LR;\n  node [shape=box];\n");
    {
        Progress progress(documents.size(), "documents");
        for (const std::string& document : documents) {
            const Listed listed(search, document, options, memory);
            listed.show();
            usable = usable && listed.links().read;
            findings = findings || listed.links().anyMissing() || listed.links().condition.isFinding;
            journal.take();
            progress.step();
        }
    }
    if (options.dot) print("}\n");
    if (!journal.finish() || !usable) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addLinksCommand(Command& program) {
    const auto options = std::make_shared<LinksOptions>();
    Command& command = program.command("links", "What each document points to, where it is found, what is missing",
                                       [options] { return runLinks(*options); });
    command.value("file", "FILE", "Documents, and folders searched with all below them", &options->common.names)
        .required();
    command
        .value("--type", "TYPE",
               "Typed links to list: MML, MMLASSY, MMLDrawing (by default all, of a drawing MMLDrawing)",
               &options->type)
        .oneOf({"MML", "MMLASSY", "MMLDrawing"});
    command.flag("--dot", "A graph for Graphviz instead of tables", options->dot).excludes("--json");
    command.flag("--ghosts", "Also documents that the file names but nothing uses any more", options->ghosts);
    options->common.addTo(command);
}
