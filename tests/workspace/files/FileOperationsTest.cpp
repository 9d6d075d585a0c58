#include "workspace/files/FileOperations.h"
#include "workspace/files/FolderFixture.h"

#include <cerrno>

namespace {

class FileOperationsOn : public FolderFixture {
 protected:
    SystemError duplicate(const QString& path) const { return FileOperations::duplicate(path, m_stop); }
    QStringList names() const {
        QStringList names =
            QDir(root()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        names.sort();
        return names;
    }
    static mode_t modeOf(const QString& path) {
        struct stat status {};
        EXPECT_EQ(::stat(path.toUtf8().constData(), &status), 0);
        return status.st_mode & 07777;
    }

    std::atomic<bool> m_stop = false;
};

TEST_F(FileOperationsOn, AFileGetsANewName) {
    EXPECT_FALSE(FileOperations::rename(makeFile(u"old"_qs, "bytes"), u"new ü"_qs));
    EXPECT_EQ(names(), QStringList(u"new ü"_qs));
    EXPECT_EQ(bytesOf(in(u"new ü"_qs)), "bytes");
}

TEST_F(FileOperationsOn, ANameThatIsTakenIsRefused) {
    makeFile(u"taken"_qs, "other");
    const SystemError error = FileOperations::rename(makeFile(u"old"_qs, "bytes"), u"taken"_qs);
    EXPECT_EQ(error.number, EEXIST);
    EXPECT_EQ(error.description, SystemError::fromErrno(EEXIST).description);
    EXPECT_EQ(bytesOf(in(u"taken"_qs)), "other");
    EXPECT_EQ(bytesOf(in(u"old"_qs)), "bytes");
}

TEST_F(FileOperationsOn, ANameWithASlashIsRefused) {
    makeFolder(u"folder"_qs);
    const QString file = makeFile(u"old"_qs);
    EXPECT_EQ(FileOperations::rename(file, u"folder/new"_qs).number, EINVAL);
    EXPECT_EQ(FileOperations::rename(file, u"/tmp/new"_qs).number, EINVAL);
    EXPECT_EQ(FileOperations::rename(file, QStringView(u"a\0b", 3).toString()).number, EINVAL);
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(FileOperationsOn, NamesThatStandForFoldersOrAreTooLongAreRefused) {
    const QString file = makeFile(u"old"_qs);
    EXPECT_TRUE(FileOperations::rename(file, u"."_qs));
    EXPECT_TRUE(FileOperations::rename(file, u".."_qs));
    EXPECT_EQ(FileOperations::rename(file, QString(300, u'x')).number, ENAMETOOLONG);
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(FileOperationsOn, AFileThatHasGoneIsNotRenamed) {
    EXPECT_EQ(FileOperations::rename(in(u"gone"_qs), u"new"_qs).number, ENOENT);
}

TEST_F(FileOperationsOn, ADuplicateHasContentAndMode) {
    const QString file = makeFile(u"run.sh"_qs, "text");
    ASSERT_EQ(::chmod(file.toUtf8().constData(), 0751), 0);
    EXPECT_FALSE(duplicate(file));
    EXPECT_EQ(names(), QStringList({u"Copy - run.sh"_qs, u"run.sh"_qs}));
    EXPECT_EQ(bytesOf(in(u"Copy - run.sh"_qs)), "text");
    EXPECT_EQ(modeOf(in(u"Copy - run.sh"_qs)), 0751U);
}

TEST_F(FileOperationsOn, AnEmptyFileAndALongOneAreDuplicated) {
    EXPECT_FALSE(duplicate(makeFile(u"empty"_qs)));
    EXPECT_EQ(bytesOf(in(u"Copy - empty"_qs)).size(), 0);
    const QByteArray bytes = QByteArray("0123456789abcdef").repeated(700'000);
    EXPECT_FALSE(duplicate(makeFile(u"long"_qs, bytes)));
    EXPECT_EQ(bytesOf(in(u"Copy - long"_qs)), bytes);
}

TEST_F(FileOperationsOn, AnEarlierCopyIsReplaced) {
    makeFile(u"Copy - a"_qs, "earlier and longer");
    EXPECT_FALSE(duplicate(makeFile(u"a"_qs, "new")));
    EXPECT_EQ(bytesOf(in(u"Copy - a"_qs)), "new");
}

TEST_F(FileOperationsOn, ACopyOfACopyHasThePrefixTwice) {
    EXPECT_FALSE(duplicate(makeFile(u"Copy - a"_qs, "x")));
    EXPECT_TRUE(QFile::exists(in(u"Copy - Copy - a"_qs)));
}

TEST_F(FileOperationsOn, AnEarlierCopyWithoutAWriteBitIsRefused) {
    const QString copy = makeFile(u"Copy - a"_qs, "kept");
    ASSERT_EQ(::chmod(copy.toUtf8().constData(), 0444), 0);
    EXPECT_EQ(duplicate(makeFile(u"a"_qs, "new")).number, EACCES);
    EXPECT_EQ(bytesOf(copy), "kept");
}

TEST_F(FileOperationsOn, AFolderOrPipeInThePlaceOfTheCopyIsRefused) {
    makeFolder(u"Copy - a"_qs);
    EXPECT_EQ(duplicate(makeFile(u"a"_qs)).number, EISDIR);
    makePipe(u"Copy - b"_qs);
    EXPECT_TRUE(duplicate(makeFile(u"b"_qs)));
    EXPECT_EQ(names(), QStringList({u"Copy - a"_qs, u"Copy - b"_qs, u"a"_qs, u"b"_qs}));
}

TEST_F(FileOperationsOn, OnlyRegularFilesAreDuplicatedAndLinksToSuchByContent) {
    EXPECT_TRUE(duplicate(makePipe(u"pipe"_qs)));
    EXPECT_TRUE(duplicate(makeFolder(u"folder"_qs)));
    EXPECT_TRUE(duplicate(makeLink(u"broken"_qs, in(u"nothing"_qs))));
    makeFile(u"target"_qs, "bytes");
    EXPECT_FALSE(duplicate(makeLink(u"link"_qs, in(u"target"_qs))));
    EXPECT_EQ(bytesOf(in(u"Copy - link"_qs)), "bytes");
    EXPECT_FALSE(QFileInfo(in(u"Copy - link"_qs)).isSymLink());
}

TEST_F(FileOperationsOn, NothingStaysOfACancelledCopy) {
    m_stop = true;
    EXPECT_TRUE(duplicate(makeFile(u"a"_qs, "bytes")));
    EXPECT_EQ(names(), QStringList(u"a"_qs));
}

TEST_F(FileOperationsOn, ALinkIsDeletedAndNotItsTarget) {
    makeFile(u"target"_qs);
    EXPECT_FALSE(FileOperations::remove(makeLink(u"link"_qs, in(u"target"_qs))));
    EXPECT_FALSE(FileOperations::remove(makeLink(u"broken"_qs, in(u"nothing"_qs))));
    EXPECT_FALSE(FileOperations::remove(makePipe(u"pipe"_qs)));
    EXPECT_EQ(names(), QStringList(u"target"_qs));
}

TEST_F(FileOperationsOn, AFailedDeletionNamesTheFile) {
    const SystemError gone = FileOperations::remove(in(u"gone"_qs));
    EXPECT_EQ(gone.number, ENOENT);
    EXPECT_EQ(gone.description,
              u"'%1' can't be deleted: %2"_qs.arg(in(u"gone"_qs), SystemError::fromErrno(ENOENT).description));
    EXPECT_EQ(FileOperations::remove(makeFolder(u"folder"_qs)).number, EISDIR);
}

}  // namespace
