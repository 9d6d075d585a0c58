#pragma once

#include "platform/FileSystemCalls.h"

#include <QThread>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

/// Names for the calls of FileSystemCalls.
enum class SystemCall {
    Open,
    Stat,
    Fstat,
    Readlink,
    Read,
    ReadAt,
    Write,
    Seek,
    Clone,
    CopyRange,
    Lock,
    Reserve,
    Truncate,
    SetMode,
    SetTimes,
    Flush,
    StartFlush,
    Close,
    Unlink,
    Rename,
    NameFile
};

/// The real file system, in which a test can make single calls fail. Its calls may come from several threads at once.
class FailingFileSystem : public FileSystemCalls {
 public:
    FailingFileSystem() = default;

    /// The call of this kind with this number (from 1) fails with `error` and has no effect; number 0 means all calls.
    void fail(SystemCall call, int number, int error) {
        const std::scoped_lock lock(m_mutex);
        m_failures[{call, number}] = error;
    }

    /// Undoes fail().
    void recover(SystemCall call, int number) {
        const std::scoped_lock lock(m_mutex);
        m_failures.erase({call, number});
    }

    /// The call of this kind with this number transfers at most this many bytes.
    void shorten(SystemCall call, int number, std::size_t bytes) { m_short[{call, number}] = bytes; }

    /// Every read and write transfers at most this many bytes.
    void shortenAll(std::size_t bytes) { m_mostBytes = bytes; }

    /// Every call of this kind takes at least so long, as on a slow disk.
    void slowDown(SystemCall call, unsigned long milliseconds) { m_delays[call] = milliseconds; }

    /// Flushes are counted and may fail, but the disk is not waited for.
    void skipFlushes() { m_skipsFlushes = true; }

    void setSizeLimit(quint64 bytes) { m_sizeLimit = bytes; }

    int count(SystemCall call) const {
        const std::scoped_lock lock(m_mutex);
        const auto found = m_counts.find(call);
        return found == m_counts.end() ? 0 : found->second;
    }
    const std::vector<SystemCall>& calls() const { return m_calls; }
    /// Whether all opened handles were closed.
    bool allClosed() const { return m_open.empty(); }

    int open(const char* path, int flags, mode_t mode) override {
        if (fails(SystemCall::Open))
            return -1;
        const int handle = FileSystemCalls::open(path, flags, mode);
        const std::scoped_lock lock(m_mutex);
        if (handle >= 0)
            m_open.insert(handle);
        return handle;
    }
    int stat(const char* path, struct stat* status) override {
        return fails(SystemCall::Stat) ? -1 : FileSystemCalls::stat(path, status);
    }
    int fstat(int handle, struct stat* status) override {
        return fails(SystemCall::Fstat) ? -1 : FileSystemCalls::fstat(handle, status);
    }
    ssize_t readlink(const char* path, char* buffer, size_t size) override {
        return fails(SystemCall::Readlink) ? -1 : FileSystemCalls::readlink(path, buffer, size);
    }
    ssize_t read(int handle, void* buffer, size_t length) override {
        if (fails(SystemCall::Read))
            return -1;
        return FileSystemCalls::read(handle, buffer, std::min(length, mostBytes(SystemCall::Read)));
    }
    ssize_t pread(int handle, void* buffer, size_t length, off_t offset) override {
        if (fails(SystemCall::ReadAt))
            return -1;
        return FileSystemCalls::pread(handle, buffer, std::min(length, mostBytes(SystemCall::ReadAt)), offset);
    }
    ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override {
        if (fails(SystemCall::Write))
            return -1;
        std::vector<iovec> some;
        std::size_t left = mostBytes(SystemCall::Write);
        for (int i = 0; i < count && left > 0; ++i) {
            some.push_back({parts[i].iov_base, std::min(parts[i].iov_len, left)});
            left -= some.back().iov_len;
        }
        return FileSystemCalls::pwritev(handle, some.data(), static_cast<int>(some.size()), offset);
    }
    off_t lseek(int handle, off_t offset, int whence) override {
        return fails(SystemCall::Seek) ? -1 : FileSystemCalls::lseek(handle, offset, whence);
    }
    int cloneFile(int to, int from) override {
        return fails(SystemCall::Clone) ? -1 : FileSystemCalls::cloneFile(to, from);
    }
    ssize_t copyRange(int from, off_t* fromOffset, int to, off_t* toOffset, size_t length) override {
        if (fails(SystemCall::CopyRange))
            return -1;
        const std::size_t most = std::min(length, mostBytes(SystemCall::CopyRange));
        return FileSystemCalls::copyRange(from, fromOffset, to, toOffset, most);
    }
    int flock(int handle, int operation) override {
        return fails(SystemCall::Lock) ? -1 : FileSystemCalls::flock(handle, operation);
    }
    int fallocate(int handle, int mode, off_t offset, off_t length) override {
        return fails(SystemCall::Reserve) ? -1 : FileSystemCalls::fallocate(handle, mode, offset, length);
    }
    int ftruncate(int handle, off_t length) override {
        return fails(SystemCall::Truncate) ? -1 : FileSystemCalls::ftruncate(handle, length);
    }
    int fchmod(int handle, mode_t mode) override {
        return fails(SystemCall::SetMode) ? -1 : FileSystemCalls::fchmod(handle, mode);
    }
    int futimens(int handle, const timespec* times) override {
        return fails(SystemCall::SetTimes) ? -1 : FileSystemCalls::futimens(handle, times);
    }
    int fsync(int handle) override {
        if (fails(SystemCall::Flush))
            return -1;
        return m_skipsFlushes ? 0 : FileSystemCalls::fsync(handle);
    }
    int fdatasync(int handle) override {
        if (fails(SystemCall::Flush))
            return -1;
        return m_skipsFlushes ? 0 : FileSystemCalls::fdatasync(handle);
    }
    int startFlush(int handle, off_t offset, off_t length) override {
        return fails(SystemCall::StartFlush) ? -1 : FileSystemCalls::startFlush(handle, offset, length);
    }
    /// Closes the handle even if the call fails, as the system does.
    int close(int handle) override {
        const bool failing = fails(SystemCall::Close);
        const int error = errno;
        {
            const std::scoped_lock lock(m_mutex);
            m_open.erase(handle);
        }
        const int result = FileSystemCalls::close(handle);
        if (failing)
            errno = error;
        return failing ? -1 : result;
    }
    int unlink(const char* path) override { return fails(SystemCall::Unlink) ? -1 : FileSystemCalls::unlink(path); }
    int rename(const char* from, const char* to) override {
        return fails(SystemCall::Rename) ? -1 : FileSystemCalls::rename(from, to);
    }
    int nameFile(int handle, const char* path) override {
        return fails(SystemCall::NameFile) ? -1 : FileSystemCalls::nameFile(handle, path);
    }
    quint64 sizeLimit() override { return m_sizeLimit; }

 private:
    using Occasion = std::pair<SystemCall, int>;

    bool fails(SystemCall call) {
        if (const auto delay = m_delays.find(call); delay != m_delays.end())
            QThread::msleep(delay->second);
        const std::scoped_lock lock(m_mutex);
        m_calls.push_back(call);
        const int number = ++m_counts[call];
        auto found = m_failures.find({call, number});
        if (found == m_failures.end())
            found = m_failures.find({call, 0});
        if (found == m_failures.end())
            return false;
        errno = found->second;
        return true;
    }

    /// The limit for the current call.
    std::size_t mostBytes(SystemCall call) const {
        const int number = count(call);
        const std::scoped_lock lock(m_mutex);
        const auto found = m_short.find({call, number});
        return found == m_short.end() ? m_mostBytes : found->second;
    }

    mutable std::mutex m_mutex;  ///< of what changes while calls are made
    std::map<Occasion, int> m_failures;
    std::map<Occasion, std::size_t> m_short;
    std::map<SystemCall, unsigned long> m_delays;
    std::map<SystemCall, int> m_counts;
    std::vector<SystemCall> m_calls;
    std::set<int> m_open;
    std::size_t m_mostBytes = SIZE_MAX;
    bool m_skipsFlushes = false;
    quint64 m_sizeLimit = UINT64_MAX;
};
