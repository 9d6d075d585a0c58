#include "search/engine/FileWalk.h"
#include "support/AnotherUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// A directory of files, and what a walk through it finds.
class FileWalkTest : public testing::Test {
 protected:
    QString at(const QString& name) const { return name.isEmpty() ? m_folder.path() : m_folder.filePath(name); }
    QByteArray bytesAt(const QByteArray& name) const { return m_folder.path().toUtf8() + '/' + name; }

    void makeFile(const QString& name) const { makeFileOfBytes(name.toUtf8()); }
    void makeFileOfBytes(const QByteArray& name) const {
        const int handle = ::creat(bytesAt(name).constData(), 0644);
        ASSERT_GE(handle, 0) << name.constData();
        ::close(handle);
    }
    void makeDirectory(const QString& name) const { ASSERT_TRUE(QDir().mkpath(at(name))); }

    /// The names found, without the directory's own path; a directory that could not be listed as "!name".
    QStringList found(const QString& directories, const QString& patterns, bool subDirectories = true) const {
        SearchRequest request;
        request.directories = directories;
        request.patterns = patterns;
        request.subDirectories = subDirectories;
        FileWalk walk(request);
        QStringList names;
        while (const std::optional<WalkStep> step = walk.next())
            names.append((step->kind == WalkStep::Unreadable ? u"!"_qs : QString()) + shortName(step->path));
        return names;
    }
    QString shortName(const QString& path) const {
        const QString front = m_folder.path() + u'/';
        return path.startsWith(front) ? path.mid(front.size()) : path;
    }

    QTemporaryDir m_folder;
};

TEST_F(FileWalkTest, EachPatternIsAWalkOfItsOwnOverEachDirectory) {
    for (const char* name : {"one/a.c", "one/b.h", "one/sub/c.c", "two/d.c", "two/e.h"}) {
        makeDirectory(QFileInfo(QString::fromLatin1(name)).path());
        makeFile(QString::fromLatin1(name));
    }
    EXPECT_EQ(found(at(u"one"_qs) + u';' + at(u"two"_qs), u"*.c;*.h"_qs),
              (QStringList{u"one/a.c"_qs, u"one/sub/c.c"_qs, u"one/b.h"_qs, u"two/d.c"_qs, u"two/e.h"_qs}));
}

TEST_F(FileWalkTest, BlanksAroundElementsAndASlashAtTheEndChangeNothing) {
    makeDirectory(u"one"_qs);
    makeDirectory(u"two"_qs);
    makeFile(u"one/a"_qs);
    makeFile(u"two/b"_qs);
    const QStringList both{u"one/a"_qs, u"two/b"_qs};
    EXPECT_EQ(found(at(u"one"_qs) + u';' + at(u"two"_qs), u"*"_qs), both);
    EXPECT_EQ(found(u"  "_qs + at(u"one/"_qs) + u" ;   ;; "_qs + at(u"two"_qs) + u"/ ; "_qs, u" ; * ;"_qs), both);
    EXPECT_EQ(found(u" ; "_qs, u"*"_qs), QStringList());
    EXPECT_EQ(found(at(u"one"_qs), u" ;; "_qs), QStringList());
    EXPECT_EQ(found({}, {}), QStringList());
}

TEST_F(FileWalkTest, TwoOverlappingPatternsFindAFileTwice) {
    makeFile(u"a.cpp"_qs);
    EXPECT_EQ(found(at({}), u"*.cpp;a.*"_qs), (QStringList{u"a.cpp"_qs, u"a.cpp"_qs}));
    EXPECT_EQ(found(at({}) + u';' + at({}), u"*"_qs), (QStringList{u"a.cpp"_qs, u"a.cpp"_qs}));
}

TEST_F(FileWalkTest, FilesComeBeforeDirectoriesAndSubDirectoriesOnlyWhenWanted) {
    makeDirectory(u"a/deep"_qs);
    makeDirectory(u"c"_qs);
    for (const char* name : {"b", "d", "a/x", "a/deep/y", "c/z"})
        makeFile(QString::fromLatin1(name));
    EXPECT_EQ(found(at({}), u"*"_qs), (QStringList{u"b"_qs, u"d"_qs, u"a/x"_qs, u"a/deep/y"_qs, u"c/z"_qs}));
    EXPECT_EQ(found(at({}), u"*"_qs, false), (QStringList{u"b"_qs, u"d"_qs}));
}

TEST_F(FileWalkTest, StarDotStarFindsNamesWithoutADotAndLetterCaseCounts) {
    makeFile(u"README"_qs);
    makeFile(u"a.c"_qs);
    EXPECT_EQ(found(at({}), u"*.*"_qs), (QStringList{u"README"_qs, u"a.c"_qs}));
    EXPECT_EQ(found(at({}), u"*.C"_qs), QStringList());
    EXPECT_EQ(found(at({}), u"?.c"_qs), QStringList{u"a.c"_qs});
}

TEST_F(FileWalkTest, HiddenFilesAndDirectoriesAreNotFound) {
    makeDirectory(u".git"_qs);
    makeFile(u".git/config"_qs);
    makeFile(u".profile"_qs);
    makeFile(u"shown"_qs);
    EXPECT_EQ(found(at({}), u"*;.*"_qs), QStringList{u"shown"_qs});
}

TEST_F(FileWalkTest, AReadOnlyDirectoryIsNotEnteredButMayBeWhereTheSearchBegins) {
    makeDirectory(u"locked"_qs);
    makeFile(u"locked/in"_qs);
    ::chmod(bytesAt("locked").constData(), 0555);
    EXPECT_EQ(found(at({}), u"*"_qs), QStringList());
    EXPECT_EQ(found(at(u"locked"_qs), u"*"_qs), QStringList{u"locked/in"_qs});
    ::chmod(bytesAt("locked").constData(), 0575);
    EXPECT_EQ(found(at({}), u"*"_qs), QStringList{u"locked/in"_qs}) << "somebody may write to it";
    ::chmod(bytesAt("locked").constData(), 0755);
}

TEST_F(FileWalkTest, LinksToFilesAreFoundAndLinksToDirectoriesAreNotFollowed) {
    makeDirectory(u"real/inner"_qs);
    makeFile(u"real/file"_qs);
    QFile::link(at(u"real/file"_qs), at(u"link"_qs));
    QFile::link(at(u"real"_qs), at(u"folderlink"_qs));
    QFile::link(at({}), at(u"real/inner/circle"_qs));
    QFile::link(u"self"_qs, at(u"self"_qs));
    QFile::link(at(u"missing"_qs), at(u"broken"_qs));
    EXPECT_EQ(found(at({}), u"*"_qs), (QStringList{u"link"_qs, u"real/file"_qs}));
    EXPECT_EQ(found(at(u"folderlink"_qs), u"*"_qs), QStringList{u"folderlink/file"_qs}) << "named by the user";
}

TEST_F(FileWalkTest, OnlyRegularFilesAreFound) {
    ASSERT_EQ(::mkfifo(bytesAt("fifo").constData(), 0600), 0);
    QFile::link(at(u"fifo"_qs), at(u"fifolink"_qs));
    const int handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = bytesAt("sock");
    ASSERT_LT(static_cast<std::size_t>(name.size()), sizeof address.sun_path);
    std::strcpy(address.sun_path, name.constData());
    ASSERT_EQ(::bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(handle);
    EXPECT_EQ(found(at({}), u"*"_qs), QStringList());
}

TEST_F(FileWalkTest, NamesThatAreNotUtf8ArePassedOver) {
    makeFileOfBytes("bad\xFF");
    makeFileOfBytes("cut\xC3");
    ASSERT_EQ(::mkdir(bytesAt("dir\xFE").constData(), 0755), 0);
    makeFileOfBytes("dir\xFE/in");
    makeFileOfBytes("good\xC3\xA4");
    EXPECT_EQ(found(at({}), u"*"_qs), QStringList{u"good\u00e4"_qs});
    // Qt cannot remove them with the directory.
    for (const char* name : {"bad\xFF", "cut\xC3", "dir\xFE/in", "dir\xFE"}) {
        EXPECT_EQ(::remove(bytesAt(name).constData()), 0) << name;
    }
}

TEST_F(FileWalkTest, AByteOrderMarkInANameIsACharacterOfIt) {
    const QString name = QString(QChar(0xFEFF)) + u"marked"_qs;
    makeDirectory(name + u"dir"_qs);
    makeFile(name + u"dir/"_qs + name);
    makeFile(name);
    EXPECT_EQ(found(at({}), u"*"_qs), (QStringList{name, name + u"dir/"_qs + name}));
}

TEST_F(FileWalkTest, NamesAreSortedByCodePoints) {
    const QString privateUse = QString(QChar(0xE000));
    const QString linearB = QString::fromUcs4(U"\U00010000");
    for (const QString& name : {linearB, privateUse, u"b"_qs, u"a"_qs, u"B"_qs, u"\u00e4"_qs, u"a10"_qs, u"a2"_qs})
        makeFile(name);
    for (const QString& name : {linearB, privateUse}) {
        makeDirectory(u"in"_qs + name);
        makeFile(u"in"_qs + name + u"/x"_qs);
    }
    EXPECT_EQ(found(at({}), u"*"_qs),
              (QStringList{u"B"_qs, u"a"_qs, u"a10"_qs, u"a2"_qs, u"b"_qs, u"\u00e4"_qs, privateUse, linearB,
                           u"in"_qs + privateUse + u"/x"_qs, u"in"_qs + linearB + u"/x"_qs}));
}

TEST_F(FileWalkTest, ADirectoryThatCannotBeListedIsOneStepAndTheWalkGoesOn) {
    makeDirectory(u"ok"_qs);
    makeFile(u"ok/a"_qs);
    makeFile(u"file"_qs);
    EXPECT_EQ(found(at(u"missing"_qs) + u';' + at(u"file"_qs) + u';' + at(u"ok"_qs), u"*;*.c"_qs),
              (QStringList{u"!missing"_qs, u"!missing"_qs, u"!file"_qs, u"!file"_qs, u"ok/a"_qs}))
        << "each failing walk is reported";
}

TEST_F(FileWalkTest, AnUnreadableDirectoryIsNamedWithItsReason) {
    makeDirectory(u"a/no"_qs);
    makeDirectory(u"b"_qs);
    makeFile(u"b/in"_qs);
    // Another user must come to the directory.
    for (const char* above : {"", "..", "../.."}) {
        ASSERT_EQ(::chmod(bytesAt(above).constData(), 0711 | (*above == '\0' ? 0044 : 0)), 0);
    }
    ::chmod(bytesAt("a/no").constData(), 0200);
    const bool seen = asSomebodyElse([this] {
        SearchRequest request;
        request.directories = at({});
        request.patterns = u"*"_qs;
        request.subDirectories = true;
        FileWalk walk(request);
        const auto first = walk.next();
        const auto second = walk.next();
        return first && first->kind == WalkStep::Unreadable && first->path == at(u"a/no"_qs) &&
               first->error.description.contains(at(u"a/no"_qs)) &&
               first->error.description.contains(QString::fromLocal8Bit(std::strerror(EACCES))) && second &&
               second->kind == WalkStep::File && second->path == at(u"b/in"_qs) && !walk.next();
    });
    ::chmod(bytesAt("a/no").constData(), 0755);
    EXPECT_TRUE(seen);
}

TEST_F(FileWalkTest, ADirectoryThatVanishesMeanwhileIsReportedAndTheWalkGoesOn) {
    makeDirectory(u"a"_qs);
    makeDirectory(u"b"_qs);
    for (const char* name : {"first", "a/in", "b/in"})
        makeFile(QString::fromLatin1(name));
    SearchRequest request;
    request.directories = at({});
    request.patterns = u"*"_qs;
    request.subDirectories = true;
    FileWalk walk(request);
    ASSERT_EQ(walk.next()->path, at(u"first"_qs));
    ASSERT_TRUE(QDir(at(u"a"_qs)).removeRecursively());
    const auto gone = walk.next();
    ASSERT_TRUE(gone);
    EXPECT_EQ(gone->kind, WalkStep::Unreadable);
    EXPECT_EQ(gone->path, at(u"a"_qs));
    EXPECT_EQ(walk.next()->path, at(u"b/in"_qs));
    EXPECT_FALSE(walk.next());
}

TEST_F(FileWalkTest, ADirectoryThatBecameALinkMeanwhileIsNotFollowed) {
    makeDirectory(u"a"_qs);
    makeFile(u"first"_qs);
    SearchRequest request;
    request.directories = at({});
    request.patterns = u"*"_qs;
    request.subDirectories = true;
    FileWalk walk(request);
    ASSERT_EQ(walk.next()->path, at(u"first"_qs));
    ASSERT_TRUE(QDir().rmdir(at(u"a"_qs)));
    ASSERT_TRUE(QFile::link(at({}), at(u"a"_qs)));
    const auto link = walk.next();
    ASSERT_TRUE(link);
    EXPECT_EQ(link->kind, WalkStep::Unreadable);
    EXPECT_FALSE(walk.next());
}

TEST_F(FileWalkTest, TheRootAndARelativePathAreWalked) {
    const QStringList inProc = found(u"/proc"_qs, u"version"_qs, false);
    EXPECT_EQ(inProc, QStringList{u"/proc/version"_qs});
    for (const QString& path : found(u"/"_qs, u"*"_qs, false)) {
        EXPECT_TRUE(path.startsWith(u'/') && path.count(u'/') == 1) << qPrintable(path);
    }
    EXPECT_FALSE(found(u"/"_qs, u"*"_qs, false).contains(u"!/"_qs));

    makeDirectory(u"here"_qs);
    makeFile(u"here/a"_qs);
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(at({})));
    const QStringList fromHere = found(u"here;./here/;."_qs, u"a"_qs);
    QDir::setCurrent(before);
    EXPECT_EQ(fromHere, (QStringList{u"here/a"_qs, u"here/a"_qs, u"here/a"_qs}));
}

TEST_F(FileWalkTest, ADeepTreeIsWalkedToItsEnd) {
    QString path = u"d"_qs;
    for (int depth = 1; depth < 1000; ++depth)
        path += u"/d"_qs;
    makeDirectory(path);
    makeFile(path + u"/leaf"_qs);
    EXPECT_EQ(found(at({}), u"*"_qs), QStringList{path + u"/leaf"_qs});
}

TEST_F(FileWalkTest, APlainDirectoryIsARealOneThatIsShownAndWritable) {
    makeDirectory(u"plain"_qs);
    makeDirectory(u".hidden"_qs);
    makeFile(u"file"_qs);
    QFile::link(at(u"plain"_qs), at(u"link"_qs));
    EXPECT_TRUE(IsPlainDirectory(at(u"plain"_qs)));
    EXPECT_TRUE(IsPlainDirectory(at(u"plain/"_qs)));
    EXPECT_TRUE(IsPlainDirectory(u"/"_qs));
    EXPECT_FALSE(IsPlainDirectory(at(u".hidden"_qs)));
    EXPECT_FALSE(IsPlainDirectory(at(u"file"_qs)));
    EXPECT_FALSE(IsPlainDirectory(at(u"link"_qs)));
    EXPECT_FALSE(IsPlainDirectory(at(u"link/"_qs)));
    EXPECT_FALSE(IsPlainDirectory(at(u"missing"_qs)));
    EXPECT_FALSE(IsPlainDirectory({}));
    ::chmod(bytesAt("plain").constData(), 0555);
    EXPECT_FALSE(IsPlainDirectory(at(u"plain"_qs)));
    ::chmod(bytesAt("plain").constData(), 0755);
}

TEST(ListedFilesTest, StepsComeAsTheyStandInTheList) {
    ListedFiles files({{WalkStep::CountedOnly, u"a"_qs, {}}, {WalkStep::File, u"b"_qs, {}}});
    EXPECT_EQ(files.next()->kind, WalkStep::CountedOnly);
    EXPECT_EQ(files.next()->path, u"b"_qs);
    EXPECT_FALSE(files.next());
    EXPECT_FALSE(files.next());
}

}  // namespace
