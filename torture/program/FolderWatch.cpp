#include "program/FolderWatch.h"

#include "Contents.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

FolderWatch::FolderWatch(const QByteArray& folder) : m_handle(::inotify_init1(IN_CLOEXEC)) {
    constexpr unsigned Changes = IN_CREATE | IN_MODIFY | IN_DELETE | IN_MOVED_TO;
    mustWork(m_handle >= 0 && ::inotify_add_watch(m_handle, folder.constData(), Changes) >= 0,
             "cannot watch " + folder);
}

FolderWatch::~FolderWatch() {
    ::close(m_handle);
}

bool FolderWatch::wait(int milliseconds) const {
    pollfd incoming{m_handle, POLLIN, 0};
    return ::poll(&incoming, 1, milliseconds) > 0;
}
