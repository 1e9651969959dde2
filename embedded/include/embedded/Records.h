#ifndef EMBEDDED_RECORDS_H
#define EMBEDDED_RECORDS_H

#include "ExportedByCatia.h"

#include <cstdarg>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

/**
 * The journal in memory. Lines stand one behind the other in one buffer, so that writing a line costs a copy and no
 * allocation of its own. The text of an entry's opening line is "> name", of its closing line "< name code" (code
 * omitted for -1); other lines are the message as written.
 */
class ExportedByCatia Journal {
public:
    static Journal& get();

    std::size_t size() const { return m_ends.size(); }
    /** Line from 0; valid until the next line is written. */
    std::string_view line(std::size_t index) const;
    /** All lines, for comparing. */
    std::vector<std::string> lines() const;
    /** Message lines only, without the opening and closing lines. */
    std::vector<std::string> messages() const;
    bool contains(std::string_view message) const;
    /** Entries opened and not yet closed. */
    int open() const { return m_open; }
    /** Closing lines whose name was not that of the innermost open entry, since clear(). */
    int mismatches() const { return m_mismatches; }
    /** Closing lines written once more right behind themselves, since clear(): no mismatch, and no entry is closed. */
    int repeats() const { return m_repeats; }
    void clear();
    /** Whether anybody reads it, which is so at first. Without a reader the session has no journal manager, so that
     * nothing is put together for nobody. */
    bool isWanted() const { return m_isWanted; }
    void setWanted(bool isWanted) { m_isWanted = isWanted; }

    void begin(std::string_view name);
    void end(std::string_view name, int code);
    void write(std::string_view message);
    /** printf style, formatted in place; a line of any length. */
    void write(const char* format, std::va_list arguments);

private:
    /** Everything that a line takes of memory: a line that there is none for leaves nothing behind. */
    void makeRoom(std::size_t bytes);

    std::string m_text;
    std::vector<std::size_t> m_ends;
    std::vector<std::string> m_names;
    int m_open = 0;
    int m_mismatches = 0;
    int m_repeats = 0;
    bool m_isWanted = true;
};

/** One numbered report. */
struct ErrorReport {
    std::string function;
    int number = 0;
    std::string argument;
    /** "function number argument" */
    std::string text() const { return function + " " + std::to_string(number) + " " + argument; }
};

/** The error list in memory. */
class ExportedByCatia ErrorReports {
public:
    static ErrorReports& get();

    void add(ErrorReport report) { m_reports.push_back(std::move(report)); }
    std::size_t size() const { return m_reports.size(); }
    /** The reports since the last call, as texts; they then count as read. */
    std::vector<std::string> take();

private:
    std::vector<ErrorReport> m_reports;
};

/** Messages to the user, as texts: "localized 0 11208 11125", "unlocalized 11208 0 NAME", "information 11221 0",
 * "error 1 11181 NAME". */
class ExportedByCatia Messages {
public:
    static Messages& get();

    void add(std::string message) { m_messages.push_back(std::move(message)); }
    std::vector<std::string> take();

private:
    std::vector<std::string> m_messages;
};

} // namespace embedded

#endif
