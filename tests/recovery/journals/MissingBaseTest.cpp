#include "recovery/journals/JournalFixture.h"
#include "support/FailingFileSystem.h"

#include <QDir>

#include <sys/sysmacros.h>

#include <cerrno>

namespace {

/// A file system in which one path cannot be examined or belongs to another device.
class OtherDisk : public FileSystemCalls {
 public:
    OtherDisk(const QString& path, int error) : m_path(path.toUtf8()), m_error(error) {}

    int stat(const char* path, struct stat* status) override {
        const bool isIt = m_path == path;
        if (isIt && m_error != 0) {
            errno = m_error;
            return -1;
        }
        const int result = FileSystemCalls::stat(path, status);
        if (isIt)
            status->st_dev = makedev(0, 0xffff);
        return result;
    }

 private:
    QByteArray m_path;
    int m_error;
};

/// Journals without a copy of the file that was changed, which is not there at the next start.
class MissingBase : public JournalFixture {
 protected:
    QString volume() const { return at(u"volume"_qs); }
    QString leave(JournalBase::View view = JournalBase::View::Text) {
        EXPECT_TRUE(QDir().mkpath(volume()));
        QString path = file("one two three", u"volume/file"_qs);
        FailingFileSystem calls;
        calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
        JournalLimits limits = patient();
        limits.copied = 4;
        const auto journals = makeJournals(calls, limits);
        const auto journal = journals->begin(baseOf(path, view));
        if (view == JournalBase::View::Text)
            journal->insert(0, "x");
        else
            journal->overwrite(0, "x");
        EXPECT_TRUE(journals->flush(Long));
        EXPECT_TRUE(names(u"*.base"_qs).isEmpty());
        return path;
    }
    void expect(Outcome outcome, File now, FileSystemCalls& calls = FileSystemCalls::system()) const {
        const auto journals = makeJournals(calls);
        const auto found = only(journals->takeAbandoned());
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->restore(), outcome);
        EXPECT_EQ(found->file(), now);
    }
};

}  // namespace

TEST_F(MissingBase, IsLostWhenItsFolderIsThereWithoutIt) {
    const QString path = leave();
    ASSERT_TRUE(QFile::remove(path));
    expect(Outcome::Lost, File::Missing);
}

TEST_F(MissingBase, IsLostWhenItsFolderIsAFileNow) {
    leave();
    ASSERT_TRUE(QDir(volume()).removeRecursively());
    put(volume(), "a file");
    expect(Outcome::Lost, File::Missing);
}

TEST_F(MissingBase, IsAwaitedWhileItsFolderIsNotThere) {
    leave();
    ASSERT_TRUE(QDir().rename(volume(), at(u"elsewhere"_qs)));
    expect(Outcome::Failed, File::Unreachable);
    ASSERT_TRUE(QDir().rename(at(u"elsewhere"_qs), volume()));
    EXPECT_EQ(recovered(), "xone two three");
}

TEST_F(MissingBase, OfBytesIsAwaitedWhileItsFolderIsNotThere) {
    leave(JournalBase::View::Hex);
    ASSERT_TRUE(QDir().rename(volume(), at(u"elsewhere"_qs)));
    expect(Outcome::Failed, File::Unreachable);
    ASSERT_TRUE(QDir().rename(at(u"elsewhere"_qs), volume()));
    expect(Outcome::Restored, File::AsItWas);
}

TEST_F(MissingBase, IsAwaitedWhileItsFolderIsAnEmptyMountPoint) {
    const QString path = leave();
    ASSERT_TRUE(QFile::remove(path));
    OtherDisk disk(volume(), 0);
    expect(Outcome::Failed, File::Unreachable, disk);
}

TEST_F(MissingBase, IsAwaitedWhileItCannotBeExamined) {
    const QString path = leave();
    for (const int error : {EACCES, EIO, ENOTCONN, ESTALE, ETIMEDOUT}) {
        OtherDisk disk(path, error);
        expect(Outcome::Failed, File::Unreachable, disk);
    }
    EXPECT_EQ(recovered(), "xone two three");
}

TEST_F(MissingBase, IsNotNeededWhereThereIsACopy) {
    ASSERT_TRUE(QDir().mkpath(volume()));
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(file("one", u"volume/file"_qs)));
        journal->insert(0, "x");
        EXPECT_TRUE(journals->flush(Long));
    }
    ASSERT_TRUE(QDir(volume()).removeRecursively());
    expect(Outcome::Restored, File::Unreachable);
    EXPECT_EQ(recovered(), "xone");
}

TEST_F(MissingBase, IsAwaitedWhileItsCopyCannotBeOpened) {
    const QString path = file("one");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        journal->insert(0, "x");
        EXPECT_TRUE(journals->flush(Long));
    }
    put(path, "other");
    OtherDisk disk(folder() + u'/' + names(u"*.base"_qs).value(0), EACCES);
    expect(Outcome::Failed, File::Changed, disk);
    EXPECT_EQ(recovered(), "xone");
}
