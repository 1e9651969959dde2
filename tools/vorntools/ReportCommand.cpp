#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentContents.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/OutputFile.h"
#include "tools/vorntools/Turns.h"
#include "tools/vorntools/archive/ArchiveReader.h"
#include "tools/vorntools/catalogue/CatalogueSet.h"
#include "tools/vorntools/page/Page.h"
#include "tools/vorntools/page/PageData.h"
#include "tools/vorntools/page/PagePictures.h"

#include "VornToolsDocumentFile.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

namespace {

/** A larger page is hard to mail and slow to open. */
constexpr std::uintmax_t kLargePage = 50'000'000;

constexpr const char* kIncomplete = "folders that are not there or cannot be read";

struct ReportOptions {
    CommonOptions common;
    std::string output;
    std::string previews;
};

PagePictures::Place placeOf(const std::string& previews) {
    if (previews == "embed") return PagePictures::Place::Page;
    if (previews == "folder") return PagePictures::Place::Folder;
    return previews == "none" ? PagePictures::Place::None : PagePictures::Place::Fitting;
}

std::string dateNow() {
    const std::time_t now = std::time(nullptr);
    char text[sizeof "2026-01-31T12:00:00Z"] = "";
    const std::tm* const date = std::gmtime(&now);
    return date && std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", date) > 0 ? text : "";
}

/** Why a page must not be written to a file; empty when it may. */
std::string refusalToWrite(const std::string& name) {
    const fs::path file = fs::u8path(name);
    std::error_code error;
    if (fs::exists(file, error) && !fs::is_regular_file(file, error)) return "is no file";
    return isCatiaDocument(name) ? "is a CATIA document" : "";
}

std::string pictureOf(const std::string& fullName) {
    VornToolsDocumentFile file;
    return FAILED(file.open(textOf(fullName))) ? std::string() : pictureOf(file);
}

/** Where the pictures of documents are. */
struct PictureSource {
    std::function<std::string(const std::string&)> find; ///< by full name; empty for none
    int jobs;                                            ///< as processesFor takes it
    JournalFile& journal;
};

/** As the process has it that reads it. */
struct Picture {
    std::string bytes;
    std::string journal; ///< what the library told of it
};

template <class Move>
void transfer(Move& move, Picture& picture) {
    move(picture.bytes, picture.journal);
}

bool addPictures(PagePictures& pictures, const std::ostream& page, const Archive& archive,
                 const std::vector<Index>& listed, const PictureSource& source) {
    if (!pictures.areWanted()) return true;
    const auto mayHave = [&](std::size_t i) {
        return archive.document(listed[i]).exists && archive.document(listed[i]).hasLinks;
    };
    source.journal.take(); // what came before is told once
    Turns<Picture> found(listed.size(), processesFor(source.jobs, listed.size()), [&](std::size_t i) {
        Picture picture;
        if (mayHave(i)) picture.bytes = source.find(std::string(archive.text(archive.document(listed[i]).fullName)));
        picture.journal = source.journal.takeLines();
        return picture;
    });
    Progress progress(listed.size(), "previews");
    for (std::size_t i = 0; i < listed.size(); ++i) {
        const Picture picture = found.next();
        source.journal.add(picture.journal);
        if (!picture.bytes.empty() && !pictures.add(i, picture.bytes)) return false;
        if (!page) return false;
        progress.step();
    }
    return true;
}

/** Writes the page, which is put into its place when all of it is there. */
bool writePage(const ReportOptions& options, const Archive& archive, const PageOrigin& origin,
               const PictureSource& pictureSource) {
    const std::string refusal = refusalToWrite(options.output);
    if (!refusal.empty()) {
        complain(options.output + " " + refusal);
        return false;
    }
    const fs::path target = fs::u8path(options.output);
    OutputFile file(target);
    fs::path folder = target;
    folder.replace_filename(target.stem() += "_files");
    PagePictures pictures(placeOf(options.previews), file.stream(), folder);
    const std::vector<Index> listed = listedOf(archive);
    file.stream() << pageHead() << "<script type=\"application/json\" id=\"data\">";
    writePageData(file.stream(), archive, listed,
                  findDuplicates(archive, Evidence::Save, pictureSource.jobs, pictureSource.journal), origin);
    file.stream() << "</script>\n";
    const bool isComplete = addPictures(pictures, file.stream(), archive, listed, pictureSource);
    pictures.finish();
    file.stream() << pageTail();
    if (!isComplete || !file.commit()) {
        complain(options.output + " cannot be written");
        return false;
    }
    pictures.keep();
    std::error_code error;
    const std::uintmax_t size = fs::file_size(target, error);
    if (!error && size > kLargePage)
        complain(options.output + " has " + std::to_string(size / 1'000'000) +
                 " MB; --previews folder or none makes it smaller");
    return true;
}

bool hasFindings(const Archive& archive) {
    const std::vector<ArchiveDocument>& documents = archive.documents();
    return !archive.missing().empty() ||
           std::any_of(documents.begin(), documents.end(), [](const ArchiveDocument& document) {
               return document.role == ArchiveDocument::Walked && (document.isFinding || document.isDamaged);
           });
}

bool isAnyUnread(const Archive& archive) {
    const std::vector<ArchiveDocument>& documents = archive.documents();
    return std::any_of(documents.begin(), documents.end(),
                       [](const ArchiveDocument& document) { return document.isUnreadable; });
}

int reportOnFolders(const ReportOptions& options) {
    const auto begin = std::chrono::steady_clock::now();
    PageOrigin origin;
    origin.date = dateNow();
    for (const std::string& name : options.common.names) origin.lookedAt.push_back(fullNameOf(name));
    JournalFile journal(options.common.journal);
    Archive archive;
    ArchiveReader::What what;
    what.status = true;
    what.recorded = true;
    what.jobs = options.common.jobs;
    ArchiveReader reader(archive, journal, what);
    const bool complete = reader.walk(options.common.names, options.common.excluded);
    if (!complete) origin.complaints.push_back(kIncomplete);
    reader.readAll();
    reader.finish();
    origin.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    const auto find = [](const std::string& document) { return pictureOf(document); };
    if (!writePage(options, archive, origin, {find, options.common.jobs, journal})) return ExitUnusable;
    if (!journal.finish() || !complete || isAnyUnread(archive)) return ExitUnusable;
    return hasFindings(archive) ? ExitFindings : ExitFine;
}

int reportOnCatalogues(const ReportOptions& options) {
    const auto begin = std::chrono::steady_clock::now();
    CatalogueSet catalogues(options.common.catalogues);
    PageOrigin origin;
    origin.date = dateNow();
    origin.lookedAt = catalogues.lookedAt();
    const bool complete = catalogues.isComplete();
    if (!complete) origin.complaints.push_back(kIncomplete);
    Archive archive;
    catalogues.fill(archive);
    origin.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    const auto find = [&](const std::string& document) { return catalogues.previewOf(document); };
    JournalFile journal("");
    if (!writePage(options, archive, origin, {find, 1, journal}) || !complete || isAnyUnread(archive))
        return ExitUnusable;
    return hasFindings(archive) ? ExitFindings : ExitFine;
}

int runReport(ReportOptions& options) {
    if (!options.common.completeNames() || !options.common.loadSession()) return ExitUnusable;
    return options.common.catalogues.empty() ? reportOnFolders(options) : reportOnCatalogues(options);
}

} // namespace

void addReportCommand(Command& program) {
    const auto options = std::make_shared<ReportOptions>();
    Command& command = program.command(
        "report",
        "A page about an archive: what is missing, where it may be, who uses what, the state of every document",
        [options] { return runReport(*options); });
    options->common.addNamesTo(command, "folder", "Folders, searched with all below them, and documents");
    command.value("-o,--output", "FILE", "HTML file that receives the page", &options->output).required();
    command
        .value("--previews", "WHERE",
               "Pictures of the documents: in the page, in a folder beside it, or none; by default in the page up to "
               "16 MB, else in the folder",
               &options->previews)
        .oneOf({"embed", "folder", "none"});
    options->common.addJobsTo(command);
    options->common.addSessionTo(command);
    options->common.addCatalogueTo(command).excludes("--session");
}
