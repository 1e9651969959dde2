#include "tools/vorntools/catalogue/Database.h"

#include "tools/vorntools/System.h"
#include "tools/vorntools/Text.h"

#include <climits>

namespace {

/** Of a writer that is about to finish. */
constexpr int kWaitMilliseconds = 1000;
/** Meaning of bindText and bindBlob: the bytes are copied. */
const Sqlite::Release kCopied = reinterpret_cast<Sqlite::Release>(-1);

const Sqlite* sqliteFor(const std::string& file) {
    GetSqlite* const get = host::sqlite();
    if (!get) throw DatabaseError(file + ": catalogues are not built in");
    return get();
}

int lengthOf(std::string_view bytes) {
    if (bytes.size() > INT_MAX) throw DatabaseError("a text is too long for a catalogue");
    return static_cast<int>(bytes.size());
}

} // namespace

Database::Database(const std::string& file, const std::string& name) : m_name(name), m_sqlite(sqliteFor(name)) {
    // Whoever only reads has to undo what a killed writer left as well; a protected file is opened for reading.
    const int code =
        m_sqlite->open(file.c_str(), &m_database, Sqlite::OpenReadWrite | Sqlite::OpenForOneThread, nullptr);
    if (code != Sqlite::Good) {
        m_sqlite->close(m_database);
        m_database = nullptr;
        fail(code);
    }
    m_sqlite->waitWhenBusy(m_database, kWaitMilliseconds);
}

Database::~Database() { m_sqlite->close(m_database); }

void Database::execute(const std::string& sql) {
    check(m_sqlite->execute(m_database, sql.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::number(const std::string& sql) {
    Statement statement(*this, sql.c_str());
    return statement.next() ? statement.number(0) : 0;
}

void Database::fail(int code) const {
    switch (code & 0xFF) {
    case Sqlite::NoPermission:
    case Sqlite::CannotOpen: throw DatabaseError(m_name + " cannot be opened");
    case Sqlite::Busy:
    case Sqlite::Locked: throw DatabaseError(m_name + " is in use by another program");
    case Sqlite::ReadOnly: throw DatabaseError(m_name + " is read-only");
    case Sqlite::InputOutput: throw DatabaseError(m_name + " cannot be read or written");
    case Sqlite::Corrupt: throw DatabaseError(m_name + " is damaged");
    case Sqlite::Full: throw DatabaseError(m_name + " cannot be written: the disk is full");
    case Sqlite::NoDatabase: throw DatabaseError(m_name + " is no catalogue");
    default: throw DatabaseError(m_name + ": " + (m_database ? m_sqlite->message(m_database) : "out of memory"));
    }
}

Statement::Statement(Database& database, const char* sql) : m_database(database) {
    database.check(database.m_sqlite->prepare(database.m_database, sql, -1, &m_statement, nullptr));
}

Statement::~Statement() { m_database.m_sqlite->finalize(m_statement); }

bool Statement::next() {
    const int code = m_database.m_sqlite->step(m_statement);
    if (code != Sqlite::Row && code != Sqlite::Done) m_database.fail(code);
    return code == Sqlite::Row;
}

std::int64_t Statement::number(int column) const { return m_database.m_sqlite->columnNumber(m_statement, column); }

bool Statement::isNull(int column) const {
    return m_database.m_sqlite->columnType(m_statement, column) == Sqlite::Null;
}

std::string Statement::bytes(int column) const {
    const void* const bytes = m_database.m_sqlite->columnBytes(m_statement, column);
    const int length = m_database.m_sqlite->columnLength(m_statement, column);
    return bytes ? std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(length)) : std::string();
}

std::string Statement::text(int column) const { return bytesOfPrintable(bytes(column)); }

void Statement::bind(int at, std::nullptr_t) { m_database.check(m_database.m_sqlite->bindNull(m_statement, at)); }

void Statement::bind(int at, const std::string& text) {
    const std::string shown = printable(text);
    m_database.check(m_database.m_sqlite->bindText(m_statement, at, shown.data(), lengthOf(shown), kCopied));
}

void Statement::bind(int at, Blob blob) {
    m_database.check(m_database.m_sqlite->bindBlob(m_statement, at, blob.bytes.data(), lengthOf(blob.bytes), kCopied));
}

Transaction::~Transaction() {
    if (!m_isOpen) return;
    try {
        m_database.execute("ROLLBACK");
    } catch (const DatabaseError&) { // some errors end the transaction themselves
    }
}

void Transaction::commit() {
    m_database.execute("COMMIT");
    m_isOpen = false;
}
