#pragma once

#include "platform/Paths.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>

class BackgroundWork;

/// Looks whether files exist, with a limit: on a volume that does not answer a file counts as not there. While such a
/// question is open, the other files of its folder count as not there at once. Owned by who opens files. Used in one
/// thread.
class FileLookup {
 public:
    using Exists = std::function<bool(const QString& path)>;

    static constexpr std::chrono::milliseconds LongestWait{2000};

    /// `exists` is called in another thread and need not return.
    explicit FileLookup(Exists exists = fileExists, std::chrono::milliseconds limit = LongestWait);
    ~FileLookup();
    Q_DISABLE_COPY_MOVE(FileLookup)

    /// Runs the event loop where the answer takes longer than BackgroundWork::Still.
    bool exists(const QString& path);

 private:
    Exists m_exists;
    std::chrono::milliseconds m_limit;
    std::map<QString, std::unique_ptr<BackgroundWork>> m_unanswered;  ///< by folder
};
