#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Output.h"

#include "TYPVectorCATUnicodeString.h"
#include "VornToolsCommon.h"

#include "embedded/Session.h"

#include <cstdio>
#include <filesystem>
#include <memory>

namespace {

struct ExchangeOptions {
    CommonOptions common;
    std::string folder;
    bool highlightsRevision = false;
};

const char* nameOf(VornToolsCommon::EnumResultStatus status) {
    if (status == VornToolsCommon::ResultStatusOk) return "ok";
    return status == VornToolsCommon::ResultStatusCancelled ? "cancelled" : "failed";
}

/** The files lie in the folder that the environment calls the temporary one. */
bool useFolder(const std::string& folder) {
    const std::filesystem::path path = std::filesystem::u8path(folder);
    std::error_code error;
    if (!std::filesystem::is_directory(path, error)) {
        complain("no such folder: " + folder);
        return false;
    }
    embedded::Session::current().environment().tempDirectory = (path / "").make_preferred().u8string();
    return true;
}

int showResult(bool json) {
    unsigned char ok = 0, hostedClient = 0;
    VornToolsCommon::EnumResultStatus status = VornToolsCommon::ResultStatusFailed;
    TYPVectorCATUnicodeString received;
    VornToolsCommon::readResultFileAndGetClient(ok, hostedClient);
    if (FAILED(VornToolsCommon::getResultInfo(status, received))) {
        complain("no result file can be read there");
        return ExitUnusable;
    }
    Json lines = Json::array();
    for (int i = 0; i < received.size(); ++i) lines.push_back(bytesOf(received.at(i)));
    if (json) {
        printJson(Json{{"status", nameOf(status)}, {"hosted_client", hostedClient != 0}, {"lines", lines}});
    } else {
        std::printf("status         %s\nhosted client  %s\n", nameOf(status), hostedClient ? "yes" : "no");
        for (const auto& line : lines) std::printf("%s\n", line.get<std::string>().c_str());
    }
    return status == VornToolsCommon::ResultStatusOk ? ExitFine : ExitFindings;
}

int showHighlights(const ExchangeOptions& options) {
    CATListValCATUnicodeString contexts, partNumbers, fileNames;
    embedded::Session::current().environment().commandHighlightItemRevision = options.highlightsRevision;
    const unsigned char anyCommand = options.highlightsRevision ? 0 : 1;
    const HRESULT code = VornToolsCommon::readHighlightFile(anyCommand, contexts, partNumbers, fileNames);
    Json selections = Json::array();
    Table table({{"PART NUMBER"}, {"FILE"}});
    for (int i = 1; i <= partNumbers.Size(); ++i) {
        const std::string file = i <= fileNames.Size() ? bytesOf(fileNames[i]) : std::string();
        selections.push_back(Json{{"part_number", bytesOf(partNumbers[i])}, {"file", file}});
        table.add({bytesOf(partNumbers[i]), file});
    }
    if (options.common.json)
        printJson(Json{{"contexts", arrayOf(contexts)}, {"selections", selections}});
    else
        table.print();
    if (SUCCEEDED(code)) return ExitFine;
    complain("the highlight file is missing or has a wrong form");
    return ExitUnusable;
}

int writeSessionFile() {
    if (SUCCEEDED(VornToolsCommon::writeCADFilesInSessionFile())) return ExitFine;
    complain("the file names of the session cannot be written there");
    return ExitUnusable;
}

} // namespace

void addExchangeCommand(Program& program) {
    const auto options = std::make_shared<ExchangeOptions>();
    const auto what = std::make_shared<std::string>();
    CLI::App& command = program.add(
        "exchange", "Files exchanged with the PDM client: reads results and highlights, writes the session's",
        [options, what] {
            if (!options->common.loadSession() || !useFolder(options->folder)) return int{ExitUnusable};
            JournalFile journal(options->common.journal);
            const int code = *what == "result"      ? showResult(options->common.json)
                             : *what == "highlight" ? showHighlights(*options)
                                                    : writeSessionFile();
            return journal.finish() ? code : int{ExitUnusable};
        });
    command.add_option("what", *what, "result, highlight, or session: write the file names of the session's documents")
        ->required()
        ->check(CLI::IsMember({"result", "highlight", "session"}))
        ->type_name("WHAT");
    command.add_option("folder", options->folder, "The integration's temporary directory")
        ->required()
        ->type_name("FOLDER");
    command.add_flag("--highlight-revision", options->highlightsRevision,
                     "Read the highlights as the command for item revisions does: up to three a selection");
    options->common.addTo(command);
}
