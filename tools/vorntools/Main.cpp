#include "tools/vorntools/Commands.h"

#include <CLI/CLI.hpp>

namespace {

void addCommonOptions(CLI::App& command, CommonOptions& options) {
    command.add_flag("--json", options.json, "One JSON object a line instead of a table");
    command.add_option("--session", options.session, "Session file: environment and documents in session");
    command.add_option("--journal", options.journal, "File that receives the journal");
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("What the PDM knows of CATIA V5 documents", "vorntools");
    app.set_version_flag("--version", VORNTOOLS_VERSION);
    app.require_subcommand(1);
    CommonOptions options;

    CLI::App* const status = app.add_subcommand("status", "New, modified or not modified: every document of a folder");
    status->add_option("folder", options.names, "Folders, searched with all below them, and documents")->required();
    addCommonOptions(*status, options);

    CLI::App* const dat = app.add_subcommand("dat", "Every field of a DAT file");
    dat->add_option("file", options.names, "The DAT file or its document")->required()->expected(1);
    addCommonOptions(*dat, options);

    try {
        app.parse(argc, argv);
        return status->parsed() ? runStatus(options) : runDat(options);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? ExitFine : ExitUnusable;
    } catch (const std::exception& error) {
        std::cerr << "vorntools: " << error.what() << '\n';
        return ExitUnusable;
    }
}
