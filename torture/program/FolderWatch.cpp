#include "program/FolderWatch.h"

#include "Contents.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

namespace {

constexpr std::size_t EventsLength = 4096;

}  // namespace

FolderWatch::FolderWatch(const QByteArray& folder) : m_handle(::inotify_init1(IN_CLOEXEC)) {
    constexpr unsigned Changes = IN_CREATE | IN_MODIFY | IN_DELETE | IN_MOVED_TO;
    mustWork(m_handle >= 0 && ::inotify_add_watch(m_handle, folder.constData(), Changes) >= 0,
             "cannot watch " + folder);
}

FolderWatch::~FolderWatch() {
    ::close(m_handle);
}

bool FolderWatch::waitFor(const char* nameEnd, int milliseconds) const {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (!wait(std::max(0, int(rest.count()))))
            return false;
        alignas(inotify_event) std::array<char, EventsLength> events;
        const ssize_t length = ::read(m_handle, events.data(), events.size());
        bool isThere = false;
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            isThere = isThere || ((event->mask & IN_MODIFY) != 0 && std::string_view(event->name).ends_with(nameEnd));
            at += ssize_t(sizeof(inotify_event)) + event->len;
        }
        if (isThere)
            return true;
    }
}

bool FolderWatch::wait(int milliseconds) const {
    pollfd incoming{m_handle, POLLIN, 0};
    return ::poll(&incoming, 1, milliseconds) > 0;
}
