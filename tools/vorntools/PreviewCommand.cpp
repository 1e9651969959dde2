#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/OutputFile.h"

#include "VornToolsDocumentFile.h"
#include "VornToolsString.h"

#include <filesystem>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

namespace {

struct PreviewOptions {
    CommonOptions common;
    std::string output;
    bool force = false;
};

/** What became of one document's picture. */
struct Preview {
    std::string document;
    std::string file = {};    ///< that received it; empty for none
    std::size_t size = 0;     ///< in bytes
    std::string problem = {}; ///< why there is none
    bool isFinding = false;   ///< the document has none
};

bool isFolder(const std::string& name) {
    std::error_code error;
    return !name.empty() && fs::is_directory(fs::u8path(name), error);
}

/** What was there stays whole until all is written. */
bool replaceFile(const fs::path& file, const VornToolsString& bytes) {
    OutputFile output(file);
    output.stream().write(bytes.bytes(), static_cast<std::streamsize>(bytes.size()));
    return output.commit();
}

/** Why a picture must not be written to a file; empty when it may. */
std::string refusalOf(const fs::path& file, bool force) {
    if (!isThere(file)) return {};
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return "is no file";
    if (isCatiaDocument(file.u8string())) return "is a CATIA document";
    return force ? "" : "exists already; --force replaces it";
}

class PreviewRun {
public:
    explicit PreviewRun(const PreviewOptions& options) : m_options(options) {}

    /** @param name of the document as the command line leads to it */
    Preview save(const std::string& document, const std::string& name) const {
        Preview preview{name};
        VornToolsDocumentFile file;
        if (FAILED(file.open(textOf(document)))) {
            preview.problem = "cannot be read";
            return preview;
        }
        const std::unique_ptr<VornToolsString> picture(file.readPreview());
        if (!picture) {
            preview.problem = "no preview";
            preview.isFinding = true;
            return preview;
        }
        write(targetOf(document), *picture, preview);
        return preview;
    }

private:
    std::string targetOf(const std::string& document) const {
        const std::string name = fileNameOf(document) + ".jpg";
        if (m_options.output.empty()) return name;
        return isFolder(m_options.output) ? (fs::u8path(m_options.output) / fs::u8path(name)).u8string()
                                          : m_options.output;
    }

    void write(const std::string& file, const VornToolsString& picture, Preview& preview) const {
        const std::string refusal = refusalOf(fs::u8path(file), m_options.force);
        if (!refusal.empty())
            preview.problem = file + " " + refusal;
        else if (!replaceFile(fs::u8path(file), picture))
            preview.problem = file + " cannot be written";
        else
            preview.file = file;
        preview.size = picture.size();
    }

    const PreviewOptions& m_options;
};

Json jsonOf(const Preview& preview) {
    return Json::object({{"document", preview.document},
                         {"preview", textOrNull(preview.file)},
                         {"size", preview.size},
                         {"problem", textOrNull(preview.problem)}});
}

int runPreview(PreviewOptions& options) {
    if (!options.common.completeNames()) return ExitUnusable;
    DocumentSearch search;
    bool usable = options.common.search(search);
    const std::vector<std::string> documents = documentsOf(search, options.common.names);
    if (documents.size() > 1 && !options.output.empty() && !isFolder(options.output)) {
        complain(options.output + " is no folder, and there are several documents");
        return ExitUnusable;
    }
    JournalFile journal(options.common.journal);
    Table table({{"DOCUMENT", Table::Kind::path}, {"PREVIEW", Table::Kind::path}, {"BYTES", Table::Kind::number}});
    const PreviewRun run(options);
    bool findings = false;
    for (const std::string& document : documents) {
        const Preview preview = run.save(document, search.asGiven(document));
        if (options.common.json) printJson(jsonOf(preview));
        if (!options.common.json && (preview.problem.empty() || preview.isFinding))
            table.add({preview.document, preview.isFinding ? preview.problem : preview.file,
                       preview.isFinding ? "" : std::to_string(preview.size)});
        if (!preview.problem.empty() && !preview.isFinding) complain(preview.document + ": " + preview.problem);
        usable = usable && (preview.problem.empty() || preview.isFinding);
        findings = findings || preview.isFinding;
        journal.take();
    }
    table.print();
    if (!journal.finish() || !usable) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addPreviewCommand(Command& program) {
    const auto options = std::make_shared<PreviewOptions>();
    Command& command = program.command("preview", "Saves the picture that is stored with a document, a JPEG",
                                       [options] { return runPreview(*options); });
    options->common.addNamesTo(command, "file", "Documents, and folders searched with all below them");
    command.value("-o,--output", "FILE",
                  "File, or folder, that receives it (by default the document's name and .jpg, here)",
                  &options->output);
    command.flag("--force", "Replace a picture that is there", options->force);
    options->common.addOutputTo(command);
}
