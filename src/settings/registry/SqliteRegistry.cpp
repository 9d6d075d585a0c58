#include "settings/registry/SqliteRegistry.h"

#include "platform/FolderLock.h"
#include "platform/Folders.h"
#include "settings/registry/RegistryPath.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

using Query = SqliteConnection::Query;

namespace {

constexpr struct {
    int sqlite;
    int code;
} ResultTable[] = {
    {SQLITE_OK, RegistryCode::Ok},
    {SQLITE_EMPTY, RegistryCode::NotFound},
    {SQLITE_PERM, RegistryCode::AccessDenied},
    {SQLITE_READONLY, RegistryCode::AccessDenied},
    {SQLITE_CANTOPEN, RegistryCode::AccessDenied},
    {SQLITE_BUSY, RegistryCode::Busy},
    {SQLITE_LOCKED, RegistryCode::Busy},
    {SQLITE_NOMEM, RegistryCode::OutOfMemory},
    {SQLITE_TOOBIG, RegistryCode::OutOfMemory},
    {SQLITE_FULL, RegistryCode::DiskFull},
    {SQLITE_CORRUPT, RegistryCode::BadStore},
    {SQLITE_NOTADB, RegistryCode::BadStore},
};

int codeOf(int sqliteResult) {
    for (const auto& row : ResultTable) {
        if (row.sqlite == sqliteResult)
            return row.code;
    }
    return RegistryCode::IoError;
}

/// SQLITE_ERROR is the result of a missing table or column: the file is another program's, whatever its header states.
bool isDamage(int sqliteResult) {
    return sqliteResult == SQLITE_CORRUPT || sqliteResult == SQLITE_NOTADB || sqliteResult == SQLITE_ERROR;
}

bool keyExists(SqliteConnection& connection, RegistryRoot root, const RegistryPath& key) {
    if (key.isRoot())
        return true;
    const RegistryPath::Step& leaf = key.leaf();
    SqliteStatement find = connection.statement(Query::FindKey);
    return find.bind(root).bindText(leaf.parent).bindText(leaf.name.folded).nextRow();
}

void insertKey(SqliteConnection& connection, RegistryRoot root, const RegistryPath& key) {
    if (keyExists(connection, root, key))
        return;
    for (const RegistryPath::Step& step : key.steps()) {
        SqliteStatement insert = connection.statement(Query::InsertKey);
        insert.bind(root).bindText(step.parent).bindText(step.name.folded).bindText(step.name.spelling).run();
    }
}

/// The names that a statement with one text column returns, in its order.
QStringList namesOf(SqliteStatement& statement) {
    QStringList names;
    while (statement.nextRow())
        names.append(QString::fromUtf8(statement.bytes(0)));
    return names;
}

}  // namespace

SqliteRegistry::SqliteRegistry(const QString& path) : m_path(path), m_folder(QFileInfo(path).path()) {}

SqliteRegistry::~SqliteRegistry() {
    if (m_connection) {
        // The last connection to close deletes the log by its name: no process may begin a new file meanwhile.
        const FolderLock lock(m_folder);
        m_connection.reset();
    }
}

int SqliteRegistry::openKey(RegistryRoot root, const QString& path) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    const RegistryPath key(path);
    if (key.isRoot())
        return RegistryCode::Ok;
    return read([&](SqliteConnection& connection) {
        return keyExists(connection, root, key) ? RegistryCode::Ok : RegistryCode::NotFound;
    });
}

int SqliteRegistry::createKey(RegistryRoot root, const QString& path) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    const RegistryPath key(path);
    if (key.isRoot())
        return RegistryCode::Ok;
    return write([&](SqliteConnection& connection) {
        insertKey(connection, root, key);
        return RegistryCode::Ok;
    });
}

int SqliteRegistry::deleteKey(RegistryRoot root, const QString& path) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    const RegistryPath key(path);
    if (key.isRoot())
        return RegistryCode::AccessDenied;
    return change([&](SqliteConnection& connection) {
        if (!keyExists(connection, root, key))
            return RegistryCode::NotFound;
        const RegistryPath::Step& leaf = key.leaf();
        if (connection.statement(Query::SubKeys).bind(root).bindText(leaf.path).bind(1).nextRow())
            return RegistryCode::AccessDenied;
        connection.statement(Query::DeleteValues).bind(root).bindText(leaf.path).run();
        SqliteStatement erase = connection.statement(Query::DeleteKey);
        erase.bind(root).bindText(leaf.parent).bindText(leaf.name.folded).run();
        return RegistryCode::Ok;
    });
}

int SqliteRegistry::readValue(RegistryRoot root, const QString& path, const QString& name, RegistryValue& value) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    return read([&](SqliteConnection& connection) {
        SqliteStatement find = connection.statement(Query::ReadValue);
        find.bind(root).bindText(RegistryPath(path).folded()).bindText(RegistryName(name).folded);
        if (!find.nextRow())
            return RegistryCode::NotFound;
        value = {static_cast<qint32>(find.number(0)), find.bytes(1)};
        return RegistryCode::Ok;
    });
}

int SqliteRegistry::writeValue(RegistryRoot root, const QString& path, const QString& name,
                               const RegistryValue& value) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    return write([&](SqliteConnection& connection) {
        const RegistryPath key(path);
        const RegistryName valueName(name);
        insertKey(connection, root, key);
        SqliteStatement insert = connection.statement(Query::WriteValue);
        insert.bind(root).bindText(key.folded()).bindText(valueName.folded).bindText(valueName.spelling);
        insert.bind(value.type).bindBytes(value.data).run();
        return RegistryCode::Ok;
    });
}

int SqliteRegistry::deleteValue(RegistryRoot root, const QString& path, const QString& name) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    return change([&](SqliteConnection& connection) {
        SqliteStatement erase = connection.statement(Query::DeleteValue);
        erase.bind(root).bindText(RegistryPath(path).folded()).bindText(RegistryName(name).folded);
        return erase.nextRow() ? RegistryCode::Ok : RegistryCode::NotFound;
    });
}

int SqliteRegistry::subKeys(RegistryRoot root, const QString& path, QStringList& names, int limit) {
    names.clear();
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    const RegistryPath key(path);
    const int code = read([&](SqliteConnection& connection) {
        SqliteStatement list = connection.statement(Query::SubKeys);
        names = namesOf(list.bind(root).bindText(key.folded()).bind(limit));
        return keyExists(connection, root, key) ? RegistryCode::Ok : RegistryCode::NotFound;
    });
    return code == RegistryCode::NotFound && key.isRoot() ? RegistryCode::Ok : code;
}

int SqliteRegistry::valueNames(RegistryRoot root, const QString& path, QStringList& names) {
    names.clear();
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    const RegistryPath key(path);
    const int code = read([&](SqliteConnection& connection) {
        SqliteStatement list = connection.statement(Query::ValueNames);
        names = namesOf(list.bind(root).bindText(key.folded()));
        return keyExists(connection, root, key) ? RegistryCode::Ok : RegistryCode::NotFound;
    });
    return code == RegistryCode::NotFound && key.isRoot() ? RegistryCode::Ok : code;
}

int SqliteRegistry::runBatch(const std::function<int()>& work) {
    if (m_inBatch)
        return work();
    return write([&](SqliteConnection&) {
        m_inBatch = true;
        const int code = work();
        m_inBatch = false;
        return code;
    });
}

int SqliteRegistry::read(const Work& work) {
    if (m_inBatch)
        return work(*m_connection);
    int result = openForReading();
    int code = codeOf(result);
    if (result == SQLITE_OK) {
        code = work(*m_connection);
        result = m_connection->takeError();
    }
    if (isDamage(result)) {
        const FolderLock lock(m_folder);
        setAside();
        return RegistryCode::NotFound;
    }
    return result == SQLITE_OK ? code : codeOf(result);
}

/// A write that only deletes: without a file there is nothing to delete, and none is created.
int SqliteRegistry::change(const Work& work) {
    return m_inBatch || FileIdentity::of(m_path) ? write(work) : RegistryCode::NotFound;
}

int SqliteRegistry::write(const Work& work) {
    if (m_inBatch)
        return work(*m_connection);
    makeFolder(m_folder);
    const FolderLock lock(m_folder);
    int result = SQLITE_OK;
    const int code = writeOnce(work, result);
    if (!isDamage(result) || !setAside())
        return code;
    return writeOnce(work, result);
}

int SqliteRegistry::writeOnce(const Work& work, int& sqliteResult) {
    sqliteResult = openForWriting();
    if (sqliteResult != SQLITE_OK)
        return codeOf(sqliteResult);
    int code = RegistryCode::Ok;
    if (m_connection->execute("BEGIN IMMEDIATE")) {
        code = work(*m_connection);
        const bool keep = code == RegistryCode::Ok && m_connection->error() == SQLITE_OK;
        if (!keep || !m_connection->execute("COMMIT")) {
            sqliteResult = m_connection->takeError();
            m_connection->execute("ROLLBACK");
            m_connection->takeError();
            return sqliteResult == SQLITE_OK ? code : codeOf(sqliteResult);
        }
    }
    sqliteResult = m_connection->takeError();
    return sqliteResult == SQLITE_OK ? code : codeOf(sqliteResult);
}

/// Returns SQLITE_EMPTY when there is nothing to read yet: no file, or one without tables.
int SqliteRegistry::openForReading() {
    const std::optional<FileIdentity> identity = FileIdentity::of(m_path);
    // A connection that assumes that no process writes to its file is not notified when one does.
    if (m_connection && (identity != m_identity || m_connection->access() == SqliteConnection::Access::Still))
        letGo();
    if (!identity)
        return SQLITE_EMPTY;
    if (!m_connection) {
        m_identity = *identity;
        if (!identity->regular)
            return SQLITE_NOTADB;
        m_connection = std::make_unique<SqliteConnection>(m_path.toUtf8());
    }
    if (m_schemaKnown)
        return SQLITE_OK;
    int error = SQLITE_OK;
    const SqliteConnection::Schema schema = lookAtSchema(error);
    if (error != SQLITE_OK) {
        letGo();
        return error;
    }
    m_schemaKnown = schema == SqliteConnection::Schema::Ours;
    if (schema == SqliteConnection::Schema::Foreign)
        return SQLITE_NOTADB;
    return m_schemaKnown ? SQLITE_OK : SQLITE_EMPTY;
}

/// If no file can be created beside it, there can be no log either: then the file alone is read.
SqliteConnection::Schema SqliteRegistry::lookAtSchema(int& sqliteResult) {
    const SqliteConnection::Schema schema = m_connection->schema();
    sqliteResult = m_connection->takeError();
    if (codeOf(sqliteResult) != RegistryCode::AccessDenied || hasLog())
        return schema;
    letGo();
    m_connection = std::make_unique<SqliteConnection>(m_path.toUtf8(), SqliteConnection::Access::Still);
    const SqliteConnection::Schema lying = m_connection->schema();
    sqliteResult = m_connection->takeError();
    return lying;
}

/// The content of a log is part of the store and is missing in the file.
bool SqliteRegistry::hasLog() const {
    return QFileInfo(m_path + QLatin1String("-wal")).size() > 0;
}

int SqliteRegistry::openForWriting() {
    if (!FileIdentity::of(m_path) && !makeFile())
        return SQLITE_CANTOPEN;
    const int result = openForReading();
    if (result != SQLITE_EMPTY || !m_connection)
        return result;
    m_connection->createSchema();
    const int error = m_connection->takeError();
    if (error != SQLITE_OK) {
        letGo();
        return error;
    }
    m_schemaKnown = true;
    return SQLITE_OK;
}

/// Created before SQLite does it, so that only the owner can access it.
bool SqliteRegistry::makeFile() const {
    QFile file(m_path);
    return file.open(QIODevice::WriteOnly | QIODevice::Append, QFile::ReadOwner | QFile::WriteOwner);
}

/// Renames the file that was found damaged, unless another process has done so already. The folder is locked. Its log
/// is renamed too: if it stayed, it would be replayed into the new file.
bool SqliteRegistry::setAside() {
    letGo();
    const std::optional<FileIdentity> identity = FileIdentity::of(m_path);
    if (!identity || *identity != m_identity)
        return true;
    int number = 1;
    while (QFileInfo::exists(m_path + u".damaged-%1"_qs.arg(number)))
        ++number;
    const QString target = m_path + u".damaged-%1"_qs.arg(number);
    for (const QLatin1String companion : {QLatin1String("-journal"), QLatin1String("-wal"), QLatin1String("-shm")})
        QFile::rename(m_path + companion, target + companion);
    return QFile::rename(m_path, target);
}

/// Closes a file that is damaged, incomplete or no longer the one at the path, and touches nothing beside it.
void SqliteRegistry::letGo() {
    if (m_connection)
        m_connection->leaveFilesAlone();
    m_connection.reset();
    m_schemaKnown = false;
}
