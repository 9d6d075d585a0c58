#pragma once

#include <QByteArray>

/// Waits until the beginning of a file or its length changes. Unlike FolderWatch it notices a write while it goes on,
/// not when the call has returned, and not before the first byte. Used by one thread.
class FileWatch {
 public:
    /// A file that is not there never changes.
    explicit FileWatch(const QByteArray& path);
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    /// True: it has changed since this object was made. Returns so long after that. Where that is permitted, the thread
    /// that waits comes before all others.
    bool wait(int milliseconds, unsigned delayUs) const;
    /// In bytes, when this object was made.
    qsizetype length() const { return m_before.length; }

 private:
    struct State {
        qsizetype length = 0;
        QByteArray begin{};

        bool operator==(const State&) const = default;
    };

    State state() const;

    int m_handle;
    State m_before;
};
