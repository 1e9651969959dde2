#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/Output.h"

#include <cstdio>
#include <memory>
#include <set>

namespace {

struct LinksOptions {
    CommonOptions common;
    std::string type;
    bool dot = false;
    bool ghosts = false;
};

Json jsonOf(const std::vector<NamedDocument>& documents) {
    Json array = Json::array();
    for (const NamedDocument& document : documents)
        array.push_back(Json{{"name", textOrHex(document.name)}, {"exists", document.exists}});
    return array;
}

Json jsonOf(const std::vector<std::string>& texts) {
    Json array = Json::array();
    for (const std::string& text : texts) array.push_back(textOrHex(text));
    return array;
}

Json jsonOf(const std::vector<TypedLink>& links) {
    Json array = Json::array();
    for (const TypedLink& link : links)
        array.push_back(Json{{"type", link.type},
                             {"name", textOrHex(link.document.name)},
                             {"exists", link.document.exists},
                             {"reference", textOrHex(link.reference)},
                             {"tag_found", link.tagFound}});
    return array;
}

Json jsonOf(const std::string& document, const DocumentLinks& links, bool withGhosts) {
    Json object{{"document", document}};
    if (!links.read) {
        object["error"] = "cannot be read";
        return object;
    }
    object["version"] = {links.version, links.release, links.servicePack};
    object["part_files"] = jsonOf(links.partFiles);
    object["context_products"] = jsonOf(links.contextProducts);
    object["context_parts"] = jsonOf(links.contextParts);
    object["external_references"] = jsonOf(links.externalReferences);
    object["links"] = jsonOf(links.links);
    if (withGhosts) object["ghosts"] = jsonOf(links.ghosts);
    return object;
}

/** Rows of one document for people. */
class LinkTable {
public:
    LinkTable() : m_table({{""}, {"LINK"}, {"DOCUMENT"}, {"ELEMENT"}}) {}

    void addDocuments(const char* kind, const std::vector<NamedDocument>& documents) {
        std::set<std::string> shown;
        for (const NamedDocument& document : documents)
            if (shown.insert(document.name).second) add(document.exists ? "" : "missing", kind, document.name, "");
    }
    void add(const char* state, const std::string& kind, const std::string& name, const std::string& element) {
        m_table.add({state, kind, textOrHex(name), textOrHex(element)});
    }
    void print() const { m_table.print(); }

private:
    Table m_table;
};

void print(const std::string& document, const DocumentLinks& links, bool withGhosts) {
    std::printf("%s  V%d R%d SP%d\n", document.c_str(), links.version, links.release, links.servicePack);
    LinkTable table;
    table.addDocuments("part file", links.partFiles);
    table.addDocuments("context product", links.contextProducts);
    table.addDocuments("context part", links.contextParts);
    for (const TypedLink& link : links.links) {
        const bool missing = !link.document.name.empty() && !link.document.exists;
        table.add(missing ? "missing" : "", link.type, link.document.name, link.reference);
    }
    if (withGhosts)
        for (const std::string& ghost : links.ghosts) table.add("unused", "ghost", ghost, "");
    table.print();
    std::putchar('\n');
}

std::string dotQuoted(const std::string& text) {
    std::string result = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') result += '\\';
        result += letter;
    }
    return result + "\"";
}

/** Edges to every document once, those to missing ones dashed; as text for Graphviz. */
void printDot(const std::string& document, const DocumentLinks& links) {
    std::printf("  %s;\n", dotQuoted(document).c_str());
    std::set<std::string> shown;
    const auto edge = [&](const NamedDocument& target) {
        if (target.name.empty() || !shown.insert(target.name).second) return;
        const std::string name = dotQuoted(textOrHex(target.name));
        if (!target.exists) std::printf("  %s [color=red, style=dashed];\n", name.c_str());
        std::printf("  %s -> %s%s;\n", dotQuoted(document).c_str(), name.c_str(),
                    target.exists ? "" : " [color=red, style=dashed]");
    };
    for (const auto* const list : {&links.partFiles, &links.contextProducts, &links.contextParts})
        for (const NamedDocument& target : *list) edge(target);
    for (const TypedLink& link : links.links) edge(link.document);
}

void show(const std::string& document, const DocumentLinks& links, const LinksOptions& options) {
    if (options.common.json)
        printJson(jsonOf(document, links, options.ghosts));
    else if (!links.read)
        complain(document + " cannot be read");
    else
        options.dot ? printDot(document, links) : print(document, links, options.ghosts);
}

/** A folder's documents are those with a suffix of CATIA; one that is named is taken whatever it is called. */
std::vector<std::string> documentsOf(const DocumentSearch& search, const std::vector<std::string>& names) {
    const std::set<std::string> given(names.begin(), names.end());
    std::vector<std::string> documents;
    for (const FoundDocument& found : search.found())
        if (found.exists && (given.count(found.name) > 0 || isCatiaDocument(found.name)))
            documents.push_back(found.name);
    return documents;
}

int runLinks(const LinksOptions& options) {
    if (!options.common.loadSession()) return ExitUnusable;
    DocumentSearch search;
    bool usable = search.search(options.common.names);
    const std::vector<std::string> documents = documentsOf(search, options.common.names);
    JournalFile journal(options.common.journal);
    VornToolsFolderMemory folders;
    bool missing = false;
    if (options.dot) std::puts("digraph links {\n  rankdir=LR;\n  node [shape=box];");
    {
        Progress progress(documents.size(), "documents");
        for (const std::string& document : documents) {
            const DocumentLinks links = readDocumentLinks(document, options.type, folders);
            show(document, links, options);
            usable = usable && links.read;
            missing = missing || links.anyMissing();
            journal.take();
            progress.step();
        }
    }
    if (options.dot) std::puts("}");
    if (!journal.finish() || !usable) return ExitUnusable;
    return missing ? ExitFindings : ExitFine;
}

} // namespace

void addLinksCommand(Program& program) {
    const auto options = std::make_shared<LinksOptions>();
    CLI::App& command = program.add("links", "What each document points to, where it is found, what is missing",
                                    [options] { return runLinks(*options); });
    command.add_option("file", options->common.names, "Documents, and folders searched with all below them")
        ->required()
        ->type_name("FILE");
    command
        .add_option("--type", options->type,
                    "Typed links to list: MML, MMLASSY, MMLDrawing (by default all, of a drawing MMLDrawing)")
        ->check(CLI::IsMember({"MML", "MMLASSY", "MMLDrawing"}))
        ->type_name("TYPE");
    CLI::Option* const dot = command.add_flag("--dot", options->dot, "A graph for Graphviz instead of tables");
    command.add_flag("--ghosts", options->ghosts, "Also documents that the file names but nothing uses any more");
    options->common.addTo(command);
    command.get_option("--json")->excludes(dot);
}
