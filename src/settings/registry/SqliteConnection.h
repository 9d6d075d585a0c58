#pragma once

#include "settings/registry/RegistryStore.h"

#include <array>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// One run of a statement of SqliteConnection: bound by the constructor, stepped through, reset by the destructor.
class SqliteStatement {
 public:
    SqliteStatement(class SqliteConnection& connection, sqlite3_stmt* statement);
    ~SqliteStatement();
    Q_DISABLE_COPY_MOVE(SqliteStatement)

    SqliteStatement& bind(qint64 number);
    SqliteStatement& bindText(const QByteArray& text);
    SqliteStatement& bindBytes(const QByteArray& bytes);

    /// True when there is a row (another row); an error is noted in the connection and ends the rows.
    bool nextRow();
    /// For statements without rows: true unless it failed, which is noted in the connection.
    bool run();

    qint64 number(int column) const;
    QByteArray bytes(int column) const;

 private:
    SqliteConnection& m_connection;
    sqlite3_stmt* m_statement;
    int m_nextParameter = 1;
};

/// An open store file and its prepared statements. Owned by SqliteRegistry. Errors are SQLite's numbers: the first one
/// since the last takeError() is kept, and the code that began a transaction calls takeError() at its end.
class SqliteConnection {
 public:
    enum class Query {
        ApplicationId,
        CountTables,
        FindKey,
        InsertKey,
        DeleteKey,
        SubKeys,
        ReadValue,
        WriteValue,
        DeleteValue,
        DeleteValues,
        ValueNames,
        Count
    };
    enum class Schema { Blank, Ours, Foreign };
    /// Shared: with a log beside the file, together with other processes. Still: the file alone, to which no process
    /// writes.
    enum class Access { Shared, Still };

    /// Opens the existing file; see error() for the result.
    explicit SqliteConnection(const QByteArray& path, Access access = Access::Shared);
    ~SqliteConnection();
    Q_DISABLE_COPY_MOVE(SqliteConnection)

    SqliteStatement statement(Query query);
    bool execute(const char* sql);

    /// The content of the file. Blank: nothing yet. An error is noted and counts as Foreign.
    Schema schema();
    bool createSchema();
    /// The log beside the file is neither replayed nor removed at the end, as the last connection to close would
    /// otherwise do.
    void leaveFilesAlone();

    Access access() const { return m_access; }
    int error() const { return m_error; }
    int takeError() { return std::exchange(m_error, 0); }
    void note(int result);

 private:
    Access m_access;
    sqlite3* m_database = nullptr;
    int m_error = 0;
    std::array<sqlite3_stmt*, static_cast<size_t>(Query::Count)> m_statements{};
};
