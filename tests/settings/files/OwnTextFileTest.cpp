#include "settings/files/OwnTextFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

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
