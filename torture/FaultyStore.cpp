#include "FaultyStore.h"

#include "Contents.h"

#include <sqlite3.h>

#include <algorithm>
#include <map>

namespace {

int callsSoFar = 0;
int failingCall = -1;
bool allLater = false;

bool fails() {
    const int call = callsSoFar++;
    return failingCall >= 0 && (call == failingCall || (allLater && call > failingCall));
}

/// The methods of a kind of file, and ours in front of them. A file leads to `own`.
struct Methods {
    sqlite3_io_methods own;
    const sqlite3_io_methods* real;
};

const sqlite3_io_methods* realOf(const sqlite3_file* file) {
    return reinterpret_cast<const Methods*>(file->pMethods)->real;
}

int read(sqlite3_file* file, void* buffer, int length, sqlite3_int64 offset) {
    return fails() ? SQLITE_IOERR_READ : realOf(file)->xRead(file, buffer, length, offset);
}

/// A write that fails for want of space has perhaps written a part.
int write(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 offset) {
    if (!fails())
        return realOf(file)->xWrite(file, bytes, length, offset);
    if (length > 1)
        realOf(file)->xWrite(file, bytes, length / 2, offset);
    return SQLITE_FULL;
}

int truncate(sqlite3_file* file, sqlite3_int64 size) {
    return fails() ? SQLITE_IOERR_TRUNCATE : realOf(file)->xTruncate(file, size);
}

int sync(sqlite3_file* file, int flags) {
    return fails() ? SQLITE_IOERR_FSYNC : realOf(file)->xSync(file, flags);
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
    return fails() ? SQLITE_IOERR_FSTAT : realOf(file)->xFileSize(file, size);
}

int lock(sqlite3_file* file, int kind) {
    return fails() ? SQLITE_IOERR_LOCK : realOf(file)->xLock(file, kind);
}

int mapShared(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
    return fails() ? SQLITE_IOERR_SHMMAP : realOf(file)->xShmMap(file, region, size, extend, memory);
}

int lockShared(sqlite3_file* file, int offset, int count, int flags) {
    // What is given back is given back: a process that ends cannot fail to.
    const bool isTaken = (flags & SQLITE_SHM_LOCK) != 0;
    return isTaken && fails() ? SQLITE_IOERR_SHMLOCK : realOf(file)->xShmLock(file, offset, count, flags);
}

const sqlite3_io_methods* inFrontOf(const sqlite3_io_methods* real) {
    static std::map<const sqlite3_io_methods*, Methods> kinds;
    Methods& kind = kinds[real];
    kind = {*real, real};
    kind.own.xRead = read;
    kind.own.xWrite = write;
    kind.own.xTruncate = truncate;
    kind.own.xSync = sync;
    kind.own.xFileSize = fileSize;
    kind.own.xLock = lock;
    if (real->xShmMap != nullptr) {
        kind.own.xShmMap = mapShared;
        kind.own.xShmLock = lockShared;
    }
    // Without the mapping of files, which would pass by our read.
    kind.own.iVersion = std::min(real->iVersion, 2);
    return &kind.own;
}

int open(sqlite3_vfs* /*vfs*/, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    if (fails()) {
        file->pMethods = nullptr;
        return SQLITE_CANTOPEN;
    }
    sqlite3_vfs* system = sqlite3_vfs_find("unix");
    const int result = system->xOpen(system, name, file, flags, outFlags);
    if (result == SQLITE_OK && file->pMethods != nullptr)
        file->pMethods = inFrontOf(file->pMethods);
    return result;
}

int remove(sqlite3_vfs* /*vfs*/, const char* name, int syncFolder) {
    sqlite3_vfs* system = sqlite3_vfs_find("unix");
    return fails() ? SQLITE_IOERR_DELETE : system->xDelete(system, name, syncFolder);
}

void install() {
    static sqlite3_vfs faulty;
    if (faulty.zName != nullptr)
        return;
    const sqlite3_vfs* system = sqlite3_vfs_find("unix");
    mustWork(system != nullptr, "there is no store to be disturbed");
    faulty = *system;
    faulty.zName = "faulty";
    faulty.xOpen = open;
    faulty.xDelete = remove;
    mustWork(sqlite3_vfs_register(&faulty, 1) == SQLITE_OK, "the store cannot be disturbed");
}

}  // namespace

void FaultyStore::reset() {
    install();
    callsSoFar = 0;
    failingCall = -1;
    allLater = false;
}

void FaultyStore::failAt(int call, bool isLasting) {
    reset();
    failingCall = call;
    allLater = isLasting;
}

int FaultyStore::calls() {
    return callsSoFar;
}
