#include "tools/vorntools/Commands.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/OutputFile.h"
#include "tools/vorntools/archive/ArchiveReader.h"
#include "tools/vorntools/catalogue/CatalogueSet.h"
#include "tools/vorntools/page/Page.h"
#include "tools/vorntools/page/PageData.h"
#include "tools/vorntools/page/PagePictures.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

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

/** The page while it is made; it is put into its place when all of it is there. */
class PageFile {
public:
    explicit PageFile(const ReportOptions& options)
        : m_name(options.output), m_target(fs::u8path(options.output)), m_file(m_target),
          m_pictures(placeOf(options.previews), m_file.stream(), folderBeside(m_target)) {}

    bool wantsPictures() const { return m_pictures.areWanted(); }
    /** @param document its number on the page, larger than the last one's */
    void takePicture(std::size_t document, std::string picture) {
        m_isWhole = m_isWhole && m_pictures.add(document, std::move(picture));
    }
    void writeData(const Archive& archive, const std::vector<Index>& listed,
                   const std::vector<DuplicateGroup>& duplicates, const PageOrigin& origin) {
        m_file.stream() << pageHead() << "<script type=\"application/json\" id=\"data\">";
        writePageData(m_file.stream(), archive, listed, duplicates, origin);
        m_file.stream() << "</script>\n";
        m_pictures.begin();
    }
    /** Whether all could be written so far. */
    bool isGood() { return m_isWhole && m_file.stream().good(); }
    /** @return false, said on standard error, when the page cannot be written */
    bool finish();

private:
    static fs::path folderBeside(fs::path file) { return file.replace_filename(file.stem() += "_files"); }

    const std::string m_name;
    const fs::path m_target;
    OutputFile m_file;
    PagePictures m_pictures;
    bool m_isWhole = true;
};

bool PageFile::finish() {
    m_pictures.finish();
    m_file.stream() << pageTail();
    if (!m_isWhole || !m_file.commit()) {
        complain(m_name + " cannot be written");
        return false;
    }
    m_pictures.keep();
    std::error_code error;
    const std::uintmax_t size = fs::file_size(m_target, error);
    if (!error && size > kLargePage)
        complain(m_name + " has " + std::to_string(size / 1'000'000) +
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

/** By evidence for which hardly a document is read: one process does. */
std::vector<DuplicateGroup> duplicatesIn(const Archive& archive, JournalFile& journal) {
    return findDuplicates(archive, Evidence::Save, 1, journal);
}

int reportOnFolders(const ReportOptions& options) {
    const auto begin = std::chrono::steady_clock::now();
    PageOrigin origin;
    origin.date = dateNow();
    for (const std::string& name : options.common.names) origin.lookedAt.push_back(fullNameOf(name));
    JournalFile journal(options.common.journal);
    Archive archive;
    std::optional<PageFile> page;
    ArchiveReader::What what;
    what.status = true;
    what.recorded = true;
    what.jobs = options.common.jobs;
    // What was walked is what the page lists, in the same order.
    if (placeOf(options.previews) != PagePictures::Place::None)
        what.takePicture = [&](Index document, std::string jpeg) { page->takePicture(document, std::move(jpeg)); };
    ArchiveReader reader(archive, journal, what);
    const bool complete = reader.walk(options.common.names, options.common.excluded);
    if (!complete) origin.complaints.emplace_back(kIncomplete);
    page.emplace(options);
    reader.readAll();
    reader.finish();
    origin.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    page->writeData(archive, listedOf(archive), duplicatesIn(archive, journal), origin);
    if (!page->finish() || !journal.finish() || !complete || isAnyUnread(archive)) return ExitUnusable;
    return hasFindings(archive) ? ExitFindings : ExitFine;
}

int reportOnCatalogues(const ReportOptions& options) {
    const auto begin = std::chrono::steady_clock::now();
    CatalogueSet catalogues(options.common.catalogues);
    PageOrigin origin;
    origin.date = dateNow();
    origin.lookedAt = catalogues.lookedAt();
    const bool complete = catalogues.isComplete();
    if (!complete) origin.complaints.emplace_back(kIncomplete);
    Archive archive;
    catalogues.fill(archive);
    origin.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    PageFile page(options);
    const std::vector<Index> listed = listedOf(archive);
    JournalFile journal("");
    page.writeData(archive, listed, duplicatesIn(archive, journal), origin);
    for (std::size_t i = 0; page.wantsPictures() && page.isGood() && i < listed.size(); ++i) {
        std::string picture = catalogues.previewOf(std::string(archive.text(archive.document(listed[i]).fullName)));
        if (!picture.empty()) page.takePicture(i, std::move(picture));
    }
    if (!page.finish() || !complete || isAnyUnread(archive)) return ExitUnusable;
    return hasFindings(archive) ? ExitFindings : ExitFine;
}

int runReport(ReportOptions& options) {
    if (!options.common.completeNames() || !options.common.loadSession()) return ExitUnusable;
    const std::string refusal = refusalToWrite(options.output);
    if (!refusal.empty()) {
        complain(options.output + " " + refusal);
        return ExitUnusable;
    }
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
