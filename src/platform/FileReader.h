#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QString>

/// Reads one regular file from its first byte to its end. Owned by the code that creates it; the destructor closes the
/// file. Lengths are bytes. Does not run the event loop.
///
/// Folders, FIFOs, sockets and devices are refused without being opened, so no call blocks. It reads what the file
/// contains at that moment: a file that shrinks meanwhile ends early, one that grows may yield more bytes than size(),
/// and system files that report size 0 are read to their end. Error messages contain the file name and the system's
/// reason. After an error nothing more can be read.
class FileReader {
 public:
    explicit FileReader(FileSystemCalls& calls = FileSystemCalls::system()) : m_calls(calls) {}
    ~FileReader();
    Q_DISABLE_COPY_MOVE(FileReader)

    /// Whether the caller has just found a regular file under that name, for instance in the list of its folder. If it
    /// is another one by now, the open file shows it.
    enum class Looked { NotYet, IsRegular };

    /// Call it once only.
    SystemError open(const QString& path, Looked looked = Looked::NotYet);

    /// Length in bytes when the file was opened; only an estimate of what can be read.
    qint64 size() const { return m_size; }

    /// Fills the buffer and returns the number of bytes read. Fewer than `length`: the end of the file was reached. -1:
    /// see error().
    qint64 read(char* buffer, qint64 length);

    /// The open file, for calls that copy it as a whole. Readable after a successful open(); owned and closed by the
    /// reader.
    int handle() const { return m_handle; }

    const SystemError& error() const { return m_error; }

 private:
    SystemError openHandle(Looked looked);

    FileSystemCalls& m_calls;
    QString m_path;
    int m_handle = -1;
    qint64 m_size = 0;
    qint64 m_at = 0;
    SystemError m_error;
};
