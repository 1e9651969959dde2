#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"

#include "TYPMapCATUnicodeStringPVoid.h"
#include "VornToolsSpreadsheet.h"

#include "embedded/Session.h"

#include <limits>
#include <memory>

namespace {

struct ImportOptions {
    CommonOptions common;
    std::string file;
    int option = 0;
};

void show(bool json, Table& table, const char* kind, const Json& name, const std::string& value) {
    if (json)
        printJson(Json::object({{kind, name}, {"value", value}}));
    else
        table.add({kind, name.cell(), value});
}

/** Every option of the menu, up to the first one that it does not have. */
int showMenu(bool json, Table& table) {
    CATUnicodeString value;
    int option = 1;
    for (; SUCCEEDED(VornToolsSpreadsheet::getOptionValueFromImportSprdSht(option, value)); ++option)
        show(json, table, "option", option, bytesOf(value));
    return option - 1;
}

void showMainBodies(bool json, Table& table) {
    TYPMapCATUnicodeStringPVoid options;
    VornToolsSpreadsheet::getCATPartMainBodyOption(options);
    for (int i = 0; i < options.size(); ++i) {
        const std::unique_ptr<CATUnicodeString> value(static_cast<CATUnicodeString*>(options.valueAt(i)));
        show(json, table, "main_body", bytesOf(options.keyAt(i)), value ? bytesOf(*value) : std::string());
    }
}

int runImportOptions(const ImportOptions& options) {
    embedded::Session::current().environment().spreadsheetPath = fullNameOf(options.file);
    JournalFile journal(options.common.journal);
    Table table({{"KIND"}, {"OPTION OR DOCUMENT"}, {"VALUE"}});
    bool found = false;
    CATUnicodeString value;
    if (options.option > 0) {
        found = SUCCEEDED(VornToolsSpreadsheet::getOptionValueFromImportSprdSht(options.option, value));
        if (found) show(options.common.json, table, "option", options.option, bytesOf(value));
    } else {
        found = showMenu(options.common.json, table) > 0;
        if (found) showMainBodies(options.common.json, table);
    }
    table.print();
    if (!found) complain(options.file + " cannot be read, is no import spreadsheet or has no such option");
    return journal.finish() && found ? ExitFine : ExitUnusable;
}

} // namespace

void addImportOptionsCommand(Command& program) {
    const auto options = std::make_shared<ImportOptions>();
    Command& command = program.command("import-options", "Menu and main-body options of an import spreadsheet",
                                       [options] { return runImportOptions(*options); });
    command.value("file", "FILE", "The import spreadsheet", &options->file).required();
    command.value("--option", "N", "Number of one option of the menu, from 1", &options->option)
        .between(1, std::numeric_limits<int>::max());
    options->common.addOutputTo(command);
}
