#pragma once

#include "hex/bytes/WorkingCopy.h"

#include <QByteArray>

/// An open and locked file of a working copy; removed and closed when the last user lets it go.
class WorkingCopy::File {
 public:
    /// A fresh file of that name. `error` is EEXIST when the name is another's; then and with any other error there is
    /// nothing.
    static std::shared_ptr<File> make(FileSystemCalls& calls, const QString& path, SystemError& error);

    File(FileSystemCalls& calls, const QByteArray& name, int handle) : m_calls(calls), m_name(name), m_handle(handle) {}
    ~File();
    Q_DISABLE_COPY_MOVE(File)

    int handle() const { return m_handle; }
    qint64 length() const { return m_length; }
    /// Takes its length from the file.
    SystemError measure();

    qint64 read(qint64 at, char* buffer, qint64 count) const;
    SystemError write(qint64 at, std::string_view bytes);

 private:
    FileSystemCalls& m_calls;
    QByteArray m_name;
    int m_handle;
    qint64 m_length = 0;
};
