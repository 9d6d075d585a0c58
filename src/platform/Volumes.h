#pragma once

#include "platform/SystemError.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

/// The mounted volumes, which stand for drives: "/" first, then block devices, network mounts, and whatever is mounted
/// in /media, /run/media and /mnt. File systems of the kernel's own are left out.

struct Volume {
    QString mountPoint;
    bool fixed = false;  ///< false: removable, on the network, or of another kind

    bool operator==(const Volume&) const = default;
};

struct VolumeList {
    SystemError error;  ///< the system's table of mounts could not be read
    QList<Volume> volumes;
};

/// What only the volume itself can say.
struct VolumeState {
    bool ready = false;
    bool isFile = false;  ///< something mounted over a file, which is no volume
    QString label;
};

/// Reads the system's table of mounts. Does not touch the volumes, so it never waits for one.
VolumeList mountedVolumes();

/// The volumes in a table of mounts, in the form of /proc/self/mounts. Those on devices count as fixed.
QList<Volume> volumesIn(QByteArrayView mountTable);

/// Asks the volume. Does not return while it does not answer, so call it in another thread.
VolumeState volumeState(const QString& mountPoint);

/// What the folder tree shows for the volume.
QString volumeText(const QString& mountPoint, const VolumeState& state);
