#ifndef TOOLS_VORNTOOLS_SQLITE_SQLITE_H
#define TOOLS_VORNTOOLS_SQLITE_SQLITE_H

// What the program and the library that brings SQLite for it agree on.

#include <cstdint>

struct sqlite3;
struct sqlite3_stmt;

/** SQLite's own functions and numbers. */
struct Sqlite {
    using Release = void (*)(void*);
    int (*open)(const char* name, sqlite3** database, int flags, const char* system);
    int (*close)(sqlite3* database);
    int (*execute)(sqlite3* database, const char* sql, int (*row)(void*, int, char**, char**), void* context,
                   char** message);
    const char* (*message)(sqlite3* database);
    int (*waitWhenBusy)(sqlite3* database, int milliseconds);
    int (*prepare)(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement, const char** rest);
    int (*finalize)(sqlite3_stmt* statement);
    int (*step)(sqlite3_stmt* statement);
    int (*reset)(sqlite3_stmt* statement);
    int (*bindNull)(sqlite3_stmt* statement, int at);
    int (*bindNumber)(sqlite3_stmt* statement, int at, long long value);
    int (*bindText)(sqlite3_stmt* statement, int at, const char* bytes, int length, Release release);
    int (*bindBlob)(sqlite3_stmt* statement, int at, const void* bytes, int length, Release release);
    int (*columnType)(sqlite3_stmt* statement, int at);
    long long (*columnNumber)(sqlite3_stmt* statement, int at);
    const void* (*columnBytes)(sqlite3_stmt* statement, int at);
    int (*columnLength)(sqlite3_stmt* statement, int at);

    enum Code {
        Good = 0,
        NoPermission = 3,
        Busy = 5,
        Locked = 6,
        ReadOnly = 8,
        InputOutput = 10,
        Corrupt = 11,
        Full = 13,
        CannotOpen = 14,
        NoDatabase = 26,
        Row = 100,
        Done = 101
    };
    enum Flag { OpenReadWrite = 2, OpenForOneThread = 0x8000 };
    enum Type { Null = 5 };
};

/** Never null; good for as long as the program. */
using GetSqlite = const Sqlite*();

#endif
