#pragma once

#include "platform/SystemError.h"
#include "platform/Volumes.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>

/// What the file explorer reads of the disk. All but volumes() may take long or never return, so they are called in
/// threads of their own, and the object is shared with those. Tests derive from it. Names that are not valid UTF-8 are
/// left out; lists are sorted by code points. Reading stops early once `cancelled` is true.
class Disk {
 public:
    struct Names {
        SystemError error;
        QStringList names;
    };

    virtual ~Disk() = default;

    static std::shared_ptr<const Disk> system();

    virtual VolumeList volumes() const;
    virtual VolumeState stateOf(const QString& mountPoint) const;

    /// The folders in a folder, and links to folders.
    virtual Names folders(const QString& path, const std::atomic<bool>& cancelled) const;

    /// All that is no folder. With a filter, which is a wildcard pattern: the regular files, and links to such, that
    /// match it.
    virtual Names files(const QString& path, const QString& filter, const std::atomic<bool>& cancelled) const;

    /// When the files of a folder were last written, in seconds since the start of 1970; NoFileTime for one that cannot
    /// be examined.
    virtual QList<qint64> writeTimes(const QString& path, const QStringList& names,
                                     const std::atomic<bool>& cancelled) const;

 protected:
    Disk() = default;
    Q_DISABLE_COPY_MOVE(Disk)
};
