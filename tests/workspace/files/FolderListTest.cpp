#include "settings/files/OwnTextFile.h"
#include "workspace/files/FolderList.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

class FolderListFile : public testing::Test {
 protected:
    void TearDown() override { QFile::remove(path()); }

    static QString path() { return OwnTextFile::path(Name); }
    static QByteArray bytes() {
        QFile file(path());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    static void write(const QByteArray& text) {
        QDir().mkpath(QFileInfo(path()).path());
        QFile file(path());
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(text);
    }
    static QStringList loaded() {
        FolderList list(Name);
        list.load();
        return list.keys();
    }

    static inline const QString Name = u"Test.idx"_qs;
    FolderList m_list{Name};
};

TEST_F(FolderListFile, EachChangeIsWrittenInOrder) {
    m_list.add(u"FOLDER/b"_qs);
    m_list.add(u"DRIVE/"_qs);
    EXPECT_EQ(bytes(), "FOLDER/b\r\nDRIVE/\r\n");
    m_list.remove(u"FOLDER/b"_qs);
    EXPECT_EQ(bytes(), "DRIVE/\r\n");
}

TEST_F(FolderListFile, AKeyThatIsThereKeepsItsPlace) {
    m_list.add(u"FOLDER/a"_qs);
    m_list.add(u"FOLDER/b"_qs);
    m_list.add(u"FOLDER/a"_qs);
    EXPECT_EQ(m_list.keys(), QStringList({u"FOLDER/a"_qs, u"FOLDER/b"_qs}));
}

TEST_F(FolderListFile, LettersInAnotherCaseAreAnotherFolder) {
    m_list.add(u"FOLDER/a"_qs);
    m_list.add(u"FOLDER/A"_qs);
    EXPECT_EQ(m_list.keys().size(), 2);
}

TEST_F(FolderListFile, TwentyOneAreKeptAndTheOthersAreLeftForThisSession) {
    for (int n = 1; n <= 23; ++n)
        m_list.add(u"FOLDER/%1"_qs.arg(n));
    EXPECT_EQ(m_list.keys().size(), 23);
    EXPECT_EQ(loaded().size(), 21);
    EXPECT_EQ(loaded().last(), u"FOLDER/21"_qs);
}

TEST_F(FolderListFile, AMissingFileIsAnEmptyList) {
    EXPECT_EQ(loaded(), QStringList());
}

TEST_F(FolderListFile, BlankLinesAndDoublesInTheFileArePassedOver) {
    write("FOLDER/a\n\r\nFOLDER/b\r\nFOLDER/a\r\n");
    EXPECT_EQ(loaded(), QStringList({u"FOLDER/a"_qs, u"FOLDER/b"_qs}));
}

TEST_F(FolderListFile, AKeyThatWouldBreakTheFormIsNotWritten) {
    m_list.add(u"FOLDER/a\tb"_qs);
    m_list.add(u"FOLDER/a\nb"_qs);
    m_list.add(u"FOLDER/c"_qs);
    m_list.add({});
    EXPECT_EQ(m_list.keys().size(), 3);
    EXPECT_EQ(bytes(), "FOLDER/c\r\n");
}

TEST_F(FolderListFile, AFolderInThePlaceOfTheFileIsAnEmptyList) {
    QDir().mkpath(path());
    EXPECT_EQ(loaded(), QStringList());
    m_list.add(u"FOLDER/a"_qs);
    EXPECT_EQ(m_list.keys(), QStringList(u"FOLDER/a"_qs));
    QDir().rmdir(path());
}

}  // namespace
