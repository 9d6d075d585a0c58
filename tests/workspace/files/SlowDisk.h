#pragma once

#include "workspace/files/Disk.h"

#include <QSet>

#include <condition_variable>
#include <mutex>

/// The real disk with volumes that the test names, and folders that do not answer until the test lets them. Shared with
/// the threads that read; release() everything before the test ends.
class SlowDisk : public Disk {
 public:
    VolumeList volumeList{{}, {{u"/"_qs, true}}};
    QString label = u"Disk"_qs;

    /// Reading this path, or asking it for its state, waits from now on.
    void hold(const QString& path) {
        const std::scoped_lock lock(m_mutex);
        m_held.insert(path);
    }
    void release() {
        const std::scoped_lock lock(m_mutex);
        m_held.clear();
        m_changed.notify_all();
    }
    /// How many times were read so far.
    int timesRead() const { return m_timesRead; }

    VolumeList volumes() const override { return volumeList; }
    VolumeState stateOf(const QString& mountPoint) const override {
        wait(mountPoint);
        VolumeState state = Disk::stateOf(mountPoint);
        state.label = label;
        return state;
    }
    Names folders(const QString& path, const std::atomic<bool>& cancelled) const override {
        wait(path);
        return Disk::folders(path, cancelled);
    }
    Names files(const QString& path, const QString& filter, const std::atomic<bool>& cancelled) const override {
        wait(path);
        return Disk::files(path, filter, cancelled);
    }
    QList<qint64> writeTimes(const QString& path, const QStringList& names,
                             const std::atomic<bool>& cancelled) const override {
        wait(path);
        m_timesRead += static_cast<int>(names.size());
        return Disk::writeTimes(path, names, cancelled);
    }

 private:
    void wait(const QString& path) const {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return !m_held.contains(path); });
    }

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    QSet<QString> m_held;
    mutable std::atomic<int> m_timesRead = 0;
};
