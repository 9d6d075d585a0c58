#include "platform/FileState.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <linux/magic.h>

namespace {

class FileStateTest : public testing::Test {
 protected:
    QString at(const QString& name) const { return m_folder.filePath(name); }
    QString file(const QByteArray& bytes, const QString& name = u"a"_qs) const {
        QFile out(at(name));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
        return at(name);
    }

 private:
    QTemporaryDir m_folder;
};

TEST_F(FileStateTest, OfAFileThatNobodyTouchesIsThatOfItsPath) {
    const QString path = file("one");
    const std::optional<FileState> state = FileState::of(path);
    ASSERT_TRUE(state);
    EXPECT_TRUE(state->isStillAt(path));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    EXPECT_TRUE(state->isStillAt(path));
}

TEST_F(FileStateTest, IsAnotherAfterAnyChangeOfTheBytes) {
    const QString path = file("one");
    FileState state = *FileState::of(path);
    ++state.size;
    EXPECT_FALSE(state.isStillAt(path));
    state = *FileState::of(path);
    ++state.modified;
    EXPECT_FALSE(state.isStillAt(path));
    EXPECT_FALSE(FileState::of(path)->isStillAt(at(u"b"_qs)));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_FALSE(state.isStillAt(path));
}

/// The folders of tests are on a file system whose inodes last.
TEST_F(FileStateTest, IsAnotherWhenTheFileWasReplacedByOneOfTheSameTime) {
    const QString path = file("one");
    FileState state = *FileState::of(path);
    ++state.inode;
    EXPECT_FALSE(state.isStillAt(path));
    EXPECT_FALSE(state.hasSameBytesAs(*FileState::of(path)));
}

TEST_F(FileStateTest, DoesNotAskForTheNumberOfTheDisk) {
    const QString path = file("one");
    FileState state = *FileState::of(path);
    ++state.device;
    EXPECT_TRUE(state.isStillAt(path));
}

TEST(LastingInodes, AreOnDisksOfThisSystemAlone) {
    constexpr unsigned long Lasting[] = {EXT4_SUPER_MAGIC, BTRFS_SUPER_MAGIC, XFS_SUPER_MAGIC, TMPFS_MAGIC};
    constexpr unsigned long Others[] = {MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, FUSE_SUPER_MAGIC, SMB_SUPER_MAGIC};
    for (const unsigned long type : Lasting) {
        EXPECT_TRUE(hasLastingInodes(type));
    }
    for (const unsigned long type : Others) {
        EXPECT_FALSE(hasLastingInodes(type));
    }
}

}  // namespace
