#pragma once

#include "platform/FileIdentity.h"
#include "settings/registry/RegistryStore.h"
#include "settings/registry/SqliteConnection.h"

#include <memory>

/// The registry in one SQLite file, whose path the shell gives. Several processes may use the file at once, each with
/// an object of its own (never one carried through a fork); what an operation has acknowledged stays.
///
/// Nothing is touched before the first operation, and the file and its folder are made by the first write, not before:
/// until then everything reads as missing. Where they can't be made or written, writes fail by their result, and a file
/// that is there is read all the same. While it is open a log and an index stand beside the file; the last process to
/// close removes them.
///
/// A file that is damaged (no database, cut short, another program's tables, a page that turns out broken later, no
/// regular file at all) is set aside as "<file>.damaged-1" or the next free number, and the store goes on empty. This
/// and every write happens under a lock of the folder, and a write looks first whether the path still names the file
/// that is open: so no process goes on writing into a file that another has set aside.
///
/// Waits for other processes up to five seconds, then gives Busy.
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
