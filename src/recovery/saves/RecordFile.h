#pragma once

#include "platform/FileSystemCalls.h"

#include <QByteArray>

/// The file of a standing record, locked as long as this object exists, so that no other process takes it. Owned by the
/// code that examines the record. Links, other kinds of files and files of other users are never opened.
class RecordFile {
 public:
    enum class Opening {
        Done,
        Missing,
        InUse,   ///< it belongs to a living process, or another one examines it
        Refused  ///< it is no file of this user's own, or cannot be opened
    };

    RecordFile(FileSystemCalls& calls, QByteArray name) : m_calls(calls), m_name(std::move(name)) {}
    ~RecordFile();
    Q_DISABLE_COPY_MOVE(RecordFile)

    Opening open();
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
