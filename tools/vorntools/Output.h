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

/** Rows of text under headings, each column as wide as its widest text. */
class Table {
public:
    struct Column {
        std::string heading;
        bool right = false; ///< numbers
    };
    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}
    /** Adds a row of any bytes; it shows their printable text. */
    void add(const std::vector<std::string>& row);
    /** Prints headings and rows; nothing when there is no row. */
    void print() const;

private:
    std::string lineOf(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) const;

    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

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
