#include "platform/Folders.h"
#include "widgets/ComboHistory.h"

#include <QComboBox>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class Histories : public testing::Test {
 protected:
    Histories() {
        m_combo.setEditable(true);
        makeFolder(ProgramFolder());
        QFile::remove(path());
    }

    static QString path() { return ProgramFolder() + u"/history.txt"_qs; }
    static QByteArray stored() {
        QFile file(path());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }
    static void store(const QByteArray& bytes) {
        QFile file(path());
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QStringList list() const {
        QStringList texts;
        for (int i = 0; i < m_combo.count(); ++i)
            texts += m_combo.itemText(i);
        return texts;
    }
    void load() { LoadComboHistory(u"history.txt"_qs, m_combo); }
    void save() const { SaveComboHistory(u"history.txt"_qs, m_combo); }

    QComboBox m_combo;
};

}  // namespace

TEST_F(Histories, PutANewTextOnTopAndLeaveTheBoxAlone) {
    m_combo.setEditText(u"typed"_qs);
    AddComboHistory(m_combo, u"one"_qs, 30, 0);
    AddComboHistory(m_combo, u"two"_qs, 30, RaiseComboHistory);
    EXPECT_EQ(list(), QStringList({u"two"_qs, u"one"_qs}));
    EXPECT_EQ(m_combo.currentText(), u"typed"_qs);
}

TEST_F(Histories, PassOverBlankTexts) {
    AddComboHistory(m_combo, QString(), 30, RaiseComboHistory);
    AddComboHistory(m_combo, u"  \t"_qs, 30, 0);
    EXPECT_TRUE(list().isEmpty());
}

TEST_F(Histories, CompareExactlyWithCaseAndBlanks) {
    for (const auto& text : {u"a"_qs, u"A"_qs, u"a "_qs, u"a"_qs})
        AddComboHistory(m_combo, text, 30, 0);
    EXPECT_EQ(list(), QStringList({u"a "_qs, u"A"_qs, u"a"_qs}));
}

TEST_F(Histories, RaiseAKnownTextOnlyWhenAskedTo) {
    for (const auto& text : {u"a"_qs, u"b"_qs, u"c"_qs})
        AddComboHistory(m_combo, text, 30, 0);
    m_combo.setEditText(u"typed"_qs);
    AddComboHistory(m_combo, u"a"_qs, 30, 0);
    EXPECT_EQ(list(), QStringList({u"c"_qs, u"b"_qs, u"a"_qs}));
    EXPECT_EQ(m_combo.currentText(), u"typed"_qs);
    AddComboHistory(m_combo, u"a"_qs, 30, RaiseComboHistory);
    EXPECT_EQ(list(), QStringList({u"a"_qs, u"c"_qs, u"b"_qs}));
    EXPECT_EQ(m_combo.currentText(), u"a"_qs);
}

TEST_F(Histories, LetTheOldestGoForANewText) {
    for (int i = 1; i <= 31; ++i)
        AddComboHistory(m_combo, QString::number(i), 30, RaiseComboHistory);
    EXPECT_EQ(m_combo.count(), 30);
    EXPECT_EQ(list().first(), u"31"_qs);
    EXPECT_EQ(list().last(), u"2"_qs);
    AddComboHistory(m_combo, u"2"_qs, 30, RaiseComboHistory);
    EXPECT_EQ(m_combo.count(), 30);
    EXPECT_EQ(list().first(), u"2"_qs);
}

TEST_F(Histories, LeaveTheTypedTextAloneWhenTheEntryOfTheBoxGoes) {
    QByteArray lines;
    for (int i = 1; i <= 30; ++i)
        lines += QByteArray::number(i) + "\r\n";
    store(lines);
    load();
    for (const int current : {29, 0, 7}) {
        m_combo.setCurrentIndex(current);
        m_combo.setEditText(u"typed at %1"_qs.arg(current));
        AddComboHistory(m_combo, m_combo.currentText(), 30, RaiseComboHistory);
        EXPECT_EQ(m_combo.currentText(), u"typed at %1"_qs.arg(current));
        EXPECT_EQ(m_combo.count(), 30);
    }
}

TEST_F(Histories, ShowTheEntryThatTheBoxHasForTheArrowKeys) {
    store("one\r\nTwo\r\ntwo\r\ntwo\r\n");
    load();
    EXPECT_EQ(m_combo.currentIndex(), 0);
    store("one\r\ntwo\r\none\r\n");
    load();
    EXPECT_EQ(m_combo.currentIndex(), 1);
    EXPECT_EQ(m_combo.currentText(), u"one"_qs);
}

TEST_F(Histories, AreStoredOldestFirstAndEndWithTheTextOfTheBox) {
    AddComboHistory(m_combo, u"one"_qs, 30, RaiseComboHistory);
    AddComboHistory(m_combo, u"zwei \u00E4"_qs, 30, RaiseComboHistory);
    m_combo.setEditText(u"zwei \u00E4"_qs);
    save();
    EXPECT_EQ(stored(), "one\r\nzwei \xC3\xA4\r\nzwei \xC3\xA4\r\n");
    m_combo.clear();
    load();
    EXPECT_EQ(list(), QStringList({u"zwei \u00E4"_qs, u"one"_qs}));
    EXPECT_EQ(m_combo.currentText(), u"zwei \u00E4"_qs);
}

TEST_F(Histories, AreReadWithEitherLineEndAndWithoutEmptyLines) {
    store("one\n\ntwo\r\nthree");
    load();
    EXPECT_EQ(list(), QStringList({u"three"_qs, u"two"_qs, u"one"_qs}));
    EXPECT_EQ(m_combo.currentText(), u"three"_qs);
    store("one\r\n\r\n");
    load();
    EXPECT_EQ(list(), QStringList(u"one"_qs));
    EXPECT_EQ(m_combo.currentText(), QString());
}

TEST_F(Histories, ThatAreNotUtf8AreReadAsWindows1252) {
    store("\x80 \xE4\r\n");
    load();
    EXPECT_EQ(list(), QStringList(u"\u20AC \u00E4"_qs));
}

TEST_F(Histories, WithoutAFileStayAsTheyWere) {
    AddComboHistory(m_combo, u"one"_qs, 30, 0);
    m_combo.setEditText(u"typed"_qs);
    load();
    ASSERT_EQ(::mkfifo(path().toUtf8().constData(), 0600), 0);
    load();
    EXPECT_EQ(list(), QStringList(u"one"_qs));
    EXPECT_EQ(m_combo.currentText(), u"typed"_qs);
}

TEST_F(Histories, OfMoreThanThirtyLinesAreCutToTheNewest) {
    QByteArray lines;
    for (int i = 1; i <= 40; ++i)
        lines += QByteArray::number(i) + "\r\n";
    store(lines);
    load();
    EXPECT_EQ(m_combo.count(), 30);
    EXPECT_EQ(list().first(), u"40"_qs);
    EXPECT_EQ(list().last(), u"11"_qs);
}

TEST_F(Histories, LeaveOutTextsWithALineBreak) {
    AddComboHistory(m_combo, u"one"_qs, 30, 0);
    m_combo.insertItem(0, u"a\nb"_qs);
    m_combo.setEditText(u"c\rd"_qs);
    save();
    EXPECT_EQ(stored(), "one\r\n");
}

TEST_F(Histories, ThatCannotBeWrittenPassWithoutAWord) {
    ASSERT_TRUE(QDir().mkpath(path()));
    AddComboHistory(m_combo, u"one"_qs, 30, 0);
    save();
    EXPECT_TRUE(QFileInfo(path()).isDir());
    EXPECT_TRUE(QDir().rmdir(path()));
}
