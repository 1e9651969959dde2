// The import spreadsheet: any bytes, read by the library and by the few lines of model() below.

#include "ExchangeFolder.h"

#include "VornToolsSpreadsheet.h"

#include "TYPMapCATUnicodeStringPVoid.h"

#include <algorithm>
#include <map>
#include <optional>

namespace {

using Lines = std::vector<std::string>;
using Options = std::map<std::string, std::string>;

bool isPart(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    const std::size_t separator = name.find_last_of("/\\");
    if (dot == std::string::npos || (separator != std::string::npos && dot < separator)) return false;
    std::string suffix = name.substr(dot + 1);
    for (char& letter : suffix)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 32);
    return suffix == "catpart";
}

/** What the file says, read from a list of all its lines; nothing when it is refused. */
struct Model {
    std::optional<Lines> menu;
    std::optional<Options> options;
};

Model model(const Lines& lines) {
    Model result;
    const auto end = lines.end();
    if (lines.empty() || lines.front() != "<menu>") return result;
    auto at = std::find(lines.begin(), end, "</menu>");
    if (at == end) return result;
    result.menu.emplace(lines.begin() + 1, at);
    const std::string usual = result.menu->size() < 9 ? std::string() : result.menu->at(8);
    Options options;
    while ((at = std::find(at, end, "<doc>")) != end && ++at != end) {
        const std::string name = *at++;
        if (!isPart(name) || options.count(name) != 0) continue;
        at = std::find(at, end, "<opts>");
        at = std::find(at, end, "<main_body_only>");
        if (at == end) continue;
        const auto close = std::find(++at, end, "</main_body_only>");
        if (close == end) return result;
        options[name] = at == close ? usual : *at;
        at = close + 1;
    }
    result.options = options;
    return result;
}

void checkMenu(const std::optional<Lines>& menu) {
    const int size = menu ? static_cast<int>(menu->size()) : 0;
    for (const int index : {-1, 0, 1, 2, 4, 9, 10, size, size + 1}) {
        CATUnicodeString value("before");
        const HRESULT code = VornToolsSpreadsheet::getOptionValueFromImportSprdSht(index, value);
        const bool present = index >= 1 && index <= size;
        require(SUCCEEDED(code) == present, "a menu line that is told the other way");
        require(bytesOf(value) == (present ? menu->at(static_cast<std::size_t>(index - 1)) : std::string()),
                "another value of a menu line");
    }
}

void checkOptions(const std::optional<Options>& expected) {
    TYPMapCATUnicodeStringPVoid map;
    const HRESULT code = VornToolsSpreadsheet::getCATPartMainBodyOption(map);
    Options options;
    for (int i = 0; i < map.size(); ++i) {
        auto* const value = static_cast<CATUnicodeString*>(map.valueAt(i));
        options[bytesOf(map.keyAt(i))] = bytesOf(*value);
        delete value;
    }
    require(SUCCEEDED(code) == expected.has_value(), "a file that is told the other way");
    require(options == expected.value_or(Options()), "other options");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    const std::string bytes(data, data + size);
    folder.write("import.txt", bytes);
    embedded::Session::current().environment().spreadsheetPath = folder.nameOf("import.txt");
    bool ended = false;
    const Model expected = model(linesOf(bytes, ended));
    checkMenu(expected.menu);
    checkOptions(expected.options);
    requireTidiness();
    return 0;
}
