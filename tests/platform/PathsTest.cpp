#include "platform/Paths.h"

#include <QDir>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

TEST(Paths, FileNameIsWhatStandsBehindTheLastSlash) {
    EXPECT_EQ(FileNameOf(u"/home/u/a.txt"_qs), u"a.txt"_qs);
    EXPECT_EQ(FileNameOf(u"a.txt"_qs), u"a.txt"_qs);
    EXPECT_EQ(FileNameOf(u"/home/u/"_qs), QString());
    EXPECT_EQ(FileNameOf(QString()), QString());
    EXPECT_EQ(FileNameOf(u"/a\\b"_qs), u"a\\b"_qs);
}

TEST(Paths, ARelativePathIsSeenFromTheWorkingFolder) {
    EXPECT_EQ(absolutePath(u"a.txt"_qs, u"/src"_qs), u"/src/a.txt"_qs);
    EXPECT_EQ(absolutePath(u"./a.txt"_qs, u"/src/"_qs), u"/src/a.txt"_qs);
    EXPECT_EQ(absolutePath(u"a.txt"_qs, u"/"_qs), u"/a.txt"_qs);
    EXPECT_EQ(absolutePath(u"/a.txt"_qs, u"/src"_qs), u"/a.txt"_qs);
}

TEST(Paths, DotsAndDoubledSlashesGoAndTwoDotsStay) {
    EXPECT_EQ(absolutePath(u"//a///b/./c/."_qs, {}), u"/a/b/c/"_qs);
    EXPECT_EQ(absolutePath(u"/a/../b"_qs, {}), u"/a/../b"_qs);
    EXPECT_EQ(absolutePath(u"../b"_qs, u"/w"_qs), u"/w/../b"_qs);
    EXPECT_EQ(absolutePath(u"/..a/.b/c."_qs, {}), u"/..a/.b/c."_qs);
    EXPECT_EQ(absolutePath(u"/a/"_qs, {}), u"/a/"_qs);
    EXPECT_EQ(absolutePath(u"//."_qs, {}), u"/"_qs);
}

TEST(Paths, WithoutAFolderARelativePathIsSeenFromTheWorkingFolderOfTheProcess) {
    EXPECT_EQ(absolutePath(u"./a//b"_qs), absolutePath(QDir::currentPath() + u"/a/b"_qs, {}));
    EXPECT_EQ(absolutePath(u"/a/./b//../c"_qs), u"/a/b/../c"_qs);
    EXPECT_EQ(absolutePath(QString()), QString());
}

TEST(Paths, TheEmptyPathStaysEmpty) {
    EXPECT_EQ(absolutePath({}, u"/src"_qs), QString());
}

TEST(Paths, NamesGoToTheSystemAndBackUnchanged) {
    const QStringList names{u"/tmp/größe"_qs, u"/漢字/😀"_qs, u"\uFEFFmark"_qs, u"\uFFFD"_qs, u"a\nb"_qs};
    for (const QString& name : names) {
        const auto bytes = localName(name);
        ASSERT_TRUE(bytes.has_value());
        EXPECT_EQ(*bytes, name.toUtf8());
        EXPECT_EQ(pathText(*bytes), name);
    }
}

TEST(Paths, TextsThatNoFileCanBearHaveNoName) {
    EXPECT_FALSE(localName(QString()));
    EXPECT_FALSE(localName(u"/a"_qs + QChar(0xD800)));
    EXPECT_FALSE(localName(u"/a"_qs + QChar(0xDC00) + u'b'));
    EXPECT_FALSE(localName(u"/a"_qs + QChar(u'\0') + u'b'));
}

TEST(Paths, BytesThatAreNotUtf8HaveNoText) {
    EXPECT_FALSE(pathText("/tmp/\xFF"));
    EXPECT_FALSE(pathText("/tmp/\xC3"));
    EXPECT_FALSE(pathText("/tmp/\xED\xA0\x80"));
}

TEST(Paths, KindsOfFilesAreToldApartThroughLinks) {
    const QTemporaryDir folder;
    const auto at = [&](const QString& name) { return folder.filePath(name); };
    const auto bytes = [&](const QString& name) { return at(name).toUtf8(); };
    ::close(::open(bytes(u"file"_qs).constData(), O_CREAT | O_WRONLY, 0600));
    ::mkfifo(bytes(u"pipe"_qs).constData(), 0600);
    ASSERT_EQ(::symlink("file", bytes(u"link"_qs).constData()), 0);
    ASSERT_EQ(::symlink(".", bytes(u"folder"_qs).constData()), 0);
    ASSERT_EQ(::symlink("nothing", bytes(u"astray"_qs).constData()), 0);

    EXPECT_TRUE(isNormalFile(at(u"file"_qs)));
    EXPECT_TRUE(isNormalFile(at(u"link"_qs)));
    EXPECT_FALSE(isNormalFile(at(u"pipe"_qs)));
    EXPECT_FALSE(isNormalFile(u"/dev/null"_qs));
    EXPECT_FALSE(isNormalFile(at(u"folder"_qs)));
    EXPECT_TRUE(IsFolderPath(at(u"folder"_qs)));
    EXPECT_FALSE(IsFolderPath(at(u"file"_qs)));
    EXPECT_FALSE(IsFolderPath(at(u"file/x"_qs)));
    EXPECT_FALSE(IsFolderPath(QString()));
    EXPECT_TRUE(fileExists(at(u"pipe"_qs)));
    EXPECT_TRUE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(at(u"astray"_qs)));
    EXPECT_FALSE(fileExists(u"/tmp/"_qs + QChar(0xD800)));
}
