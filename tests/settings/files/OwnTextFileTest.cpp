#include "settings/files/OwnTextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace {

QStringList list(std::initializer_list<const char*> texts) {
    QStringList all;
    for (const char* text : texts)
        all << QString::fromUtf8(text);
    return all;
}

/// A file of a folder that is not there yet.
class OwnTextFiles : public testing::Test {
 protected:
    QString path() const { return m_folder.filePath(u"sub/list.idx"_qs); }
    void put(const QByteArray& bytes) {
        QDir(m_folder.path()).mkpath(u"sub"_qs);
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes() {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    static QStringList read(const QString& path) {
        const auto lines = OwnTextFile::readLines(path, OwnTextFile::MostListBytes);
        return lines.value_or(QStringList(u"(cannot be read)"_qs));
    }

    /// Meanwhile no file can grow beyond this.
    static void withRoomFor(rlim_t most, const std::function<void()>& call) {
        rlimit before{};
        ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{most, before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
        call();
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
        std::signal(SIGXFSZ, handler);
    }

    QTemporaryDir m_folder;
};

}  // namespace

TEST_F(OwnTextFiles, WritesLinesThatComeBack) {
    EXPECT_TRUE(OwnTextFile::writeLines(path(), list({"one", "zwei ü"})));
    EXPECT_EQ(bytes(), QByteArray("one\r\nzwei \xc3\xbc\r\n"));
    EXPECT_EQ(read(path()), list({"one", "zwei ü"}));
}

TEST_F(OwnTextFiles, ReadsOtherLineEndsAndEncodings) {
    put("one\ntwo");
    EXPECT_EQ(read(path()), list({"one", "two"}));
    put("gr\xfc\xdf\r\n\r\nx\r\n");
    EXPECT_EQ(read(path()), list({"grüß", "", "x"}));
}

TEST_F(OwnTextFiles, AMissingFileAndAFolderHaveNoLinesAndAnEmptyOneHasNone) {
    EXPECT_EQ(OwnTextFile::readLines(path(), OwnTextFile::MostListBytes), std::nullopt);
    EXPECT_EQ(OwnTextFile::readLines(m_folder.path(), OwnTextFile::MostListBytes), std::nullopt);
    put("");
    EXPECT_EQ(OwnTextFile::readLines(path(), OwnTextFile::MostListBytes), QStringList());
}

TEST_F(OwnTextFiles, AnEntryWithALineBreakIsLeftOut) {
    EXPECT_TRUE(OwnTextFile::writeLines(path(), list({"a", "b\nc", "d\re", "f"})));
    EXPECT_EQ(read(path()), list({"a", "f"}));
}

TEST_F(OwnTextFiles, AFolderThatCannotBeWrittenLeavesTheOldFile) {
    put("old\r\n");
    EXPECT_FALSE(OwnTextFile::writeLines(path() + QLatin1String("/below/a/file"), list({"x"})));
    EXPECT_EQ(bytes(), QByteArray("old\r\n"));
}

TEST_F(OwnTextFiles, AFullDiskLeavesTheOldFile) {
    put("old\r\n");
    for (const rlim_t room : {0, 1, 4096, 6000}) {
        bool written = true;
        withRoomFor(room, [&] { written = OwnTextFile::writeLines(path(), QStringList(1000, u"a new line"_qs)); });
        EXPECT_FALSE(written) << room;
        EXPECT_EQ(bytes(), QByteArray("old\r\n")) << room;
        EXPECT_EQ(QDir(QFileInfo(path()).path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << room;
    }
}

TEST_F(OwnTextFiles, AByteOrderMarkSaysTheEncoding) {
    put("\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\r\n");
    EXPECT_EQ(read(path()), list({"grüß"}));
    put({"\xFF\xFEg\0\r\0\n\0", 8});
    EXPECT_EQ(read(path()), list({"g"}));
}

TEST_F(OwnTextFiles, AFileLongerThanWantedIsAnErrorThatNamesIt) {
    put("12345");
    EXPECT_EQ(OwnTextFile::read(path(), 5).bytes, "12345");
    EXPECT_FALSE(OwnTextFile::read(path(), 5).error);
    const OwnTextFile::Content cut = OwnTextFile::read(path(), 4);
    EXPECT_TRUE(cut.isTooLong());
    EXPECT_TRUE(cut.bytes.isEmpty());
    EXPECT_TRUE(cut.error.description.contains(path()));
    EXPECT_EQ(OwnTextFile::readLines(path(), 4), std::nullopt);
}

TEST_F(OwnTextFiles, TheHeadOfALongFileIsRead) {
    put("12345");
    for (const char* head : {"", "1", "1234", "12345"}) {
        EXPECT_EQ(OwnTextFile::readHead(path(), qstrlen(head)).bytes, head);
    }
    EXPECT_EQ(OwnTextFile::readHead(path(), 1'000'000).bytes, "12345");
    put(QByteArray(200'000, 'x'));
    EXPECT_EQ(OwnTextFile::readHead(path(), 150'000).bytes, QByteArray(150'000, 'x'));
    EXPECT_TRUE(OwnTextFile::readHead(path() + u"nowhere"_qs, 5).error);
}

TEST_F(OwnTextFiles, OnlyRegularFilesAreRead) {
    put("");
    const QString fifo = m_folder.filePath(u"fifo"_qs);
    ASSERT_EQ(::mkfifo(fifo.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(OwnTextFile::readLines(fifo, 10), std::nullopt);
    EXPECT_FALSE(OwnTextFile::read(fifo, 10).isTooLong());
}

TEST_F(OwnTextFiles, OfMoreThanOnePartAreReadWhole) {
    const QByteArray line(100'000, 'x');
    put(line + "\n" + line);
    EXPECT_EQ(read(path()), QStringList({QString::fromLatin1(line), QString::fromLatin1(line)}));
}

TEST_F(OwnTextFiles, OfTwoProcessesThatWriteAtOnceAndAreKilledAreWhole) {
    const QStringList contents[] = {QStringList(4000, u"written by the first one"_qs),
                                    QStringList(9000, u"written by the other"_qs)};
    ASSERT_TRUE(OwnTextFile::writeLines(path(), contents[0]));
    pid_t writers[2];
    for (int i = 0; i < 2; ++i) {
        writers[i] = ::fork();
        ASSERT_GE(writers[i], 0);
        while (writers[i] == 0) {
            if (!OwnTextFile::writeLines(path(), contents[i]))
                ::_exit(1);
        }
    }
    int seen[2] = {};
    int others = 0;
    for (int round = 0; others == 0 && round < 100'000 && (round < 300 || seen[0] == 0 || seen[1] == 0); ++round) {
        const QStringList lines = read(path());
        if (lines == contents[0])
            ++seen[0];
        else if (lines == contents[1])
            ++seen[1];
        else
            ++others;
    }
    for (const pid_t writer : writers) {
        int status = 0;
        EXPECT_EQ(::kill(writer, SIGKILL), 0);
        EXPECT_EQ(::waitpid(writer, &status, 0), writer);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it wrote until it was killed";
    }
    EXPECT_EQ(others, 0);
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
    const QStringList left = read(path());
    EXPECT_TRUE(left == contents[0] || left == contents[1]);
}
