#pragma once

#include <QByteArray>

#include <functional>
#include <string>

/// The folder in which everything happens. Owned by main; there is one in a process. It is removed when it is
/// destroyed, when the process exits, and when SIGINT, SIGTERM or SIGHUP ends it; the processes that this one has
/// started are ended before.
class RootFolder {
 public:
    /// Makes a new one in `parent`; empty: in memory where that is possible. Nothing here depends on a disk, and
    /// flushes cost nothing there. `beforeEnd` is called in another thread when a signal ends the process.
    RootFolder(const std::string& parent, std::function<void()> beforeEnd);
    ~RootFolder();
    RootFolder(const RootFolder&) = delete;
    RootFolder& operator=(const RootFolder&) = delete;

    const QByteArray& path() const { return m_path; }

 private:
    QByteArray m_path;
};
