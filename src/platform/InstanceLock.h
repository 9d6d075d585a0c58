#pragma once

#include <QString>

/// A lock that one process holds at a time, as long as it lives: an flock() on a file, which the system releases when
/// the process ends, in whatever way. The file itself stays, and says nothing. Programs that the process starts do not
/// inherit the lock. Owned by who takes it; two locks on one file exclude each other within one process too. Except for
/// waitToTake() no function waits.
class InstanceLock {
 public:
    enum class Answer {
        Taken,          ///< by this object, now or before
        HeldByAnother,  ///< so another process of the program is alive
        Unavailable,    ///< the file cannot be opened or locked; who holds the lock is not known
    };

    explicit InstanceLock(QString file);
    ~InstanceLock();
    Q_DISABLE_COPY_MOVE(InstanceLock)

    const QString& file() const { return m_file; }
    bool isTaken() const { return m_handle >= 0; }

    Answer tryToTake();
    /// Blocks the thread until the lock is taken. Returns false when it is not available.
    bool waitToTake();
    /// Takes over the lock of another object for the same file, which has none afterwards.
    void takeFrom(InstanceLock& other);
    void release();

 private:
    int openFile() const;

    QString m_file;
    int m_handle = -1;
};
