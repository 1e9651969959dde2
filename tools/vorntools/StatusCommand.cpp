#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/DocumentStatus.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/Turns.h"
#include "tools/vorntools/archive/DocumentPacket.h"
#include "tools/vorntools/archive/RecordedLinks.h"
#include "tools/vorntools/archive/Targets.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

struct StatusOptions {
    CommonOptions common;
    bool links = false;
    bool onlyNew = false, onlyModified = false, onlyUnresolved = false, onlyDamaged = false;
    std::string sort;

    /** Whether each document is shown as soon as it was looked at. */
    bool showsAtOnce() const { return common.json && sort.empty(); }
    bool keepsAll() const { return !onlyNew && !onlyModified && !onlyUnresolved && !onlyDamaged; }
};

/** What the document itself says, and where its DAT file says otherwise. */
struct OwnLinks {
    std::optional<std::size_t> count; ///< none when nobody counted or the document cannot be read
    DocumentCondition condition;
    bool isCompared = false; ///< there are both
    std::vector<LinkDifference> differences;
};

OwnLinks readLinksOf(const FoundDocument& found, const DocumentStatus& row, LinkMemory& memory) {
    const DocumentLinks links = readDocumentLinks(found.fullName, "", memory);
    OwnLinks own{{}, links.condition, links.read && !row.dat.empty(), {}};
    if (links.read) own.count = links.countDocuments();
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
        json.add("document_links", ownLinks.count ? Json(*ownLinks.count) : Json());
        json.add("condition", ownLinks.condition.json());
        json.add("link_differences", jsonOf(ownLinks));
    }
    return json;
}

/** What is told of one document. */
struct Row {
    DocumentStatus status;
    OwnLinks links;

    bool isFinding() const { return status.isFinding() || links.condition.isFinding || !links.differences.empty(); }
    bool isKeptBy(const StatusOptions& options) const {
        return options.keepsAll() || (options.onlyNew && status.status == "new") ||
               (options.onlyModified && status.status == "modified") ||
               (options.onlyUnresolved && status.unresolved > 0) || (options.onlyDamaged && links.condition.isFinding);
    }
};

template <class Move>
void transfer(Move& move, OwnLinks& links) {
    move(links.count, links.condition, links.isCompared, links.differences);
}

template <class Move>
void transfer(Move& move, Row& row) {
    move(row.status, row.links);
}

/** One document, as the process has it that looks at it. */
struct RowAnswer {
    bool isKept = false;
    std::optional<Row> row; ///< unless all that is told of it is the line
    std::string line;       ///< as JSON
    bool isFinding = false;
    std::string journal; ///< what the library told meanwhile
};

template <class Move>
void transfer(Move& move, RowAnswer& answer) {
    move(answer.isKept, answer.row, answer.line, answer.isFinding, answer.journal);
}

/** Whatever is asked for: texts from A to Z, numbers from the largest. */
void sortRows(std::vector<Row>& rows, const std::string& key) {
    const auto byText = [&](std::string DocumentStatus::*text) {
        std::stable_sort(rows.begin(), rows.end(),
                         [&](const Row& a, const Row& b) { return a.status.*text < b.status.*text; });
    };
    if (key == "document") byText(&DocumentStatus::document);
    if (key == "status") byText(&DocumentStatus::status);
    if (key == "reason") byText(&DocumentStatus::reason);
    if (key == "item-revision") byText(&DocumentStatus::itemRevision);
    if (key == "unresolved")
        std::stable_sort(rows.begin(), rows.end(),
                         [](const Row& a, const Row& b) { return a.status.unresolved > b.status.unresolved; });
}

Table tableFor(bool withLinks) {
    return Table({{"STATUS"},
                  {"DOCUMENT", Table::Kind::path},
                  {"REASON"},
                  {"DAT"},
                  {"ITEM REVISION"},
                  {"LOAD TYPE"},
                  {withLinks ? "LINKS DAT / DOCUMENT" : "LINKS", Table::Kind::number},
                  {"UNRESOLVED", Table::Kind::number},
                  {"TABLE"},
                  {"DIFFERENCES"}});
}

void addTo(Table& table, const Row& row) {
    const DocumentStatus& status = row.status;
    const DocumentCondition& condition = row.links.condition;
    const Tone tone = condition.isFinding || status.unresolved > 0 ? Tone::alarm
                      : row.isFinding()                            ? Tone::attention
                                                                   : Tone::plain;
    table.add({status.status, status.document,
               condition.isTold() ? status.reason + ", " + condition.text : status.reason,
               status.layout.empty() ? "-" : status.layout, status.itemRevision, status.loadType,
               std::to_string(status.linked) + (row.links.count ? " / " + std::to_string(*row.links.count) : ""),
               std::to_string(status.unresolved), status.designTable ? "yes" : "", textOfDifferences(row.links)},
              tone);
}

/** How many documents are in which state. */
class Counts {
public:
    void add(const Row& row) {
        ++m_documents;
        m_fresh += row.status.status == "new" ? 1 : 0;
        m_modified += row.status.status == "modified" ? 1 : 0;
        m_unresolved += row.status.unresolved > 0 ? 1 : 0;
        m_damaged += row.links.condition.isFinding ? 1 : 0;
    }
    std::string text() const {
        const auto told = [](std::size_t count, const char* what) {
            return count > 0 ? ", " + std::to_string(count) + " " + what : std::string();
        };
        return std::to_string(m_documents) + (m_documents == 1 ? " document: " : " documents: ") +
               std::to_string(m_fresh) + " new, " + std::to_string(m_modified) + " modified, " +
               std::to_string(m_documents - m_fresh - m_modified) + " not modified" +
               told(m_unresolved, "with unresolved links") + told(m_damaged, "damaged");
    }

private:
    std::size_t m_documents = 0, m_fresh = 0, m_modified = 0, m_unresolved = 0, m_damaged = 0;
};

void show(const std::vector<Row>& rows, bool withLinks) {
    Table table = tableFor(withLinks);
    for (const Row& row : rows) addTo(table, row);
    table.print();
}

/** Looks at one document. */
RowAnswer answerOf(const FoundDocument& found, const StatusOptions& options, LinkMemory& memory) {
    Row row = {examine(found), {}};
    if (options.links) row.links = readLinksOf(found, row.status, memory);
    RowAnswer answer;
    answer.isKept = row.isKeptBy(options);
    answer.isFinding = row.isFinding();
    if (!options.showsAtOnce())
        answer.row = std::move(row);
    else if (answer.isKept)
        answer.line = jsonOf(row.status, options.links, row.links).dump() + "\n";
    return answer;
}

/** What came out of all documents, and was not shown at once. */
struct Outcome {
    std::vector<Row> rows;
    Counts counts;
    bool isFinding = false;
};

Outcome lookAt(const std::vector<FoundDocument>& found, const StatusOptions& options, JournalFile& journal) {
    journal.take(); // what came before is told once
    LinkMemory memory;
    Turns<RowAnswer> answers(found.size(), processesFor(options.common.jobs, found.size()), [&](std::size_t i) {
        RowAnswer answer = answerOf(found[i], options, memory);
        answer.journal = journal.takeLines();
        return answer;
    });
    Outcome outcome;
    Progress progress(found.size(), "documents");
    for (std::size_t i = 0; i < found.size(); ++i) {
        RowAnswer answer = answers.next();
        journal.add(answer.journal);
        print(answer.line);
        outcome.isFinding = outcome.isFinding || answer.isFinding;
        if (answer.row) outcome.counts.add(*answer.row);
        if (answer.row && answer.isKept) outcome.rows.push_back(std::move(*answer.row));
        progress.step();
    }
    return outcome;
}

int runStatus(StatusOptions& options) {
    CommonOptions& common = options.common;
    if (!common.completeNames() || !common.loadSession()) return ExitUnusable;
    JournalFile journal(common.journal);
    DocumentSearch documents;
    const bool complete = common.search(documents);
    Outcome outcome = lookAt(documents.found(), options, journal);
    sortRows(outcome.rows, options.sort);
    if (common.json)
        for (const Row& row : outcome.rows) printJson(jsonOf(row.status, options.links, row.links));
    else
        show(outcome.rows, options.links);
    if (!common.json) summarize(outcome.counts.text());
    if (!journal.finish() || !complete) return ExitUnusable;
    return outcome.isFinding ? ExitFindings : ExitFine;
}

} // namespace

void addStatusCommand(Command& program) {
    const auto options = std::make_shared<StatusOptions>();
    Command& command = program.command("status", "New, modified or not modified: every document of a folder, and why",
                                       [options] { return runStatus(*options); });
    options->common.addNamesTo(command, "folder", "Folders, searched with all below them, and documents");
    command.flag(
        "--links",
        "Also read the links in the documents themselves: how many, where the DAT files differ, what is damaged",
        options->links);
    command.flag("--new", "Show new documents; of several such options each adds its own", options->onlyNew);
    command.flag("--modified", "Show modified documents", options->onlyModified);
    command.flag("--unresolved", "Show documents with a link that the PDM could not resolve", options->onlyUnresolved);
    command.flag("--damaged", "Show damaged documents", options->onlyDamaged).needs("--links");
    command
        .value("--sort", "KEY", "Order of the rows: document, status, reason, item-revision, unresolved (most first)",
               &options->sort)
        .oneOf({"document", "status", "reason", "item-revision", "unresolved"});
    options->common.addJobsTo(command);
    options->common.addTo(command);
    command.example("status vault", "every document below the folder vault");
    command.example("status --modified --sort document --json vault", "the modified ones, one JSON object a line");
}
