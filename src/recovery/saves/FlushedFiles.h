#pragma once

#include "recovery/saves/FileKey.h"

#include <sys/stat.h>

#include <map>
#include <mutex>

/// The files that this process has written and flushed, as they were then: as long as nobody has written to one of them
/// since, its bytes are on the disk. Owned by SaveRecords; used by several threads at once.
class FlushedFiles {
 public:
    /// `status`: read before the file was flushed.
    void add(const struct stat& status);
    void remove(FileKey file);
    bool contains(const struct stat& now) const;

 private:
    struct State {
        off_t size;
        timespec changed;   ///< its bytes
        timespec modified;  ///< its bytes, its mode or its owner
    };

    mutable std::mutex m_mutex;
    std::map<FileKey, State> m_files;
};
