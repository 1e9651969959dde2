#include "tools/vorntools/Commands.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/catalogue/CatalogueUpdate.h"

#include <filesystem>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

namespace {

struct CatalogueOptions {
    CommonOptions common;
    std::string output;
};

/** Why a catalogue must not be written to a file, or of a name; empty when it may. */
std::string refusalToCatalogue(const CatalogueOptions& options) {
    std::error_code error;
    const fs::path file = fs::u8path(options.output);
    if (options.output.empty() || (fs::exists(file, error) && !fs::is_regular_file(file, error)))
        return options.output + " is no file";
    if (isCatiaDocument(options.output)) return options.output + " is a CATIA document";
    for (const std::string& name : options.common.names)
        if (fs::exists(fs::u8path(name), error) && !fs::is_directory(fs::u8path(name), error))
            return name + " is no folder";
    return {};
}

int runCatalogue(CatalogueOptions& options) {
    if (!options.common.completeNames()) return ExitUnusable;
    const std::string refusal = refusalToCatalogue(options);
    if (!refusal.empty()) {
        complain(refusal);
        return ExitUnusable;
    }
    JournalFile journal(options.common.journal);
    DocumentSearch search(true);
    catalogue::UpdateOptions update;
    update.file = options.output;
    update.isComplete = options.common.search(search);
    update.jobs = options.common.jobs;
    for (const std::string& name : options.common.names) update.lookedAt.push_back(fullNameOf(name));
    const catalogue::Changes changes = catalogue::update(update, search, journal);
    if (options.common.json)
        printJson(Json::object({{"catalogue", options.output},
                                {"documents", changes.documents},
                                {"read", changes.read},
                                {"removed", changes.removed},
                                {"unreadable", changes.unreadable},
                                {"complete", update.isComplete}}));
    else
        summarize(std::to_string(changes.documents) + (changes.documents == 1 ? " document: " : " documents: ") +
                  std::to_string(changes.read) + " read, " + std::to_string(changes.removed) + " removed" +
                  (changes.unreadable > 0 ? ", " + std::to_string(changes.unreadable) + " unreadable" : ""));
    return journal.finish() && update.isComplete ? ExitFine : ExitUnusable;
}

} // namespace

void addCatalogueCommand(Command& program) {
    const auto options = std::make_shared<CatalogueOptions>();
    Command& command = program.command("catalogue",
                                       "Keeps what folders hold in an SQLite file, which other commands ask instead "
                                       "of the folders; reads only what has changed",
                                       [options] { return runCatalogue(*options); });
    options->common.addNamesTo(command, "folder", "Folders, searched with all below them");
    command.value("-o,--output", "FILE", "The catalogue, which is made when there is none", &options->output)
        .required();
    options->common.addJobsTo(command);
    options->common.addOutputTo(command);
    command.example("catalogue vault -o vault.sqlite --jobs 8",
                    "every document below the folder vault; again, what has changed");
    command.example("used-by vault/Bolt.CATPart --catalogue vault.sqlite", "who needs a part, without the folder");
}
