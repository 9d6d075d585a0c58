#pragma once

#include "hex/bytes/BytesBefore.h"
#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <string_view>

/// An open and locked file of a working copy; removed and closed when its last owner releases it.
class WorkingCopyFile {
 public:
    /// Creates a file of that name. Null, and `error`, when it cannot be created; EEXIST when the name is in use.
    static std::shared_ptr<WorkingCopyFile> make(FileSystemCalls& calls, const QString& path, SystemError& error);

    WorkingCopyFile(FileSystemCalls& calls, const QByteArray& name, int handle)
        : m_calls(calls), m_name(name), m_handle(handle) {}
    ~WorkingCopyFile();
    Q_DISABLE_COPY_MOVE(WorkingCopyFile)

    int handle() const { return m_handle; }
    qint64 length() const { return m_length; }
    /// Reads its length from the file.
    SystemError measure();

    qint64 read(qint64 at, char* buffer, qint64 count) const;
    SystemError write(qint64 at, std::string_view bytes);

    /// Until endSave() readForSave() returns the bytes as they are now, whatever is written meanwhile.
    void beginSave() { m_before.emplace(); }
    void endSave() { m_before.reset(); }
    qint64 readForSave(qint64 at, char* buffer, qint64 count) const;

 private:
    FileSystemCalls& m_calls;
    QByteArray m_name;
    int m_handle;
    qint64 m_length = 0;
    std::optional<BytesBefore> m_before;
};
