#include "settings/registry/SqliteConnection.h"

#include <sqlite3.h>

namespace {

constexpr int BusyPatienceMs = 5000;
constexpr qint64 ApplicationId = 0x516D5267;

constexpr const char* CreateSchema =
    "CREATE TABLE IF NOT EXISTS registry_key("
    " root INTEGER NOT NULL, parent TEXT NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL,"
    " PRIMARY KEY(root, parent, folded)) WITHOUT ROWID;"
    "CREATE TABLE IF NOT EXISTS registry_value("
    " root INTEGER NOT NULL, path TEXT NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL,"
    " PRIMARY KEY(root, path, folded)) WITHOUT ROWID;"
    "PRAGMA application_id = 0x516D5267;";

/// By Query.
constexpr std::array<const char*, static_cast<size_t>(SqliteConnection::Query::Count)> QueryTexts = {
    "PRAGMA application_id",
    "SELECT count(*) FROM sqlite_schema",
    "SELECT 1 FROM registry_key WHERE root = ? AND parent = ? AND folded = ?",
    "INSERT INTO registry_key(root, parent, folded, name) VALUES(?, ?, ?, ?) ON CONFLICT DO NOTHING",
    "DELETE FROM registry_key WHERE root = ? AND parent = ? AND folded = ?",
    "SELECT name FROM registry_key WHERE root = ? AND parent = ? ORDER BY folded LIMIT ?",
    "SELECT type, data FROM registry_value WHERE root = ? AND path = ? AND folded = ?",
    "INSERT INTO registry_value(root, path, folded, name, type, data) VALUES(?, ?, ?, ?, ?, ?)"
    " ON CONFLICT DO UPDATE SET type = excluded.type, data = excluded.data",
    "DELETE FROM registry_value WHERE root = ? AND path = ? AND folded = ? RETURNING 1",
    "DELETE FROM registry_value WHERE root = ? AND path = ?",
    "SELECT name FROM registry_value WHERE root = ? AND path = ? ORDER BY folded",
};

}  // namespace

SqliteStatement::SqliteStatement(SqliteConnection& connection, sqlite3_stmt* statement)
    : m_connection(connection), m_statement(statement) {}

SqliteStatement::~SqliteStatement() {
    if (m_statement != nullptr) {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
}

SqliteStatement& SqliteStatement::bind(qint64 number) {
    m_connection.note(sqlite3_bind_int64(m_statement, m_nextParameter++, number));
    return *this;
}

SqliteStatement& SqliteStatement::bindText(const QByteArray& text) {
    m_connection.note(sqlite3_bind_text64(m_statement, m_nextParameter++, text.constData(),
                                          static_cast<sqlite3_uint64>(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

SqliteStatement& SqliteStatement::bindBytes(const QByteArray& bytes) {
    m_connection.note(sqlite3_bind_blob64(m_statement, m_nextParameter++, bytes.constData(),
                                          static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT));
    return *this;
}

bool SqliteStatement::nextRow() {
    if (m_connection.error() != SQLITE_OK)
        return false;
    const int result = sqlite3_step(m_statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        m_connection.note(result);
    return result == SQLITE_ROW;
}

bool SqliteStatement::run() {
    while (nextRow()) {
    }
    return m_connection.error() == SQLITE_OK;
}

qint64 SqliteStatement::number(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

QByteArray SqliteStatement::bytes(int column) const {
    const void* data = sqlite3_column_blob(m_statement, column);
    return {static_cast<const char*>(data), sqlite3_column_bytes(m_statement, column)};
}

SqliteConnection::SqliteConnection(const QByteArray& path, Access access) : m_access(access) {
    const bool still = access == Access::Still;
    const QByteArray name = still ? "file:" + path.toPercentEncoding("/") + "?immutable=1" : path;
    const int rights = still ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI : SQLITE_OPEN_READWRITE;
    note(sqlite3_open_v2(name.constData(), &m_database, rights | SQLITE_OPEN_NOMUTEX, nullptr));
    if (m_error != SQLITE_OK)
        return;
    sqlite3_busy_timeout(m_database, BusyPatienceMs);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // With the size check, SQLite detects a damaged page before it uses the cells of it.
    execute("PRAGMA synchronous = NORMAL; PRAGMA cell_size_check = ON");
}

SqliteConnection::~SqliteConnection() {
    for (sqlite3_stmt* statement : m_statements)
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

SqliteStatement SqliteConnection::statement(Query query) {
    const auto index = static_cast<size_t>(query);
    sqlite3_stmt*& prepared = m_statements[index];
    if (prepared == nullptr)
        note(sqlite3_prepare_v3(m_database, QueryTexts[index], -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
    return {*this, prepared};
}

bool SqliteConnection::execute(const char* sql) {
    const int result = sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr);
    note(result);
    return result == SQLITE_OK;
}

SqliteConnection::Schema SqliteConnection::schema() {
    SqliteStatement application = statement(Query::ApplicationId);
    if (application.nextRow() && application.number(0) == ApplicationId)
        return Schema::Ours;
    SqliteStatement tables = statement(Query::CountTables);
    const bool blank = tables.nextRow() && tables.number(0) == 0;
    return blank ? Schema::Blank : Schema::Foreign;
}

bool SqliteConnection::createSchema() {
    // With a write-ahead log a write need not wait for the disk. If the file system does not support one, the store
    // works without it.
    execute("PRAGMA journal_mode = WAL");
    takeError();
    // Tables and mark appear together, or not at all.
    return execute("BEGIN IMMEDIATE") && execute(CreateSchema) && execute("COMMIT");
}

void SqliteConnection::leaveFilesAlone() {
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void SqliteConnection::note(int result) {
    if (m_error == SQLITE_OK)
        m_error = result & 0xFF;
}
