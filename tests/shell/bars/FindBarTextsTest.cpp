#include "settings/files/ListFile.h"
#include "shell/bars/FindBarTexts.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using FindBarTexts::AddSearchKey;
using FindBarTexts::Change;

QStringList list(std::initializer_list<const char*> texts) {
    QStringList all;
    for (const char* text : texts)
        all << QString::fromUtf8(text);
    return all;
}

QStringList numbers(int from, int to) {
    QStringList all;
    for (int i = from; i <= to; ++i)
        all << QString::number(i);
    return all;
}

class ListFiles : public testing::Test {
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
    QTemporaryDir m_folder;
};

}  // namespace

TEST(FindBarTexts, ANewTextStandsOnTop) {
    QStringList keys = list({"a"});
    EXPECT_EQ(AddSearchKey(keys, u"b"_qs, false), Change::Added);
    EXPECT_EQ(keys, list({"b", "a"}));
}

TEST(FindBarTexts, ABlankTextIsPassedOverAndOthersAreKeptUntrimmed) {
    QStringList keys;
    EXPECT_EQ(AddSearchKey(keys, u" \t "_qs, true), Change::Nothing);
    EXPECT_EQ(AddSearchKey(keys, QString(), true), Change::Nothing);
    AddSearchKey(keys, u" a "_qs, true);
    EXPECT_EQ(keys, list({" a "}));
}

TEST(FindBarTexts, AKnownTextMovesToTheTopOnlyWhenThatIsWanted) {
    QStringList keys = list({"c", "b", "a"});
    EXPECT_EQ(AddSearchKey(keys, u"a"_qs, false), Change::Nothing);
    EXPECT_EQ(keys, list({"c", "b", "a"}));
    EXPECT_EQ(AddSearchKey(keys, u"a"_qs, true), Change::Raised);
    EXPECT_EQ(keys, list({"a", "c", "b"}));
}

TEST(FindBarTexts, TextsAreComparedExactly) {
    QStringList keys = list({"a"});
    AddSearchKey(keys, u"A"_qs, true);
    AddSearchKey(keys, u"a "_qs, true);
    EXPECT_EQ(keys, list({"a ", "A", "a"}));
}

TEST(FindBarTexts, TheThirtyNewestAreKept) {
    QStringList keys;
    for (const QString& number : numbers(1, 31))
        AddSearchKey(keys, number, false);
    EXPECT_EQ(keys.size(), 30);
    EXPECT_EQ(keys.first(), u"31"_qs);
    EXPECT_EQ(keys.last(), u"2"_qs);
}

TEST(FindBarTexts, AFileHasTheOldestFirstAndItsDoublesOnce) {
    EXPECT_EQ(FindBarTexts::fromLines(list({"a", "", "b", "a", "c"})), list({"c", "b", "a"}));
    EXPECT_EQ(FindBarTexts::toLines(list({"c", "b", "a"})), list({"a", "b", "c"}));
    EXPECT_EQ(FindBarTexts::fromLines(numbers(1, 40)).size(), 30);
}

TEST_F(ListFiles, WritesLinesThatComeBack) {
    ListFile::write(path(), list({"one", "zwei ü"}));
    EXPECT_EQ(bytes(), QByteArray("one\r\nzwei \xc3\xbc\r\n"));
    EXPECT_EQ(ListFile::read(path()), list({"one", "zwei ü"}));
}

TEST_F(ListFiles, ReadsOtherLineEndsAndEncodings) {
    put("one\ntwo");
    EXPECT_EQ(ListFile::read(path()), list({"one", "two"}));
    put("gr\xfc\xdf\r\n\r\nx\r\n");
    EXPECT_EQ(ListFile::read(path()), list({"grüß", "", "x"}));
}

TEST_F(ListFiles, AMissingFileOrAFolderIsEmpty) {
    EXPECT_TRUE(ListFile::read(path()).isEmpty());
    EXPECT_TRUE(ListFile::read(m_folder.path()).isEmpty());
    put("");
    EXPECT_TRUE(ListFile::read(path()).isEmpty());
}

TEST_F(ListFiles, AnEntryWithALineBreakIsLeftOut) {
    ListFile::write(path(), list({"a", "b\nc", "d\re", "f"}));
    EXPECT_EQ(ListFile::read(path()), list({"a", "f"}));
}

TEST_F(ListFiles, AFolderThatCannotBeWrittenLeavesTheOldFile) {
    put("old\r\n");
    ListFile::write(path() + QLatin1String("/below/a/file"), list({"x"}));
    EXPECT_EQ(bytes(), QByteArray("old\r\n"));
}
