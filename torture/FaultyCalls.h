#pragma once

#include "platform/FileSystemCalls.h"

#include <mutex>
#include <vector>

/// The kinds of calls in which a fault is tried.
enum class CallKind {
    Open,
    Stat,
    Fstat,
    Readlink,
    ReadAt,
    Write,
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

/// One fault in a row of calls. A plain value.
struct Fault {
    enum class Reach {
        Once,        ///< this call alone fails
        SameKind,    ///< this call and all later ones of its kind: a full disk, a file system gone read-only
        Everything,  ///< nothing has any effect from this call on: the process was killed
    };

    int at = 0;  ///< number of the call, from 0
    Reach reach = Reach::Once;
    int variant = 0;  ///< which of the errors that fit the call

    /// How many faults of this reach fit such a call.
    static int variants(CallKind kind, Reach reach);
};

/// The real file system with one fault in it. Used by several threads at once.
class FaultyCalls : public FileSystemCalls {
 public:
    FaultyCalls() = default;
    explicit FaultyCalls(Fault fault) : m_fault(fault), m_hasFault(true) {}

    /// The kinds of all calls so far.
    std::vector<CallKind> kinds() const;

    int open(const char* path, int flags, mode_t mode) override;
    int stat(const char* path, struct stat* status) override;
    int fstat(int handle, struct stat* status) override;
    ssize_t readlink(const char* path, char* buffer, size_t size) override;
    ssize_t pread(int handle, void* buffer, size_t length, off_t offset) override;
    ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override;
    int flock(int handle, int operation) override;
    int fallocate(int handle, int mode, off_t offset, off_t length) override;
    int ftruncate(int handle, off_t length) override;
    int fchmod(int handle, mode_t mode) override;
    int futimens(int handle, const timespec* times) override;
    int fsync(int handle) override;
    int fdatasync(int handle) override;
    int startFlush(int handle, off_t offset, off_t length) override;
    int close(int handle) override;
    int unlink(const char* path) override;
    int rename(const char* from, const char* to) override;
    int nameFile(int handle, const char* path) override;

 private:
    /// What becomes of a call: it is made, made with fewer bytes, or fails.
    struct Verdict {
        int error = 0;
        bool isShort = false;
        bool isHalf = false;  ///< otherwise one byte
    };

    Verdict judge(CallKind kind);
    bool fails(CallKind kind);

    const Fault m_fault{};
    const bool m_hasFault = false;
    mutable std::mutex m_mutex;
    std::vector<CallKind> m_kinds;
    CallKind m_kindOfFault = CallKind::Open;
};
