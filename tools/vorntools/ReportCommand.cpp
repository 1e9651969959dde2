#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/DocumentStatus.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/LinkGraph.h"
#include "tools/vorntools/Output.h"

#include <filesystem>
#include <fstream>
#include <memory>

namespace fs = std::filesystem;

namespace {

/** A drawing of more documents helps nobody. */
constexpr std::size_t kMostDrawn = 400;

constexpr const char* kStyle =
    "body{font:14px sans-serif;margin:2em;color:#222}table{border-collapse:collapse}"
    "th,td{text-align:left;padding:3px 12px 3px 0;border-bottom:1px solid #ddd;vertical-align:top}"
    ".new td:first-child{color:#06c}.modified td:first-child{color:#b50}.unresolved td:nth-child(4){color:#c00}"
    ".scroll{overflow:auto}svg{font:13px monospace}rect{fill:#f4f7fa;stroke:#678}path{fill:none;stroke:#89a;"
    "marker-end:url(#end)}path.end{fill:#89a;stroke:none;marker-end:none}.missing rect{fill:#fee;stroke:#c00;"
    "stroke-dasharray:4}path.missing{stroke:#c00;stroke-dasharray:4}";

struct ReportOptions {
    CommonOptions common;
    std::string output;
};

/** What the page tells. Its names are those of the command line. */
struct Report {
    std::vector<DocumentStatus> documents;
    std::vector<std::string> unread;
    struct Condition {
        std::string document, text;
    };
    std::vector<Condition> damaged;
    LinkGraph graph;

    void addLinks(const DocumentSearch& search, const FoundDocument& found, LinkMemory& memory) {
        const DocumentLinks links = readDocumentLinks(found.fullName, "", memory);
        if (!links.read) unread.push_back(found.name);
        if (links.condition.isFinding) damaged.push_back({found.name, links.condition.text});
        const std::size_t from = graph.add(found.name, false);
        const auto connect = [&](const NamedDocument& target) {
            if (!target.name.empty()) graph.connect(from, graph.add(search.asGiven(target.name), !target.exists));
        };
        for (const auto* const list : {&links.partFiles, &links.contextProducts, &links.contextParts})
            for (const NamedDocument& target : *list) connect(target);
        for (const OtherNamed& other : links.others) connect(other.document);
        for (const TypedLink& link : links.links) connect(link.document);
    }
    bool hasFindings() const {
        for (const DocumentStatus& document : documents)
            if (document.isFinding()) return true;
        return !graph.missing().empty() || !damaged.empty();
    }
};

std::string rowOf(const char* cell, const std::vector<std::string>& texts, const std::string& kinds = "") {
    std::string row = kinds.empty() ? "<tr>" : "<tr class=\"" + kinds + "\">";
    for (const std::string& text : texts)
        row += std::string("<") + cell + ">" + escapedForHtml(text) + "</" + cell + ">";
    return row + "</tr>\n";
}

std::string countsOf(const Report& report) {
    std::size_t fresh = 0, modified = 0;
    for (const DocumentStatus& document : report.documents) {
        fresh += document.status == "new" ? 1 : 0;
        modified += document.status == "modified" ? 1 : 0;
    }
    return "<p>" + std::to_string(report.documents.size()) + " documents: " + std::to_string(fresh) + " new, " +
           std::to_string(modified) + " modified, " + std::to_string(report.documents.size() - fresh - modified) +
           " not modified. Missing documents that others point to: " + std::to_string(report.graph.missing().size()) +
           ". Damaged documents: " + std::to_string(report.damaged.size()) + ".</p>\n";
}

std::string damageOf(const Report& report) {
    if (report.damaged.empty()) return {};
    std::string html = "<h2>What is damaged</h2>\n<table>\n" + rowOf("th", {"Document", "Condition"});
    for (const Report::Condition& condition : report.damaged) html += rowOf("td", {condition.document, condition.text});
    return html + "</table>\n";
}

std::string missingOf(const Report& report) {
    const auto missing = report.graph.missing();
    if (missing.empty() && report.unread.empty()) return {};
    std::string html = "<h2>What is missing</h2>\n<table>\n" + rowOf("th", {"Document", "Pointed to by"});
    for (const auto& document : missing) {
        std::string sources;
        for (const std::string& source : document.second) sources += (sources.empty() ? "" : ", ") + fileNameOf(source);
        html += rowOf("td", {document.first, sources});
    }
    for (const std::string& document : report.unread) html += rowOf("td", {document, "cannot be read"});
    return html + "</table>\n";
}

std::string statesOf(const Report& report) {
    std::string html = "<h2>State</h2>\n<table>\n" + rowOf("th", {"Status", "Reason", "Links", "Unresolved",
                                                                  "Item revision", "Load type", "Document"});
    for (const DocumentStatus& document : report.documents)
        html +=
            rowOf("td",
                  {document.status, document.reason, std::to_string(document.linked),
                   std::to_string(document.unresolved), document.itemRevision, document.loadType, document.document},
                  (document.status == "not modified" ? "" : document.status) +
                      (document.unresolved > 0 ? " unresolved" : ""));
    return html + "</table>\n";
}

std::string drawingOf(const Report& report) {
    std::string html = "<h2>Links</h2>\n";
    if (report.graph.size() > kMostDrawn)
        return html + "<p>" + std::to_string(report.graph.size()) + " documents are too many for a drawing.</p>\n";
    return html + "<div class=\"scroll\">\n" + report.graph.svg() + "</div>\n";
}

std::string pageOf(const Report& report, const std::vector<std::string>& names) {
    std::string title;
    for (const std::string& name : names) title += (title.empty() ? "" : ", ") + name;
    title = escapedForHtml(title);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + title +
           "</title>\n<style>" + kStyle + "</style>\n</head>\n<body>\n<h1>" + title + "</h1>\n" + countsOf(report) +
           damageOf(report) + missingOf(report) + statesOf(report) + drawingOf(report) + "</body>\n</html>\n";
}

bool write(const std::string& file, const std::string& page) {
    std::ofstream stream(fs::u8path(file), std::ios::binary);
    stream << page;
    stream.close();
    if (!stream) complain(file + " cannot be written");
    return !stream.fail();
}

int runReport(const ReportOptions& options) {
    if (!options.common.loadSession()) return ExitUnusable;
    DocumentSearch search;
    const bool complete = search.search(options.common.names);
    JournalFile journal(options.common.journal);
    journal.take();
    Report report;
    {
        Progress progress(search.found().size(), "documents");
        Examiner examiner;
        LinkMemory memory;
        for (const FoundDocument& found : search.found()) {
            report.documents.push_back(examiner.examine(found));
            if (found.exists && isCatiaDocument(found.name)) report.addLinks(search, found, memory);
            journal.take();
            progress.step();
        }
    }
    if (!write(options.output, pageOf(report, options.common.names))) return ExitUnusable;
    if (!journal.finish() || !complete || !report.unread.empty()) return ExitUnusable;
    return report.hasFindings() ? ExitFindings : ExitFine;
}

} // namespace

void addReportCommand(Command& program) {
    const auto options = std::make_shared<ReportOptions>();
    Command& command =
        program.command("report", "A page with the state of every document, what is missing, and the links",
                        [options] { return runReport(*options); });
    command.value("folder", "FOLDER", "Folders, searched with all below them, and documents", &options->common.names)
        .required();
    command.value("-o,--output", "FILE", "HTML file that receives the page", &options->output).required();
    options->common.addSessionTo(command);
}
