// The import spreadsheet: any bytes, read by the library and by the few lines of model() below.

#include "VornToolsSpreadsheet.h"

#include "TYPMapCATUnicodeStringPVoid.h"
#include "embedded/Accounting.h"
#include "embedded/Records.h"
#include "embedded/Session.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using Options = std::map<std::string, std::string>;

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

/** A spreadsheet of this process, removed at the end. */
class Spreadsheet {
public:
    Spreadsheet() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        m_file = std::filesystem::temp_directory_path() / ("vorntools_fuzz_" + std::to_string(now) + ".txt");
    }
    ~Spreadsheet() {
        std::error_code ignored;
        std::filesystem::remove(m_file, ignored);
    }
    Spreadsheet(const Spreadsheet&) = delete;
    Spreadsheet& operator=(const Spreadsheet&) = delete;

    void write(const std::string& bytes) const {
        std::ofstream(m_file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string name() const { return m_file.u8string(); }

private:
    std::filesystem::path m_file;
};

/** LF or CR LF ends a line; the last one may lack its end. */
Lines linesOf(const std::string& bytes) {
    Lines lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = bytes.find('\n', begin);
        std::string line = bytes.substr(begin, end == std::string::npos ? end : end - begin);
        if (end != std::string::npos && !line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
        begin = end == std::string::npos ? bytes.size() : end + 1;
    }
    return lines;
}

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

std::string bytesOf(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
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
    static const Spreadsheet file;
    const std::string bytes(data, data + size);
    file.write(bytes);
    embedded::Session::current().environment().spreadsheetPath = file.name();
    const Model expected = model(linesOf(bytes));
    checkMenu(expected.menu);
    checkOptions(expected.options);
    require(embedded::Accounting::get().live().files == 0, "files left open");
    require(embedded::Accounting::get().takeBreaches().empty(), "a rule of the platform");
    require(embedded::Journal::get().open() == 0, "journal frames left open");
    embedded::Journal::get().clear();
    embedded::ErrorReports::get().take();
    return 0;
}
