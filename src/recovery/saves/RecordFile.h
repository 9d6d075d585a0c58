#pragma once

#include "platform/OwnFile.h"

#include <QByteArray>

/// The file of a standing record, locked as long as this object exists, so that no other process takes it. Owned by the
/// code that examines the record. Links, other kinds of files and files of other users are never opened.
class RecordFile {
 public:
    using Opening = OwnFileLock;

    RecordFile(FileSystemCalls& calls, QByteArray name) : m_calls(calls), m_name(std::move(name)) {}
    ~RecordFile();
    Q_DISABLE_COPY_MOVE(RecordFile)

    Opening open() { return lockOwnFile(m_calls, m_name, m_handle); }
    /// Readable after open().
    int handle() const { return m_handle; }
    const QByteArray& name() const { return m_name; }
    /// A record that cannot be removed is made useless, if possible. False: neither was done.
    bool remove() const;

 private:
    FileSystemCalls& m_calls;
    QByteArray m_name;
    int m_handle = -1;
};
