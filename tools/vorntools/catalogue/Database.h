#ifndef TOOLS_VORNTOOLS_CATALOGUE_DATABASE_H
#define TOOLS_VORNTOOLS_CATALOGUE_DATABASE_H

#include "tools/vorntools/sqlite/Sqlite.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/** Why a database cannot be used, in words that begin with its name. */
class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/** An SQLite file that is open. All that fails is thrown as DatabaseError; a transaction that is open then is undone
 * when the object goes. */
class Database {
public:
    /** @param file that is there. @param name by which messages call it
     * @throws DatabaseError, also where SQLite is not built in */
    Database(const std::string& file, const std::string& name);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /** Runs statements that have neither parameters nor results. */
    void execute(const std::string& sql);
    /** The one number that a statement gives. */
    std::int64_t number(const std::string& sql);
    /** @throws DatabaseError with what the code of a failed call means */
    [[noreturn]] void fail(int code) const;
    const std::string& name() const { return m_name; }

private:
    friend class Statement;
    void check(int code) const {
        if (code != Sqlite::Good) fail(code);
    }

    const std::string m_name;
    const Sqlite* const m_sqlite;
    sqlite3* m_database = nullptr;
};

/** A statement that is run any number of times. Texts are kept printable, so that every program can read them. */
class Statement {
public:
    Statement(Database& database, const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /** Begins anew with other parameters; rows follow. */
    template <class... Values>
    Statement& with(const Values&... values) {
        m_database.m_sqlite->reset(m_statement);
        int at = 0;
        (bind(++at, values), ...);
        return *this;
    }
    /** The same for a statement that gives no rows. */
    template <class... Values>
    void run(const Values&... values) {
        with(values...).next();
        finish();
    }
    /** Ends a statement whose other rows nobody asks for: an open one holds the database. */
    void finish() { m_database.m_sqlite->reset(m_statement); }
    /** @return whether there is one more row */
    bool next();

    // Columns of the row, from 0
    std::int64_t number(int column) const;
    int integer(int column) const { return static_cast<int>(number(column)); }
    bool flag(int column) const { return number(column) != 0; }
    bool isNull(int column) const;
    std::string text(int column) const;
    std::string bytes(int column) const;

    /** Bytes that are stored as they are. */
    struct Blob {
        std::string_view bytes;
    };
    /** A number that counts from 1; 0 is stored as NULL. */
    struct Ordinal {
        std::int64_t number;
    };

private:
    template <class Number, std::enable_if_t<std::is_integral_v<Number>, int> = 0>
    void bind(int at, Number value) {
        m_database.check(m_database.m_sqlite->bindNumber(m_statement, at, static_cast<long long>(value)));
    }
    void bind(int at, std::nullptr_t);
    void bind(int at, const std::string& text);
    void bind(int at, const char* text) { bind(at, std::string(text)); }
    void bind(int at, Blob blob);
    void bind(int at, Ordinal ordinal) {
        if (ordinal.number == 0)
            bind(at, nullptr);
        else
            bind(at, ordinal.number);
    }
    template <class Value>
    void bind(int at, const std::optional<Value>& value) {
        if (value)
            bind(at, *value);
        else
            bind(at, nullptr);
    }

    Database& m_database;
    sqlite3_stmt* m_statement = nullptr;
};

/** A transaction for writing, undone unless it is committed. */
class Transaction {
public:
    explicit Transaction(Database& database) : m_database(database) { m_database.execute("BEGIN IMMEDIATE"); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    Database& m_database;
    bool m_isOpen = true;
};

#endif
