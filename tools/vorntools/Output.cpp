#include "tools/vorntools/Output.h"

#include "tools/vorntools/System.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr auto kProgressPeriod = std::chrono::milliseconds(200);

/** Blanks between two columns. */
constexpr std::size_t kGap = 2;
/** A column that is made narrower keeps this much. */
constexpr std::size_t kLeastWidth = 12;

/** Whether standard output takes colours. */
bool coloring = false;

const char* colorOf(Tone tone) {
    switch (tone) {
    case Tone::attention: return "\x1B[33m";
    case Tone::alarm: return "\x1B[31m";
    default: return "";
    }
}

/** UTF-8 text in as many columns as there are, with a sign where something is left out. */
std::string shortened(const std::string& text, std::size_t width, bool fromLeft) {
    std::size_t surplus = widthOf(text);
    if (surplus <= width) return text;
    const char kLeftOut[] = "\xE2\x80\xA6";
    surplus -= width - 1;
    const auto begins = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U; };
    if (fromLeft) {
        std::size_t at = 0;
        while (at < text.size() && !(begins(at) && surplus-- == 0)) ++at;
        return kLeftOut + text.substr(at);
    }
    std::size_t end = text.size();
    while (surplus > 0) surplus -= begins(--end) ? 1 : 0;
    return text.substr(0, end) + kLeftOut;
}

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

void printJson(const Json& object) {
    static std::string line; // keeps its room: a listing has many lines of like lengths
    line.clear();
    object.write(line);
    line += '\n';
    print(line);
}

void setColor(const std::string& when) {
    const char* const unwanted = std::getenv("NO_COLOR"); // https://no-color.org: any text but none
    const bool wanted =
        when == "always" || (when == "auto" && host::outputIsTerminal() && !(unwanted && *unwanted != '\0'));
    coloring = wanted && host::enableColors();
}

void summarize(const std::string& text) {
    wipeProgress();
    std::fflush(stdout); // on a terminal that shows both, what is said last stands last
    std::fprintf(stderr, "%s\n", printable(text).c_str());
}

void Table::add(const std::vector<std::string>& row, Tone tone) {
    m_rows.push_back({{}, tone});
    for (const std::string& text : row) m_rows.back().cells.push_back(printable(text));
}

/** Of each column; 0 for one without any text. */
std::vector<std::size_t> Table::widths() const {
    std::vector<std::size_t> widths(m_columns.size(), 0);
    for (const Row& row : m_rows)
        for (std::size_t i = 0; i < row.cells.size(); ++i) widths[i] = std::max(widths[i], widthOf(row.cells[i]));
    for (std::size_t i = 0; i < widths.size(); ++i)
        if (widths[i] > 0) widths[i] = std::max(widths[i], widthOf(m_columns[i].heading));
    return widths;
}

/** Takes from the widest column what does not fit, but leaves something of each. */
void Table::fit(std::vector<std::size_t>& widths, std::size_t room) const {
    std::size_t total = 0;
    for (const std::size_t width : widths) total += width > 0 ? width + kGap : 0;
    for (; total > room + kGap; --total) {
        std::size_t widest = widths.size(), most = kLeastWidth;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (m_columns[i].kind == Kind::number || widths[i] <= most) continue;
            widest = i;
            most = widths[i];
        }
        if (widest == widths.size()) return;
        --widths[widest];
    }
}

std::string Table::cell(std::size_t column, const std::string& text, std::size_t width, Tone tone) const {
    const Kind kind = m_columns[column].kind;
    const std::string shown = shortened(text, width, kind == Kind::path);
    const std::string blanks(width - widthOf(shown), ' ');
    const char* const color = coloring ? colorOf(tone) : "";
    const std::string colored = *color == '\0' || shown.empty() ? shown : color + shown + "\x1B[0m";
    return kind == Kind::number ? blanks + colored : colored + blanks;
}

std::string Table::line(const Row& row, const std::vector<std::size_t>& widths) const {
    std::string line;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        if (widths[i] == 0) continue;
        if (!line.empty()) line.append(kGap, ' ');
        line += cell(i, row.cells[i], widths[i], i == 0 ? row.tone : Tone::plain);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

void Table::print() const {
    if (m_rows.empty()) return;
    std::vector<std::size_t> widths = this->widths();
    const int room = host::terminalWidth();
    if (room > 0) fit(widths, static_cast<std::size_t>(room));

    Row headings = {{}, Tone::plain};
    for (const Column& column : m_columns) headings.cells.push_back(column.heading);
    ::print(line(headings, widths));
    for (const Row& row : m_rows) ::print(line(row, widths));
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
