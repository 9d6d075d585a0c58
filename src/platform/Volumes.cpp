#include "platform/Volumes.h"

#include "platform/Paths.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStorageInfo>
#include <QStringList>

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <utility>

namespace {

constexpr const char* MountTable = "/proc/self/mounts";

/// In the order in which the volumes are listed.
enum class Kind { Root, BlockDevice, Network, Other, None };

struct Mount {
    QByteArray device;
    QByteArray place;
    QByteArray type;
};

constexpr std::array NetworkTypes = {
    "nfs",   "nfs4",       "cifs",   "smb3",           "smbfs",      "ncpfs",       "9p",        "afs",
    "ceph",  "glusterfs",  "lustre", "fuse.glusterfs", "fuse.sshfs", "fuse.rclone", "fuse.s3fs", "fuse.curlftpfs",
    "davfs", "fuse.davfs", "beegfs", "ocfs2",          "gfs2",       "fuse.ceph",   "zfs",       "virtiofs",
};

/// They hold the kernel's or a service's own state, wherever they are mounted.
constexpr std::array PseudoTypes = {
    "autofs",   "binfmt_misc", "bpf",         "cgroup",     "cgroup2",    "configfs",  "debugfs", "devpts",
    "devtmpfs", "efivarfs",    "fuse.portal", "fusectl",    "hugetlbfs",  "mqueue",    "nfsd",    "nsfs",
    "proc",     "pstore",      "resctrl",     "rpc_pipefs", "securityfs", "selinuxfs", "sysfs",   "tracefs",
};

constexpr std::array PlacesOfOthers = {"/media/", "/run/media/", "/mnt/"};
constexpr std::array PlacesOfRemovables = {"/media/", "/run/media/"};

template <size_t Count>
bool isIn(const QByteArray& place, const std::array<const char*, Count>& folders) {
    return std::ranges::any_of(folders, [&](const char* folder) { return place.startsWith(folder); });
}

template <size_t Count>
bool isOfType(const Mount& mount, const std::array<const char*, Count>& types) {
    return std::ranges::any_of(types, [&](const char* type) { return mount.type == type; });
}

/// The table writes blanks and the like as "\" and three octal digits.
QByteArray unescaped(const QByteArray& field) {
    QByteArray plain;
    for (qsizetype at = 0; at < field.size(); ++at) {
        bool isCode = false;
        const int code = field.at(at) == '\\' ? field.mid(at + 1, 3).toInt(&isCode, 8) : 0;
        if (isCode)
            at += 3;
        plain += isCode ? static_cast<char>(code) : field.at(at);
    }
    return plain;
}

std::optional<Mount> mountOf(const QByteArray& line) {
    const QList<QByteArray> fields = line.simplified().split(' ');
    if (fields.size() < 3)
        return std::nullopt;
    return Mount{unescaped(fields.at(0)), unescaped(fields.at(1)), fields.at(2)};
}

/// A packed program that its installer mounts, not a volume of the user's.
bool isPackedProgram(const Mount& mount) {
    return mount.type == "squashfs" && !isIn(mount.place, PlacesOfOthers);
}

Kind kindOf(const Mount& mount) {
    if (mount.place == "/")
        return Kind::Root;
    if (isOfType(mount, PseudoTypes))
        return Kind::None;
    if (mount.device.startsWith("/dev/") && mount.device != "/dev/fuse")
        return isPackedProgram(mount) ? Kind::None : Kind::BlockDevice;
    if (isOfType(mount, NetworkTypes))
        return Kind::Network;
    return isIn(mount.place, PlacesOfOthers) ? Kind::Other : Kind::None;
}

bool isFixed(const Mount& mount, Kind kind) {
    return kind == Kind::Root || (kind == Kind::BlockDevice && !isIn(mount.place, PlacesOfRemovables));
}

/// What the kernel says of the device, by the name that it has there. A part of a device has no mark of its own.
bool isRemovable(const QByteArray& device) {
    const QString name = QFileInfo(QFile::decodeName(device)).canonicalFilePath().section(u'/', -1);
    for (const char* form : {"/sys/class/block/%1/removable", "/sys/class/block/%1/../removable"}) {
        QFile mark(QString::fromLatin1(form).arg(name));
        if (mark.open(QFile::ReadOnly))
            return mark.readAll().trimmed() == "1";
    }
    return false;
}

struct Found {
    Kind kind;
    QByteArray place;
    QByteArray device;
    Volume volume;
};

/// Of several mounts on one place the last one is seen.
QList<Found> found(QByteArrayView mountTable) {
    QHash<QByteArray, Found> byPlace;
    for (const QByteArray& line : mountTable.toByteArray().split('\n')) {
        const std::optional<Mount> mount = mountOf(line);
        const std::optional<QString> text = mount ? pathText(mount->place) : std::nullopt;
        const Kind kind = text ? kindOf(*mount) : Kind::None;
        if (kind != Kind::None)
            byPlace.insert(mount->place, {kind, mount->place, mount->device, {*text, isFixed(*mount, kind)}});
        else if (mount)
            byPlace.remove(mount->place);
    }
    QList<Found> all = byPlace.values();
    std::ranges::sort(all, {}, [](const Found& each) { return std::pair(each.kind, each.place); });
    return all;
}

}  // namespace

QList<Volume> volumesIn(QByteArrayView mountTable) {
    QList<Volume> volumes;
    for (const Found& each : found(mountTable))
        volumes.append(each.volume);
    return volumes;
}

VolumeList mountedVolumes() {
    QFile table(QString::fromLatin1(MountTable));
    if (!table.open(QFile::ReadOnly))
        return {{EIO, table.errorString()}, {}};
    VolumeList list;
    for (Found& each : found(table.readAll())) {
        if (each.kind == Kind::BlockDevice && isRemovable(each.device))
            each.volume.fixed = false;
        list.volumes.append(each.volume);
    }
    // In a bare root (chroot, some containers) the folder that is the root is mounted nowhere.
    if (list.volumes.isEmpty() || list.volumes.first().mountPoint != u"/")
        list.volumes.prepend({u"/"_qs, true});
    return list;
}

VolumeState volumeState(const QString& mountPoint) {
    const auto name = localName(mountPoint);
    struct stat status {};
    struct statvfs volume {};
    if (!name || ::stat(name->constData(), &status) != 0 || ::statvfs(name->constData(), &volume) != 0)
        return {};
    if (!S_ISDIR(status.st_mode))
        return {false, true, {}};
    return {true, false, QStorageInfo(mountPoint).name()};
}

QString volumeText(const QString& mountPoint, const VolumeState& state) {
    const QString place = u'(' + mountPoint + u')';
    return state.ready ? state.label + u' ' + place : place;
}
