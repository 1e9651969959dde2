#ifndef TOOLS_VORNTOOLS_OUTPUT_H
#define TOOLS_VORNTOOLS_OUTPUT_H

// Everything that the program says: results on standard output, messages and progress on standard error.

#include "tools/vorntools/Json.h"
#include "tools/vorntools/Text.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/** Says "vorntools: ..." on standard error. */
void complain(const std::string& what);

/** Prints lines, which are printable, on standard output. */
void print(const std::string& lines);

/** One object on a line of standard output. */
void printJson(const Json& object);

/** Which output is coloured: "auto" (a terminal's, unless NO_COLOR is set), "always" or "never". */
void setColor(const std::string& when);

/** What a row asks of its reader; shown as the colour of its first cell. */
enum class Tone { plain, attention, alarm };

/**
 * Rows of text under headings, each column as wide as its widest text; a column without any text is left out. On a
 * terminal that is too narrow paths lose their beginnings and other texts their ends; nothing else is ever cut.
 */
class Table {
public:
    enum class Kind { text, number, path };
    struct Column {
        std::string heading;
        Kind kind = Kind::text;
    };
    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}
    /** Adds a row of any bytes; it shows their printable text. */
    void add(const std::vector<std::string>& row, Tone tone = Tone::plain);
    /** Headings and rows, as wide as the terminal at most; nothing when there is no row. */
    std::string text() const;
    void print() const { ::print(text()); }

private:
    struct Row {
        std::vector<std::string> cells;
        Tone tone;
    };
    std::vector<std::size_t> widths() const;
    void fit(std::vector<std::size_t>& widths, std::size_t room) const;
    std::string cell(std::size_t column, const std::string& text, std::size_t width, Tone tone) const;
    std::string line(const Row& row, const std::vector<std::size_t>& widths) const;

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
};

/** Says in one line of standard error what the rows amount to; not when they are read by a program. */
void summarize(const std::string& text);

/**
 * "123 of 50000 documents" on a line of standard error of its own, when that is a terminal. Whatever the program says
 * meanwhile wipes the line first; so does the end.
 */
class Progress {
public:
    Progress(std::size_t total, const char* what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void step();

private:
    void show();

    const std::size_t m_total;
    const char* const m_what;
    const bool m_watched;
    std::size_t m_done = 0;
    std::chrono::steady_clock::time_point m_next;
};

#endif
