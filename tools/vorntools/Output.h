#ifndef TOOLS_VORNTOOLS_OUTPUT_H
#define TOOLS_VORNTOOLS_OUTPUT_H

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

std::string bytesOf(const CATUnicodeString& text);
CATUnicodeString textOf(const std::string& bytes);
/** Behind the last slash or backslash. */
std::string fileNameOf(const std::string& name);
Json arrayOf(const CATListValCATUnicodeString& list);
/** Null for an empty text. */
Json textOrNull(const std::string& text);

/** The bytes themselves when they are UTF-8 text without control characters, else as hexadecimal digits. */
std::string textOrHex(const std::string& bytes);

/** Says "vorntools: ..." on standard error. */
void complain(const std::string& what);

/** One object on a line of standard output. Bytes that are no UTF-8 appear as U+FFFD. */
void printJson(const Json& object);

/** Rows of text under headings, each column as wide as its widest text. */
class Table {
public:
    struct Column {
        const char* heading;
        bool right = false; ///< numbers
    };
    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}
    void add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }
    /** Prints headings and rows; nothing when there is no row. */
    void print() const;

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

/** "123 of 50000 documents" on one line of standard error while somebody watches; wiped at the end. */
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
    bool m_shown = false;
    std::size_t m_done = 0;
    std::chrono::steady_clock::time_point m_next;
};

/** Hands the journal's lines to a file, if the caller wants one, and forgets them and the error reports. */
class JournalFile {
public:
    /** @param name empty for none */
    explicit JournalFile(const std::string& name);
    /** Takes what was written since the last call. */
    void take();
    /** False, and said on standard error, when the file could not be written. */
    bool finish();

private:
    const std::string m_name;
    std::ofstream m_stream;
};

#endif
