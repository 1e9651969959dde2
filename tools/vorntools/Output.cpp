#include "tools/vorntools/Output.h"

#include "tools/vorntools/System.h"

#include "embedded/Records.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace {

constexpr auto kProgressPeriod = std::chrono::milliseconds(200);

/** Characters, which is columns for all but a few scripts. */
std::size_t widthOf(const std::string& text) {
    const auto begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

} // namespace

std::string bytesOf(const CATUnicodeString& text) {
    return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
}

CATUnicodeString textOf(const std::string& bytes) { return CATUnicodeString(bytes.data(), bytes.size()); }

std::string fileNameOf(const std::string& name) { return name.substr(name.find_last_of("/\\") + 1); }

Json arrayOf(const CATListValCATUnicodeString& list) {
    Json array = Json::array();
    for (int i = 1; i <= list.Size(); ++i) array.push_back(bytesOf(list[i]));
    return array;
}

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

std::string textOrHex(const std::string& bytes) {
    const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < 0x20U || byte == 0x7F; };
    CATUnicodeString text;
    if (std::none_of(bytes.begin(), bytes.end(), isControl) && text.BuildFromUTF8(bytes.data(), bytes.size()) == 0)
        return bytes;
    std::string digits;
    for (const char byte : bytes) {
        constexpr char kDigits[] = "0123456789abcdef";
        digits += kDigits[static_cast<unsigned char>(byte) >> 4U];
        digits += kDigits[static_cast<unsigned char>(byte) & 0xFU];
    }
    return digits;
}

void complain(const std::string& what) { std::fprintf(stderr, "vorntools: %s\n", what.c_str()); }

void printJson(const Json& object) {
    const std::string line = object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
}

void Table::print() const {
    if (m_rows.empty()) return;
    std::vector<std::size_t> widths;
    for (const Column& column : m_columns) widths.push_back(widthOf(column.heading));
    for (const auto& row : m_rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], widthOf(row[i]));

    const auto printLine = [&](const std::vector<std::string>& row) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string blanks(widths[i] - widthOf(row[i]), ' ');
            line += i > 0 ? "  " : "";
            line += m_columns[i].right ? blanks + row[i] : row[i] + blanks;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        line += '\n';
        std::fwrite(line.data(), 1, line.size(), stdout);
    };
    std::vector<std::string> headings;
    for (const Column& column : m_columns) headings.emplace_back(column.heading);
    printLine(headings);
    for (const auto& row : m_rows) printLine(row);
}

Progress::Progress(std::size_t total, const char* what)
    : m_total(total), m_what(what), m_watched(host::isWatched()),
      m_next(std::chrono::steady_clock::now() + kProgressPeriod) {}

Progress::~Progress() {
    if (m_shown) std::fputs("\r\x1B[K", stderr);
}

void Progress::step() {
    ++m_done;
    if (m_watched) show();
}

void Progress::show() {
    const auto now = std::chrono::steady_clock::now();
    if (now < m_next) return;
    m_next = now + kProgressPeriod;
    m_shown = true;
    std::fprintf(stderr, "\r%zu of %zu %s", m_done, m_total, m_what);
    std::fflush(stderr);
}

JournalFile::JournalFile(const std::string& name) : m_name(name) {
    if (!m_name.empty()) m_stream.open(std::filesystem::u8path(m_name), std::ios::binary);
}

void JournalFile::take() {
    embedded::Journal& journal = embedded::Journal::get();
    for (std::size_t i = 0; !m_name.empty() && i < journal.size(); ++i) m_stream << journal.line(i) << '\n';
    journal.clear();
    embedded::ErrorReports::get().take();
}

bool JournalFile::finish() {
    take();
    if (m_name.empty()) return true;
    m_stream.close();
    if (!m_stream.fail()) return true;
    complain("cannot write " + m_name);
    return false;
}
