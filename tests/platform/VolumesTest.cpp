#include "platform/Volumes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QStringList placesIn(const char* mountTable) {
    QStringList places;
    for (const Volume& volume : volumesIn(mountTable))
        places.append((volume.fixed ? u"fixed "_qs : u"other "_qs) + volume.mountPoint);
    return places;
}

TEST(Volumes, TheRootComesFirstThenDevicesThenNetworksThenOthers) {
    EXPECT_EQ(placesIn("tmpfs /mnt/memory tmpfs rw 0 0\n"
                       "server:/data /srv/data nfs4 rw 0 0\n"
                       "/dev/sdb1 /home ext4 rw 0 0\n"
                       "/dev/sda2 / ext4 rw 0 0\n"
                       "/dev/sda1 /boot ext4 rw 0 0\n"),
              QStringList({u"fixed /"_qs, u"fixed /boot"_qs, u"fixed /home"_qs, u"other /srv/data"_qs,
                           u"other /mnt/memory"_qs}));
}

TEST(Volumes, FileSystemsOfTheKernelAreNoVolumes) {
    EXPECT_EQ(placesIn("proc /proc proc rw 0 0\nsysfs /sys sysfs rw 0 0\nudev /dev devtmpfs rw 0 0\n"
                       "tmpfs /run tmpfs rw 0 0\ncgroup2 /sys/fs/cgroup cgroup2 rw 0 0\n"
                       "portal /run/user/1000/doc fuse.portal rw 0 0\n/dev/loop3 /snap/tool/7 squashfs ro 0 0\n"),
              QStringList());
}

TEST(Volumes, FileSystemsOfTheKernelAreNoVolumesBelowThePlacesOfSticksEither) {
    EXPECT_EQ(placesIn("proc /mnt/root/proc proc rw 0 0\nsysfs /mnt/root/sys sysfs rw 0 0\n"
                       "udev /mnt/root/dev devtmpfs rw 0 0\ndevpts /mnt/root/dev/pts devpts rw 0 0\n"
                       "/dev/none /media/u/proc proc rw 0 0\ncgroup2 /run/media/u/x cgroup2 rw 0 0\n"
                       "/dev/sdb1 /mnt/root ext4 rw 0 0\ntmpfs /mnt/root/tmp tmpfs rw 0 0\n"),
              QStringList({u"fixed /mnt/root"_qs, u"other /mnt/root/tmp"_qs}));
    EXPECT_EQ(placesIn("/dev/sdb1 /mnt/a ext4 rw 0 0\nproc /mnt/a proc rw 0 0\n"), QStringList());
}

TEST(Volumes, AFolderOfTheHostOfAVirtualMachineIsLikeANetwork) {
    EXPECT_EQ(placesIn("share /srv/share virtiofs rw 0 0\nshare9 /srv/nine 9p rw 0 0\n"),
              QStringList({u"other /srv/nine"_qs, u"other /srv/share"_qs}));
}

TEST(Volumes, WhateverIsMountedWhereStickAreMountedCounts) {
    EXPECT_EQ(placesIn("/dev/sdc1 /media/u/STICK vfat rw 0 0\nx /run/media/u/phone fuse.jmtpfs rw 0 0\n"
                       "u@host: /mnt/host fuse.sshfs rw 0 0\n/dev/sdd1 /mnt/disk ext4 rw 0 0\n"),
              QStringList({u"other /media/u/STICK"_qs, u"fixed /mnt/disk"_qs, u"other /mnt/host"_qs,
                           u"other /run/media/u/phone"_qs}));
}

TEST(Volumes, ARootThatIsNoDeviceIsAVolumeToo) {
    EXPECT_EQ(placesIn("overlay / overlay rw 0 0\n"), QStringList(u"fixed /"_qs));
}

TEST(Volumes, BlanksAndOtherCodesInPlacesAreRead) {
    EXPECT_EQ(placesIn("/dev/sdc1 /media/u/My\\040Stick\\134 vfat rw 0 0\n"),
              QStringList(u"other /media/u/My Stick\\"_qs));
}

TEST(Volumes, OfSeveralMountsOnOnePlaceTheLastCounts) {
    EXPECT_EQ(placesIn("/dev/sdb1 /mnt/a ext4 rw 0 0\nserver:/x /mnt/a nfs rw 0 0\n"), QStringList(u"other /mnt/a"_qs));
    EXPECT_EQ(placesIn("/dev/sdb1 /data ext4 rw 0 0\ntmpfs /data tmpfs rw 0 0\n"), QStringList());
}

TEST(Volumes, ADamagedTableGivesWhatCanBeRead) {
    EXPECT_EQ(placesIn(""), QStringList());
    EXPECT_EQ(placesIn("\n\n/dev/sda1\n/dev/sda2 /\n\\\\\\ \\0 x\n/dev/sdb1 /home ext4"),
              QStringList(u"fixed /home"_qs));
    EXPECT_EQ(placesIn("/dev/sdb1 /media/\xff\xfe ext4 rw 0 0\n"), QStringList());
}

TEST(Volumes, ThisSystemHasARoot) {
    const VolumeList list = mountedVolumes();
    EXPECT_FALSE(list.error) << list.error.description.toStdString();
    ASSERT_FALSE(list.volumes.isEmpty());
    EXPECT_EQ(list.volumes.first(), (Volume{u"/"_qs, true}));
}

TEST(Volumes, AFolderThatAnswersIsReady) {
    const VolumeState state = volumeState(u"/"_qs);
    EXPECT_TRUE(state.ready);
    EXPECT_FALSE(state.isFile);
}

TEST(Volumes, APlaceThatHasGoneIsNotReady) {
    EXPECT_FALSE(volumeState(u"/no/such/place"_qs).ready);
    EXPECT_FALSE(volumeState({}).ready);
}

TEST(Volumes, AFileWithSomethingMountedOverItIsNoVolume) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"file"_qs));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    EXPECT_TRUE(volumeState(file.fileName()).isFile);
    EXPECT_FALSE(volumeState(file.fileName()).ready);
}

TEST(Volumes, TheTextHasTheLabelWhenTheVolumeIsReady) {
    EXPECT_EQ(volumeText(u"/media/u/STICK"_qs, {true, false, u"Photos"_qs}), u"Photos (/media/u/STICK)"_qs);
    EXPECT_EQ(volumeText(u"/media/u/STICK"_qs, {false, false, {}}), u"(/media/u/STICK)"_qs);
}

}  // namespace
