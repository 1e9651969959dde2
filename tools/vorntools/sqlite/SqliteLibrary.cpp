#include "tools/vorntools/sqlite/Sqlite.h"

#include <sqlite3.h>

static_assert(Sqlite::Good == SQLITE_OK && Sqlite::NoPermission == SQLITE_PERM && Sqlite::Busy == SQLITE_BUSY &&
                  Sqlite::Locked == SQLITE_LOCKED && Sqlite::ReadOnly == SQLITE_READONLY &&
                  Sqlite::InputOutput == SQLITE_IOERR && Sqlite::Corrupt == SQLITE_CORRUPT &&
                  Sqlite::Full == SQLITE_FULL && Sqlite::CannotOpen == SQLITE_CANTOPEN &&
                  Sqlite::NoDatabase == SQLITE_NOTADB && Sqlite::Row == SQLITE_ROW && Sqlite::Done == SQLITE_DONE &&
                  Sqlite::OpenReadWrite == SQLITE_OPEN_READWRITE && Sqlite::OpenForOneThread == SQLITE_OPEN_NOMUTEX &&
                  Sqlite::Null == SQLITE_NULL,
              "SQLite keeps its numbers");

extern "C" __attribute__((visibility("default"))) const Sqlite* vornToolsSqlite() {
    static const Sqlite functions = {
        sqlite3_open_v2,     sqlite3_close,       sqlite3_exec,      sqlite3_errmsg,      sqlite3_busy_timeout,
        sqlite3_prepare_v2,  sqlite3_finalize,    sqlite3_step,      sqlite3_reset,       sqlite3_bind_null,
        sqlite3_bind_int64,  sqlite3_bind_text,   sqlite3_bind_blob, sqlite3_column_type, sqlite3_column_int64,
        sqlite3_column_blob, sqlite3_column_bytes};
    // The program has one thread and asks nobody how much memory SQLite takes: no locks around each allocation. Once
    // a database has been open the calls do nothing.
    sqlite3_config(SQLITE_CONFIG_SINGLETHREAD);
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    return &functions;
}
