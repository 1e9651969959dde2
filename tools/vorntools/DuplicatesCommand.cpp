// The commands duplicates and orphans: what an archive could do without.

#include "tools/vorntools/Commands.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/archive/ArchiveReader.h"
#include "tools/vorntools/archive/Duplicates.h"
#include "tools/vorntools/archive/Orphans.h"
#include "tools/vorntools/catalogue/CatalogueSet.h"

#include <memory>

namespace {

Json jsonOf(const Archive& archive, const DuplicateGroup& group) {
    Json documents = Json::array();
    for (const Duplicate& document : group.documents)
        documents.push_back(Json::object({{"document", archive.nameOf(document.document)},
                                          {"size", archive.document(document.document).size},
                                          {"identity", textOrNull(document.identity.uuid)},
                                          {"saved", textOrNull(document.identity.saved)},
                                          {"content", document.content},
                                          {"origin", document.origin}}));
    return Json::object(
        {{"name", group.name}, {"relation", relationName(group.relation)}, {"documents", std::move(documents)}});
}

void printTable(const Archive& archive, const DuplicateGroup& group) {
    print(printable(group.name) + "  " + relationName(group.relation) + "\n");
    Table table({{"CONTENT", Table::Kind::number},
                 {"ORIGIN", Table::Kind::number},
                 {"SAVED"},
                 {"BYTES", Table::Kind::number},
                 {"DOCUMENT", Table::Kind::path}});
    for (const Duplicate& document : group.documents)
        table.add({std::to_string(document.content), std::to_string(document.origin), document.identity.saved,
                   std::to_string(archive.document(document.document).size), archive.nameOf(document.document)});
    table.print();
    print("\n");
}

/** Fills the archive from the folders or catalogues. @return false, said on standard error, when not all can be read */
bool fillToCompare(Archive& archive, const CommonOptions& options, JournalFile& journal, bool withLinks) {
    if (!options.catalogues.empty()) {
        CatalogueSet catalogues(options.catalogues);
        catalogues.fill(archive, withLinks);
        return catalogues.isComplete();
    }
    ArchiveReader::What what;
    what.jobs = options.jobs;
    ArchiveReader reader(archive, journal, what);
    const bool complete = reader.walk(options.names, options.excluded);
    if (withLinks) reader.readAll();
    reader.finish();
    return complete;
}

int runDuplicates(CommonOptions& options) {
    if (!options.completeNames()) return ExitUnusable;
    JournalFile journal(options.journal);
    Archive archive;
    bool usable = fillToCompare(archive, options, journal, false);
    const std::vector<DuplicateGroup> groups = findDuplicates(archive, Evidence::Bytes, options.jobs, journal);
    std::size_t documents = 0;
    for (const DuplicateGroup& group : groups) {
        options.json ? printJson(jsonOf(archive, group)) : printTable(archive, group);
        documents += group.documents.size();
        for (const Duplicate& document : group.documents) {
            if (!document.isUnread) continue;
            complain(archive.nameOf(document.document) + " cannot be read");
            usable = false;
        }
    }
    if (!options.json)
        summarize(std::to_string(groups.size()) + (groups.size() == 1 ? " name, " : " names, ") +
                  std::to_string(documents) + " documents");
    if (!journal.finish() || !usable) return ExitUnusable;
    return groups.empty() ? ExitFine : ExitFindings;
}

int runOrphans(CommonOptions& options) {
    if (!options.completeNames() || !options.loadSession()) return ExitUnusable;
    JournalFile journal(options.journal);
    Archive archive;
    bool usable = fillToCompare(archive, options, journal, true);
    for (Index i = 0; i < archive.documents().size(); ++i) {
        if (!archive.document(i).isUnreadable) continue;
        complain(archive.nameOf(i) + " cannot be read");
        usable = false;
    }

    Table table({{"KIND"}, {"LINKS", Table::Kind::number}, {"DOCUMENT", Table::Kind::path}});
    std::size_t parts = 0;
    const std::vector<Orphan> orphans = findOrphans(archive);
    for (const Orphan& orphan : orphans) {
        const std::size_t links = archive.linksOf(orphan.document).size();
        parts += orphan.isTop() ? 0 : 1;
        if (options.json)
            printJson(Json::object({{"document", archive.nameOf(orphan.document)},
                                    {"kind", orphan.kind},
                                    {"links", links},
                                    {"size", archive.document(orphan.document).size}}));
        else
            table.add({orphan.kind, std::to_string(links), archive.nameOf(orphan.document)});
    }
    table.print();
    if (!options.json)
        summarize(std::to_string(parts) + (parts == 1 ? " part" : " parts") + " and " +
                  std::to_string(orphans.size() - parts) + (orphans.size() - parts == 1 ? " other" : " others") +
                  " that nobody points to");
    if (!journal.finish() || !usable) return ExitUnusable;
    return parts > 0 ? ExitFindings : ExitFine;
}

} // namespace

void addDuplicatesCommand(Command& program) {
    const auto options = std::make_shared<CommonOptions>();
    Command& command = program.command("duplicates", "Documents of one name in several places, and what they share",
                                       [options] { return runDuplicates(*options); });
    options->addNamesTo(command, "folder", "Folders, searched with all below them, and documents");
    options->addJobsTo(command);
    options->addOutputTo(command);
    options->addCatalogueTo(command);
}

void addOrphansCommand(Command& program) {
    const auto options = std::make_shared<CommonOptions>();
    Command& command = program.command("orphans", "Documents that nobody points to: parts, then products and drawings",
                                       [options] { return runOrphans(*options); });
    options->addNamesTo(command, "folder", "Folders, searched with all below them, and documents");
    options->addJobsTo(command);
    options->addTo(command);
    options->addCatalogueTo(command).excludes("--session");
}
