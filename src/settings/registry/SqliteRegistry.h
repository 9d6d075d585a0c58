#pragma once

#include "platform/FileIdentity.h"
#include "settings/registry/RegistryStore.h"
#include "settings/registry/SqliteConnection.h"

#include <memory>

/// The registry in one SQLite file, whose path the shell passes. Several processes may use the file at once, each with
/// an object of its own (never one inherited through a fork); what an operation has acknowledged stays stored.
///
/// Nothing is touched before the first operation, and the file and its folder are created by the first write, not
/// before: until then every key is reported as missing. Where they can't be created or written, writes return an error,
/// and an existing file can still be read. While it is open, there are a log and an index beside the file; the last
/// process to close deletes them.
///
/// A file that is damaged (no database, cut short, another program's tables, a page that turns out broken later, no
/// regular file at all) is renamed to "<file>.damaged-1" or the next free number, and the store continues empty. This
/// and every write happens under a lock of the folder, and a write first checks whether the path still names the open
/// file: so no process continues to write into a file that another has renamed.
///
/// Waits for other processes up to five seconds, then returns Busy.
class SqliteRegistry : public RegistryStore {
 public:
    explicit SqliteRegistry(const QString& path);
    ~SqliteRegistry() override;
    Q_DISABLE_COPY_MOVE(SqliteRegistry)

    int openKey(RegistryRoot root, const QString& path) override;
    int createKey(RegistryRoot root, const QString& path) override;
    int deleteKey(RegistryRoot root, const QString& path) override;
    int readValue(RegistryRoot root, const QString& path, const QString& name, RegistryValue& value) override;
    int writeValue(RegistryRoot root, const QString& path, const QString& name, const RegistryValue& value) override;
    int deleteValue(RegistryRoot root, const QString& path, const QString& name) override;
    int subKeys(RegistryRoot root, const QString& path, QStringList& names, int limit = -1) override;
    int valueNames(RegistryRoot root, const QString& path, QStringList& names) override;
    int runBatch(const std::function<int()>& work) override;

 private:
    using Work = std::function<int(SqliteConnection&)>;

    int read(const Work& work);
    int write(const Work& work);
    int writeOnce(const Work& work, int& sqliteResult);
    int change(const Work& work);

    int openForReading();
    SqliteConnection::Schema lookAtSchema(int& sqliteResult);
    bool hasLog() const;
    int openForWriting();
    bool makeFile() const;
    bool setAside();
    void letGo();

    QString m_path;
    QString m_folder;
    std::unique_ptr<SqliteConnection> m_connection;
    FileIdentity m_identity;     ///< of the file that is open
    bool m_schemaKnown = false;  ///< the open file has our tables
    bool m_inBatch = false;
};
