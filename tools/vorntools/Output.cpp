#include "tools/vorntools/Output.h"

#include "tools/vorntools/System.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr auto kProgressPeriod = std::chrono::milliseconds(200);

/** Columns of the progress line that is shown. */
int progressWidth = 0;

void wipeProgress() {
    if (progressWidth > 0) std::fprintf(stderr, "\r%*s\r", progressWidth, "");
    progressWidth = 0;
}

} // namespace

void complain(const std::string& what) {
    wipeProgress();
    std::fprintf(stderr, "vorntools: %s\n", printable(what).c_str());
}

void print(const std::string& lines) {
    wipeProgress();
    std::fwrite(lines.data(), 1, lines.size(), stdout);
    // On a terminal that shows both, the next progress line must come behind these lines.
    static const bool isTerminal = host::outputIsTerminal();
    if (isTerminal) std::fflush(stdout);
}

void printJson(const Json& object) { print(object.dump() + "\n"); }

void Table::add(const std::vector<std::string>& row) {
    m_rows.emplace_back();
    for (const std::string& text : row) m_rows.back().push_back(printable(text));
}

std::string Table::lineOf(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) const {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string blanks(widths[i] - widthOf(row[i]), ' ');
        line += i > 0 ? "  " : "";
        line += m_columns[i].right ? blanks + row[i] : row[i] + blanks;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

void Table::print() const {
    if (m_rows.empty()) return;
    std::vector<std::string> headings;
    for (const Column& column : m_columns) headings.push_back(column.heading);
    std::vector<std::size_t> widths;
    for (const std::string& heading : headings) widths.push_back(widthOf(heading));
    for (const auto& row : m_rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], widthOf(row[i]));

    ::print(lineOf(headings, widths));
    for (const auto& row : m_rows) ::print(lineOf(row, widths));
}

Progress::Progress(std::size_t total, const char* what)
    : m_total(total), m_what(what), m_watched(host::errorIsTerminal()) {
    if (m_watched && m_total > 0) show();
}

Progress::~Progress() { wipeProgress(); }

void Progress::step() {
    ++m_done;
    if (m_watched && std::chrono::steady_clock::now() >= m_next) show();
}

void Progress::show() {
    m_next = std::chrono::steady_clock::now() + kProgressPeriod;
    wipeProgress();
    progressWidth = std::fprintf(stderr, "%zu of %zu %s", m_done, m_total, m_what);
    std::fflush(stderr);
}
