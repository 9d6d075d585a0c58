#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QByteArray>

#include <string_view>

struct XXH3_state_s;

/// Writes a record over the beginning of a file, from its first byte to its last, with a checksum of all bytes. After
/// an error nothing more is written, and the error is kept. The handle stays the caller's. Lengths are bytes.
class RecordOutput {
 public:
    RecordOutput(FileSystemCalls& calls, int handle);
    ~RecordOutput();
    Q_DISABLE_COPY_MOVE(RecordOutput)

    /// Large pieces are written at once, small ones are collected.
    void write(std::string_view bytes);
    template <typename Plain>
    void writePlain(const Plain& value) {
        write({reinterpret_cast<const char*>(&value), sizeof value});
    }
    void writeOut();
    /// Adds zeros up to a multiple of this length. They do not belong to the record.
    void fill(qint64 multiple);

    /// Of all bytes so far: 16 bytes.
    QByteArray checksum() const;
    qint64 length() const { return m_length + m_buffer.size(); }
    /// Without those that are still collected.
    qint64 written() const { return m_length; }
    const SystemError& error() const { return m_error; }

 private:
    void writeToFile(std::string_view bytes);

    FileSystemCalls& m_calls;
    int m_handle;
    qint64 m_length = 0;  ///< of what is in the file
    QByteArray m_buffer;
    SystemError m_error;
    XXH3_state_s* m_hash;
};
