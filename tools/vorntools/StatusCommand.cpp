#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/DocumentStatus.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/archive/RecordedLinks.h"
#include "tools/vorntools/archive/Targets.h"

#include <memory>

namespace {

struct StatusOptions {
    CommonOptions common;
    bool links = false;
};

/** What the document itself says, and where its DAT file says otherwise. */
struct OwnLinks {
    Json count; ///< null when nobody counted or the document cannot be read
    DocumentCondition condition;
    bool isCompared = false; ///< there are both
    std::vector<LinkDifference> differences;
};

OwnLinks readLinksOf(const FoundDocument& found, const DocumentStatus& row, LinkMemory& memory) {
    const DocumentLinks links = readDocumentLinks(found.fullName, "", memory);
    OwnLinks own{
        links.read ? Json(links.countDocuments()) : Json(), links.condition, links.read && !row.dat.empty(), {}};
    if (own.isCompared)
        own.differences = differencesBetween(readRecordedLinks(found.fullName), targetsOf(links, found.fullName));
    return own;
}

Json jsonOf(const OwnLinks& ownLinks) {
    if (!ownLinks.isCompared) return {};
    Json array = Json::array();
    for (const LinkDifference& difference : ownLinks.differences)
        array.push_back(Json::object({{"name", difference.name}, {"difference", differenceName(difference.kind)}}));
    return array;
}

/** "only recorded: Nut.CATPart, Pin.CATPart; only in the document: Bolt.CATPart" */
std::string textOfDifferences(const OwnLinks& ownLinks) {
    std::string text;
    for (const auto kind :
         {LinkDifference::OnlyRecorded, LinkDifference::OnlyInDocument, LinkDifference::FoundMeanwhile}) {
        std::string names;
        for (const LinkDifference& difference : ownLinks.differences)
            if (difference.kind == kind) names += (names.empty() ? "" : ", ") + difference.name;
        if (!names.empty()) text += (text.empty() ? "" : "; ") + std::string(differenceName(kind)) + ": " + names;
    }
    return text;
}

Json jsonOf(const DocumentStatus& row, bool withLinks, const OwnLinks& ownLinks) {
    Json json = Json::object({{"document", row.document},
                              {"dat", textOrNull(row.dat)},
                              {"layout", textOrNull(row.layout)},
                              {"item_revision", row.itemRevision},
                              {"dataset", row.dataset},
                              {"named_reference", row.namedReference},
                              {"load_type", row.loadType},
                              {"status", row.status},
                              {"reason", row.reason},
                              {"linked", row.linked},
                              {"unresolved", row.unresolved},
                              {"design_table", row.designTable}});
    if (withLinks) {
        json.add("document_links", ownLinks.count);
        json.add("condition", ownLinks.condition.json());
        json.add("link_differences", jsonOf(ownLinks));
    }
    return json;
}

std::vector<std::string> cellsOf(const DocumentStatus& row, const OwnLinks& ownLinks) {
    const std::string inDocument = ownLinks.count.isNull() ? "" : " / " + ownLinks.count.dump();
    return {row.status,
            ownLinks.condition.isTold() ? row.reason + ", " + ownLinks.condition.text : row.reason,
            row.layout.empty() ? "-" : row.layout,
            row.itemRevision,
            row.loadType,
            std::to_string(row.linked) + inDocument,
            std::to_string(row.unresolved),
            row.designTable ? "yes" : "no",
            row.document,
            textOfDifferences(ownLinks)};
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
                 {"DOCUMENT"},
                 {statusOptions.links ? "DIFFERENCES" : ""}});
    bool findings = false;
    {
        Progress progress(documents.found().size(), "documents");
        Examiner examiner;
        LinkMemory memory;
        for (const FoundDocument& found : documents.found()) {
            const DocumentStatus row = examiner.examine(found);
            const OwnLinks ownLinks = statusOptions.links ? readLinksOf(found, row, memory) : OwnLinks();
            findings = findings || row.isFinding() || ownLinks.condition.isFinding || !ownLinks.differences.empty();
            options.json ? printJson(jsonOf(row, statusOptions.links, ownLinks)) : table.add(cellsOf(row, ownLinks));
            journal.take();
            progress.step();
        }
    }
    table.print();
    if (!journal.finish() || !complete) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addStatusCommand(Command& program) {
    const auto options = std::make_shared<StatusOptions>();
    Command& command = program.command("status", "New, modified or not modified: every document of a folder, and why",
                                       [options] { return runStatus(*options); });
    command.value("folder", "FOLDER", "Folders, searched with all below them, and documents", &options->common.names)
        .required();
    command.flag(
        "--links",
        "Also read the links in the documents themselves: how many, where the DAT files differ, what is damaged",
        options->links);
    options->common.addTo(command);
}
