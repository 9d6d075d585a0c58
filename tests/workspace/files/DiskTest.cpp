#include "platform/FileInfo.h"
#include "support/AnotherUser.h"
#include "workspace/files/Disk.h"
#include "workspace/files/FolderFixture.h"

#include <cerrno>

namespace {

class DiskOf : public FolderFixture {
 protected:
    QStringList folders() const { return Disk::system()->folders(root(), m_stop).names; }
    QStringList files(const QString& filter = {}) const { return Disk::system()->files(root(), filter, m_stop).names; }

    std::atomic<bool> m_stop = false;
};

TEST_F(DiskOf, FoldersAndLinksToFoldersAreFoldersSortedByCodePoints) {
    makeFolder(u"b"_qs);
    makeFolder(u"B"_qs);
    makeFolder(u".hidden"_qs);
    makeFile(u"file"_qs);
    makeLink(u"linked"_qs, in(u"b"_qs));
    makeLink(u"broken"_qs, in(u"nothing"_qs));
    EXPECT_EQ(folders(), QStringList({u".hidden"_qs, u"B"_qs, u"b"_qs, u"linked"_qs}));
}

TEST_F(DiskOf, WithoutAFilterAllThatIsNoFolderIsAFile) {
    makeFolder(u"folder"_qs);
    makeLink(u"to folder"_qs, in(u"folder"_qs));
    makeFile(u"b.txt"_qs);
    makeFile(u".hidden"_qs);
    makeLink(u"a link"_qs, in(u"b.txt"_qs));
    makeLink(u"broken"_qs, in(u"nothing"_qs));
    makePipe(u"pipe"_qs);
    EXPECT_EQ(files(), QStringList({u".hidden"_qs, u"a link"_qs, u"b.txt"_qs, u"broken"_qs, u"pipe"_qs}));
}

TEST_F(DiskOf, AFilterTakesRegularFilesThatMatch) {
    makeFolder(u"folder.txt"_qs);
    makeFile(u"b.txt"_qs);
    makeFile(u"c.TXT"_qs);
    makeFile(u".hidden.txt"_qs);
    makeLink(u"a.txt"_qs, in(u"b.txt"_qs));
    makeLink(u"broken.txt"_qs, in(u"nothing"_qs));
    makePipe(u"pipe.txt"_qs);
    EXPECT_EQ(files(u"*.txt"_qs), QStringList({u"a.txt"_qs, u"b.txt"_qs}));
    EXPECT_EQ(files(u"*.*"_qs), QStringList({u"a.txt"_qs, u"b.txt"_qs, u"c.TXT"_qs}));
    EXPECT_EQ(files(u"*.txt;*.TXT"_qs), QStringList());
    EXPECT_EQ(files(u"folder.txt/*"_qs), QStringList());
}

TEST_F(DiskOf, NamesThatAreNotUtf8AreLeftOut) {
    makeFile(u"good"_qs);
    const QByteArray bad = root().toUtf8() + "/bad\xff";
    const int handle = ::open(bad.constData(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(handle, 0);
    ::close(handle);
    const QByteArray badFolder = root().toUtf8() + "/folder\xfe";
    ASSERT_EQ(::mkdir(badFolder.constData(), 0700), 0);
    EXPECT_EQ(files(), QStringList(u"good"_qs));
    EXPECT_EQ(folders(), QStringList());
    // Qt cannot remove them with the folder.
    ::unlink(bad.constData());
    ::rmdir(badFolder.constData());
}

TEST_F(DiskOf, AFolderThatIsNotThereIsAnError) {
    const Disk::Names names = Disk::system()->files(in(u"nothing"_qs), {}, m_stop);
    EXPECT_EQ(names.error.number, ENOENT);
    EXPECT_EQ(names.names, QStringList());
}

TEST_F(DiskOf, AFolderWithoutPermissionIsAnError) {
    const QString locked = makeFolder(u"locked"_qs);
    makeFile(u"locked/file"_qs);
    ASSERT_EQ(::chmod(root().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(::chmod(locked.toUtf8().constData(), 0700), 0);
    EXPECT_TRUE(asSomebodyElse([&] {
        if (::geteuid() == 65534)
            return Disk::system()->files(locked, {}, m_stop).error.number == EACCES;
        return ::chmod(locked.toUtf8().constData(), 0) == 0 &&
               Disk::system()->files(locked, {}, m_stop).error.number == EACCES;
    }));
    ::chmod(locked.toUtf8().constData(), 0700);
}

TEST_F(DiskOf, LinksInACircleAreListedOnce) {
    makeFolder(u"a"_qs);
    makeLink(u"a/up"_qs, root());
    makeLink(u"round"_qs, in(u"round"_qs));
    EXPECT_EQ(folders(), QStringList(u"a"_qs));
    EXPECT_EQ(files(), QStringList(u"round"_qs));
    EXPECT_EQ(Disk::system()->folders(in(u"a/up/a/up"_qs), m_stop).names, QStringList(u"a"_qs));
}

TEST_F(DiskOf, TimesAreThoseOfTheLastWrite) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    setWritten(u"a"_qs, 1'000'000);
    setWritten(u"b"_qs, 2'000'000);
    EXPECT_EQ(Disk::system()->writeTimes(root(), {u"b"_qs, u"gone"_qs, u"a"_qs}, m_stop),
              QList<qint64>({2'000'000, NoFileTime, 1'000'000}));
    EXPECT_EQ(Disk::system()->writeTimes(in(u"gone"_qs), {u"a"_qs}, m_stop), QList<qint64>({NoFileTime}));
}

TEST_F(DiskOf, ReadingStopsWhenItIsCancelled) {
    makeFile(u"a"_qs);
    m_stop = true;
    EXPECT_EQ(files(), QStringList());
}

}  // namespace
