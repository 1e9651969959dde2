#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"

#include "TYPVectorCATUnicodeString.h"
#include "VornToolsCommon.h"

#include "embedded/Session.h"

#include <filesystem>
#include <memory>

namespace {

struct ExchangeOptions {
    CommonOptions common;
    std::string what, folder;
    bool highlightsRevision = false;
};

const char* nameOf(VornToolsCommon::EnumResultStatus status) {
    if (status == VornToolsCommon::ResultStatusOk) return "ok";
    return status == VornToolsCommon::ResultStatusCancelled ? "cancelled" : "failed";
}

/** The files lie in the folder that the environment calls the temporary one. */
bool useFolder(const std::string& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(std::filesystem::u8path(folder), error)) {
        complain("no such folder: " + folder);
        return false;
    }
    embedded::Session::current().environment().tempDirectory =
        (std::filesystem::u8path(fullNameOf(folder)) / "").make_preferred().u8string();
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
        printJson(Json::object({{"status", nameOf(status)}, {"hosted_client", hostedClient != 0}, {"lines", lines}}));
    } else {
        print(std::string("status         ") + nameOf(status) + "\nhosted client  " + (hostedClient ? "yes" : "no") +
              "\n");
        for (const Json& line : *lines.elements()) print(printable(line.cell()) + "\n");
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
        selections.push_back(Json::object({{"part_number", bytesOf(partNumbers[i])}, {"file", file}}));
        table.add({bytesOf(partNumbers[i]), file});
    }
    if (options.common.json)
        printJson(Json::object({{"contexts", arrayOf(contexts)}, {"selections", selections}}));
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

int runExchange(const ExchangeOptions& options) {
    const bool writesSession = options.what == "session";
    // The file would be emptied: nothing is in session.
    if (writesSession && options.common.session.empty()) {
        complain("exchange session needs --session FILE: the session whose documents are to be named");
        return ExitUnusable;
    }
    if (!options.common.loadSession() || !useFolder(options.folder)) return ExitUnusable;
    JournalFile journal(options.common.journal);
    const int code = writesSession              ? writeSessionFile()
                     : options.what == "result" ? showResult(options.common.json)
                                                : showHighlights(options);
    return journal.finish() ? code : int{ExitUnusable};
}

} // namespace

void addExchangeCommand(Command& program) {
    const auto options = std::make_shared<ExchangeOptions>();
    Command& command = program.command(
        "exchange", "Files exchanged with the PDM client: reads results and highlights, writes the session's",
        [options] { return runExchange(*options); });
    command
        .value("what", "WHAT", "result, highlight, or session: write the file names of the documents of --session FILE",
               &options->what)
        .required()
        .oneOf({"result", "highlight", "session"});
    command.value("folder", "FOLDER", "The integration's temporary directory", &options->folder).required();
    command.flag("--highlight-revision",
                 "Read the highlights as the command for item revisions does: up to three a selection",
                 options->highlightsRevision);
    options->common.addTo(command);
}
