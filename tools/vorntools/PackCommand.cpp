#include "tools/vorntools/Commands.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/archive/ArchiveOutput.h"
#include "tools/vorntools/archive/ArchiveReader.h"
#include "tools/vorntools/archive/Packing.h"
#include "tools/vorntools/archive/Paths.h"

#include <filesystem>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

namespace {

struct PackOptions {
    CommonOptions common;
    std::string output;
    bool flat = false;
};

bool isZipFile(const std::string& name) {
    const std::string suffix = ".zip";
    std::error_code ignored;
    return name.size() > suffix.size() && folded(name.substr(name.size() - suffix.size())) == suffix &&
           !fs::is_directory(fs::u8path(name), ignored);
}

/** What is in the pack, by its own names, and what is not. */
void printList(const Archive& archive, const std::vector<PackItem>& items, bool json) {
    Table table({{"STATE"}, {"PACKED AS"}, {"DOCUMENT"}});
    for (const PackItem& item : items) {
        const char* const state = item.isRenamed ? "renamed" : "packed";
        if (json)
            printJson(Json::object({{"document", archive.nameOf(item.document)},
                                    {"state", state},
                                    {"packed_as", item.name},
                                    {"size", archive.document(item.document).size}}));
        else
            table.add({state, item.name, archive.nameOf(item.document)});
    }
    for (const MissingTarget& missing : archive.missing()) {
        const std::string name(archive.text(missing.stored));
        Json wantedBy = Json::array();
        for (const Index link : archive.linksTo(missing))
            wantedBy.push_back(archive.nameOf(archive.links()[link].from));
        if (json)
            printJson(Json::object({{"document", name},
                                    {"state", "missing"},
                                    {"packed_as", Json()},
                                    {"size", Json()},
                                    {"wanted_by", std::move(wantedBy)}}));
        else
            table.add({"missing", "", name + "  (wanted by " + wantedBy.cell() + ")"});
    }
    table.print();
}

int runPack(PackOptions& options) {
    if (!options.common.completeNames() || !options.common.loadSession()) return ExitUnusable;
    JournalFile journal(options.common.journal);
    Archive archive;
    ArchiveReader reader(archive, journal, {});
    if (!reader.walk(options.common.names, options.common.excluded)) return ExitUnusable;
    reader.readNeeded(documentsOf(reader.search(), options.common.names));
    const std::size_t needed = archive.documents().size();
    reader.finish();

    std::vector<Index> documents;
    for (Index i = 0; i < needed; ++i) documents.push_back(i);
    if (documents.empty()) {
        complain("no document to pack");
        return ExitUnusable;
    }
    const std::vector<PackItem> items = planPack(archive, documents, options.flat);
    const std::string problem = isZipFile(options.output) ? packIntoZip(archive, items, options.output)
                                                          : packIntoFolder(archive, items, options.output);
    if (!problem.empty()) {
        complain(problem);
        return ExitUnusable;
    }
    printList(archive, items, options.common.json);
    bool findings = !archive.missing().empty();
    for (const PackItem& item : items) findings = findings || item.isRenamed;
    if (!journal.finish()) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addPackCommand(Command& program) {
    const auto options = std::make_shared<PackOptions>();
    Command& command = program.command("pack", "Copies documents with all that they need into a folder or a ZIP file",
                                       [options] { return runPack(*options); });
    options->common.addNamesTo(command, "file", "Documents, and folders searched with all below them");
    command.value("-o,--output", "FOLDER", "Folder, or file ending with .zip, that receives them", &options->output)
        .required();
    command.flag("--flat", "All in one folder instead of folders as they are", options->flat);
    options->common.addTo(command);
}
