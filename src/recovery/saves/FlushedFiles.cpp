#include "recovery/saves/FlushedFiles.h"

namespace {

/// Files that are forgotten are flushed once more than necessary.
constexpr std::size_t MostFiles = 10'000;

bool isSame(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

}  // namespace

void FlushedFiles::add(const struct stat& status) {
    const std::scoped_lock lock(m_mutex);
    if (m_files.size() >= MostFiles)
        m_files.clear();
    m_files[keyOf(status)] = {status.st_size, status.st_mtim, status.st_ctim};
}

void FlushedFiles::remove(FileKey file) {
    const std::scoped_lock lock(m_mutex);
    m_files.erase(file);
}

bool FlushedFiles::contains(const struct stat& now) const {
    const std::scoped_lock lock(m_mutex);
    const auto found = m_files.find(keyOf(now));
    return found != m_files.end() && found->second.size == now.st_size && isSame(found->second.changed, now.st_mtim) &&
           isSame(found->second.modified, now.st_ctim);
}
