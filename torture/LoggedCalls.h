#pragma once

#include "WeakDisk.h"
#include "platform/FileSystemCalls.h"

#include <map>
#include <mutex>

/// The real file system, of which every change to the bytes, sizes and names below one folder is logged in a weak disk.
/// Used by several threads at once. Paths are real ones.
class LoggedCalls : public FileSystemCalls {
 public:
    /// The disk knows the files and folders below `root` already; `root` itself is there for certain.
    LoggedCalls(WeakDisk& disk, QByteArray root) : m_disk(disk), m_root(std::move(root)) {}

    /// The write with this number, from 1 and counted from now, writes a part of its bytes, and then no write succeeds;
    /// 0: all do.
    void failAtWrite(int number) {
        m_writes = 0;
        m_failAt = number;
    }
    /// No file can be made, and none but those below `root`/state be read, so that no record comes about.
    void refuseRecords(bool refuses) { m_refusesRecords = refuses; }
    /// The length of the log.
    int place() {
        const std::scoped_lock lock(m_mutex);
        return m_disk.length();
    }

    int open(const char* path, int flags, mode_t mode) override;
    int stat(const char* path, struct stat* status) override;
    int fstat(int handle, struct stat* status) override;
    ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override;
    int fallocate(int handle, int mode, off_t offset, off_t length) override;
    int ftruncate(int handle, off_t length) override;
    int futimens(int handle, const timespec* times) override;
    int fsync(int handle) override;
    int fdatasync(int handle) override;
    int close(int handle) override;
    int unlink(const char* path) override;
    int rename(const char* from, const char* to) override;
    int nameFile(int handle, const char* path) override;

    /// The time of the disk as one of the system. It is that of the last change to a file, which is not told apart from
    /// the reservation of space.
    static timespec systemTime(qint64 time) { return {FirstSecond + time, 0}; }

 private:
    static constexpr time_t FirstSecond = 1'000'000'000;

    void noteFolders(const QByteArray& path);
    WeakDisk::FileId fileOf(int handle) const;
    void noteTime(WeakDisk::FileId file, struct stat& status) const;
    int flush(int handle, bool withTime);

    WeakDisk& m_disk;
    QByteArray m_root;
    std::mutex m_mutex;
    std::map<int, WeakDisk::FileId> m_files;  ///< open ones
    std::map<int, QByteArray> m_folders;      ///< open ones
    int m_writes = 0;
    int m_failAt = 0;
    bool m_refusesRecords = false;
};
