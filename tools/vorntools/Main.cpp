#include "embedded/Profile.h"
#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Manual.h"
#include "tools/vorntools/Output.h"
#include "tools/vorntools/System.h"

#include "Build.h"

#include <cstdio>
#include <exception>

namespace {

/** Of what --json prints, as docs/json.md promises it: a second number for what was added since the first one. */
constexpr const char* kJsonVersion = "1.0";

/** What is asked of the program itself. */
struct ProgramOptions {
    bool version = false;
    bool jsonVersion = false;
    std::string color = "auto";
    std::string generated; ///< kind of text
};

/** One line for reports of faults: which build, made by what, on which platform. */
std::string versionText() {
    return std::string("vorntools ") + VORNTOOLS_VERSION + " (" + VORNTOOLS_BUILD + "; " + VORNTOOLS_COMPILER + "; " +
           VORNTOOLS_SYSTEM + ", in-memory platform)\n";
}

int runWithoutCommand(const Command& program, const ProgramOptions& options) {
    if (options.version) {
        print(versionText());
    } else if (options.jsonVersion) {
        print(kJsonVersion + std::string("\n"));
    } else if (!options.generated.empty()) {
        print(generateText(program, options.generated));
    } else {
        complain("a command is required; see vorntools help");
        return ExitUnusable;
    }
    return ExitFine;
}

int run(const std::vector<std::string>& arguments) {
    // The answers are about files, whose names lose no character; a session file says itself how its platform behaves.
    embedded::chooseProfile("kind");
    ProgramOptions options;
    Command program("vorntools", "What the PDM knows of CATIA V5 documents",
                    [&] { return runWithoutCommand(program, options); });
    program.flag("-V,--version", "Print the program's version, its build and its platform, and exit", options.version);
    program.flag("--json-version", "Print the version of what --json prints, and exit", options.jsonVersion);
    program.value("--color", "WHEN", "Colour what needs attention: auto (on a terminal), always, never", &options.color)
        .oneOf({"auto", "always", "never"});
    program.value("--generate", "KIND", "Text about the program itself", &options.generated)
        .oneOf({"man", "bash", "zsh", "fish"})
        .hidden();
    addStatusCommand(program);
    addDatCommand(program);
    addLinksCommand(program);
    addUsesCommand(program);
    addUsedByCommand(program);
    addDuplicatesCommand(program);
    addOrphansCommand(program);
    addPackCommand(program);
    addReportCommand(program);
    addCatalogueCommand(program);
    addContentsCommand(program);
    addPreviewCommand(program);
    addExchangeCommand(program);
    addRunCommand(program);
    addImportOptionsCommand(program);
    try {
        return runCommandLine(program, arguments, [&] { setColor(options.color); });
    } catch (const std::exception& error) {
        complain(error.what());
        return ExitUnusable;
    }
}

} // namespace

int main(int count, char** values) {
    host::prepareOutput();
    const int code = run(host::arguments(count, values));
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return code;
    complain("cannot write standard output");
    return ExitUnusable;
}
