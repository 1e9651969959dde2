#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/DocumentStatus.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/Output.h"

#include <memory>

namespace {

struct StatusOptions {
    CommonOptions common;
    bool links = false;
};

/** Null when the document cannot be read. */
Json countLinksOf(const FoundDocument& found, VornToolsFolderMemory& folders) {
    const DocumentLinks links = readDocumentLinks(found.name, "", folders);
    return links.read ? Json(links.countDocuments()) : Json();
}

/** @param documentLinks null when nobody counted */
Json jsonOf(const DocumentStatus& row, bool withLinks, const Json& documentLinks) {
    Json json = Json::object();
    auto& members = json.get_ref<Json::object_t&>();
    constexpr std::size_t kMembers = 13;
    members.reserve(kMembers);
    members.emplace_back("document", row.document);
    members.emplace_back("dat", textOrNull(row.dat));
    members.emplace_back("layout", textOrNull(row.layout));
    members.emplace_back("item_revision", row.itemRevision);
    members.emplace_back("dataset", row.dataset);
    members.emplace_back("named_reference", row.namedReference);
    members.emplace_back("load_type", row.loadType);
    members.emplace_back("status", row.status);
    members.emplace_back("reason", row.reason);
    members.emplace_back("linked", row.linked);
    members.emplace_back("unresolved", row.unresolved);
    members.emplace_back("design_table", row.designTable);
    if (withLinks) members.emplace_back("document_links", documentLinks);
    return json;
}

std::vector<std::string> cellsOf(const DocumentStatus& row, const Json& documentLinks) {
    const std::string inDocument = documentLinks.is_null() ? "" : " / " + documentLinks.dump();
    return {row.status,
            row.reason,
            row.layout.empty() ? "-" : row.layout,
            row.itemRevision,
            row.loadType,
            std::to_string(row.linked) + inDocument,
            std::to_string(row.unresolved),
            row.designTable ? "yes" : "no",
            row.document};
}

int runStatus(const StatusOptions& statusOptions) {
    const CommonOptions& options = statusOptions.common;
    if (!options.loadSession()) return ExitUnusable;
    DocumentSearch documents;
    const bool complete = documents.search(options.names);

    JournalFile journal(options.journal);
    journal.take();
    Table table({{"STATUS"},
                 {"REASON"},
                 {"DAT"},
                 {"ITEM REVISION"},
                 {"LOAD TYPE"},
                 {statusOptions.links ? "LINKS DAT / DOCUMENT" : "LINKS", true},
                 {"UNRESOLVED", true},
                 {"TABLE"},
                 {"DOCUMENT"}});
    bool findings = false;
    {
        Progress progress(documents.found().size(), "documents");
        Examiner examiner;
        VornToolsFolderMemory folders;
        for (const FoundDocument& found : documents.found()) {
            const DocumentStatus row = examiner.examine(found);
            const Json documentLinks = statusOptions.links ? countLinksOf(found, folders) : Json();
            findings = findings || row.isFinding();
            options.json ? printJson(jsonOf(row, statusOptions.links, documentLinks))
                         : table.add(cellsOf(row, documentLinks));
            journal.take();
            progress.step();
        }
    }
    table.print();
    if (!journal.finish() || !complete) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addStatusCommand(Program& program) {
    const auto options = std::make_shared<StatusOptions>();
    CLI::App& command = program.add("status", "New, modified or not modified: every document of a folder, and why",
                                    [options] { return runStatus(*options); });
    command.add_option("folder", options->common.names, "Folders, searched with all below them, and documents")
        ->required()
        ->type_name("FOLDER");
    command.add_flag("--links", options->links,
                     "Also count the links in the documents themselves, which reads every one of them");
    options->common.addTo(command);
}
