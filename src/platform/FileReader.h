#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QString>

/// Reads one regular file from its first byte to its end. Whoever makes it owns it; the file is closed when it goes.
/// Lengths are bytes.
///
/// Folders, FIFOs, sockets and devices are refused without being opened, so nothing is ever waited for. What is read is
/// what is there at that moment: a file that shrinks meanwhile ends early, one that grows gives more than size(), and
/// files of the system that claim to be empty are read to their end. Errors name the file and the system's reason;
/// after one there is nothing more to read.
class FileReader {
 public:
    explicit FileReader(FileSystemCalls& calls = FileSystemCalls::system()) : m_calls(calls) {}
    ~FileReader();
    Q_DISABLE_COPY_MOVE(FileReader)

    /// To be called once.
    SystemError open(const QString& path);

    /// Length of the file when it was opened; no more than a hint.
    qint64 size() const { return m_size; }

    /// Fills the buffer. Fewer bytes than asked for: the end of the file is reached. -1: error() says why.
    qint64 read(char* buffer, qint64 length);

    /// Open for reading from open() on, and owned by the reader; for calls that take a file whole.
    int handle() const { return m_handle; }

    const SystemError& error() const { return m_error; }

 private:
    SystemError openHandle();

    FileSystemCalls& m_calls;
    QString m_path;
    int m_handle = -1;
    qint64 m_size = 0;
    SystemError m_error;
};
