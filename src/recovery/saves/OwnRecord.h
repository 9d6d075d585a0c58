#pragma once

#include "platform/FileSystemCalls.h"

#include <QByteArray>

#include <atomic>

/// A file in which records of this process stand, one after the other. It is locked (flock) until the object is
/// destroyed, and then no longer this process's. Between records it begins with zeros. Owned by RecordStore and by the
/// code that writes a record into it. Only flush() may be called by several threads at once. Lengths are bytes.
class OwnRecord {
 public:
    OwnRecord(FileSystemCalls& calls, QByteArray name, int handle)
        : m_calls(calls), m_name(std::move(name)), m_handle(handle) {}
    ~OwnRecord() { m_calls.close(m_handle); }
    Q_DISABLE_COPY_MOVE(OwnRecord)

    int handle() const { return m_handle; }
    const QByteArray& name() const { return m_name; }
    qint64 size() const { return m_size; }
    bool isLarge() const { return m_size > SmallSize; }

    /// Called once. False: another process that looks for abandoned records has taken this one for such a one.
    bool lock();
    /// Whether the name still leads to this file: somebody may have emptied the folder.
    bool isThere() const;
    /// Whether the name is on the disk.
    bool isNamed() const { return m_isNamed; }
    void setNamed() { m_isNamed = true; }

    /// So many bytes from the beginning may belong to a record now. `isFlushed`: they are on the disk.
    void setWritten(qint64 length, bool isFlushed);
    /// Makes the record invalid and its bytes zeros, or returns them to the file system, without waiting for the disk.
    /// Of a file longer than `mostKept` only a small beginning is kept. False: it was not possible.
    bool blank(qint64 mostKept);
    /// Waits until no earlier record is on the disk. False: that is not certain.
    bool flush();
    /// A record that cannot be removed is made useless: later it would be taken for one of the file as it is then.
    void remove() const;

 private:
    static constexpr qint64 SmallSize = 1'048'576;

    bool writeZeros(qint64 length) const;
    bool cut(qint64 length);

    FileSystemCalls& m_calls;
    const QByteArray m_name;
    const int m_handle;
    qint64 m_size = 0;
    qint64 m_written = 0;  ///< may not be zeros before this offset
    bool m_isNamed = false;
    ino_t m_inode = 0;
    std::atomic<unsigned> m_blanks{0};         ///< how often it was made invalid
    std::atomic<unsigned> m_flushedBlanks{0};  ///< how many of them are on the disk
};
