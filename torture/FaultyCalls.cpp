#include "FaultyCalls.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace {

/// Instead of an error: fewer bytes than asked for.
constexpr int OneByte = -1;
constexpr int HalfOfIt = -2;

struct Errors {
    CallKind kind;
    std::span<const int> once;
    std::span<const int> lasting;  ///< without those after which a call is repeated for ever
};

constexpr int OpenErrors[] = {EACCES, EMFILE, ENOSPC, EROFS, EIO, EINTR};
constexpr int PlainErrors[] = {EIO, ENOMEM};
constexpr int ReadErrors[] = {EIO, ENOMEM, EINTR, OneByte, HalfOfIt};
constexpr int WriteErrors[] = {ENOSPC, EDQUOT, EIO, EINTR, OneByte, HalfOfIt};
constexpr int LastingWriteErrors[] = {ENOSPC, EDQUOT, EIO, HalfOfIt};
constexpr int LockErrors[] = {ENOLCK, EINTR, EWOULDBLOCK};
constexpr int LastingLockErrors[] = {ENOLCK};
constexpr int ReserveErrors[] = {ENOSPC, EDQUOT, EOPNOTSUPP, EIO, EINTR};
constexpr int FlushErrors[] = {EIO, ENOSPC, EDQUOT, EINTR};
constexpr int CutErrors[] = {EIO, EPERM, EINTR};
constexpr int NameErrors[] = {EIO, EACCES, EROFS};
constexpr int NewNameErrors[] = {EPERM, ENOENT, EEXIST, ENOSPC, EINTR};

constexpr std::span<const int> lasting(std::span<const int> errors) {
    return errors.first(3);
}

constexpr Errors Fitting[] = {
    {CallKind::Open, OpenErrors, lasting(OpenErrors)},
    {CallKind::Stat, PlainErrors, PlainErrors},
    {CallKind::Fstat, PlainErrors, PlainErrors},
    {CallKind::Readlink, PlainErrors, PlainErrors},
    {CallKind::ReadAt, ReadErrors, std::span(ReadErrors).first(2)},
    {CallKind::Write, WriteErrors, LastingWriteErrors},
    {CallKind::Lock, LockErrors, LastingLockErrors},
    {CallKind::Reserve, ReserveErrors, lasting(ReserveErrors)},
    {CallKind::Truncate, CutErrors, std::span(CutErrors).first(2)},
    {CallKind::SetMode, PlainErrors, PlainErrors},
    {CallKind::SetTimes, PlainErrors, PlainErrors},
    {CallKind::Flush, FlushErrors, lasting(FlushErrors)},
    {CallKind::StartFlush, PlainErrors, PlainErrors},
    {CallKind::Close, std::span(FlushErrors), lasting(FlushErrors)},
    {CallKind::Unlink, NameErrors, NameErrors},
    {CallKind::Rename, NameErrors, NameErrors},
    {CallKind::NameFile, NewNameErrors, std::span(NewNameErrors).first(4)},
};

/// A process is killed before a call, or in the middle of a write.
constexpr int Kill[] = {EIO};
constexpr int KillInWrite[] = {EIO, OneByte, HalfOfIt};

std::span<const int> errorsOf(CallKind kind, Fault::Reach reach) {
    if (reach == Fault::Reach::Everything)
        return kind == CallKind::Write ? std::span<const int>(KillInWrite) : std::span<const int>(Kill);
    const auto* found = std::find_if(std::begin(Fitting), std::end(Fitting),
                                     [kind](const Errors& errors) { return errors.kind == kind; });
    return reach == Fault::Reach::Once ? found->once : found->lasting;
}

}  // namespace

int Fault::variants(CallKind kind, Reach reach) {
    return static_cast<int>(errorsOf(kind, reach).size());
}

std::vector<CallKind> FaultyCalls::kinds() const {
    const std::scoped_lock lock(m_mutex);
    return m_kinds;
}

FaultyCalls::Verdict FaultyCalls::judge(CallKind kind) {
    const std::scoped_lock lock(m_mutex);
    const int number = static_cast<int>(m_kinds.size());
    m_kinds.push_back(kind);
    if (!m_hasFault || number < m_fault.at)
        return {};
    const bool isFirst = number == m_fault.at;
    if (isFirst)
        m_kindOfFault = kind;
    if (!isFirst && m_fault.reach == Fault::Reach::Once)
        return {};
    if (!isFirst && m_fault.reach == Fault::Reach::Everything)
        return {EIO};
    if (kind != m_kindOfFault)
        return {};
    const std::span<const int> errors = errorsOf(kind, m_fault.reach);
    const int error = errors[static_cast<std::size_t>(m_fault.variant) % errors.size()];
    if (error > 0)
        return {error};
    // A lasting fault gives less once, and then nothing.
    return isFirst ? Verdict{0, true, error == HalfOfIt} : Verdict{ENOSPC};
}

bool FaultyCalls::fails(CallKind kind) {
    const Verdict verdict = judge(kind);
    if (verdict.error != 0)
        errno = verdict.error;
    return verdict.error != 0;
}

int FaultyCalls::open(const char* path, int flags, mode_t mode) {
    return fails(CallKind::Open) ? -1 : FileSystemCalls::open(path, flags, mode);
}

int FaultyCalls::stat(const char* path, struct stat* status) {
    return fails(CallKind::Stat) ? -1 : FileSystemCalls::stat(path, status);
}

int FaultyCalls::fstat(int handle, struct stat* status) {
    return fails(CallKind::Fstat) ? -1 : FileSystemCalls::fstat(handle, status);
}

ssize_t FaultyCalls::readlink(const char* path, char* buffer, size_t size) {
    return fails(CallKind::Readlink) ? -1 : FileSystemCalls::readlink(path, buffer, size);
}

ssize_t FaultyCalls::pread(int handle, void* buffer, size_t length, off_t offset) {
    const Verdict verdict = judge(CallKind::ReadAt);
    if (verdict.error != 0) {
        errno = verdict.error;
        return -1;
    }
    const std::size_t most = verdict.isHalf ? std::max<std::size_t>(1, length / 2) : 1;
    return FileSystemCalls::pread(handle, buffer, verdict.isShort ? std::min(most, length) : length, offset);
}

ssize_t FaultyCalls::pwritev(int handle, const iovec* parts, int count, off_t offset) {
    const Verdict verdict = judge(CallKind::Write);
    if (verdict.error != 0) {
        errno = verdict.error;
        return -1;
    }
    if (!verdict.isShort)
        return FileSystemCalls::pwritev(handle, parts, count, offset);
    const auto* some = std::find_if(parts, parts + count, [](const iovec& part) { return part.iov_len > 0; });
    if (some == parts + count)
        return 0;
    const iovec less{some->iov_base, verdict.isHalf ? std::max<std::size_t>(1, some->iov_len / 2) : 1};
    return FileSystemCalls::pwritev(handle, &less, 1, offset);
}

int FaultyCalls::flock(int handle, int operation) {
    return fails(CallKind::Lock) ? -1 : FileSystemCalls::flock(handle, operation);
}

int FaultyCalls::fallocate(int handle, int mode, off_t offset, off_t length) {
    return fails(CallKind::Reserve) ? -1 : FileSystemCalls::fallocate(handle, mode, offset, length);
}

int FaultyCalls::ftruncate(int handle, off_t length) {
    return fails(CallKind::Truncate) ? -1 : FileSystemCalls::ftruncate(handle, length);
}

int FaultyCalls::fchmod(int handle, mode_t mode) {
    return fails(CallKind::SetMode) ? -1 : FileSystemCalls::fchmod(handle, mode);
}

int FaultyCalls::futimens(int handle, const timespec* times) {
    return fails(CallKind::SetTimes) ? -1 : FileSystemCalls::futimens(handle, times);
}

int FaultyCalls::fsync(int handle) {
    return fails(CallKind::Flush) ? -1 : FileSystemCalls::fsync(handle);
}

int FaultyCalls::fdatasync(int handle) {
    return fails(CallKind::Flush) ? -1 : FileSystemCalls::fdatasync(handle);
}

int FaultyCalls::startFlush(int handle, off_t offset, off_t length) {
    return fails(CallKind::StartFlush) ? -1 : FileSystemCalls::startFlush(handle, offset, length);
}

/// Closes in any case, as the system does, and as it does for a process that was killed.
int FaultyCalls::close(int handle) {
    const Verdict verdict = judge(CallKind::Close);
    const int result = FileSystemCalls::close(handle);
    if (verdict.error == 0)
        return result;
    errno = verdict.error;
    return -1;
}

int FaultyCalls::unlink(const char* path) {
    return fails(CallKind::Unlink) ? -1 : FileSystemCalls::unlink(path);
}

int FaultyCalls::rename(const char* from, const char* to) {
    return fails(CallKind::Rename) ? -1 : FileSystemCalls::rename(from, to);
}

int FaultyCalls::nameFile(int handle, const char* path) {
    return fails(CallKind::NameFile) ? -1 : FileSystemCalls::nameFile(handle, path);
}
